#pragma once

#include <QString>

class QWidget;

namespace kelvane {

// Qt's dialogs that ask for a file. They ask no question about overwriting, add no extension and
// remember nothing from one run of the program to the next.
class CommonDialog {
 public:
  // `window` is the one that waits for the answer.
  explicit CommonDialog(QWidget& window) : window_(window) {}

  // The path of the chosen file. A dialog that is cancelled leaves it as it was.
  QString FileName;
  // Descriptions and their patterns, separated by bars, "MP4 Files (*.mp4)|*.mp4|All|*.*", or a
  // pattern alone. "*.*" and an empty filter let every file through.
  QString Filter;
  // The number of the pair that is selected at first, counted from 1.
  int FilterIndex = 1;
  // The folder that is shown first. If it is empty, that is the folder of the file last chosen, and
  // the user's home folder if there is none.
  QString InitDir;
  // The title of the next dialog alone, which empties it; Qt's default if it is empty.
  QString DialogTitle;

  // Show the dialog and run its event loop until the user answers. Return false if the user
  // cancels.
  bool ShowOpen();
  bool ShowSave();

 private:
  enum class Purpose { kOpen, kSave };
  bool Show(Purpose purpose);

  QWidget& window_;
  QString lastFolder_;
};

}  // namespace kelvane
