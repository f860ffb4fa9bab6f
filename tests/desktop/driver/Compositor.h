#pragma once

#include <QProcess>
#include <QTemporaryDir>

#include "desktop/driver/Program.h"
#include "desktop/driver/Screen.h"

namespace kelvane::desktop {

// A Wayland compositor that fills a private display of 1920 by 1200 pixels and hands on its pointer
// and keyboard. It has one output, and shows a program's first window as large as that. It ends
// with the object.
class Compositor {
 public:
  // So many pixels of the screen, across and down, are one unit of the compositor's. Throws
  // std::runtime_error where the compositor doesn't come up.
  Compositor(Screen& screen, const QString& display, int scale);
  Compositor(const Compositor&) = delete;
  Compositor& operator=(const Compositor&) = delete;
  ~Compositor();

  // To be called before the program's start: it shall open its windows here, with no X server in
  // reach.
  void Show(Program& program) const;

  // The window of the display that shows the output.
  WindowId Id() const { return window_; }

 private:
  QString Socket() const { return folder_.filePath(QStringLiteral("socket")); }

  QTemporaryDir folder_;
  QProcess process_;
  WindowId window_ = 0;
};

}  // namespace kelvane::desktop
