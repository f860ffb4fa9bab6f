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
  Menu(QMenuBar& bar, const QString& name, const QString& caption);
  Menu(Menu& title, const QString& name, const QString& caption);

  QString Caption() const;
  bool Visible() const;
  void setVisible(bool visible);

  // Opens the items of a title, which may be hidden, at the pointer, and returns at once.
  void PopUp() const;

  std::function<void()> Click;

 private:
  QMenu* menu_ = nullptr;  // of a title
  QAction* action_;
};

}  // namespace kelvane
