#pragma once

#include <QString>
#include <functional>

class QWidget;

namespace kelvane {

// Qt's dialogs that ask for a file, with the user's own folders beside the list. They add no
// extension and remember nothing from one run of the program to the next. Belongs to the
// user-interface thread.
class CommonDialog {
 public:
  // `window` is the parent of the dialogs and must outlive this object.
  explicit CommonDialog(QWidget& window) : window_(window) {}

  // The absolute path of the chosen file. A dialog that is cancelled leaves it unchanged.
  QString FileName;
  // Pairs of a description and a pattern, separated by "|", "MP4 Files (*.mp4)|*.mp4|All|*.*", or
  // a single pattern. "*.*" and an empty filter show every file.
  QString Filter;
  // The number of the pair that is selected at first, counted from 1. The dialog doesn't change it.
  int FilterIndex = 1;
  // The folder that is shown first; if it is empty, that of the file last chosen in any dialog of
  // the program. If there is no such folder, the user's home folder is shown.
  QString InitDir;
  // The title of the next dialog, which clears it; Qt's default if it is empty.
  QString DialogTitle;
  // What ShowSave's dialog says in a line below the name; empty for nothing. It is asked for at
  // each change of the name or the folder, with the path that the dialog would return, unless that
  // is a folder's. If double quotes were typed, the line ends with what path is left. Null for no
  // such line.
  std::function<QString(const QString& path)> Remark;
  // Whether ShowSave asks before it accepts a file that exists.
  bool OverwritePrompt = false;

  // Show the dialog and run its event loop until the user answers. Return false if the user
  // cancels. ShowOpen accepts only a file that exists.
  bool ShowOpen();
  bool ShowSave();

  // Calls `command`, whose first ShowOpen shows nothing and takes `file`, an absolute path, as if
  // the user had chosen it there.
  void Choose(const QString& file, const std::function<void()>& command);

 private:
  enum class Purpose { kOpen, kSave };
  bool Show(Purpose purpose);
  void Take(const QString& file);

  QWidget& window_;
  QString chosen_;  // by Choose
  inline static QString lastFolder_;
};

}  // namespace kelvane
