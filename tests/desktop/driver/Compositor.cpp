#include "desktop/driver/Compositor.h"

#include <sys/prctl.h>

#include <QFile>
#include <QFileInfo>
#include <QProcessEnvironment>
#include <algorithm>
#include <csignal>
#include <stdexcept>

namespace kelvane::desktop {
namespace {

// The window that shows an output of this size; 0 where there is none. Its frame isn't counted.
WindowId Showing(const Screen& screen, const QList<WindowId>& windows, QSize size) {
  const auto shows = [&](WindowId window) { return screen.Place(window).size() == size; };
  const auto found = std::ranges::find_if(windows, shows);
  return found == windows.end() ? 0 : *found;
}

}  // namespace

Compositor::Compositor(Screen& screen, const QString& display, const QList<Output>& outputs) {
  Configure(outputs);
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
                 {"--backend=x11-backend.so", "--use-pixman", "--config=" + ConfigFile(),
                  "--shell=kiosk-shell.so", "--idle-time=0", "--socket=socket",
                  QStringLiteral("--output-count=%1").arg(outputs.size())});
  const bool shown = WaitFor([&] {
    const QList<WindowId> windows = screen.Windows();
    window_ = Showing(screen, windows, outputs.last().pixels);
    return QFileInfo::exists(Socket()) && window_ != 0 &&
           windows.size() == known.size() + outputs.size();
  });
  if (!shown) {
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

void Compositor::Configure(const QList<Output>& outputs) const {
  QByteArray lines;
  for (qsizetype i = 0; i < outputs.size(); ++i) {
    const Output& output = outputs[i];
    lines += QStringLiteral("[output]\nname=X%1\nmode=%2x%3\nscale=%4\n")
                 .arg(i + 1)
                 .arg(output.pixels.width() / output.scale)
                 .arg(output.pixels.height() / output.scale)
                 .arg(output.scale)
                 .toUtf8();
  }
  lines += "app-ids=kelvane,kelvane-joiner,kelvane-sections\n";
  QFile file(ConfigFile());
  if (!file.open(QIODevice::WriteOnly) || file.write(lines) != lines.size()) {
    throw std::runtime_error("no place for the settings of the Wayland compositor");
  }
}

void Compositor::Show(Program& program) const {
  program.SetVariable(QStringLiteral("WAYLAND_DISPLAY"), Socket());
  program.SetVariable(QStringLiteral("DISPLAY"), QString());
}

}  // namespace kelvane::desktop
