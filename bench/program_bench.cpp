// A crop in the program against the same command line in a shell, and the program's start against a
// bare player's.
#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

#include "Pairs.h"
#include "desktop/driver/Program.h"
#include "desktop/driver/QtOnDisplay.h"
#include "desktop/driver/Windows.h"
#include "support/Process.h"
#include "support/Videos.h"

namespace {

using namespace kelvane;
using namespace kelvane::bench;
using namespace kelvane::desktop;

// A crop of a clip that is quick to encode, so that there can be many pairs.
class CropBench {
 public:
  CropBench(Screen& screen, const QString& display)
      : screen_(screen), program_(KELVANE_PROGRAM_FOLDER, display), window_(screen), job_(screen) {
    std::puts("making a clip of 60 seconds, 1920 by 1080 pixels");
    Need(RunTool("ffmpeg", {"-v", "error", "-f", "lavfi", "-i",
                            "color=gray:size=1920x1080:rate=25:duration=60", "-pix_fmt", "yuv420p",
                            "-preset", "ultrafast", clip_}),
         "the clip can't be made");
    program_.ReplaceTool("ffmpeg",
                         "date +%s.%N > '" + start_ + "'\n\"$real\" \"$@\"\necho > '" + end_ + "'");
    Need(mkfifo(QFile::encodeName(end_).constData(), S_IRUSR | S_IWUSR) == 0, "there is no pipe");
    ended_ = open(QFile::encodeName(end_).constData(), O_RDWR | O_NONBLOCK | O_CLOEXEC);
    Need(ended_ >= 0, "the pipe doesn't open");
    program_.Start();
    Need(window_.Await(), "the main window doesn't come");
    Need(ChooseFile(screen_, window_, kLoadVideo, clip_), "the clip can't be chosen");
    Need(window_.AwaitVideo(QSize(1920, 1080)), "the clip doesn't load");
  }

  CropBench(const CropBench&) = delete;
  CropBench& operator=(const CropBench&) = delete;
  ~CropBench() { close(ended_); }

  double InProgram() {
    Forget();
    const double begin = Now();
    Need(ChooseFile(screen_, window_, kCropVideo, output_) && job_.Await(), "no job starts");
    // Waits without looking at the screen, which would take processor time from the tool.
    constexpr int kLongest = 300'000;  // ms
    pollfd ended{.fd = ended_, .events = POLLIN, .revents = 0};
    Need(poll(&ended, 1, kLongest) == 1, "the tool doesn't end");
    Need(job_.AwaitEndStatus(), "the job doesn't end");
    const double seconds = Now() - StartOfTool();
    pause_ = StartOfTool() - begin;
    Need(VideoSize(output_) == QSize(1914, 1074), "the file has the wrong size");
    job_.Cancel();
    Need(WaitFor([this] { return !job_.Open(); }), "the job's window doesn't close");
    return seconds;
  }

  // Starts the tool after as long a pause as InProgram does: free memory may meanwhile go back to
  // the host of a virtual machine, which delays the next tool.
  double Bare() {
    Forget();
    std::this_thread::sleep_for(std::chrono::duration<double>(pause_));
    const QString command = QStringLiteral(
                                "'%1' -i '%2' -vf crop=1915:1075:0:0 '%3' 2>&1 < /dev/null "
                                "| cat > /dev/null")
                                .arg(program_.ProgramFolder() + "/ffmpeg", clip_, output_);
    Need(std::system(command.toLocal8Bit().constData()) == 0, "the bare command fails");
    const double seconds = Now() - StartOfTool();
    Need(VideoSize(output_) == QSize(1914, 1074), "the bare file has the wrong size");
    return seconds;
  }

 private:
  void Forget() {
    for (const QString& file : {start_, output_}) QFile::remove(file);
    char earlier = 0;
    while (read(ended_, &earlier, 1) == 1) continue;
  }

  double StartOfTool() const {
    QFile file(start_);
    Need(file.open(QIODevice::ReadOnly), "the tool's start wasn't noted");
    return file.readAll().trimmed().toDouble();
  }

  Screen& screen_;
  Program program_;
  MainWindow window_;
  JobWindow job_;
  QString clip_ = program_.PathOf("clip.mp4");
  QString output_ = program_.PathOf("cropped.mp4");
  QString start_ = program_.PathOf("start");
  QString end_ = program_.PathOf("end");
  int ended_ = -1;    // a named pipe; the tool's script writes to it at its end
  double pause_ = 0;  // seconds from the click on the command to the start of the tool
};

// Returns the seconds from the exec of a program to its first window.
double SecondsToWindow(const Screen& screen, const std::vector<std::string>& command) {
  double seconds = 0;
  {
    const double begin = Now();
    const kelvane::testing::Process program(command, kelvane::testing::Process::Errors::kInOutput);
    while (screen.Windows().isEmpty()) {
      Need(Now() - begin < 20, "no window comes");
      std::this_thread::sleep_for(1ms);
    }
    seconds = Now() - begin;
  }
  Need(WaitFor([&] { return screen.Windows().isEmpty(); }), "the window doesn't go");
  return seconds;
}

// Returns the memory, in megabytes, that the program uses once its window is painted: what it has
// alone and, of each page that it shares with other processes, an equal part.
double MegabytesOfWindow(const Screen& screen, const std::vector<std::string>& command) {
  double kibibytes = 0;
  {
    const kelvane::testing::Process program(command, kelvane::testing::Process::Errors::kInOutput);
    Need(WaitFor([&] { return !screen.Windows().isEmpty(); }), "no window comes");
    (void)screen.Still();
    std::ifstream memory("/proc/" + std::to_string(program.Id()) + "/smaps_rollup");
    for (std::string word; kibibytes == 0 && memory >> word;) {
      if (word == "Pss:") memory >> kibibytes;
    }
  }
  Need(kibibytes > 0, "the memory can't be read");
  Need(WaitFor([&] { return screen.Windows().isEmpty(); }), "the window doesn't go");
  return kibibytes * 1024 / 1e6;
}

void Run() {
  const QTemporaryDir home;
  const std::string folder = home.path().toStdString();
  const PrivateDisplay display(folder);
  const QtOnDisplay qt(display, folder);
  Screen screen(display.Name());

  const auto bare = [&](const std::vector<std::string>& command) {
    std::vector<std::string> line = {"env",
                                     "-i",
                                     "PATH=/usr/bin:/bin",
                                     "HOME=" + folder,
                                     "XDG_RUNTIME_DIR=" + folder,
                                     "LANG=C.UTF-8",
                                     "DISPLAY=" + display.Name(),
                                     "QT_QPA_PLATFORM=xcb"};
    line.insert(line.end(), command.begin(), command.end());
    return line;
  };
  const std::vector<std::string> program = bare({KELVANE_PROGRAM_FOLDER "/kelvane"});
  const std::vector<std::string> player =
      bare({"mpv", "--no-config", "--idle", "--force-window=immediate", "--vo=x11"});
  // Once each, so that the files are in the cache.
  SecondsToWindow(screen, program);
  SecondsToWindow(screen, player);
  constexpr int kStartPairs = 15;
  Compare("exec to first window", kStartPairs, 0.50,
          {"kelvane", [&] { return SecondsToWindow(screen, program); }},
          {"mpv", [&] { return SecondsToWindow(screen, player); }});

  const double ours = MegabytesOfWindow(screen, program);
  const double theirs = MegabytesOfWindow(screen, player);
  std::printf("memory of the empty window: kelvane %.1f MB, mpv %.1f MB\n", ours, theirs);
  ReportVerdict("memory of the empty window: kelvane against mpv", ours / theirs, 0.60);

  CropBench crop(screen, QString::fromStdString(display.Name()));
  constexpr int kCropPairs = 8;
  Compare("a crop of 60 s of 1080p", kCropPairs, 1.02,
          {"in the program", [&] { return crop.InProgram(); }},
          {"bare command", [&] { return crop.Bare(); }}, Counts::kRatioOfTheFastest);
}

}  // namespace

int main() { return ToEnd(Run); }
