#pragma once

#include "platform/TextControl.h"

class QLineEdit;

namespace kelvane {

// A text that the user may read and copy, and change where the box is editable. The box holds the
// text itself and shows it in a line of Qt's only while it is visible, so that a hidden box takes a
// text of any length and more of it at the cost of the addition alone.
class TextBox : public TextControl {
  Q_OBJECT
 public:
  TextBox(Container& container, const QString& name);

  const QString& Text() const { return text_; }
  void setText(const QString& text);
  // Text = Text followed by `more`.
  void AppendText(const QString& more);

  // Both must be set before the box is first shown.
  void setEditable() { editable_ = true; }
  void setBordered() { bordered_ = true; }

  // Raised when the text has changed, before the assignment returns.
  std::function<void(int Index)> Change;

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  void TextChanged();
  void MakeLine();
  void ShowText();

  QString text_;
  QLineEdit* line_ = nullptr;
  bool editable_ = false;
  bool bordered_ = false;
};

}  // namespace kelvane
