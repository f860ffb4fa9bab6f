#include "platform/MsgBox.h"

#include <QApplication>
#include <QMessageBox>

#include "platform/App.h"
#include "platform/DialogLoop.h"
#include "shared/TextHelpers.h"

namespace kelvane {

MsgBoxResult MsgBox(const QString& text, int buttons, const QString& title) {
  constexpr int kButtonSet = 0xF;
  QMessageBox box(QApplication::activeWindow());
  box.setWindowTitle(title.isEmpty() ? App::Title() : title);
  box.setTextFormat(Qt::PlainText);
  box.setText(text);
  if ((buttons & kExclamation) != 0) box.setIcon(QMessageBox::Warning);
  if ((buttons & kButtonSet) == kYesNoCancel) {
    box.setStandardButtons(QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
  } else if ((buttons & kButtonSet) == kOKCancel) {
    box.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel);
  } else {
    box.setStandardButtons(QMessageBox::Ok);
  }
  // The default is OK or Yes, in whatever order the desktop shows the buttons.
  box.setDefaultButton(box.button(QMessageBox::Ok) != nullptr ? QMessageBox::Ok : QMessageBox::Yes);
  switch (RunDialog(box)) {
    case QMessageBox::Yes:
      return MsgBoxResult::kYes;
    case QMessageBox::No:
      return MsgBoxResult::kNo;
    case QMessageBox::Cancel:
      return MsgBoxResult::kCancel;
    default:
      return MsgBoxResult::kOK;
  }
}

void ShowErrorMessage(const std::string& text, const std::string& title) {
  MsgBox(FromNarrow(text), kExclamation, FromNarrow(title));
}

}  // namespace kelvane
