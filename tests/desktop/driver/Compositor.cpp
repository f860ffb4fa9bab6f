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

using namespace Qt::StringLiterals;

namespace {

// Returns the first of `windows` that has this size, or 0 if none has it.
WindowId WindowOfSize(const Screen& screen, const QList<WindowId>& windows, QSize size) {
  const auto hasSize = [&](WindowId window) { return screen.Place(window).size() == size; };
  const auto found = std::ranges::find_if(windows, hasSize);
  return found == windows.end() ? 0 : *found;
}

}  // namespace

Compositor::Compositor(Screen& screen, const QString& display, const QList<Output>& outputs) {
  const Output& last = outputs.last();
  const bool isSimple = outputs.size() == 1 && last.scale == std::floor(last.scale);
  QStringList command = isSimple ? WestonCommand(last) : SwayCommand(outputs);
  const QList<WindowId> known = screen.Windows();
  QProcessEnvironment environment;
  environment.insert("PATH", "/usr/bin:/bin");
  environment.insert("HOME", folder_.path());
  environment.insert("XDG_RUNTIME_DIR", folder_.path());
  environment.insert("DISPLAY", display);
  process_.setProcessEnvironment(environment);
  process_.setProcessChannelMode(QProcess::MergedChannels);
  GiveToOrdinaryUser(folder_.path());
  process_.setChildProcessModifier([] {
    constexpr int kNotStarted = 127;
    if (!BecomeOrdinaryUser()) _exit(kNotStarted);
    prctl(PR_SET_PDEATHSIG, SIGKILL);
  });
  const QString name = command.takeFirst();
  const auto isShown = [&] {
    const QList<WindowId> windows = screen.Windows();
    window_ = WindowOfSize(screen, windows, last.pixels);
    const bool sized = std::ranges::all_of(outputs, [&](const Output& output) {
      return WindowOfSize(screen, windows, output.pixels) != 0;
    });
    return !Socket().isEmpty() && sized && windows.size() == known.size() + outputs.size();
  };
  // Under load, sway 1.10 may close an output while another one gets its size.
  constexpr int kAttempts = 3;
  for (int attempt = 1; attempt <= kAttempts; ++attempt) {
    process_.start(name, command);
    if (WaitFor(isShown) && HoldsFor(isShown, 300ms)) {
      // The window of another output may cover it.
      screen.Activate(window_);
      return;
    }
    End();
  }
  throw std::runtime_error("no Wayland compositor: " + process_.readAll().toStdString());
}

void Compositor::End() {
  process_.terminate();
  if (process_.waitForFinished(static_cast<int>(kPatience.count()))) return;
  process_.kill();
  process_.waitForFinished();
}

bool Compositor::CloseWindow() const {
  const QDir folder(folder_.path());
  const QStringList sockets = folder.entryList({"sway-ipc.*"}, QDir::System);
  if (sockets.isEmpty()) return false;
  QProcess::execute("swaymsg",
                    {"--socket", folder.filePath(sockets.first()), "[app_id=\"kelvane.*\"] kill"});
  return true;
}

QStringList Compositor::WestonCommand(const Output& output) const {
  const QSize units = output.pixels / output.scale;
  Configure(u"[output]\nname=X1\nmode=%1x%2\nscale=%3\n"_s.arg(units.width())
                .arg(units.height())
                .arg(output.scale));
  return {"weston",
          "--backend=x11-backend.so",
          "--use-pixman",
          "--config=" + ConfigFile(),
          "--shell=kiosk-shell.so",
          "--idle-time=0"};
}

QStringList Compositor::SwayCommand(const QList<Output>& outputs) const {
  QString lines =
      u"default_border none\nxwayland disable\n"
      "workspace last output X11-%1\nassign [app_id=\"kelvane.*\"] last\n"_s.arg(outputs.size());
  for (qsizetype i = 0; i < outputs.size(); ++i) {
    lines += u"output X11-%1 mode %2x%3 scale %4\n"_s.arg(i + 1)
                 .arg(outputs[i].pixels.width())
                 .arg(outputs[i].pixels.height())
                 .arg(outputs[i].scale);
  }
  Configure(lines);
  return {"env",
          "WLR_BACKENDS=x11",
          u"WLR_X11_OUTPUTS=%1"_s.arg(outputs.size()),
          "WLR_RENDERER=pixman",
          "sway",
          "--config",
          ConfigFile()};
}

void Compositor::Configure(const QString& lines) const {
  const QByteArray settings = lines.toUtf8();
  QFile file(ConfigFile());
  if (!file.open(QIODevice::WriteOnly) || file.write(settings) != settings.size()) {
    throw std::runtime_error("the configuration of the Wayland compositor can't be written");
  }
}

QString Compositor::Socket() const {
  const QDir folder(folder_.path());
  const QStringList sockets = folder.entryList({"wayland-?"}, QDir::System);
  return sockets.isEmpty() ? QString() : folder.filePath(sockets.first());
}

void Compositor::UseFor(Program& program) const {
  program.SetVariable("WAYLAND_DISPLAY", Socket());
  program.SetVariable("DISPLAY", QString());
  // Qt doesn't free all objects of its connection to the compositor.
  program.AllowLeaks();
}

}  // namespace kelvane::desktop
