#include "platform/DialogLoop.h"

#include <QDialog>
#include <QScopedValueRollback>

namespace kelvane {

namespace {

bool dialogOpen = false;

}  // namespace

int RunDialog(QDialog& dialog) {
  const QScopedValueRollback scope(dialogOpen, true);
  return dialog.exec();
}

bool DialogIsOpen() { return dialogOpen; }

}  // namespace kelvane
