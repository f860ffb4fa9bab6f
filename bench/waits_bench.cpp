// The two waits that a user feels after a choice: from the answer to a dialog to the bars, against
// the probe tools alone, and from Run Video to the first picture, against a player that is already
// running.
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <thread>

#include "Pairs.h"
#include "desktop/driver/Program.h"
#include "desktop/driver/QtOnDisplay.h"
#include "desktop/driver/Windows.h"
#include "media/CommandLines.h"
#include "media/Descriptor.h"
#include "support/Process.h"
#include "support/Videos.h"

namespace {

using namespace kelvane;
using namespace kelvane::bench;
using namespace kelvane::desktop;

constexpr QRgb kClip = 0xff0000;
constexpr QRgb kBar = 0x00ff00;
constexpr const char* kTools = "/usr/bin";

// Waits until the screen shows the colour at that place. Returns the seconds since `begin`.
double SecondsToColour(const Screen& screen, QPoint place, QRgb colour, double begin) {
  constexpr int kTolerance = 24;
  while (!IsNear(screen.Pixel(place), colour, kTolerance)) {
    Need(Now() - begin < 20, "the colour doesn't come");
    std::this_thread::sleep_for(1ms);
  }
  return Now() - begin;
}

// The waits with a clip of one size. Each run starts a program or player of its own.
class Waits {
 public:
  Waits(Screen& screen, const QString& display, QSize size) : screen_(screen), display_(display) {
    Need(RunTool("ffmpeg", {"-v", "error", "-f", "lavfi", "-i",
                            QStringLiteral("color=red:size=%1x%2:rate=25:duration=10")
                                .arg(size.width())
                                .arg(size.height()),
                            "-pix_fmt", "yuv420p", clip_}),
         "the clip can't be made");
  }

  double ToBars() const {
    const Window window(screen_, display_);
    return window.Load(clip_);
  }
  double Probes() const {
    const std::string clip = clip_.toStdString();
    const double begin = Now();
    for (const std::string& line :
         {SizeProbeCommandLine(kTools, clip), DurationProbeCommandLine(kTools, clip)}) {
      (void)std::system((line + " > /dev/null 2>&1 < /dev/null").c_str());
    }
    return Now() - begin;
  }
  double ToPicture() const {
    const Window window(screen_, display_);
    window.Load(clip_);
    return window.Run();
  }
  double ToPlayersPicture() const {
    const std::string socket = folder_.filePath("socket").toStdString();
    double seconds = 0;
    {
      const kelvane::testing::Process player(
          {"env", "DISPLAY=" + display_.toStdString(), "mpv", "--no-config", "--idle",
           "--force-window=immediate", "--vo=x11", "--input-ipc-server=" + socket},
          kelvane::testing::Process::Errors::kInOutput);
      Need(WaitFor([&] { return !screen_.Windows().isEmpty(); }), "no player comes");
      const QRect window = screen_.Place(screen_.Windows().front());
      (void)screen_.Still();
      const Descriptor connection = Connect(socket);
      const std::string command = R"({"command": ["loadfile", ")" + clip_.toStdString() + "\"]}\n";
      const double begin = Now();
      Need(::write(connection.number(), command.data(), command.size()) > 0,
           "mpv takes no command");
      seconds = SecondsToColour(screen_, window.center(), kClip, begin);
    }
    Need(WaitFor([&] { return screen_.Windows().isEmpty(); }), "the player doesn't go");
    return seconds;
  }

 private:
  // The main window of a program of its own.
  class Window {
   public:
    Window(Screen& screen, const QString& display)
        : screen_(screen), program_(KELVANE_PROGRAM_FOLDER, display), window_(screen) {
      program_.Start();
      Need(window_.Await(), "the main window doesn't come");
    }
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;
    ~Window() {
      screen_.Close(window_.Id());
      (void)program_.AwaitExit();
    }
    double Load(const QString& clip) const {
      const QList<WindowId> known = screen_.Windows();
      window_.Click(kLoadVideo);
      const WindowId dialog = screen_.AwaitNew(known);
      Need(WaitFor([&] { return screen_.Active(dialog); }), "no dialog comes");
      screen_.PressKey('a', kControl);
      screen_.Type(clip);
      (void)screen_.Still();
      const double begin = Now();
      screen_.PressKey(kReturn);
      return SecondsToColour(screen_, window_.OnCanvas(QPoint(2, 100)), kBar, begin);
    }
    double Run() const {
      (void)screen_.Still();  // the load goes on after the bars have come
      screen_.MovePointer(window_.Place(MainWindow::NameOf(kRunVideo)).center());
      screen_.Press(kLeftButton);
      const double begin = Now();
      screen_.Release(kLeftButton);
      return SecondsToColour(screen_, window_.OnCanvas(QPoint(100, 100)), kClip, begin);
    }

   private:
    Screen& screen_;
    mutable Program program_;
    mutable MainWindow window_;
  };

  static Descriptor Connect(const std::string& path) {
    Descriptor connection(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    Need(path.size() < sizeof address.sun_path, "the path is too long for a socket");
    std::memcpy(address.sun_path, path.data(), path.size());
    Need(WaitFor([&] {
           return ::connect(connection.number(), reinterpret_cast<const sockaddr*>(&address),
                            sizeof address) == 0;
         }),
         "mpv doesn't listen");
    return connection;
  }

  Screen& screen_;
  QString display_;
  QTemporaryDir folder_;
  QString clip_ = folder_.filePath("clip.mp4");
};

void Run() {
  const QTemporaryDir home;
  const PrivateDisplay display(home.path().toStdString());
  const QtOnDisplay qt(display, home.path().toStdString());
  Screen screen(display.Name());
  constexpr int kPairs = 8;
  for (const QSize size : {QSize(1920, 1080), QSize(3840, 2160)}) {
    Waits waits(screen, QString::fromStdString(display.Name()), size);
    const std::string what = std::to_string(size.width()) + " by " + std::to_string(size.height());
    Compare(what + ": from the dialog's answer to the bars", kPairs, 1.20,
            {"kelvane", [&] { return waits.ToBars(); }},
            {"probes", [&] { return waits.Probes(); }});
    Compare(what + ": from Run Video to the first picture", kPairs, 1.00,
            {"kelvane", [&] { return waits.ToPicture(); }},
            {"mpv", [&] { return waits.ToPlayersPicture(); }});
  }
}

}  // namespace

int main() { return ToEnd(Run); }
