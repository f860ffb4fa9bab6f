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
  // Pairs of a description and a pattern, as in "MP4 Files (*.mp4)|*.mp4|All|*.*", or a single
  // pattern. "*.*" and an empty filter show every file.
  QString Filter;
  // The number of the pair that is selected at first, counted from 1. The dialog doesn't change it.
  int FilterIndex = 1;
  // The folder that is shown first. An empty path stands for the folder of the file last chosen in
  // any dialog of the program. If no such folder exists, the user's home folder is shown.
  QString InitDir;
  // The title of the next dialog alone: showing the dialog clears it. Empty for Qt's default title.
  QString DialogTitle;
  // Returns what ShowSave's dialog says about `path` in a line below the name; empty for nothing.
  // Called at each change of the name, the folder or the files listed, with the path that the
  // dialog would return, unless the name is empty or the path is that of a folder. If Qt drops
  // double quotes from the typed name, the line also says so and what remains. Without a function
  // there is no such line.
  std::function<QString(const QString& path)> Remark;
  // Whether ShowSave asks before it accepts a file that exists.
  bool OverwritePrompt = false;

  // Show the dialog and run its event loop until the user answers. Return false if the user
  // cancels. ShowOpen accepts only a file that exists.
  bool ShowOpen();
  bool ShowSave();

  // Calls `command`. The first call of ShowOpen in it shows nothing and takes `file`, an absolute
  // path, as if the user had chosen this file in the dialog.
  void RunWithFile(const QString& file, const std::function<void()>& command);

 private:
  enum class Purpose { kOpen, kSave };
  bool Show(Purpose purpose);
  void Take(const QString& file);

  QWidget& window_;
  QString chosen_;  // what the next ShowOpen takes; set by RunWithFile
  inline static QString lastFolder_;
};

}  // namespace kelvane
