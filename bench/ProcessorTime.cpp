#include "ProcessorTime.h"

#include <unistd.h>

#include <QFile>
#include <QProcess>
#include <thread>

#include "Pairs.h"
#include "desktop/driver/Program.h"
#include "desktop/driver/Wait.h"
#include "desktop/driver/Windows.h"

namespace kelvane::bench {
namespace {

using namespace desktop;

// Of all threads of a process, user's and system's, in seconds.
double ProcessorTime(qint64 process) {
  QFile file(QStringLiteral("/proc/%1/stat").arg(process));
  Need(file.open(QIODevice::ReadOnly), "the process isn't there");
  // What follows the name in its brackets begins with the third field.
  const QByteArray line = file.readAll();
  const QList<QByteArray> fields = line.mid(line.lastIndexOf(')') + 2).split(' ');
  constexpr int kUserTime = 14 - 3;
  constexpr int kSystemTime = 15 - 3;
  return static_cast<double>(fields.at(kUserTime).toLongLong() +
                             fields.at(kSystemTime).toLongLong()) /
         static_cast<double>(sysconf(_SC_CLK_TCK));
}

double TenSecondsOf(qint64 process) {
  std::this_thread::sleep_for(1s);
  const double before = ProcessorTime(process);
  std::this_thread::sleep_for(10s);
  return ProcessorTime(process) - before;
}

}  // namespace

double ProcessorTimeInProgram(Screen& screen, const QString& display, const QString& clip,
                              QSize size) {
  Program program(QStringLiteral(KELVANE_PROGRAM_FOLDER), display);
  MainWindow window(screen);
  program.Start();
  Need(window.Await(), "the main window doesn't come");
  Need(ChooseFile(screen, window, kLoadVideo, clip), "the clip can't be chosen");
  Need(window.AwaitVideo(size) && window.AwaitCanvas(), "the clip doesn't load");
  window.Click(kRunVideo);
  Need(WaitFor([&] { return Colours(window.Inside(QSize(160, 120))) > 1; }), "no picture comes");
  const double seconds = TenSecondsOf(program.Id());
  screen.Close(window.Id());
  Need(program.AwaitExit() == 0, "the program doesn't end cleanly");
  return seconds;
}

double ProcessorTimeOfPlayer(Screen& screen, const QString& display, const QString& clip) {
  QProcess player;
  QProcessEnvironment environment;
  environment.insert(QStringLiteral("PATH"), QStringLiteral("/usr/bin:/bin"));
  environment.insert(QStringLiteral("HOME"), QStringLiteral("/nonexistent"));
  environment.insert(QStringLiteral("LANG"), QStringLiteral("C.UTF-8"));
  environment.insert(QStringLiteral("DISPLAY"), display);
  player.setProcessEnvironment(environment);
  player.setStandardInputFile(QProcess::nullDevice());
  player.setStandardOutputFile(QProcess::nullDevice());
  player.setStandardErrorFile(QProcess::nullDevice());
  player.start(QStringLiteral("mpv"),
               {"--no-config", "--vo=x11", "--video-unscaled=yes", "--hwdec=no", clip});
  const WindowId window = screen.AwaitNew({});
  Need(window != 0, "the player's window doesn't come");
  const QRect corner(screen.Place(window).topLeft(), QSize(160, 120));
  Need(WaitFor([&] { return Colours(screen.Picture(corner)) > 1; }), "no picture comes");
  const double seconds = TenSecondsOf(player.processId());
  player.kill();
  player.waitForFinished();
  Need(WaitFor([&] { return screen.Windows().isEmpty(); }), "the player's window doesn't go");
  return seconds;
}

}  // namespace kelvane::bench
