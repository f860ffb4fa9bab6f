#pragma once

#include <QIcon>
#include <QString>

namespace kelvane {

class ProgressBar;

// What the window of a crop job needs of the main window, which implements this interface and
// outlives the job's window. Belongs to the user-interface thread.
class MainWindow {
 public:
  virtual ~MainWindow() = default;

  // The main window's progress bar, which follows the job's.
  virtual ProgressBar& JobProgress() = 0;
  virtual void SetTitle(const QString& title) = 0;
  // The path of the loaded video as the main window shows it; empty if there is none.
  virtual QString ShownVideo() const = 0;
  virtual QIcon Icon() const = 0;
};

}  // namespace kelvane
