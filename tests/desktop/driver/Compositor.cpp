#include "desktop/driver/Compositor.h"

#include <sys/prctl.h>

#include <QFileInfo>
#include <QProcessEnvironment>
#include <csignal>
#include <stdexcept>

namespace kelvane::desktop {

Compositor::Compositor(Screen& screen, const QString& display, int scale) {
  constexpr QSize kDisplay(1920, 1200);
  const QList<WindowId> known = screen.Windows();
  QProcessEnvironment environment;
  environment.insert(QStringLiteral("PATH"), QStringLiteral("/usr/bin:/bin"));
  environment.insert(QStringLiteral("HOME"), folder_.path());
  environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), folder_.path());
  environment.insert(QStringLiteral("DISPLAY"), display);
  process_.setProcessEnvironment(environment);
  process_.setProcessChannelMode(QProcess::MergedChannels);
  process_.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
  process_.start(QStringLiteral("weston"),
                 {"--backend=x11-backend.so", "--use-pixman", "--no-config",
                  "--shell=kiosk-shell.so", "--fullscreen", "--idle-time=0", "--socket=socket",
                  QStringLiteral("--width=%1").arg(kDisplay.width() / scale),
                  QStringLiteral("--height=%1").arg(kDisplay.height() / scale),
                  QStringLiteral("--scale=%1").arg(scale)});
  window_ = screen.AwaitNew(known);
  const bool fills = WaitFor([&] {
    return QFileInfo::exists(Socket()) && window_ != 0 &&
           screen.Place(window_) == QRect(QPoint(), kDisplay);
  });
  if (!fills) {
    process_.kill();
    process_.waitForFinished();
    throw std::runtime_error("no Wayland compositor: " + process_.readAll().toStdString());
  }
}

Compositor::~Compositor() {
  process_.terminate();
  if (process_.waitForFinished(static_cast<int>(kPatience.count()))) return;
  process_.kill();
  process_.waitForFinished();
}

void Compositor::Show(Program& program) const {
  program.SetVariable(QStringLiteral("WAYLAND_DISPLAY"), Socket());
  program.SetVariable(QStringLiteral("DISPLAY"), QString());
}

}  // namespace kelvane::desktop
