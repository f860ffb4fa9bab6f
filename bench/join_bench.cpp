// A join of ten clips in the program, without the second for which the program waits by design,
// against the same command line in a shell.
#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <thread>

#include "Pairs.h"
#include "desktop/driver/JoinerWindow.h"
#include "desktop/driver/Program.h"
#include "desktop/driver/QtOnDisplay.h"
#include "support/Videos.h"

namespace {

using namespace kelvane;
using namespace kelvane::bench;
using namespace kelvane::desktop;

constexpr int kClips = 10;
constexpr int kClipSeconds = 60;

// Makes a clip of a minute and 60 MB, as much as a camera writes. It repeats its first six seconds.
// Returns whether it could be made.
bool MakeCameraClip(const QString& path) {
  const QString round = path + ".round.mp4";
  return RunTool("ffmpeg", {"-v", "error", "-f", "lavfi", "-i",
                            "testsrc2=size=1920x1080:rate=30:duration=6,noise=alls=12:allf=t",
                            "-pix_fmt", "yuv420p", "-preset", "ultrafast", "-b:v", "8M", "-maxrate",
                            "8M", "-bufsize", "8M", round}) &&
         RunTool("ffmpeg", {"-v", "error", "-stream_loop", "9", "-i", round, "-c", "copy", path}) &&
         QFile::remove(round);
}

class JoinBench {
 public:
  JoinBench(Screen& screen, const QString& display)
      : screen_(screen),
        program_(KELVANE_PROGRAM_FOLDER, display, "kelvane-joiner"),
        window_(screen) {
    std::printf("making %d clips of %d seconds, 1920 by 1080 pixels\n", kClips, kClipSeconds);
    const QString first = program_.PathOf("0.mp4");
    Need(MakeCameraClip(first), "the clip can't be made");
    program_.Start();
    Need(window_.Await(), "the joiner window doesn't come");
    for (int clip = 0; clip < kClips; ++clip) {
      const QString path = program_.PathOf(QStringLiteral("%1.mp4").arg(clip));
      Need(path == first || QFile::copy(first, path), "the clip can't be copied");
      Need(window_.ChooseFile(JoinerButton::kAddSection, path), "the clip can't be chosen");
      Need(window_.AwaitSections(clip + 1), "the clip isn't counted");
    }
  }

  // Returns the seconds from the end of the designed wait, a second after the list file is written,
  // to the box at the end.
  double InProgram() {
    QFile::remove(output_);
    QFile::remove(list_);
    const double removed = Now();
    Need(window_.ChooseFile(JoinerButton::kJoinSections, output_), "the join doesn't start");
    constexpr double kLongest = 300;
    // Every look at the screen takes time from the tool.
    while (!screen_.Find("Kelvane")) {
      Need(Now() - removed < kLongest, "the join doesn't end");
      std::this_thread::sleep_for(10ms);
    }
    const double end = Now();
    Need(CloseJoinMessage(screen_), "the box at the end doesn't close");
    CheckOutput();
    constexpr double kDesignedWait = 1;
    const double begin =
        static_cast<double>(QFileInfo(list_).lastModified().toMSecsSinceEpoch()) / 1e3 +
        kDesignedWait;
    pause_ = begin - removed;
    return end - begin;
  }

  // Returns the seconds of the bare command, which starts after as long a pause as the program's:
  // the memory of the removed file may meanwhile go back to the host of a virtual machine, which
  // delays the next tool.
  double Bare() {
    QFile::remove(output_);
    std::this_thread::sleep_for(std::chrono::duration<double>(pause_));
    const QString command =
        QStringLiteral(
            "'%1' -f concat -safe 0 -i '%2' -c copy -y '%3' 2>&1 < /dev/null | cat > /dev/null")
            .arg(program_.ProgramFolder() + "/ffmpeg", list_, output_);
    const double begin = Now();
    Need(std::system(command.toLocal8Bit().constData()) == 0, "the bare command fails");
    const double seconds = Now() - begin;
    CheckOutput();
    return seconds;
  }

 private:
  void CheckOutput() const {
    constexpr double kFrameForEachClip = kClips / 30.0;
    Need(std::abs(VideoSeconds(output_) - kClips * kClipSeconds) <= kFrameForEachClip,
         "the joined file isn't as long as its clips");
  }

  Screen& screen_;
  Program program_;
  JoinerWindow window_;
  QString output_ = program_.PathOf("all.mp4");
  QString list_ = program_.ProgramFolder() + "/files.txt";
  double pause_ = 0;  // seconds from the removal of the output to the start of the tool
};

void Run() {
  const QTemporaryDir home;
  const std::string folder = home.path().toStdString();
  const PrivateDisplay display(folder);
  const QtOnDisplay qt(display, folder);
  Screen screen(display.Name());
  JoinBench join(screen, QString::fromStdString(display.Name()));
  // Once each, so that the files are in the cache.
  join.InProgram();
  join.Bare();
  constexpr int kPairs = 15;
  Compare("a join of ten minutes of 1080p", kPairs, 1.02,
          {"in the program", [&] { return join.InProgram(); }},
          {"bare command", [&] { return join.Bare(); }}, Counts::kRatioOfTheFastest);
}

}  // namespace

int main() { return ToEnd(Run); }
