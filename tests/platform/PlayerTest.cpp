// What the player shows of real files, and what its commands do.
#include "platform/PlayerTest.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QDir>
#include <QMenu>
#include <QPainter>

#include "support/PaintsOf.h"

namespace kelvane::testing {
namespace {

class Player : public PlayerTest {
 protected:
  void RightClick() const {
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(10, 10), QPoint(10, 10));
    QApplication::sendEvent(&player, &event);
  }
  // Plays a red video of that length, waits until it is visible, and returns its path.
  QString PlayRed(double seconds) const {
    QString path = MakePlain("red.mp4", "red", seconds);
    player.setURL(path);
    EXPECT_TRUE(watch.AwaitColour(kPlayedRed));
    return path;
  }
};

TEST_F(Player, RepaintsNoControlThatLiesBesideOrOverIt) {
  TestForm window({Design(kHScrollBar, "HScroll1", {0, 160, 266, 17}),
                   Design(kPictureBox, "Picture1", {20, 20, 5, 100}),
                   Design(kWindowsMediaPlayer, "wmp", {0, 0, 320, 180})});
  window.Open();
  const PaintsOf pictures("wmp");
  const PaintsOf scrollBars("HScroll1");
  const PaintsOf bars("Picture1");
  window.Find<WindowsMediaPlayer>("wmp").setURL(MakePlain("red.mp4", "red", 3));
  constexpr int kSome = 20;
  ASSERT_TRUE(WaitFor([&] { return pictures.Count() > kSome; }));
  EXPECT_EQ(scrollBars.Count(), 0);
  EXPECT_EQ(bars.Count(), 0);
}

TEST_F(Player, ShowsEachPixelOfTheFileFromTheTopLeftCornerAndCutsOffWhatReachesBeyondThePlayer) {
  for (const QSize size : {QSize(300, 170), QSize(640, 360)}) {
    const QString file = Make("test.mkv",
                              u"-f lavfi -i testsrc2=size=%1x%2:rate=25:duration=0.04 "
                              "-vf loop=loop=100:size=1 -c:v ffv1 -pix_fmt bgr0"_s.arg(size.width())
                                  .arg(size.height()));
    const QByteArray bytes =
        ContentOf(Make("raw.bgra", "-i " + file + " -frames:v 1 -f rawvideo -pix_fmt bgr0"));
    QImage expected(player.size(), QImage::Format_RGB32);
    expected.fill(Qt::black);
    QPainter(&expected).drawImage(0, 0,
                                  QImage(reinterpret_cast<const uchar*>(bytes.constData()),
                                         size.width(), size.height(), QImage::Format_RGB32));
    player.setURL(file);
    EXPECT_TRUE(WaitFor([&] { return Picture(player) == expected; })) << size.width();
  }
}

// The library may set the fourth byte of a pixel to anything.
TEST_F(Player, IsOpaqueOnASurfaceWithAnAlphaChannel) {
  PlayRed(5);
  QImage surface(player.size(), QImage::Format_ARGB32_Premultiplied);
  surface.fill(Qt::transparent);
  player.render(&surface);
  const QImage alpha = surface.convertToFormat(QImage::Format_Alpha8);
  QImage opaque(player.size(), QImage::Format_Alpha8);
  opaque.fill(0xff);
  EXPECT_EQ(alpha, opaque);
}

TEST_F(Player, IsBlackAndMakesNoPlaybackCoreBeforeItHasAFile) {
  EXPECT_EQ(CountOf(Picture(player), 0x000000), 320 * 180);
  EXPECT_TRUE(player.URL().isEmpty());
  EXPECT_EQ(player.controls.currentPositionString(), QString());
  EXPECT_EQ(player.currentMediaDuration(), std::nullopt);
  player.controls.play();
  player.controls.pause();
  player.controls.stop();
  player.controls.setCurrentPosition(1);
  player.OpenPaused({});
  EXPECT_EQ(player.controls.currentPosition(), 0);
  EXPECT_FALSE(player.controls.playing());
  EXPECT_FALSE(watch.Made());
  RightClick();
  EXPECT_EQ(player.findChild<QMenu*>(), nullptr);
}

TEST_F(Player, TellsThePositionInMinutesAndSecondsAndTheDurationInSeconds) {
  player.setURL(MakePlain("red.mp4", "red", 5));
  EXPECT_EQ(player.controls.currentPositionString(), u"00:00"_s);
  EXPECT_NE(player.currentMediaDuration(), std::nullopt)
      << "a duration that isn't known yet is missing instead of 0";
  EXPECT_TRUE(WaitFor([&] { return player.controls.currentPositionString() == u"00:01"_s; }));
  EXPECT_TRUE(AwaitDuration(5));
  player.controls.stop();
  ASSERT_TRUE(watch.AwaitColour(kNothingPlayed));
  EXPECT_TRUE(AwaitDuration(5)) << "a stop has changed the duration";
}

TEST_F(Player, PlaysAFileOnceAndIsBlackUntilItIsPlayedAgain) {
  PlayRed(0.6);
  ASSERT_TRUE(watch.AwaitEnd());
  ASSERT_TRUE(watch.AwaitColour(kNothingPlayed));
  EXPECT_EQ(player.controls.currentPositionString(), u"00:00"_s);
  player.controls.play();
  EXPECT_TRUE(watch.AwaitColour(kPlayedRed));
}

TEST_F(Player, ShowsThePictureWhilePausedAndResumesThere) {
  PlayRed(20);
  player.controls.pause();
  ASSERT_TRUE(watch.AwaitStandstill());
  EXPECT_TRUE(PlayerWatch::Like(watch.Colour(), kPlayedRed));
  const double position = watch.Core().Position();
  player.controls.play();
  ASSERT_TRUE(watch.AwaitMove());
  EXPECT_GT(watch.Core().Position(), position);
}

TEST_F(Player, DoesNotPlayAFileThatIsPausedAtOnce) {
  player.setURL(MakePlain("red.mp4", "red", 20));
  player.controls.pause();
  ASSERT_TRUE(watch.AwaitColour(kPlayedRed));
  EXPECT_TRUE(watch.AwaitStandstill());
  EXPECT_LT(watch.Core().Position(), 0.5);
}

TEST_F(Player, IsBlackAndAtTheBeginningWhenStopped) {
  PlayRed(20);
  ASSERT_TRUE(watch.AwaitPosition(1));
  player.controls.stop();
  ASSERT_TRUE(watch.AwaitColour(kNothingPlayed));
  EXPECT_EQ(player.controls.currentPositionString(), u"00:00"_s);
  player.controls.pause();  // has no effect while it is stopped
  player.controls.play();
  ASSERT_TRUE(watch.AwaitColour(kPlayedRed));
  EXPECT_LT(watch.Core().Position(), 1);
  EXPECT_TRUE(watch.AwaitMove());
  EXPECT_TRUE(AwaitDuration(20));
}

TEST_F(Player, PlaysFromTheBeginningWhenStoppedAndStartedAtOnce) {
  PlayRed(20);
  ASSERT_TRUE(watch.AwaitPosition(1));
  player.controls.stop();
  player.controls.play();
  EXPECT_TRUE(WaitFor([&] { return watch.Core().Position() < 1; }));
  ASSERT_TRUE(watch.AwaitColour(kPlayedRed));
  EXPECT_TRUE(watch.AwaitMove());
  player.controls.pause();
  EXPECT_TRUE(watch.AwaitStandstill()) << "it can't be paused";
}

TEST_F(Player, StartsTheSameFileAgainFromItsBeginningEvenWhilePaused) {
  const QString file = PlayRed(20);
  ASSERT_TRUE(watch.AwaitPosition(1));
  player.controls.pause();
  player.setURL(file);
  EXPECT_TRUE(WaitFor([&] { return watch.Core().Position() < 0.9; }));
  EXPECT_TRUE(watch.AwaitMove());
  EXPECT_TRUE(AwaitDuration(20));
}

TEST_F(Player, ShowsTheLastOfSeveralFilesGivenAtOnce) {
  const QString red = MakePlain("red.mp4", "red", 5);
  const QString blue = MakePlain("blue.mp4", "blue", 5);
  for (int round = 0; round < 10; ++round) {
    player.setURL(red);
    player.setURL(blue);
  }
  ASSERT_TRUE(watch.AwaitColour(kPlayedBlue));
  EXPECT_TRUE(watch.AwaitPosition(0.3));
  EXPECT_TRUE(PlayerWatch::Like(watch.Colour(), kPlayedBlue));
}

TEST_F(Player, UnloadsItsFileWhenItIsGivenNone) {
  PlayRed(20);
  player.setURL({});
  EXPECT_EQ(player.controls.currentPositionString(), QString());
  EXPECT_EQ(player.currentMediaDuration(), std::nullopt);
  EXPECT_TRUE(watch.AwaitColour(kNothingPlayed));
  player.controls.play();
  EXPECT_FALSE(watch.Core().Active());
}

TEST_F(Player, PrintsNothingToTheTerminal) {
  ::testing::internal::CaptureStdout();
  ::testing::internal::CaptureStderr();
  PlayRed(1);
  EXPECT_TRUE(watch.AwaitColour(kNothingPlayed));
  player.setURL("/nowhere/nothing.mp4");
  EXPECT_TRUE(watch.AwaitEnd());
  form.reset();
  EXPECT_EQ(::testing::internal::GetCapturedStdout(), "");
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
}

// A state in which the form of a player is deleted. The player has been given a red video and, if
// `shows` is true, shows it, before `reach` brings it into the state.
struct State {
  const char* name;
  bool shows;
  void (*reach)(WindowsMediaPlayer& player, const PlayerWatch& watch);
};

void PrintTo(const State& state, std::ostream* out) { *out << state.name; }

const State kStates[]{
    {"Starting", false, [](auto&, auto&) {}},
    {"Opening", false, [](auto&, auto&) { ServePendingEvents(); }},
    {"ShowingItsFirstPicture", true, [](auto&, auto&) {}},
    {"Playing", true, [](auto&, auto& watch) { EXPECT_TRUE(watch.AwaitPosition(0.3)); }},
    {"Paused", true, [](auto& player, auto&) { player.controls.pause(); }},
    {"Seeking", true,
     [](auto& player, auto&) {
       for (const double seconds : {15, 5, 10}) player.controls.setCurrentPosition(seconds);
     }},
    {"Stopping", true, [](auto& player, auto&) { player.controls.stop(); }},
    {"Stopped", true,
     [](auto& player, auto& watch) {
       player.controls.stop();
       EXPECT_TRUE(watch.AwaitColour(kNothingPlayed));
     }},
    {"OpeningAnotherFile", true, [](auto& player, auto&) { player.setURL(player.URL()); }},
    {"AfterAFileThatCannotBePlayed", false, [](auto& player, auto& watch) {
       player.setURL(u"/nowhere/nothing.mp4"_s);
       EXPECT_TRUE(watch.AwaitEnd());
     }}};

qsizetype EntryCount(const QString& folder) {
  return QDir(folder).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::System).size();
}

class PlayerEnd : public PlayerTest, public ::testing::WithParamInterface<State> {};

TEST_P(PlayerEnd, LeavesNoThreadAndNoOpenFile) {
  const QString file = MakePlain("red.mp4", "red", 20);
  const qsizetype threads = EntryCount("/proc/self/task");
  const qsizetype descriptors = EntryCount("/proc/self/fd");
  player.setURL(file);
  EXPECT_GT(EntryCount("/proc/self/task"), threads);
  ASSERT_TRUE(!GetParam().shows || watch.AwaitColour(kPlayedRed));
  GetParam().reach(player, watch);
  form.reset();
  // An idle thread of Qt's may have ended meanwhile.
  EXPECT_LE(EntryCount("/proc/self/task"), threads);
  EXPECT_LE(EntryCount("/proc/self/fd"), descriptors);
}

INSTANTIATE_TEST_SUITE_P(States, PlayerEnd, ::testing::ValuesIn(kStates),
                         [](const auto& instance) { return std::string(instance.param.name); });

}  // namespace
}  // namespace kelvane::testing
