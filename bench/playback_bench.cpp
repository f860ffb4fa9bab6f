// The video beneath the bars. With the main window in this process, on a private display: whether
// every picture is painted, how long the user-interface thread is held, how late a dragged bar is
// painted. With the program: its processor time against a bare player's for the same clip.
#include <xcb/xtest.h>

#include <QApplication>
#include <QBackingStore>
#include <QEvent>
#include <QImage>
#include <QTemporaryDir>
#include <QTimer>
#include <array>
#include <atomic>
#include <clocale>
#include <cstdio>
#include <iterator>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "Pairs.h"
#include "desktop/driver/PrivateDisplay.h"
#include "desktop/driver/Program.h"
#include "desktop/driver/Windows.h"
#include "platform/App.h"
#include "support/Process.h"
#include "support/Videos.h"
#include "workspace/Form1.h"

namespace {

using namespace kelvane;
using namespace kelvane::bench;
using namespace kelvane::desktop;

// The squares in a picture that show its number, one for each binary digit, the lowest first. No
// bar covers them.
constexpr int kDigits = 10;
constexpr int kSquare = 16;
constexpr QPoint kFirstSquare(64, 64);

// Makes a clip without sound whose pictures carry their number. Returns whether it could be made.
bool MakeNumberedClip(const QString& path, QSize size, int rate, int seconds) {
  QString filter = QStringLiteral("testsrc2=size=%1x%2:rate=%3:duration=%4")
                       .arg(size.width())
                       .arg(size.height())
                       .arg(rate)
                       .arg(seconds);
  for (int digit = 0; digit < kDigits; ++digit) {
    const QString box = QStringLiteral(",drawbox=x=%1:y=%2:w=%3:h=%3:t=fill:color=")
                            .arg(kFirstSquare.x() + digit * kSquare)
                            .arg(kFirstSquare.y())
                            .arg(kSquare);
    filter +=
        box + "black" + box + QStringLiteral("white:enable=gt(bitand(n\\,%1)\\,0)").arg(1 << digit);
  }
  return RunTool("ffmpeg", {"-v", "error", "-f", "lavfi", "-i", filter, "-pix_fmt", "yuv420p",
                            "-preset", "ultrafast", path});
}

// An application object that watches its own user-interface thread while the main window plays a
// numbered clip.
class FrameWatch : public QApplication {
 public:
  using QApplication::QApplication;

  // From now on watches this main window, or none if the pointer is null. The window must live
  // until the next call.
  void Watch(const Form* mainWindow);
  // Forgets the holds seen so far.
  void ForgetHolds();

  // The times, in milliseconds, for which the thread was busy from taking up an event until it
  // looked for the next: those in which a new picture was painted or the player had news, and all
  // others.
  const std::vector<double>& PictureHolds() const { return pictureHolds_; }
  const std::vector<double>& OtherHolds() const { return otherHolds_; }
  // The numbers of the pictures painted so far.
  const std::set<int>& Frames() const { return frames_; }
  // When the left bar was painted where it is now, as Now() says; none if it hasn't been.
  std::optional<double> BarPaintedAt() const;

  // Serves events until the condition holds. Sleeps while there are none: a thread that never
  // sleeps would be interrupted by the system in the middle of its work.
  template <typename Condition>
  void ServeUntil(Condition condition) {
    QTimer look;
    look.start(10);
    while (!condition()) processEvents(QEventLoop::WaitForMoreEvents);
  }

  bool notify(QObject* receiver, QEvent* event) override;

 private:
  bool TakeNumber();

  const Form* form_ = nullptr;
  const WindowsMediaPlayer* player_ = nullptr;
  const PictureBox* bar_ = nullptr;
  std::vector<double> pictureHolds_;
  std::vector<double> otherHolds_;
  std::set<int> frames_;
  float barLeft_ = 0;
  double barPaintedAt_ = 0;
  // These are about the event being handled and the events handled inside it.
  int depth_ = 0;
  bool servesPlayer_ = false;
  bool repaints_ = false;
};

void FrameWatch::Watch(const Form* mainWindow) {
  form_ = mainWindow;
  player_ = form_ == nullptr ? nullptr : &form_->Find<WindowsMediaPlayer>("wmp");
  bar_ = form_ == nullptr ? nullptr : &form_->Find<PictureBox>("Picture2(0)");
  frames_.clear();
  ForgetHolds();
}

void FrameWatch::ForgetHolds() {
  pictureHolds_.clear();
  otherHolds_.clear();
}

std::optional<double> FrameWatch::BarPaintedAt() const {
  if (bar_->Left() != barLeft_) return std::nullopt;
  return barPaintedAt_;
}

bool FrameWatch::notify(QObject* receiver, QEvent* event) {
  const QEvent::Type type = event->type();
  const double begin = Now();
  ++depth_;
  const bool handled = QApplication::notify(receiver, event);
  --depth_;
  if (form_ == nullptr) return handled;
  if (type == QEvent::UpdateRequest) repaints_ = true;
  if (type == QEvent::MetaCall && receiver->parent() == player_) servesPlayer_ = true;
  if (type == QEvent::Paint && receiver == player_ && TakeNumber()) servesPlayer_ = true;
  if (depth_ > 0) return handled;
  (servesPlayer_ ? pictureHolds_ : otherHolds_).push_back((Now() - begin) * 1e3);
  if (repaints_ && bar_->Left() != barLeft_) {
    barPaintedAt_ = Now();
    barLeft_ = bar_->Left();
  }
  servesPlayer_ = false;
  repaints_ = false;
  return handled;
}

// Reads the picture's number from the memory of the window. Returns whether the number is new.
bool FrameWatch::TakeNumber() {
  QBackingStore* store = form_->backingStore();
  const auto* window = store == nullptr ? nullptr : dynamic_cast<QImage*>(store->paintDevice());
  if (window == nullptr) return false;
  const QPoint corner = player_->mapTo(form_, QPoint());
  const QPoint first = corner + kFirstSquare + QPoint(kSquare / 2, kSquare / 2);
  int number = 0;
  for (int digit = 0; digit < kDigits; ++digit) {
    constexpr int kHalf = 128;
    const QPoint square = first + QPoint(digit * kSquare, 0);
    if (!window->rect().contains(square)) return false;
    if (qGray(window->pixel(square)) > kHalf) number |= 1 << digit;
  }
  return frames_.insert(number).second;
}

struct Clip {
  const char* name;
  QSize size;
  int rate;
  QString path;
};

constexpr double kOneFrame = 16.7;  // ms, at 60 pictures a second

// The main window while it plays a clip.
class Playback {
 public:
  Playback(FrameWatch& watch, const Clip& clip) : watch_(watch), clip_(clip) {
    form_.Load();
    form_.Show();
    form_.Find<TextBox>("Text1(1)").setText(clip.path);
    form_.Find<PictureBox>("Picture1(2)").setVisible(true);
    form_.findChild<Timer*>("Timer2")->setEnabled(true);
    watch_.Watch(&form_);
    form_.Find<WindowsMediaPlayer>("wmp").setURL(clip.path);
    const double end = Now() + 10;
    watch_.ServeUntil([&] { return watch_.Frames().size() > 1 || Now() >= end; });
    Need(watch_.Frames().size() > 1, "the clip doesn't play");
    Serve(1);  // until the player has found its pace
  }
  Playback(const Playback&) = delete;
  Playback& operator=(const Playback&) = delete;
  ~Playback() {
    watch_.Watch(nullptr);
    form_.Unload();
  }

  void MeasureFrames() {
    constexpr int kSeconds = 10;
    constexpr double kLate = 0.1;  // seconds by which a picture may be late
    watch_.ForgetHolds();
    const int first = *watch_.Frames().rbegin() + 1;
    const int due = clip_.rate * kSeconds;
    Serve(kSeconds + kLate);
    const std::set<int>& frames = watch_.Frames();
    const auto painted = std::distance(frames.lower_bound(first), frames.lower_bound(first + due));
    std::printf("%s at %d for %d s, %d of %d pictures: min, median, max\n", clip_.name, clip_.rate,
                kSeconds, static_cast<int>(painted), due);
    PrintRow("one hold by a picture, ms", watch_.PictureHolds());
    PrintRow("one by anything else, ms", watch_.OtherHolds());
    const std::string clip = std::string(clip_.name) + ": ";
    ReportVerdict(clip + "pictures that never came to the screen",
                  due - static_cast<double>(painted), 0);
    ReportVerdict(clip + "longest hold by a picture", Quantile(watch_.PictureHolds(), 1), kOneFrame,
                  " ms");
    ReportFigure(clip + "longest hold by anything else meanwhile", Quantile(watch_.OtherHolds(), 1),
                 " ms");
  }

  // Drags a bar by 1,000 moves, 500 a second.
  void MeasureMoves(const std::string& display) {
    constexpr int kMoves = 1000;
    constexpr int kSwing = 400;  // pixels to and fro
    // The driver's own pointer makes a pause after each move.
    const std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> connection(
        xcb_connect(display.c_str(), nullptr), &xcb_disconnect);
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection.get())).data->root;
    const auto send = [&](std::uint8_t type, std::uint8_t button, QPoint place) {
      xcb_test_fake_input(connection.get(), type, button, XCB_CURRENT_TIME, root,
                          static_cast<std::int16_t>(place.x()),
                          static_cast<std::int16_t>(place.y()), 0);
      xcb_flush(connection.get());
    };
    const auto& bar = form_.Find<PictureBox>("Picture2(0)");
    const QPoint start = bar.mapToGlobal(QPoint(2, 200));
    const float before = bar.Left();
    send(XCB_MOTION_NOTIFY, 0, start);
    send(XCB_BUTTON_PRESS, XCB_BUTTON_INDEX_1, {});
    Serve(0.2);
    std::atomic<double> lastSent = 0;
    QPoint last;
    std::thread hand([&] {
      auto next = std::chrono::steady_clock::now();
      for (int move = 1; move <= kMoves; ++move) {
        const int swing = move % (2 * kSwing);
        last = start + QPoint(swing < kSwing ? swing : 2 * kSwing - swing, 0);
        if (move == kMoves) lastSent = Now();
        send(XCB_MOTION_NOTIFY, 0, last);
        next += 2ms;
        std::this_thread::sleep_until(next);
      }
    });
    watch_.ServeUntil([&] { return lastSent > 0; });
    hand.join();
    Serve(0.3);
    send(XCB_BUTTON_RELEASE, XCB_BUTTON_INDEX_1, {});
    Serve(0.1);
    Need(bar.Left() == before + static_cast<float>((last - start).x()),
         "the bar isn't at the pointer's last place");
    const std::optional<double> painted = watch_.BarPaintedAt();
    Need(painted && *painted > lastSent, "the bar isn't painted at the pointer's last place");
    ReportVerdict(std::string(clip_.name) + ": from the last of 1,000 moves to the bar's repaint",
                  (*painted - lastSent) * 1e3, kOneFrame, " ms");
  }

 private:
  void Serve(double seconds) {
    const double end = Now() + seconds;
    watch_.ServeUntil([end] { return Now() >= end; });
  }

  FrameWatch& watch_;
  const Clip& clip_;
  Form1 form_;
};

// Waits a second and returns the processor time of a process in the next ten, in seconds.
double ProcessorSeconds(pid_t process) {
  clockid_t clock{};
  Need(clock_getcpuclockid(process, &clock) == 0, "the process isn't there");
  std::this_thread::sleep_for(1s);
  const double before = Now(clock);
  std::this_thread::sleep_for(10s);
  return Now(clock) - before;
}

double ProcessorSecondsOfProgram(Screen& screen, const std::string& display, const Clip& clip) {
  Program program(KELVANE_PROGRAM_FOLDER, QString::fromStdString(display));
  kelvane::desktop::MainWindow window(screen);
  program.Start();
  Need(window.Await(), "the main window doesn't come");
  Need(ChooseFile(screen, window, kLoadVideo, clip.path), "the clip can't be chosen");
  Need(window.AwaitVideo(clip.size) && window.AwaitCanvas(), "the clip doesn't load");
  window.Click(kRunVideo);
  Need(WaitFor([&] { return Colours(window.Inside(QSize(160, 120))) > 1; }), "no picture comes");
  const double seconds = ProcessorSeconds(static_cast<pid_t>(program.Id()));
  screen.Close(window.Id());
  Need(program.AwaitExit() == 0, "the program doesn't end cleanly");
  return seconds;
}

double ProcessorSecondsOfPlayer(Screen& screen, const std::string& display, const Clip& clip) {
  double seconds = 0;
  {
    const kelvane::testing::Process player(
        {"env", "-i", "PATH=/usr/bin:/bin", "HOME=/nonexistent", "LANG=C.UTF-8",
         "DISPLAY=" + display, "sh", "-c", "exec mpv \"$@\" </dev/null >/dev/null 2>&1", "sh",
         "--no-config", "--vo=x11", "--video-unscaled=yes", "--hwdec=no", clip.path.toStdString()});
    const WindowId window = screen.AwaitNew({});
    Need(window != 0, "the player's window doesn't come");
    const QRect corner(screen.Place(window).topLeft(), QSize(160, 120));
    Need(WaitFor([&] { return Colours(screen.Picture(corner)) > 1; }), "no picture comes");
    seconds = ProcessorSeconds(player.Id());
  }
  Need(WaitFor([&] { return screen.Windows().isEmpty(); }), "the player's window doesn't go");
  return seconds;
}

void Run() {
  const QTemporaryDir home;
  const std::string folder = home.path().toStdString();
  const PrivateDisplay display(folder);
  display.UseForQt(folder);
  std::string name = "kelvane";
  std::array<char*, 2> arguments = {name.data(), nullptr};
  int argumentCount = 1;
  FrameWatch watch(argumentCount, arguments.data());
  QApplication::setQuitOnLastWindowClosed(false);
  (void)std::setlocale(LC_NUMERIC, "C");
  App::setPath(KELVANE_PROGRAM_FOLDER);

  const std::array clips = {Clip{"1920 by 1080", {1920, 1080}, 60, home.filePath("hd.mp4")},
                            Clip{"3840 by 2160", {3840, 2160}, 30, home.filePath("uhd.mp4")}};
  for (const Clip& clip : clips) {
    constexpr int kSeconds = 13;
    Need(MakeNumberedClip(clip.path, clip.size, clip.rate, kSeconds), "the clip can't be made");
  }
  for (const Clip& clip : clips) {
    Playback(watch, clip).MeasureFrames();
    Playback(watch, clip).MeasureMoves(display.Name());
  }

  Screen screen(display.Name());
  constexpr int kPairs = 3;
  for (const Clip& clip : clips) {
    Compare(
        std::string("processor time of 10 s of ") + clip.name, kPairs, 0.90,
        {"kelvane", [&] { return ProcessorSecondsOfProgram(screen, display.Name(), clip); }},
        {"mpv --vo=x11", [&] { return ProcessorSecondsOfPlayer(screen, display.Name(), clip); }});
  }
}

}  // namespace

int main() { return ToEnd(Run); }
