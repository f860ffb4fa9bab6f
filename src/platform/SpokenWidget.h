#pragma once

#include <QAccessible>
#include <QList>
#include <QWidget>

namespace kelvane {

// What a screen reader takes a widget for.
enum class SpokenRole {
  kNothing,  // passed over
  kText,     // says its caption, which its meaning explains
  kBox,      // a group if it has a meaning; if not, its contents stand in its place
  kStock,    // what Qt's widget in it is
  kPicture,
  kCommand,        // a button that a click presses
  kHorizontalBar,  // a slider that is dragged horizontally and whose value is its own Left
  kVerticalBar,    // a slider that is dragged vertically and whose value is its own Top
  kThumb,          // a slider whose value stands in another widget, its read-out
  kList,           // a box
  kListItem,       // in such a box; a right click opens its menu
};

// A part of a window, with what a screen reader is told of it. The reader walks through the parts
// that are on show and have something to say, from left to right and from top to bottom. Belongs to
// the user-interface thread.
class SpokenWidget : public QWidget {
  Q_OBJECT
 public:
  using QWidget::QWidget;

  // Each class has a role of its own from the beginning.
  SpokenRole Role() const { return role_; }
  void setRole(SpokenRole role) { role_ = role; }
  // Whether the role is that of a slider whose value is its own place.
  bool IsBar() const;
  // Says what the widget is where no caption of its own does.
  QString Meaning() const { return accessibleName(); }
  void setMeaning(const QString& meaning);
  // The name of the widget in whose caption a thumb's value stands.
  const QString& ReadOut() const { return readOut_; }
  void setReadOut(const QString& name) { readOut_ = name; }

  // The caption as it is on the screen, without the blanks around it; empty in most classes.
  virtual QString SpokenCaption() const { return {}; }
  virtual bool SaysSomething() const { return role_ != SpokenRole::kNothing; }
  // Qt's widget that is the whole inside of this one; null in most classes.
  QWidget* StockWidget() const { return stockWidget_; }

  // The nearest ancestor that is a node of the reader's tree: the window, or a part of it.
  QWidget* SpokenParent() const;
  // What stands in a window or in a part of it, in the order in which it is read.
  static QList<QWidget*> SpokenChildren(const QWidget& parent);

 protected:
  // Makes `stockWidget` the inside.
  void SpeakAs(QWidget* stockWidget);

  // These tell a screen reader, if there is one: of a bar's or a thumb's new value, of a new
  // caption, which may be the value of a thumb, and of widgets that have come or gone.
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
