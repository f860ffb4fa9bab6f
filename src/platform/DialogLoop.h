#pragma once

class QDialog;

namespace kelvane {

// Shows the dialog, runs its event loop until the user answers, and returns its result code. For
// the user-interface thread.
int RunDialog(QDialog& dialog);

// Returns whether a dialog or message box of the program is open. It counts as open until RunDialog
// returns, even if events are processed after the answer. For the user-interface thread.
bool DialogIsOpen();

}  // namespace kelvane
