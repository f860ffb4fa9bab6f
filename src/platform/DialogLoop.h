#pragma once

class QDialog;

namespace kelvane {

// Shows the dialog, runs its event loop until the user answers, and returns its result code. For
// the user-interface thread.
int RunDialog(QDialog& dialog);

// Whether a dialog or message box of the program is open. One counts as open until RunDialog
// returns, which may still process events after the answer. For the user-interface thread.
bool DialogIsOpen();

}  // namespace kelvane
