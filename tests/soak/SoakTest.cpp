// Long lives: windows that come and go, and one window in which the user repeats one thing.
#include <QListWidget>
#include <QPixmapCache>
#include <atomic>
#include <chrono>
#include <ctime>

#include "joiner/JoinerWindowTest.h"
#include "platform/Menu.h"
#include "shared/SharedValues.h"
#include "soak/Soak.h"
#include "support/PlayerWatch.h"
#include "support/Videos.h"
#include "workspace/MainWindowTest.h"

namespace {

// The time by which the steady clock is ahead of the system's, in the clock's own unit.
std::atomic<std::chrono::steady_clock::rep> ahead = 0;

}  // namespace

// Replaces the standard library's function; Qt 6.8's timers use it too.
std::chrono::steady_clock::time_point std::chrono::steady_clock::now() noexcept {
  timespec time{};
  ::clock_gettime(CLOCK_MONOTONIC, &time);
  return time_point(seconds(time.tv_sec) + nanoseconds(time.tv_nsec) + duration(ahead));
}

namespace kelvane::testing {
namespace {

class MainWindowSoak : public MainWindowTest {
 protected:
  template <class Window>
  static Window* Visible() {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
      auto* const window = qobject_cast<Window*>(widget);
      if (window != nullptr && window->isVisible()) return window;
    }
    return nullptr;
  }
  template <class Window>
  static void Close() {
    auto* const window = Visible<Window>();
    ASSERT_NE(window, nullptr);
    window->close();
    ServePendingEvents();
    EXPECT_EQ(Visible<Window>(), nullptr);
  }
};

TEST_F(MainWindowSoak, AThousandLoadsAndCrops) {
  const QString narrow = tools_.MakeFile("a.mp4");
  const QString wide = tools_.MakeFile("with a blank.mp4");
  const auto round = [&](int number) {
    const bool even = number % 2 == 0;
    Pick(even ? narrow : wide, SizeText(even ? 640 : 1280, 360), DurationText("00:00:10.00"));
    EXPECT_EQ(Number(SourceWidth), even ? "0,640" : "1,280");
    EXPECT_EQ(VideoDuration, QString("00:00:10"));
    // Otherwise the window keeps the text of all probes.
    Get<TextBox>("Text2").setText({});
    Tick(Get<Timer>("Timer2"));

    tools_.FfmpegDoes(PrintCommands("frame=1 time=00:00:05.00 bitrate=1\n"));
    CropTo(tools_.Path() + "/out.mp4");
    auto* const job = Visible<Form2>();
    ASSERT_NE(job, nullptr);
    for (int ticks = 0; ticks < 2; ++ticks) Tick(job->Find<Timer>("Timer1"));
    EXPECT_EQ(Get<ProgressBar>("pbar").Value(), 5);
    Release(job->Find<Label>("Label2"));
    ServePendingEvents();
    EXPECT_EQ(Visible<Form2>(), nullptr);
  };
  ExpectFlat({.warmUp = 200, .rounds = 800, .round = round});
  EXPECT_EQ(tools_.Runs().size(), std::size_t{1000 * 3});
}

TEST_F(MainWindowSoak, TwoHundredStartsOfThePlayer) {
  const PlayerWatch watch(Get<WindowsMediaPlayer>("wmp"));
  const QString red = tools_.Path() + "/red.mp4";
  ASSERT_TRUE(MakePlainVideo(red, "red", 2));
  Pick(red, SizeText(320, 180), DurationText("00:00:02.00"));
  const auto round = [&](int) {
    Give(RunVideo);
    ASSERT_TRUE(watch.AwaitColour(kPlayedRed));
    Give(StopVideo);
    ASSERT_TRUE(watch.AwaitColour(kNothingPlayed));
  };
  ExpectFlat({.warmUp = 50, .rounds = 150, .round = round});
}

TEST_F(MainWindowSoak, TenThousandLoadsAndUnloadsOfTheFourWindows) {
  FormInstance<Form2> job;
  const auto round = [&](int) {
    form_->close();
    form_ = std::make_unique<Form1>();
    form_->Load();
    form_->Show();
    Get<Menu>("mnu_Extract").Click();
    Close<Form3>();
    Get<Menu>("mnu_JoinMultiple").Click();
    Close<Form4>();
    job.Load(*form_).Show(form_.get());
    Close<Form2>();
  };
  ExpectFlat({.warmUp = 250, .rounds = 2250, .round = round});
}

using JoinerSoak = JoinerWindowTest;

TEST_F(JoinerSoak, AThousandJoins) {
  for (const char* name : {"a.mp4", "b.mp4"}) AddSectionOf(name);
  Remove(3);
  tools_.FfmpegDoes(PrintCommands("frame=1 time=00:00:05.00 bitrate=1\n"));
  // Ends the wait before a join's tool as soon as events have been served.
  Get<Label>("Label3", ProcessLine).Change = [this](int) {
    if (Shown(ProcessLine) != "Process: Joining Your Videos...") return;
    AtNextDoEvents([] { ahead += std::chrono::steady_clock::duration(1s).count(); });
  };
  const auto round = [this](int) {
    EXPECT_EQ(JoinTo(tools_.Path() + "/all.mp4").size(), std::size_t{2});
    ServePendingEvents();
    // Each join adds its intermediate files to this list once more.
    Get<ListBox>("List2").findChild<QListWidget*>()->clear();
    // Qt 6.8 caches the icon of every message box again, up to the limit of its cache.
    QPixmapCache::clear();
  };
  constexpr int kMostPixmapCache = 10240;  // KiB
  ASSERT_LE(QPixmapCache::cacheLimit(), kMostPixmapCache);
  ExpectFlat({.warmUp = 200, .rounds = 800, .round = round});
  EXPECT_EQ(tools_.Runs().size(), std::size_t{2 + 1000});
}

}  // namespace
}  // namespace kelvane::testing
