// The player's end, at any moment. Nothing of it stays behind.
#include <QDir>
#include <ostream>

#include "platform/PlayerTest.h"

namespace kelvane::testing {
namespace {

class Ends : public PlayerTest {
 public:
  void AtOnce() {}
  void AsItOpens() { PumpOnce(); }
  void AtTheFirstPicture() { ASSERT_TRUE(watch.AwaitColour(kPlayedRed)); }
  void WhilePlaying() { ASSERT_TRUE(watch.AwaitPosition(0.3)); }
  void WhilePaused() {
    ASSERT_TRUE(watch.AwaitPosition(0.3));
    player.controls.pause();
    PumpOnce();
  }
  void AsItStops() {
    ASSERT_TRUE(watch.AwaitColour(kPlayedRed));
    player.controls.stop();
  }
  void Stopped() {
    ASSERT_TRUE(watch.AwaitColour(kPlayedRed));
    player.controls.stop();
    ASSERT_TRUE(watch.AwaitColour(kNothingPlayed));
  }
  void AsAnotherFileOpens() {
    ASSERT_TRUE(watch.AwaitColour(kPlayedRed));
    player.setURL(player.URL());
  }
  void AfterAFileThatCannotBePlayed() {
    player.setURL(u"/nowhere/nothing.mp4"_s);
    ASSERT_TRUE(watch.AwaitEnd());
  }
};

struct Moment {
  const char* name;
  void (Ends::*reach)();
};

void PrintTo(const Moment& moment, std::ostream* out) { *out << moment.name; }

std::size_t EntriesOf(const char* folder) {
  const QDir::Filters everything = QDir::AllEntries | QDir::NoDotAndDotDot | QDir::System;
  return static_cast<std::size_t>(QDir(QLatin1String(folder)).entryList(everything).size());
}

class PlayerEnd : public Ends, public ::testing::WithParamInterface<Moment> {};

TEST_P(PlayerEnd, LeavesNoThreadAndNoFileOpen) {
  const QString file = MakePlain("red.mp4", "red", 20);
  const std::size_t threads = EntriesOf("/proc/self/task");
  const std::size_t descriptors = EntriesOf("/proc/self/fd");
  player.setURL(file);
  EXPECT_GT(EntriesOf("/proc/self/task"), threads);
  ASSERT_NO_FATAL_FAILURE((this->*GetParam().reach)());
  form.reset();
  // Threads of Qt's that rest may have ended meanwhile.
  EXPECT_LE(EntriesOf("/proc/self/task"), threads);
  EXPECT_LE(EntriesOf("/proc/self/fd"), descriptors);
}

INSTANTIATE_TEST_SUITE_P(
    Player, PlayerEnd,
    ::testing::Values(Moment{"AtOnce", &Ends::AtOnce}, Moment{"AsItOpens", &Ends::AsItOpens},
                      Moment{"AtTheFirstPicture", &Ends::AtTheFirstPicture},
                      Moment{"WhilePlaying", &Ends::WhilePlaying},
                      Moment{"WhilePaused", &Ends::WhilePaused},
                      Moment{"AsItStops", &Ends::AsItStops}, Moment{"Stopped", &Ends::Stopped},
                      Moment{"AsAnotherFileOpens", &Ends::AsAnotherFileOpens},
                      Moment{"AfterAFileThatCannotBePlayed", &Ends::AfterAFileThatCannotBePlayed}),
    [](const auto& instance) { return std::string(instance.param.name); });

}  // namespace
}  // namespace kelvane::testing
