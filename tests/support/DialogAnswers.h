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

// What the user does with a dialog. An answer must close the dialog.
using Answer = std::function<void(QDialog& dialog)>;

// Types a path into a file dialog and accepts it.
Answer TypeFile(const QString& path);
// Goes to the path's folder and types the name alone, or types the whole path if there is no such
// folder, and accepts the dialog. `remark` takes what the dialog said about the name.
Answer TypeNameInFolder(const QString& path, QString& remark);
Answer CancelDialog();
Answer PressButton(QMessageBox::StandardButton button);

// Answers each modal dialog that opens during its life with the next answer. The test fails if a
// dialog has no answer, or an answer no dialog. If several of these objects exist, only the newest
// answers.
class DialogAnswers {
 public:
  explicit DialogAnswers(std::initializer_list<Answer> answers);
  DialogAnswers(const DialogAnswers&) = delete;
  DialogAnswers& operator=(const DialogAnswers&) = delete;
  ~DialogAnswers();

  // The dialogs so far: "title | text | icon | buttons" of a message box, "title" of any other.
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
