#pragma once

#include <QList>
#include <QProcess>
#include <QSize>
#include <QTemporaryDir>

#include "desktop/driver/Program.h"
#include "desktop/driver/Screen.h"

namespace kelvane::desktop {

struct Output {
  QSize pixels;
  double scale;  // pixels per logical pixel
};

// A Wayland compositor that shows each of its outputs in a window of a private X display, and
// passes on that display's pointer and keyboard events. A program's first window fills the last
// output. The compositor is weston for one output of a whole scale, and sway otherwise. It ends
// with the object.
class Compositor {
 public:
  // No two outputs may have the same size. Throws std::runtime_error if the compositor doesn't
  // start.
  Compositor(Screen& screen, const QString& display, const QList<Output>& outputs);
  Compositor(const Compositor&) = delete;
  Compositor& operator=(const Compositor&) = delete;
  ~Compositor() { End(); }

  // Makes the program open its windows on this compositor. To be called before the program's start.
  void UseFor(Program& program) const;

  // Asks the program to close its windows. Returns false under weston, which can't.
  bool CloseWindow() const;

  // The window of the X display that shows the last output.
  WindowId LastOutput() const { return window_; }

 private:
  void End();
  // Each writes the configuration file and returns the command.
  QStringList WestonCommand(const Output& output) const;
  QStringList SwayCommand(const QList<Output>& outputs) const;
  void Configure(const QString& lines) const;
  QString Socket() const;
  QString ConfigFile() const { return folder_.filePath("settings"); }

  QTemporaryDir folder_;
  QProcess process_;
  WindowId window_ = 0;
};

}  // namespace kelvane::desktop
