#pragma once

#include <QIcon>
#include <QString>

namespace kelvane {

class ProgressBar;

// What the job window needs of the main window.
class MainWindow {
 public:
  virtual ~MainWindow() = default;

  // The second progress bar, which follows the job window's.
  virtual ProgressBar& JobProgress() = 0;
  virtual void SetTitle(const QString& title) = 0;
  // The path of the loaded video as it is on show; empty if there is none.
  virtual QString ShownVideo() const = 0;
  virtual QIcon Icon() const = 0;
};

}  // namespace kelvane
