#pragma once

#include <QAccessible>
#include <QList>
#include <QWidget>

namespace kelvane {

// How a screen reader presents a widget.
enum class SpokenRole {
  kNothing,  // left out
  kText,     // its caption; its meaning is the description
  kBox,      // a group if it has a meaning; otherwise its contents take its place
  kStock,    // has the role of the Qt widget inside it
  kPicture,
  kCommand,        // a button that a click presses
  kHorizontalBar,  // a slider that is dragged horizontally and whose value is its own Left
  kVerticalBar,    // a slider that is dragged vertically and whose value is its own Top
  kThumb,          // a slider whose value is the caption of another widget, its read-out
  kList,           // a box
  kListItem,       // an item of such a box; a right click opens its menu
};

// A part of a window, with what a screen reader says about it. The reader goes through the visible
// parts that have something to say, line by line and from left to right. Belongs to the
// user-interface thread.
class SpokenWidget : public QWidget {
  Q_OBJECT
 public:
  using QWidget::QWidget;

  // Each class has a role of its own from the beginning.
  SpokenRole Role() const { return role_; }
  void setRole(SpokenRole role) { role_ = role; }
  // Whether the role is that of a slider whose value is its own place.
  bool IsBar() const;
  // What the widget is, where its own caption doesn't say so.
  QString Meaning() const { return accessibleName(); }
  void setMeaning(const QString& meaning);
  // The name of the widget whose caption is a thumb's value.
  const QString& ReadOut() const { return readOut_; }
  void setReadOut(const QString& name) { readOut_ = name; }

  // The caption as it is on the screen, without the blanks around it; empty in most classes.
  virtual QString SpokenCaption() const { return {}; }
  virtual bool SaysSomething() const { return role_ != SpokenRole::kNothing; }
  // Qt's widget that is the whole inside of this one; null in most classes.
  QWidget* StockWidget() const { return stockWidget_; }

  // The nearest ancestor that is a node of the reader's tree: the window, or a part of it.
  QWidget* SpokenParent() const;
  // Returns the nodes directly below a window or a part of one, in reading order.
  static QList<QWidget*> SpokenChildren(const QWidget& parent);

 protected:
  // Makes `stockWidget`, a child of this widget, its inside.
  void SpeakAs(QWidget* stockWidget);

  // These tell a screen reader, if one runs, that a bar or a thumb has a new value, that the
  // caption is a new one, which may be the value of a thumb, and that nodes were shown or hidden.
  void AnnounceValue();
  void AnnounceCaption();
  void AnnounceParts(QAccessible::Event change);

 private:
  bool IsNode() const;
  QList<QWidget*> Parts();
  static QList<QWidget*> PartsIn(const QWidget& box);

  QWidget* stockWidget_ = nullptr;
  SpokenRole role_ = SpokenRole::kStock;
  QString readOut_;
};

}  // namespace kelvane
