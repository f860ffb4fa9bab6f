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
  const bool plain = outputs.size() == 1 && last.scale == std::floor(last.scale);
  QStringList command = plain ? ForWeston(last) : ForSway(outputs);
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
  // Another output's window may lie over it.
  screen.Activate(window_);
}

Compositor::~Compositor() {
  process_.terminate();
  if (process_.waitForFinished(static_cast<int>(kPatience.count()))) return;
  process_.kill();
  process_.waitForFinished();
}

QStringList Compositor::ForWeston(const Output& output) const {
  const QSize units = output.pixels / output.scale;
  Configure(QStringLiteral("[output]\nname=X1\nmode=%1x%2\nscale=%3\n")
                .arg(units.width())
                .arg(units.height())
                .arg(output.scale));
  return {"weston",
          "--backend=x11-backend.so",
          "--use-pixman",
          "--config=" + ConfigFile(),
          "--shell=kiosk-shell.so",
          "--idle-time=0"};
}

QStringList Compositor::ForSway(const QList<Output>& outputs) const {
  QString lines = QStringLiteral(
                      "default_border none\nxwayland disable\n"
                      "workspace last output X11-%1\nassign [app_id=\"kelvane.*\"] last\n")
                      .arg(outputs.size());
  for (qsizetype i = 0; i < outputs.size(); ++i) {
    lines += QStringLiteral("output X11-%1 mode %2x%3 scale %4\n")
                 .arg(i + 1)
                 .arg(outputs[i].pixels.width())
                 .arg(outputs[i].pixels.height())
                 .arg(outputs[i].scale);
  }
  Configure(lines);
  return {"env",
          "WLR_BACKENDS=x11",
          QStringLiteral("WLR_X11_OUTPUTS=%1").arg(outputs.size()),
          "WLR_RENDERER=pixman",
          "sway",
          "--config",
          ConfigFile()};
}

void Compositor::Configure(const QString& lines) const {
  const QByteArray settings = lines.toUtf8();
  QFile file(ConfigFile());
  if (!file.open(QIODevice::WriteOnly) || file.write(settings) != settings.size()) {
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
