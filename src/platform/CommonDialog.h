#pragma once

#include <QString>

class QWidget;

namespace kelvane {

// Qt's dialogs that ask for a file. They ask no question about overwriting, add no
// extension and remember nothing from one run of the program to the next.
class CommonDialog {
 public:
  // `window` is the one that waits for the answer.
  explicit CommonDialog(QWidget& window) : window_(window) {}

  // Empty after a dialog that was cancelled, where it was emptied before.
  QString FileName;
  // Pairs of a description and its pattern with bars between, "MP4 Files (*.mp4)|*.mp4|All|*.*", or
  // a pattern alone. "*.*" stands for every file, and so does no filter.
  QString Filter;
  // Of the pair to begin with, counted from 1.
  int FilterIndex = 1;
  // Where to begin: the folder of the file last chosen if empty, and the user's home folder if
  // there is none.
  QString InitDir;
  // The title of the next dialog alone; Qt's default if empty.
  QString DialogTitle;

  // Return false, with FileName as it was, if the user cancels.
  bool ShowOpen();
  bool ShowSave();

 private:
  enum class Purpose { kOpen, kSave };
  bool Show(Purpose purpose);

  QWidget& window_;
  QString lastFolder_;
};

}  // namespace kelvane
