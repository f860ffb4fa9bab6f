// The video beneath the bars. In this process, with the window on a private display: whether every
// picture is painted, how long the user-interface thread is held, what a move of a bar costs. With
// the program itself: its processor time against a bare player's on the same clip.
#include <xcb/xtest.h>

#include <QTemporaryDir>
#include <array>
#include <atomic>
#include <clocale>
#include <cstdio>
#include <iterator>
#include <optional>
#include <thread>

#include "FrameWatch.h"
#include "Pairs.h"
#include "ProcessorTime.h"
#include "desktop/driver/PrivateDisplay.h"
#include "desktop/driver/Screen.h"
#include "platform/App.h"
#include "workspace/Form1.h"

namespace {

using namespace kelvane::bench;
using namespace kelvane::desktop;

constexpr int kClipSeconds = 13;

struct Clip {
  const char* name;
  QSize size;
  int rate;
  QString path;
};

// Longer ago than this, the player has found its pace.
constexpr double kSettled = 1000;     // ms
constexpr double kMeasured = 10'000;  // ms
// By so much a picture may be late, and still comes.
constexpr double kLate = 100;             // ms
constexpr double kLongestStart = 10'000;  // ms
constexpr double kOneFrame = 16.7;        // ms

// A pointer on a connection and a thread of its own, which nothing in the window holds up.
class FastPointer {
 public:
  explicit FastPointer(const std::string& display)
      : connection_(xcb_connect(display.c_str(), nullptr)) {
    Need(xcb_connection_has_error(connection_) == 0, "the display doesn't answer");
    root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
  }
  FastPointer(const FastPointer&) = delete;
  FastPointer& operator=(const FastPointer&) = delete;
  ~FastPointer() { xcb_disconnect(connection_); }

  void Send(std::uint8_t type, std::uint8_t button, QPoint place) {
    xcb_test_fake_input(connection_, type, button, XCB_CURRENT_TIME, root_,
                        static_cast<std::int16_t>(place.x()), static_cast<std::int16_t>(place.y()),
                        0);
    xcb_flush(connection_);
  }

 private:
  xcb_connection_t* connection_;
  xcb_window_t root_ = 0;
};

// The main window with a running clip.
class Playback {
 public:
  Playback(FrameWatch& watch, const Clip& clip) : watch_(watch), clip_(clip) {
    form_.Load();
    form_.Show();
    form_.Find<kelvane::TextBox>("Text1(1)").setText(clip.path);
    form_.Find<kelvane::PictureBox>("Picture1(2)").setVisible(true);
    form_.findChild<kelvane::Timer*>("Timer2")->setEnabled(true);
    watch_.Watch(&form_, &player_, &bar_);
    player_.setURL(clip.path);
    const double end = FrameWatch::Now() + kLongestStart;
    watch_.ServeUntil([&] { return Plays() || FrameWatch::Now() >= end; });
    Need(Plays(), "the clip doesn't play");
    Serve(kSettled);
  }
  Playback(const Playback&) = delete;
  Playback& operator=(const Playback&) = delete;
  ~Playback() {
    watch_.Watch(nullptr, nullptr, nullptr);
    form_.Unload();
  }

  void MeasureFrames() {
    watch_.Begin();
    const int first = *watch_.Frames().rbegin() + 1;
    const int due = clip_.rate * static_cast<int>(kMeasured / 1000);
    Serve(kMeasured + kLate);
    const int missing = Missing(first, due);
    const Busy& seen = watch_.Seen();
    std::printf("%s at %d for 10 s, %d of %d pictures: min, median, max\n", clip_.name, clip_.rate,
                due - missing, due);
    std::printf("  %d handlings for pictures among %d of the user-interface thread\n",
                static_cast<int>(seen.frames.size()), static_cast<int>(seen.handlings.size()));
    PrintRow("any handling holds it, ms", ToVector(seen.handlings));
    PrintRow("one for a picture, ms", ToVector(seen.frames));
    PrintRow("of which it runs itself, ms", ToVector(seen.framesOnProcessor));
    const std::string clip = std::string(clip_.name) + ": ";
    PrintVerdict(clip + "pictures that never came to the screen", missing, 0);
    PrintVerdict(clip + "longest hold by a picture", At(ToVector(seen.frames), 1), kOneFrame,
                 " ms");
    PrintFigure(clip + "longest hold by anything else meanwhile", At(ToVector(seen.others), 1),
                " ms");
  }

  // A thousand moves, five hundred a second.
  void MeasureMoves(const std::string& display) {
    constexpr int kMoves = 1000;
    constexpr auto kPace = std::chrono::milliseconds(2);
    constexpr int kSwing = 400;
    FastPointer pointer(display);
    const QPoint start = bar_.mapToGlobal(QPoint(2, 200));
    const float before = bar_.Left();
    pointer.Send(XCB_MOTION_NOTIFY, 0, start);
    pointer.Send(XCB_BUTTON_PRESS, kLeftButton, {});
    Serve(200);
    watch_.Begin();
    std::atomic<double> lastSent = 0;
    QPoint last;
    std::thread hand([&] {
      auto next = std::chrono::steady_clock::now();
      for (int move = 1; move <= kMoves; ++move) {
        // There and back, and to a place where the bar hasn't been.
        const int swing = move % (2 * kSwing);
        last = start + QPoint(swing < kSwing ? swing : 2 * kSwing - swing, 0);
        if (move == kMoves) lastSent = FrameWatch::Now();
        pointer.Send(XCB_MOTION_NOTIFY, 0, last);
        next += kPace;
        std::this_thread::sleep_until(next);
      }
    });
    watch_.ServeUntil([&] { return lastSent > 0; });
    hand.join();
    Serve(300);
    pointer.Send(XCB_BUTTON_RELEASE, kLeftButton, {});
    Serve(100);
    Need(bar_.Left() == before + static_cast<float>((last - start).x()),
         "the bar isn't at the pointer's last place");
    const std::optional<double> painted = watch_.BarPaintedAt();
    Need(painted && *painted > lastSent, "the bar isn't painted at the pointer's last place");
    std::printf("dragging a bar while %s plays, 1,000 moves at 500 a second: min, median, max\n",
                clip_.name);
    PrintRow("handler and repaint, ms", ToVector(watch_.Seen().moves));
    PrintVerdict(std::string(clip_.name) + ": from the last of 1,000 moves to the bar's repaint",
                 *painted - lastSent, kOneFrame, " ms");
  }

 private:
  static std::vector<double> ToVector(const QList<double>& values) {
    Need(!values.isEmpty(), "nothing was seen");
    return {values.begin(), values.end()};
  }

  bool Plays() const { return watch_.Frames().size() > 1; }

  // How many of the pictures that are due from that number on haven't come.
  int Missing(int first, int due) const {
    const std::set<int> frames = watch_.Frames();
    const auto come = std::distance(frames.lower_bound(first), frames.lower_bound(first + due));
    return due - static_cast<int>(come);
  }

  void Serve(double milliseconds) {
    const double end = FrameWatch::Now() + milliseconds;
    watch_.ServeUntil([end] { return FrameWatch::Now() >= end; });
  }

  FrameWatch& watch_;
  const Clip& clip_;
  kelvane::Form1 form_;
  kelvane::WindowsMediaPlayer& player_ = form_.Find<kelvane::WindowsMediaPlayer>("wmp");
  kelvane::PictureBox& bar_ = form_.Find<kelvane::PictureBox>("Picture2(0)");
};

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
  kelvane::App::setPath(KELVANE_PROGRAM_FOLDER);

  const std::array clips = {Clip{"1920 by 1080", {1920, 1080}, 60, home.filePath("hd.mp4")},
                            Clip{"3840 by 2160", {3840, 2160}, 30, home.filePath("uhd.mp4")}};
  for (const Clip& clip : clips) {
    std::printf("making a clip of %d seconds, %s pixels\n", kClipSeconds, clip.name);
    std::fflush(stdout);
    Need(MakeNumberedClip(clip.path, clip.size, clip.rate, kClipSeconds), "the clip can't be made");
  }
  for (const Clip& clip : clips) {
    Playback(watch, clip).MeasureFrames();
    Playback(watch, clip).MeasureMoves(display.Name());
  }

  Screen screen(display.Name());
  const QString displayName = QString::fromStdString(display.Name());
  constexpr int kPairs = 3;
  for (const Clip& clip : clips) {
    Compare(
        (std::string("processor time of 10 s of ") + clip.name).c_str(), kPairs, 0.90,
        {"kelvane",
         [&] { return ProcessorTimeInProgram(screen, displayName, clip.path, clip.size); }},
        {"mpv --vo=x11", [&] { return ProcessorTimeOfPlayer(screen, displayName, clip.path); }});
  }
}

}  // namespace

int main() {
  std::puts("To be run on a machine that does nothing else: others' work shows in every figure.");
  return ToEnd(Run);
}
