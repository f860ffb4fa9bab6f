// What the player does when functions of its library fail or don't report something, and what it
// tells the library not to do.
#include <QDir>
#include <QLibrary>
#include <algorithm>
#include <array>
#include <atomic>
#include <cstring>
#include <type_traits>
#include <utility>

#include "platform/PlayerTest.h"
#include "platform/player/PlayerLibrary.h"

namespace kelvane::testing {
namespace {

// Replaces a function of the library by another one as long as this object lives.
template <auto Member>
class Replaced {
 public:
  using Function = std::remove_reference_t<decltype(std::declval<PlayerLibrary&>().*Member)>;

  explicit Replaced(Function function) {
    original = Place();
    Place() = function;
  }
  Replaced(const Replaced&) = delete;
  Replaced& operator=(const Replaced&) = delete;
  ~Replaced() { Place() = original; }

  // The library's own function, which the other one may call.
  static inline Function original = nullptr;

 private:
  static Function& Place() { return const_cast<PlayerLibrary&>(*PlayerLibrary::Get()).*Member; }
};

class PlayerLibraryTest : public PlayerTest {
 protected:
  // The player's thread may call a replaced function: each test deletes the form, and with it the
  // player, while its replacements still last.
  ~PlayerLibraryTest() override { EXPECT_EQ(form, nullptr); }

  // Expects that a file and commands have no effect. To be called while a function of the library
  // that the player's start needs is replaced by one that fails.
  void ExpectABlackPicture() {
    player.setURL(MakePlain("red.mp4", "red", 5));
    EXPECT_TRUE(watch.Made());
    EXPECT_FALSE(watch.Core().Usable());
    player.controls.play();
    player.controls.pause();
    player.controls.play();
    player.settings.setVolume(70);
    player.settings.setBalance(-40);
    player.OpenPaused(player.URL());
    player.controls.setCurrentPosition(1);
    EXPECT_FALSE(watch.Core().Active());
    ServePendingEvents();
    EXPECT_EQ(watch.Colour(), kNothingPlayed);
    EXPECT_EQ(player.controls.currentPositionString(), u"00:00"_s);
    player.controls.stop();
    form.reset();
  }
};

TEST_F(PlayerLibraryTest, LeavesThePictureBlackIfItMakesNoPlayer) {
  const Replaced<&PlayerLibrary::create> none([]() -> mpv_handle* { return nullptr; });
  ExpectABlackPicture();
}

TEST_F(PlayerLibraryTest, LeavesThePictureBlackIfItDoesNotStartAPlayer) {
  const Replaced<&PlayerLibrary::initialize> refuses(
      [](mpv_handle*) -> int { return MPV_ERROR_NOMEM; });
  ExpectABlackPicture();
}

TEST_F(PlayerLibraryTest, LeavesThePictureBlackIfItMakesNoRenderContext) {
  const Replaced<&PlayerLibrary::render_context_create> refuses(
      [](mpv_render_context**, mpv_handle*, mpv_render_param*) -> int { return MPV_ERROR_NOMEM; });
  ExpectABlackPicture();
}

TEST_F(PlayerLibraryTest, LeavesTheOldFilePlayingIfItRefusesToStartAnother) {
  player.setURL(MakePlain("red.mp4", "red", 20));
  ASSERT_TRUE(watch.AwaitPosition(0.3));
  {
    const Replaced<&PlayerLibrary::command_async> refuses(
        [](mpv_handle*, std::uint64_t, const char**) -> int { return MPV_ERROR_EVENT_QUEUE_FULL; });
    player.setURL(MakePlain("blue.mp4", "blue", 5));
    EXPECT_GE(watch.Core().Position(), 0.3);
    EXPECT_TRUE(AwaitDuration(20));
  }
  EXPECT_TRUE(watch.AwaitMove());
  EXPECT_TRUE(PlayerWatch::Like(watch.Colour(), kPlayedRed));
  form.reset();
}

// `underWay` counts the seeks that were sent and aren't done yet; `most` is its maximum.
TEST_F(PlayerLibraryTest, IsGivenOneSeekAtATimeAndTheLastOfThoseThatCameMeanwhile) {
  using Commanding = Replaced<&PlayerLibrary::command_async>;
  using Waiting = Replaced<&PlayerLibrary::wait_event>;
  static std::atomic<int> sent;
  static std::atomic<int> underWay;
  static std::atomic<int> most;
  sent = underWay = most = 0;
  const Commanding counts([](mpv_handle* handle, std::uint64_t id, const char** words) {
    if (std::strcmp(words[0], "seek") == 0) {
      ++sent;
      most = std::max<int>(most, ++underWay);
    }
    return Commanding::original(handle, id, words);
  });
  const Waiting subtracts([](mpv_handle* handle, double seconds) {
    mpv_event* event = Waiting::original(handle, seconds);
    if (event->event_id == MPV_EVENT_PLAYBACK_RESTART && underWay > 0) --underWay;
    return event;
  });
  player.OpenPaused(MakePlain("red.mp4", "red", 20));
  ASSERT_TRUE(watch.AwaitColour(kPlayedRed));
  constexpr int kSteps = 200;
  for (int step = 0; step <= kSteps; ++step) {
    player.controls.setCurrentPosition(step * 0.08);
    ServePendingEvents();
  }
  EXPECT_TRUE(WaitFor(
      [&] { return underWay == 0 && std::abs(watch.Core().Position() - kSteps * 0.08) < 0.001; }));
  EXPECT_EQ(most, 1);
  EXPECT_LT(sent, kSteps);
  form.reset();
}

TEST_F(PlayerLibraryTest, IsGivenFurtherSeeksAfterItRefusedOneAtOnceOrLater) {
  using Commanding = Replaced<&PlayerLibrary::command_async>;
  static int refusals;
  refusals = 0;
  const QString path = InFolder("colours.mp4");
  ASSERT_TRUE(MakeColours(path, QSize(320, 180), {0xffff0000, 0xff00ff00, 0xff0000ff}));
  player.OpenPaused(path);
  ASSERT_TRUE(watch.AwaitColour(kPlayedRed));
  {
    const Commanding refuses([](mpv_handle* handle, std::uint64_t id, const char** words) {
      if (++refusals == 1) return static_cast<int>(MPV_ERROR_EVENT_QUEUE_FULL);
      std::array<const char*, 4> failing{"script-message-to", "nobody", words[0], nullptr};
      return Commanding::original(handle, id, failing.data());
    });
    for (int times = 1; times <= 2; ++times) {
      player.controls.setCurrentPosition(1.5);
      EXPECT_TRUE(WaitFor([&] { return refusals == times; }));
    }
  }
  player.controls.setCurrentPosition(2.5);
  EXPECT_TRUE(watch.AwaitColour(kPlayedBlue));
  form.reset();
}

// The library refuses the player's own request for the duration if a stop comes just after a load.
// Here the test's own requests are refused after a stop.
TEST_F(PlayerLibraryTest, LeavesTheDurationAsItWasIfItRefusesToTellIt) {
  using Making = Replaced<&PlayerLibrary::create>;
  using Waiting = Replaced<&PlayerLibrary::wait_event>;
  static mpv_handle* handle = nullptr;
  static std::atomic<int> refusals = 0;
  const Making keeps([] { return handle = Making::original(); });
  const Waiting counts([](mpv_handle* made, double seconds) {
    mpv_event* event = Waiting::original(made, seconds);
    if (event->event_id == MPV_EVENT_GET_PROPERTY_REPLY && event->error < 0) ++refusals;
    return event;
  });
  player.setURL(MakePlain("red.mp4", "red", 20));
  EXPECT_TRUE(AwaitDuration(20));
  player.controls.stop();
  // The player has handled the first refusal when the second one comes.
  EXPECT_TRUE(WaitFor([] {
    PlayerLibrary::Get()->get_property_async(handle, 0, "duration", MPV_FORMAT_DOUBLE);
    return refusals > 1;
  }));
  ServePendingEvents();
  EXPECT_NEAR(player.currentMediaDuration().value_or(0), 20, 0.1);
  form.reset();
}

// The library has scripts of its own, which react to keys and change what is played.
TEST_F(PlayerLibraryTest, RunsNoScriptTakesNoKeyAndReadsNoClipboard) {
  using Making = Replaced<&PlayerLibrary::create>;
  static mpv_handle* handle = nullptr;
  const Making keeps([] { return handle = Making::original(); });
  QLibrary library("mpv", MPV_CLIENT_API_VERSION >> 16);
  const auto command = reinterpret_cast<decltype(&mpv_command)>(library.resolve("mpv_command"));
  const auto property = reinterpret_cast<decltype(&mpv_get_property_string)>(
      library.resolve("mpv_get_property_string"));
  const auto release = reinterpret_cast<decltype(&mpv_free)>(library.resolve("mpv_free"));
  const auto textOf = [&](const char* name) {
    char* const text = property(handle, name);
    const QByteArray copy(text);
    release(text);
    return copy;
  };
  player.setURL(MakePlain("red.mp4", "red", 20));
  ASSERT_TRUE(watch.AwaitColour(kPlayedRed));
  for (const char* script : {"auto_profiles", "commands", "console", "osc", "positioning", "select",
                             "stats", "ytdl_hook"}) {
    std::array<const char*, 4> message{"script-message-to", script, "hello", nullptr};
    EXPECT_LT(command(handle, message.data()), 0) << script;
  }
  for (const QString& thread :
       QDir("/proc/self/task").entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
    QFile name("/proc/self/task/" + thread + "/comm");
    ASSERT_TRUE(name.open(QIODevice::ReadOnly));
    EXPECT_FALSE(name.readAll().contains("lua"));
  }
  EXPECT_EQ(textOf("input-bindings"), "[]");
  EXPECT_EQ(textOf("current-clipboard-backend"), "");
  form.reset();
}

// Sometimes the library doesn't report a duration that changes and changes back, as when a file is
// restarted.
TEST_F(PlayerLibraryTest, IsAskedForTheDurationOfEachFile) {
  using Waiting = Replaced<&PlayerLibrary::wait_event>;
  const Waiting hides([](mpv_handle* handle, double seconds) {
    mpv_event* event = Waiting::original(handle, seconds);
    while (event->event_id == MPV_EVENT_PROPERTY_CHANGE &&
           std::strcmp(static_cast<mpv_event_property*>(event->data)->name, "duration") == 0) {
      event = Waiting::original(handle, seconds);
    }
    return event;
  });
  player.setURL(MakePlain("red.mp4", "red", 20));
  EXPECT_TRUE(AwaitDuration(20));
  form.reset();
}

}  // namespace
}  // namespace kelvane::testing
