#include "platform/DialogLoop.h"

#include <QDialog>
#include <QScopedValueRollback>

namespace kelvane {

namespace {

bool open = false;

}  // namespace

int RunDialog(QDialog& dialog) {
  const QScopedValueRollback scope(open, true);
  return dialog.exec();
}

bool DialogIsOpen() { return open; }

}  // namespace kelvane
