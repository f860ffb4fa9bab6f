#include "platform/Menu.h"

#include <QAction>
#include <QCursor>
#include <QMenu>
#include <QMenuBar>

#include "platform/HandlerScope.h"

namespace kelvane {

Menu::Menu(QMenuBar& bar, const QString& name, const QString& caption)
    : QObject(&bar), menu_(bar.addMenu(caption)), action_(menu_->menuAction()) {
  setObjectName(name);
}

Menu::Menu(Menu& title, const QString& name, const QString& caption)
    : QObject(title.parent()), action_(title.menu_->addAction(caption)) {
  setObjectName(name);
  connect(action_, &QAction::triggered, this, [this] { Raise(this, Click); });
}

QString Menu::Caption() const { return action_->text(); }

bool Menu::Visible() const { return action_->isVisible(); }

void Menu::setVisible(bool visible) { action_->setVisible(visible); }

void Menu::PopUp() const { menu_->popup(QCursor::pos()); }

}  // namespace kelvane
