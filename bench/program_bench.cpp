// The whole program against what a user could do without it: a crop against the very same command
// line run bare, and its start against a bare player's. Both sides of a pair run one after the
// other, in alternating order, and each pair gives a ratio.
#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

#include "Pairs.h"
#include "desktop/driver/Program.h"
#include "desktop/driver/QtOnDisplay.h"
#include "desktop/driver/Windows.h"
#include "support/Videos.h"

namespace {

using namespace kelvane;
using namespace kelvane::bench;
using namespace kelvane::desktop;

constexpr const char* kProgramFolder = KELVANE_PROGRAM_FOLDER;

// One crop of a long clip, started by hand in the window and started bare. The tool's script notes
// the moment at which it starts. A clip that is quick to encode, so that there can be many pairs:
// the encoder's own time varies by five in a hundred from run to run.
class CropBench {
 public:
  CropBench(Screen& screen, const QString& display)
      : screen_(screen), program_(kProgramFolder, display), window_(screen), job_(screen) {
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
    // To look at the screen, or for a file, would cost time that the tool would miss.
    constexpr int kLongest = 300'000;  // ms
    pollfd ended{.fd = ended_, .events = POLLIN, .revents = 0};
    Need(poll(&ended, 1, kLongest) == 1, "the tool doesn't end");
    Need(job_.AwaitSuccess(), "the job doesn't end");
    const double seconds = Now() - StartOfTool();
    pause_ = StartOfTool() - begin;
    Need(VideoSize(output_) == QSize(1914, 1074), "the file has the wrong size");
    job_.Cancel();
    Need(WaitFor([this] { return !job_.Open(); }), "the job's window doesn't close");
    return seconds;
  }

  // After the pause that the program takes. Memory that lies free for some seconds may go back to
  // the machine's host, and a tool that starts then has to wait until it has it again.
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
    while (read(ended_, &earlier, 1) == 1) {
    }
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
  int ended_ = -1;    // a pipe into which the tool's script writes at its end
  double pause_ = 0;  // from the click on the command to the start of the tool, in seconds
};

// From exec to the first window on the screen.
class StartBench {
 public:
  StartBench(const std::string& display, std::string home)
      : display_(display),
        home_(std::move(home)),
        connection_(xcb_connect(display.c_str(), nullptr)) {
    Need(xcb_connection_has_error(connection_) == 0, "the display doesn't answer");
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
    const std::uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection_, root, XCB_CW_EVENT_MASK, &events);
    xcb_flush(connection_);
  }
  StartBench(const StartBench&) = delete;
  StartBench& operator=(const StartBench&) = delete;
  ~StartBench() { xcb_disconnect(connection_); }

  double SecondsToWindow(std::vector<std::string> arguments) {
    std::vector<std::string> environment = {"PATH=/usr/bin:/bin",       "HOME=" + home_,
                                            "XDG_RUNTIME_DIR=" + home_, "LANG=C.UTF-8",
                                            "DISPLAY=" + display_,      "QT_QPA_PLATFORM=xcb"};
    const double begin = Now();
    const pid_t child = fork();
    if (child == 0) {
      setpgid(0, 0);
      if (std::freopen("/dev/null", "r+", stdin) != nullptr) {
        dup2(STDIN_FILENO, STDOUT_FILENO);
        dup2(STDIN_FILENO, STDERR_FILENO);
      }
      execve(arguments.front().c_str(), Pointers(arguments).data(), Pointers(environment).data());
      _exit(127);
    }
    const double seconds = AwaitWindow() - begin;
    kill(-child, SIGKILL);
    waitpid(child, nullptr, 0);
    Need(seconds > 0, "no window comes");
    AwaitQuiet();
    return seconds;
  }

 private:
  static std::vector<char*> Pointers(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (std::string& text : texts) pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
  }

  // The moment at which a window of some size was put on the screen; 0 if none is.
  double AwaitWindow() {
    pollfd display{.fd = xcb_get_file_descriptor(connection_), .events = POLLIN, .revents = 0};
    for (;;) {
      while (xcb_generic_event_t* event = xcb_poll_for_event(connection_)) {
        const double moment = IsWindow(*event) ? Now() : 0;
        free(event);
        if (moment > 0) return moment;
      }
      if (poll(&display, 1, static_cast<int>(kPatience.count())) != 1) return 0;
    }
  }

  bool IsWindow(const xcb_generic_event_t& event) {
    constexpr int kNoTypeBit = 0x7f;
    constexpr int kLeastWidth = 100;
    if ((event.response_type & kNoTypeBit) != XCB_MAP_NOTIFY) return false;
    const auto& mapped = reinterpret_cast<const xcb_map_notify_event_t&>(event);
    xcb_get_geometry_reply_t* geometry =
        xcb_get_geometry_reply(connection_, xcb_get_geometry(connection_, mapped.window), nullptr);
    const bool large = geometry != nullptr && geometry->width >= kLeastWidth;
    free(geometry);
    return large;
  }

  // Until the killed program's windows are gone.
  void AwaitQuiet() {
    HoldsFor(
        [this] {
          free(xcb_poll_for_event(connection_));
          return true;
        },
        300ms);
  }

  std::string display_;
  std::string home_;
  xcb_connection_t* connection_;
};

void Run() {
  const QTemporaryDir home;
  const std::string folder = home.path().toStdString();
  const PrivateDisplay display(folder);
  const QtOnDisplay qt(display, folder);

  StartBench start(display.Name(), folder);
  const std::string program = std::string(kProgramFolder) + "/kelvane";
  const std::vector<std::string> player = {"/usr/bin/mpv", "--no-config", "--idle",
                                           "--force-window=immediate", "--vo=x11"};
  // Once each, so that neither pays for reading the disk.
  start.SecondsToWindow({program});
  start.SecondsToWindow(player);
  constexpr int kStartPairs = 15;
  Compare("exec to first window", kStartPairs, 1.00,
          {"kelvane", [&] { return start.SecondsToWindow({program}); }},
          {"mpv", [&] { return start.SecondsToWindow(player); }});

  Screen screen(display.Name());
  CropBench crop(screen, QString::fromStdString(display.Name()));
  constexpr int kCropPairs = 8;
  CompareFastest("a crop of 60 s of 1080p", kCropPairs, 1.02,
                 {"in the program", [&] { return crop.InProgram(); }},
                 {"bare command", [&] { return crop.Bare(); }});
}

}  // namespace

int main() { return ToEnd(Run); }
