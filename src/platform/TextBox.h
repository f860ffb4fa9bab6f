#pragma once

#include "platform/TextControl.h"

class QLineEdit;

namespace kelvane {

// A text that the user may select and copy, and edit if the box is editable. The box stores the
// text and hands it to a QLineEdit only while the box is visible, so that appending to a hidden box
// takes time for the added text only, however long the text in the box is.
class TextBox : public TextControl {
  Q_OBJECT
 public:
  TextBox(Container& container, const QString& name);

  const QString& Text() const { return text_; }
  void setText(const QString& text);
  // Appends `more` to Text.
  void AppendText(const QString& more);

  // Both must be called before the box is first shown.
  void setEditable() { editable_ = true; }
  void setBordered() { bordered_ = true; }

  // Raised when the user or an assignment has changed the text, before the assignment returns.
  std::function<void(int Index)> Change;
  // Raised once for each edit by the user, when Enter is pressed or another control of the window
  // has taken the focus.
  std::function<void(int Index)> EditFinished;

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  void TextChanged();
  void FinishEdit();
  void MakeLineEdit();
  void ShowText();

  QString text_;
  QLineEdit* lineEdit_ = nullptr;
  bool editable_ = false;
  bool bordered_ = false;
  bool edited_ = false;  // by the user, and EditFinished hasn't been raised yet
};

}  // namespace kelvane
