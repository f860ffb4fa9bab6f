#pragma once

#include <QIcon>
#include <QString>

namespace kelvane {

class ProgressBar;

// The interface of the main window to the job's window. It lives as long as the main window, and
// belongs to the user-interface thread.
class MainWindow {
 public:
  virtual ~MainWindow() = default;

  // The second progress bar, which follows the job window's.
  virtual ProgressBar& JobProgress() = 0;
  virtual void SetTitle(const QString& title) = 0;
  // The path of the loaded video as the main window shows it; empty if there is none.
  virtual QString ShownVideo() const = 0;
  virtual QIcon Icon() const = 0;
};

}  // namespace kelvane
