// The player over a library that refuses, or keeps something to itself.
#include <QDir>
#include <QLibrary>
#include <array>
#include <atomic>
#include <cstring>
#include <type_traits>
#include <utility>

#include "platform/PlayerTest.h"
#include "platform/player/PlayerLibrary.h"

namespace kelvane::testing {
namespace {

// Another function in the place of one of the library's, while this lives.
template <auto Member>
class Replaced {
 public:
  using Function = std::remove_reference_t<decltype(std::declval<PlayerLibrary&>().*Member)>;

  explicit Replaced(Function function) {
    own = Place();
    Place() = function;
  }
  Replaced(const Replaced&) = delete;
  Replaced& operator=(const Replaced&) = delete;
  ~Replaced() { Place() = own; }

  // The library's.
  static inline Function own = nullptr;

 private:
  static Function& Place() { return const_cast<PlayerLibrary&>(*PlayerLibrary::Get()).*Member; }
};

class PlayerLibraryTest : public PlayerTest {
 protected:
  // Before what was replaced is put back, since the player's thread calls it to its end.
  ~PlayerLibraryTest() override { EXPECT_EQ(form, nullptr) << "the player is still there"; }

  // Of a player that the library hasn't given what it asked for.
  void ExpectNothingButBlack() {
    player.setURL(MakePlain("red.mp4", "red", 5));
    EXPECT_TRUE(watch.Made());
    EXPECT_FALSE(watch.Core().Usable());
    player.controls.play();
    player.controls.pause();
    player.controls.play();
    player.settings.setVolume(70);
    player.settings.setBalance(-40);
    EXPECT_FALSE(watch.Core().Active());
    PumpOnce();
    EXPECT_EQ(watch.Colour(), kNothingPlayed);
    EXPECT_EQ(player.controls.currentPositionString(), u"00:00"_s);
    player.controls.stop();
    form.reset();
  }
};

TEST_F(PlayerLibraryTest, WithoutAPlayerLeavesThePictureBlack) {
  const Replaced<&PlayerLibrary::create> none([]() -> mpv_handle* { return nullptr; });
  ExpectNothingButBlack();
}

TEST_F(PlayerLibraryTest, WithAPlayerThatDoesNotStartLeavesThePictureBlack) {
  const Replaced<&PlayerLibrary::initialize> refuses(
      [](mpv_handle*) -> int { return MPV_ERROR_NOMEM; });
  ExpectNothingButBlack();
}

TEST_F(PlayerLibraryTest, WithoutARenderContextLeavesThePictureBlack) {
  const Replaced<&PlayerLibrary::render_context_create> refuses(
      [](mpv_render_context**, mpv_handle*, mpv_render_param*) -> int { return MPV_ERROR_NOMEM; });
  ExpectNothingButBlack();
}

TEST_F(PlayerLibraryTest, ThatTakesNoCommandLeavesWhatPlaysAsItIs) {
  player.setURL(MakePlain("red.mp4", "red", 20));
  ASSERT_TRUE(watch.AwaitPosition(0.3));
  {
    const Replaced<&PlayerLibrary::command_async> refuses(
        [](mpv_handle*, std::uint64_t, const char**) -> int { return MPV_ERROR_EVENT_QUEUE_FULL; });
    player.setURL(MakePlain("blue.mp4", "blue", 5));
    EXPECT_GE(watch.Core().Position(), 0.3);
    EXPECT_TRUE(AwaitDuration(20));
  }
  EXPECT_TRUE(watch.Moves());
  EXPECT_TRUE(PlayerWatch::Like(watch.Colour(), kPlayedRed));
  form.reset();
}

// As where a stop comes between the end of a load and the question how long the file is.
TEST_F(PlayerLibraryTest, ThatDoesNotAnswerHowLongAFileIsLeavesTheDurationAsItWas) {
  using Making = Replaced<&PlayerLibrary::create>;
  using Waiting = Replaced<&PlayerLibrary::wait_event>;
  static mpv_handle* handle = nullptr;
  static std::atomic<int> refusals = 0;
  const Making keeps([] { return handle = Making::own(); });
  const Waiting counts([](mpv_handle* made, double seconds) {
    mpv_event* event = Waiting::own(made, seconds);
    if (event->event_id == MPV_EVENT_GET_PROPERTY_REPLY && event->error < 0) ++refusals;
    return event;
  });
  player.setURL(MakePlain("red.mp4", "red", 20));
  EXPECT_TRUE(AwaitDuration(20));
  player.controls.stop();
  // When a second one comes, the player has dealt with the first.
  EXPECT_TRUE(WaitFor([] {
    PlayerLibrary::Get()->get_property_async(handle, 0, "duration", MPV_FORMAT_DOUBLE);
    return refusals > 1;
  }));
  PumpOnce();
  EXPECT_NEAR(player.currentMediaDuration().value_or(0), 20, 0.1);
  form.reset();
}

// It brings scripts of its own, which ask for keys and for changes of what is played.
TEST_F(PlayerLibraryTest, RunsNoScriptTakesNoKeyAndReadsNoClipboard) {
  using Making = Replaced<&PlayerLibrary::create>;
  static mpv_handle* handle = nullptr;
  const Making keeps([] { return handle = Making::own(); });
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

// A change back to what was before, as where the same file starts again, is one that the library
// tells of only if it looks in between.
TEST_F(PlayerLibraryTest, ThatTellsOfNoChangeOfTheDurationIsAskedForIt) {
  using Waiting = Replaced<&PlayerLibrary::wait_event>;
  const Waiting hides([](mpv_handle* handle, double seconds) {
    mpv_event* event = Waiting::own(handle, seconds);
    while (event->event_id == MPV_EVENT_PROPERTY_CHANGE &&
           std::strcmp(static_cast<mpv_event_property*>(event->data)->name, "duration") == 0) {
      event = Waiting::own(handle, seconds);
    }
    return event;
  });
  player.setURL(MakePlain("red.mp4", "red", 20));
  EXPECT_TRUE(AwaitDuration(20));
  form.reset();
}

}  // namespace
}  // namespace kelvane::testing
