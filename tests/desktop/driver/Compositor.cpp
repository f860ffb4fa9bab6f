#include "desktop/driver/Compositor.h"

#include <sys/prctl.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QProcessEnvironment>
#include <algorithm>
#include <cmath>
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
  const Output& last = outputs.last();
  QStringList command =
      last.scale == std::floor(last.scale) ? ForWholeScales(outputs) : ForFractions(last);
  const QList<WindowId> known = screen.Windows();
  QProcessEnvironment environment;
  environment.insert(QStringLiteral("PATH"), QStringLiteral("/usr/bin:/bin"));
  environment.insert(QStringLiteral("HOME"), folder_.path());
  environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), folder_.path());
  environment.insert(QStringLiteral("DISPLAY"), display);
  process_.setProcessEnvironment(environment);
  process_.setProcessChannelMode(QProcess::MergedChannels);
  GiveToOrdinaryUser(folder_.path());
  process_.setChildProcessModifier([] {
    constexpr int kNotStarted = 127;
    if (!BecomeOrdinaryUser()) _exit(kNotStarted);
    prctl(PR_SET_PDEATHSIG, SIGKILL);
  });
  const QString name = command.takeFirst();
  process_.start(name, command);
  const bool shown = WaitFor([&] {
    const QList<WindowId> windows = screen.Windows();
    window_ = Showing(screen, windows, last.pixels);
    return !Socket().isEmpty() && window_ != 0 && windows.size() == known.size() + outputs.size();
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

QStringList Compositor::ForWholeScales(const QList<Output>& outputs) const {
  QByteArray lines;
  for (qsizetype i = 0; i < outputs.size(); ++i) {
    const QSize units = outputs[i].pixels / outputs[i].scale;
    lines += QStringLiteral("[output]\nname=X%1\nmode=%2x%3\nscale=%4\n")
                 .arg(i + 1)
                 .arg(units.width())
                 .arg(units.height())
                 .arg(outputs[i].scale)
                 .toUtf8();
  }
  Configure(lines + "app-ids=kelvane,kelvane-joiner,kelvane-sections\n");
  return {"weston",
          "--backend=x11-backend.so",
          "--use-pixman",
          "--config=" + ConfigFile(),
          "--shell=kiosk-shell.so",
          "--idle-time=0",
          QStringLiteral("--output-count=%1").arg(outputs.size())};
}

QStringList Compositor::ForFractions(const Output& output) const {
  Configure(QStringLiteral("output * mode %1x%2 scale %3\ndefault_border none\nxwayland disable\n")
                .arg(output.pixels.width())
                .arg(output.pixels.height())
                .arg(output.scale)
                .toUtf8());
  return {"env", "WLR_BACKENDS=x11", "WLR_RENDERER=pixman", "sway", "--config", ConfigFile()};
}

void Compositor::Configure(const QByteArray& lines) const {
  QFile file(ConfigFile());
  if (!file.open(QIODevice::WriteOnly) || file.write(lines) != lines.size()) {
    throw std::runtime_error("no place for the settings of the Wayland compositor");
  }
}

QString Compositor::Socket() const {
  const QDir folder(folder_.path());
  const QStringList sockets = folder.entryList({QStringLiteral("wayland-?")}, QDir::System);
  return sockets.isEmpty() ? QString() : folder.filePath(sockets.first());
}

void Compositor::Show(Program& program) const {
  program.SetVariable(QStringLiteral("WAYLAND_DISPLAY"), Socket());
  program.SetVariable(QStringLiteral("DISPLAY"), QString());
}

}  // namespace kelvane::desktop
