#pragma once

#include <QAccessible>
#include <QList>
#include <QWidget>
#include <functional>
#include <utility>

namespace kelvane {

// How a screen reader presents a widget.
enum class SpokenRole {
  kNothing,  // left out
  kText,     // its caption, with its meaning as the description
  kBox,      // a group if it has a meaning; otherwise its contents take its place
  kStock,    // a nameless node around the Qt widget that fills it
  kPicture,
  kCommand,        // a button; a click presses it
  kHorizontalBar,  // a slider that is dragged horizontally; its Left determines its value
  kVerticalBar,    // a slider that is dragged vertically; its Top determines its value
  kThumb,          // a slider whose value is the caption of another widget, its read-out
  kList,           // a box of list items
  kListItem,       // an item of a kList; a right click opens its menu
};

// What the position of a bar, its Left or Top, means to a screen reader.
struct BarValue {
  std::function<double(double position)> At;
  std::function<double(double value)> PositionOf;
  double first = 0;  // the least position
};

// A part of a window, with what a screen reader says about it. The reader goes through the visible
// parts that are spoken, line by line and from left to right. Belongs to the user-interface thread.
class SpokenWidget : public QWidget {
  Q_OBJECT
 public:
  using QWidget::QWidget;

  // Each class has a default of its own.
  SpokenRole Role() const { return role_; }
  void setRole(SpokenRole role) { role_ = role; }
  // Whether the widget is a slider whose position determines its value.
  bool IsBar() const;
  // What the widget is, if its own caption doesn't say so.
  QString Meaning() const { return accessibleName(); }
  void setMeaning(const QString& meaning);
  // The name of the widget whose caption is a thumb's value.
  const QString& ReadOut() const { return readOut_; }
  void setReadOut(const QString& name) { readOut_ = name; }

  // By default a bar's value is its position.
  const BarValue& SpokenValue() const { return spokenValue_; }
  void setSpokenValue(BarValue value) { spokenValue_ = std::move(value); }

  // The whole caption, even if it is shown elided, without the blanks around it; empty in most
  // classes.
  virtual QString SpokenCaption() const { return {}; }
  // Returns false if a screen reader presents neither the widget nor what it contains.
  virtual bool IsSpoken() const { return role_ != SpokenRole::kNothing; }
  // The Qt widget that fills this one; null if there is none.
  QWidget* StockWidget() const { return stockWidget_; }

  // The nearest ancestor that is a node of the reader's tree: the window or a part of it; null if
  // there is none.
  QWidget* SpokenParent() const;
  // Returns the nodes directly below a window or a part of one, in reading order.
  static QList<QWidget*> SpokenChildren(const QWidget& parent);

 protected:
  // Sets the Qt widget that fills this one. It must be, or become, a child of this one.
  void setStockWidget(QWidget* stockWidget);

  // Tells a screen reader, if one runs, that the value of this bar or thumb has changed.
  void AnnounceValue();
  // The same for this widget's caption, and for the value of each thumb whose read-out it is.
  void AnnounceCaption();
  // The same for nodes that were shown (`change` is ObjectCreated) or hidden (ObjectDestroyed).
  void AnnounceNodes(QAccessible::Event change);

 private:
  bool IsNode() const;
  QList<QWidget*> Nodes();
  static QList<QWidget*> NodesIn(const QWidget& box);

  QWidget* stockWidget_ = nullptr;
  SpokenRole role_ = SpokenRole::kStock;
  QString readOut_;
  BarValue spokenValue_{std::identity(), std::identity()};
};

}  // namespace kelvane
