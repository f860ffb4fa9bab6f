#pragma once

#include <QString>
#include <string>

namespace kelvane {

// The buttons of a message box; kExclamation, a warning icon, can be added.
enum MsgBoxButtons : int { kOKOnly = 0, kOKCancel = 1, kYesNoCancel = 3, kExclamation = 48 };

enum class MsgBoxResult { kOK = 1, kCancel = 2, kYes = 6, kNo = 7 };

// Shows a message box in front of the active window and runs its event loop until the user answers.
// Closing the box answers Cancel, or OK if it has no Cancel button. An empty title stands for
// App::Title. For the user-interface thread.
MsgBoxResult MsgBox(const QString& text, int buttons = kOKOnly, const QString& title = {});

// Does the same with a warning icon and an OK button. The texts are UTF-8.
void ShowErrorMessage(const std::string& text, const std::string& title);

}  // namespace kelvane
