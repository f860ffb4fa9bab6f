#include "platform/TextBox.h"

#include <QLineEdit>
#include <QShowEvent>
#include <utility>

#include "platform/Border.h"
#include "platform/HandlerScope.h"
#include "platform/PixelSized.h"
#include "shared/Colours.h"

namespace kelvane {

TextBox::TextBox(Container& container, const QString& name) : TextControl(container, name) {}

void TextBox::setText(const QString& text) {
  if (text == text_) return;
  text_ = text;
  TextChanged();
}

void TextBox::AppendText(const QString& more) {
  if (more.isEmpty()) return;
  text_ += more;
  TextChanged();
}

void TextBox::TextChanged() {
  if (lineEdit_ != nullptr && isVisible()) ShowText();
  Raise(this, Change, Index());
}

void TextBox::showEvent(QShowEvent* event) {
  TextControl::showEvent(event);
  if (lineEdit_ == nullptr) MakeLineEdit();
  // A window that is restored has kept the text and the selection.
  if (!event->spontaneous()) ShowText();
}

void TextBox::ShowText() {
  const QSignalBlocker silent(lineEdit_);
  lineEdit_->setText(text_);
  lineEdit_->setCursorPosition(0);
  edited_ = false;
}

void TextBox::FinishEdit() {
  if (std::exchange(edited_, false)) Raise(this, EditFinished, Index());
}

void TextBox::MakeLineEdit() {
  lineEdit_ = new PixelSized<QLineEdit>;
  lineEdit_->setReadOnly(!editable_);
  lineEdit_->setFrame(false);
  const int margin = bordered_ ? Border::kWidth : 0;
  lineEdit_->setTextMargins(margin, 0, margin, 0);
  lineEdit_->setFocusPolicy(Qt::ClickFocus);
  lineEdit_->setAcceptDrops(false);  // so that the window gets the drops
  FillWith(lineEdit_);
  lineEdit_->show();
  connect(lineEdit_, &QLineEdit::textChanged, this, [this](const QString& text) {
    // A screen reader can write into a read-only line.
    if (!editable_) return ShowText();
    text_ = text;
    edited_ = true;
    Raise(this, Change, Index());
  });
  connect(lineEdit_, &QLineEdit::returnPressed, this, &TextBox::FinishEdit);
  connect(lineEdit_, &QLineEdit::editingFinished, this, [this] {
    // A window that is deactivated keeps its focus widget, and the edit goes on.
    if (window()->focusWidget() != lineEdit_) FinishEdit();
  });
  if (!bordered_) return;
  auto* border = new Border(*this, kGrey, BackColor());
  border->show();
}

}  // namespace kelvane
