// The player over real files: what it shows and what it does when told.
#include "platform/PlayerTest.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>

#include "support/PaintsOf.h"

namespace kelvane::testing {
namespace {

class APlayer : public PlayerTest {
 protected:
  void RightClick() const {
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(10, 10), QPoint(10, 10));
    QApplication::sendEvent(&player, &event);
  }
  // Plays a red video of that length until it shows.
  QString PlayRed(double seconds) const {
    QString path = MakePlain("red.mp4", "red", seconds);
    player.setURL(path);
    EXPECT_TRUE(watch.AwaitColour(kPlayedRed));
    return path;
  }
};

TEST_F(APlayer, RepaintsNoControlThatLiesBesideOrOverIt) {
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

TEST_F(APlayer, ShowsEveryPixelOfTheFileAsItIsFromTheTopLeftCorner) {
  const QString file = Make("test.mkv",
                            "-f lavfi -i testsrc2=size=300x170:rate=25:duration=0.04 "
                            "-vf loop=loop=100:size=1 -c:v ffv1 -pix_fmt bgr0");
  const QByteArray bytes =
      ContentOf(Make("raw.bgra", "-i " + file + " -frames:v 1 -f rawvideo -pix_fmt bgr0"));
  const QImage expected(reinterpret_cast<const uchar*>(bytes.constData()), 300, 170,
                        QImage::Format_RGB32);
  player.setURL(file);
  EXPECT_TRUE(WaitFor([&] { return Picture(player).copy(0, 0, 300, 170) == expected; }));
  EXPECT_EQ(CountOf(Picture(player).copy(300, 0, 20, 180), 0x000000), 20 * 180);
  EXPECT_EQ(CountOf(Picture(player).copy(0, 170, 320, 10), 0x000000), 320 * 10);
}

TEST_F(APlayer, CutsOffWhatIsLargerThanItself) {
  player.setURL(Make("large.mkv",
                     "-f lavfi -i color=blue:size=640x360:rate=25:duration=4 "
                     "-vf drawbox=x=0:y=0:w=10:h=10:color=red:t=fill -c:v ffv1 -pix_fmt bgr0"));
  ASSERT_TRUE(watch.AwaitColour(kPlayedRed));
  const QImage picture = Picture(player);
  EXPECT_TRUE(PlayerWatch::Like(ColorAt(picture, 9, 9), kPlayedRed)) << "in its own size";
  EXPECT_TRUE(PlayerWatch::Like(ColorAt(picture, 10, 10), kPlayedBlue)) << "in its own size";
  EXPECT_TRUE(PlayerWatch::Like(ColorAt(picture, 319, 179), kPlayedBlue));
}

// The library may leave anything in the fourth byte of a pixel.
TEST_F(APlayer, IsOpaqueOnASurfaceWithAnAlphaChannel) {
  PlayRed(5);
  QImage surface(player.size(), QImage::Format_ARGB32_Premultiplied);
  surface.fill(Qt::transparent);
  player.render(&surface);
  for (int y = 0; y < surface.height(); ++y) {
    for (int x = 0; x < surface.width(); ++x) {
      ASSERT_EQ(qAlpha(surface.pixel(x, y)), 0xff) << x << ", " << y;
    }
  }
}

TEST_F(APlayer, IsBlackAndMakesNothingBeforeAFileIsLoaded) {
  EXPECT_EQ(CountOf(Picture(player), 0x000000), 320 * 180);
  EXPECT_TRUE(player.URL().isEmpty());
  EXPECT_EQ(player.controls.currentPositionString(), QString());
  EXPECT_EQ(player.currentMediaDuration(), std::nullopt);
  player.controls.play();
  player.controls.pause();
  player.controls.stop();
  EXPECT_FALSE(watch.Made());
  RightClick();
  EXPECT_EQ(player.findChild<QMenu*>(), nullptr);
}

TEST_F(APlayer, TellsThePositionInMinutesAndTheDurationInSeconds) {
  player.setURL(MakePlain("red.mp4", "red", 5));
  EXPECT_EQ(player.controls.currentPositionString(), u"00:00"_s);
  EXPECT_NE(player.currentMediaDuration(), std::nullopt) << "0 until it is known";
  EXPECT_TRUE(WaitFor([&] { return player.controls.currentPositionString() == u"00:01"_s; }));
  EXPECT_TRUE(AwaitDuration(5));
  player.controls.stop();
  ASSERT_TRUE(watch.AwaitColour(kNothingPlayed));
  EXPECT_TRUE(AwaitDuration(5)) << "it stays loaded";
}

TEST_F(APlayer, PlaysAFileOnceAndIsBlackThenUntilItIsPlayedAgain) {
  PlayRed(0.6);
  ASSERT_TRUE(watch.AwaitEnd());
  ASSERT_TRUE(watch.AwaitColour(kNothingPlayed));
  EXPECT_EQ(player.controls.currentPositionString(), u"00:00"_s);
  player.controls.play();
  EXPECT_TRUE(watch.AwaitColour(kPlayedRed));
}

TEST_F(APlayer, PausesWithThePictureAndResumesThere) {
  PlayRed(20);
  player.controls.pause();
  ASSERT_TRUE(watch.StandsStill());
  EXPECT_TRUE(PlayerWatch::Like(watch.Colour(), kPlayedRed));
  const double position = watch.Core().Position();
  player.controls.play();
  ASSERT_TRUE(watch.Moves());
  EXPECT_GT(watch.Core().Position(), position) << "on, not from the beginning";
}

TEST_F(APlayer, PausedAtOnceDoesNotPlay) {
  player.setURL(MakePlain("red.mp4", "red", 20));
  player.controls.pause();
  ASSERT_TRUE(watch.AwaitColour(kPlayedRed));
  EXPECT_TRUE(watch.StandsStill());
  EXPECT_LT(watch.Core().Position(), 0.5);
}

TEST_F(APlayer, ReturnsToTheBeginningAndBlackWhenStopped) {
  PlayRed(20);
  ASSERT_TRUE(watch.AwaitPosition(1));
  player.controls.stop();
  ASSERT_TRUE(watch.AwaitColour(kNothingPlayed));
  EXPECT_EQ(player.controls.currentPositionString(), u"00:00"_s);
  player.controls.pause();  // has no effect while it is stopped
  player.controls.play();
  ASSERT_TRUE(watch.AwaitColour(kPlayedRed));
  EXPECT_LT(watch.Core().Position(), 1);
  EXPECT_TRUE(watch.Moves());
  EXPECT_TRUE(AwaitDuration(20));
}

TEST_F(APlayer, StoppedAndStartedAtOnceGoesOnPlaying) {
  PlayRed(20);
  ASSERT_TRUE(watch.AwaitPosition(1));
  player.controls.stop();
  player.controls.play();
  EXPECT_TRUE(WaitFor([&] { return watch.Core().Position() < 1; }));
  ASSERT_TRUE(watch.AwaitColour(kPlayedRed));
  EXPECT_TRUE(watch.Moves());
  player.controls.pause();
  EXPECT_TRUE(watch.StandsStill()) << "it knows that it plays";
  EXPECT_TRUE(PlayerWatch::Like(watch.Colour(), kPlayedRed));
}

TEST_F(APlayer, StartsTheSameFileAgainFromItsBeginningEvenWhilePaused) {
  const QString file = PlayRed(20);
  ASSERT_TRUE(watch.AwaitPosition(1));
  player.controls.pause();
  player.setURL(file);
  EXPECT_TRUE(WaitFor([&] { return watch.Core().Position() < 0.9; }));
  EXPECT_TRUE(watch.Moves());
  EXPECT_TRUE(AwaitDuration(20));
}

TEST_F(APlayer, ShowsTheLastOfSeveralFilesGivenAtOnce) {
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

TEST_F(APlayer, UnloadsWithAnEmptyFile) {
  PlayRed(20);
  player.setURL({});
  EXPECT_EQ(player.controls.currentPositionString(), QString());
  EXPECT_EQ(player.currentMediaDuration(), std::nullopt);
  EXPECT_TRUE(watch.AwaitColour(kNothingPlayed));
  player.controls.play();
  EXPECT_FALSE(watch.Core().Active());
}

TEST_F(APlayer, PrintsNothing) {
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

TEST_F(APlayer, HasAContextMenuOnThePicture) {
  PlayRed(20);
  const auto choose = [&](const char* entry) {
    RightClick();
    auto* menu = player.findChild<QMenu*>();
    ASSERT_NE(menu, nullptr);
    EXPECT_TRUE(menu->isVisible());
    for (QAction* action : menu->actions()) {
      if (action->text() == entry) action->trigger();
    }
    menu->close();
    EXPECT_TRUE(WaitFor([&] { return player.findChild<QMenu*>() == nullptr; }));
  };
  choose("Pause");
  EXPECT_TRUE(watch.StandsStill());
  choose("Play");
  EXPECT_TRUE(watch.Moves());
  choose("Stop");
  EXPECT_TRUE(watch.AwaitColour(kNothingPlayed));
}

}  // namespace
}  // namespace kelvane::testing
