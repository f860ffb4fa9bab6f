#include "platform/TextBox.h"

#include <QLineEdit>
#include <QShowEvent>

#include "platform/Border.h"
#include "platform/HandlerScope.h"
#include "platform/PixelSized.h"

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
  if (line_ != nullptr && isVisible()) ShowText();
  Raise(this, Change, Index());
}

void TextBox::showEvent(QShowEvent* event) {
  TextControl::showEvent(event);
  if (line_ == nullptr) MakeLine();
  // A window that comes back has kept its lines, and what is selected in them.
  if (!event->spontaneous()) ShowText();
}

void TextBox::ShowText() {
  const QSignalBlocker silent(line_);
  line_->setText(text_);
  line_->setCursorPosition(0);
}

void TextBox::MakeLine() {
  line_ = new PixelSized<QLineEdit>;
  line_->setReadOnly(!editable_);
  line_->setFrame(false);
  const int margin = bordered_ ? Border::kWidth : 0;
  line_->setTextMargins(margin, 0, margin, 0);
  line_->setFocusPolicy(Qt::ClickFocus);
  FillWith(line_);
  line_->show();
  connect(line_, &QLineEdit::textChanged, this, [this](const QString& text) {
    // A screen reader writes where the keyboard can't.
    if (!editable_) return ShowText();
    text_ = text;
    Raise(this, Change, Index());
  });
  if (!bordered_) return;
  auto* border = new Border(*this, BackColor());
  border->show();
}

}  // namespace kelvane
