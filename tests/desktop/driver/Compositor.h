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
  double scale;  // pixels, across and down, to a unit of the compositor's
};

// A Wayland compositor that shows its outputs as windows of a private display, side by side, and
// hands on its pointer and keyboard. It makes a program's first window as large as the last output
// and shows it there. It ends with the object. One output of a whole scale is weston's, all else is
// sway's.
class Compositor {
 public:
  // No two outputs are of one size. Throws std::runtime_error where the compositor doesn't come up.
  Compositor(Screen& screen, const QString& display, const QList<Output>& outputs);
  Compositor(const Compositor&) = delete;
  Compositor& operator=(const Compositor&) = delete;
  ~Compositor();

  // To be called before the program's start: it shall open its windows here, with no X server in
  // reach.
  void Show(Program& program) const;

  // The window of the display that shows the last output.
  WindowId Id() const { return window_; }

 private:
  // Each prepares its settings and returns the command.
  QStringList ForWeston(const Output& output) const;
  QStringList ForSway(const QList<Output>& outputs) const;
  void Configure(const QString& lines) const;
  QString Socket() const;
  QString ConfigFile() const { return folder_.filePath(QStringLiteral("settings")); }

  QTemporaryDir folder_;
  QProcess process_;
  WindowId window_ = 0;
};

}  // namespace kelvane::desktop
