#pragma once

#include <QString>
#include <string>

namespace kelvane {

// Which buttons and icon a message box has; sums of these.
enum MsgBoxButtons : int { kOKOnly = 0, kOKCancel = 1, kYesNoCancel = 3, kExclamation = 48 };

enum class MsgBoxResult { kOK = 1, kCancel = 2, kYes = 6, kNo = 7 };

// Shows a message box in front of the active window and runs its event loop until the user answers.
// Closing the box is Cancel if it has such a button. An empty title stands for App::Title.
MsgBoxResult MsgBox(const QString& text, int buttons = kOKOnly, const QString& title = {});

// Shows a message box with an exclamation icon and an OK button. The texts are in the system's
// narrow encoding.
void ShowErrorMessage(const std::string& text, const std::string& title);

}  // namespace kelvane
