#pragma once

#include <QObject>
#include <functional>

class QAction;
class QMenu;
class QMenuBar;

namespace kelvane {

// A title of the menu bar, or an item under one. The menu bar owns it.
class Menu : public QObject {
  Q_OBJECT
 public:
  // Adds a title to the bar.
  Menu(QMenuBar& bar, const QString& name, const QString& caption);
  // Adds an item to `title`, which must be a title.
  Menu(Menu& title, const QString& name, const QString& caption);

  QString Caption() const;
  bool Visible() const;
  void setVisible(bool visible);

  // Opens the menu of a title, even a hidden one, at the pointer and returns at once. Must not be
  // called for an item.
  void PopUp() const;

  std::function<void()> Click;

 private:
  QMenu* menu_ = nullptr;  // null for an item
  QAction* action_;
};

}  // namespace kelvane
