#pragma once

class QDialog;

namespace kelvane {

// Shows the dialog, serves events until the user answers it, and returns its result code.
int RunDialog(QDialog& dialog);

// Whether a dialog or message box of the program is open. One counts as open until RunDialog
// returns: events may still be served after the answer, before the code that asked goes on.
bool DialogIsOpen();

}  // namespace kelvane
