#pragma once

#include <QMessageBox>
#include <QString>
#include <QTimer>
#include <deque>
#include <functional>
#include <string>
#include <vector>

class QDialog;

namespace kelvane::testing {

// What the user does with a dialog; must close it.
using Answer = std::function<void(QDialog& dialog)>;

// Types a path into the name's line of a file dialog and accepts it.
Answer TypeFile(const QString& path);
Answer CancelDialog();
Answer PressButton(QMessageBox::StandardButton button);

// Answers the modal dialogs that come up during its life, each with the next answer. The test fails
// if one comes up for which there is no answer left, and if an answer is left at the end. One that
// is made inside another's life answers in its stead.
class DialogAnswers {
 public:
  explicit DialogAnswers(std::initializer_list<Answer> answers);
  DialogAnswers(const DialogAnswers&) = delete;
  DialogAnswers& operator=(const DialogAnswers&) = delete;
  ~DialogAnswers();

  // What came up: "title | text | icon | buttons" of a message box, "title" of a file dialog.
  const std::vector<std::string>& seen() const { return seen_; }
  bool AllGiven() const { return answers_.empty(); }

 private:
  void Look();

  std::deque<Answer> answers_;
  std::vector<std::string> seen_;
  QTimer timer_;
  DialogAnswers* const outer_;
};

}  // namespace kelvane::testing
