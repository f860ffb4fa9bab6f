// The player over real files: what it shows and what it does when told.
#include "platform/PlayerTest.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QFile>
#include <QMenu>

#include "platform/ScrollBars.h"
#include "support/PaintsOf.h"

namespace kelvane::testing {

namespace {

class APlayer : public PlayerTest {
 protected:
  static constexpr int kAWhile = 300;  // ms
};

TEST_F(APlayer, RepaintsNoControlThatLiesBesideOrOverIt) {
  TestForm window(Controls{Design(kHScrollBar, "HScroll1", {0, 160, 266.6667F, 17}),
                           Design(kPictureBox, "Picture1", {20, 20, 5, 100}),
                           Design(kWindowsMediaPlayer, "wmp", {0, 0, 320, 180})});
  window.Open();
  const PaintsOf pictures("wmp");
  const PaintsOf scrollBars("HScroll1");
  const PaintsOf bars("Picture1");
  window.Find<WindowsMediaPlayer>("wmp").setURL(MakePlain("red.mp4", "red", 3));
  constexpr int kSome = 20;
  ASSERT_TRUE(PumpUntil([&] { return pictures.Count() > kSome; }));
  EXPECT_EQ(scrollBars.Count(), 0);
  EXPECT_EQ(bars.Count(), 0);
}

TEST_F(APlayer, StartsAFileByItself) {
  player.setURL(MakePlain("red.mp4", "red", 5));
  EXPECT_TRUE(watch.AwaitColour(kPlayedRed));
  EXPECT_TRUE(watch.Moves());
}

TEST_F(APlayer, ShowsEveryPixelOfTheFileAsItIsFromTheTopLeftCorner) {
  const QString file =
      Make("test.mkv", {"-f", "lavfi", "-i", "testsrc2=size=300x170:rate=25:duration=0.04", "-vf",
                        "loop=loop=100:size=1", "-c:v", "ffv1", "-pix_fmt", "bgr0"});
  const QString rawFile =
      Make("raw.bgra", {"-i", file, "-frames:v", "1", "-f", "rawvideo", "-pix_fmt", "bgr0"});
  QFile raw(rawFile);
  ASSERT_TRUE(raw.open(QIODevice::ReadOnly));
  const QByteArray bytes = raw.readAll();
  const QImage expected(reinterpret_cast<const uchar*>(bytes.constData()), 300, 170,
                        QImage::Format_RGB32);
  player.setURL(file);
  EXPECT_TRUE(PumpUntil([&] { return Picture(player).copy(0, 0, 300, 170) == expected; }));
  EXPECT_EQ(CountOf(Picture(player).copy(300, 0, 20, 180), 0x000000), 20 * 180);
  EXPECT_EQ(CountOf(Picture(player).copy(0, 170, 320, 10), 0x000000), 320 * 10);
}

TEST_F(APlayer, CutsOffWhatIsLargerThanItself) {
  const QString file =
      Make("large.mkv",
           {"-f", "lavfi", "-i", "color=blue:size=640x360:rate=25:duration=4", "-vf",
            "drawbox=x=0:y=0:w=10:h=10:color=red:t=fill", "-c:v", "ffv1", "-pix_fmt", "bgr0"});
  player.setURL(file);
  ASSERT_TRUE(watch.AwaitColour(kPlayedRed));
  const QImage picture = Picture(player);
  EXPECT_TRUE(PlayerWatch::Like(ColorAt(picture, 9, 9), 0xFE0000)) << "in its own size";
  EXPECT_TRUE(PlayerWatch::Like(ColorAt(picture, 10, 10), kPlayedBlue)) << "in its own size";
  EXPECT_TRUE(PlayerWatch::Like(ColorAt(picture, 319, 179), kPlayedBlue));
}

// The player itself may leave anything in the fourth byte of a pixel.
TEST_F(APlayer, LetsNothingThroughOnASurfaceThatHasAnAlpha) {
  player.setURL(MakePlain("red.mp4", "red", 5));
  ASSERT_TRUE(watch.AwaitColour(kPlayedRed));
  QImage surface(player.size(), QImage::Format_ARGB32_Premultiplied);
  surface.fill(Qt::transparent);
  player.render(&surface);
  for (int y = 0; y < surface.height(); ++y) {
    for (int x = 0; x < surface.width(); ++x) {
      ASSERT_EQ(qAlpha(surface.pixel(x, y)), 0xff) << x << ", " << y;
    }
  }
}

TEST_F(APlayer, IsBlackBeforeAnythingIsPlayed) {
  EXPECT_EQ(CountOf(Picture(player), 0x000000), 320 * 180);
}

TEST_F(APlayer, HasNoPositionAndNoDurationBeforeAnythingIsLoaded) {
  EXPECT_TRUE(player.URL().isEmpty());
  EXPECT_EQ(player.controls.currentPositionString(), QString());
  EXPECT_EQ(player.currentMediaDuration(), std::nullopt);
  player.controls.play();
  player.controls.pause();
  player.controls.stop();
  EXPECT_FALSE(watch.Made()) << "nothing was made for it";
}

TEST_F(APlayer, TellsThePositionInMinutesAndSeconds) {
  player.setURL(MakePlain("red.mp4", "red", 5));
  EXPECT_EQ(player.controls.currentPositionString(), u"00:00"_s);
  EXPECT_TRUE(PumpUntil([&] { return player.controls.currentPositionString() == "00:01"_L1; }));
}

TEST_F(APlayer, TellsTheDurationInSecondsOnceItIsKnown) {
  player.setURL(MakePlain("red.mp4", "red", 5));
  EXPECT_EQ(player.currentMediaDuration(), 0.0);
  EXPECT_TRUE(PumpUntil([&] { return player.currentMediaDuration() != 0.0; }));
  EXPECT_NEAR(*player.currentMediaDuration(), 5, 0.1);
  player.controls.stop();
  ASSERT_TRUE(watch.AwaitColour(kNothingPlayed));
  EXPECT_NEAR(*player.currentMediaDuration(), 5, 0.1) << "it stays loaded";
}

TEST_F(APlayer, PlaysAFileOnceAndIsBlackThen) {
  player.setURL(MakePlain("red.mp4", "red", 0.6));
  ASSERT_TRUE(watch.AwaitColour(kPlayedRed));
  ASSERT_TRUE(watch.AwaitColour(kNothingPlayed));
  EXPECT_EQ(player.controls.currentPositionString(), u"00:00"_s);
  EXPECT_TRUE(HoldsFor(
      kAWhile, [&] { return watch.Colour() == kNothingPlayed && watch.Core().Position() == 0; }));
}

TEST_F(APlayer, PlaysAFileThatHasEndedFromItsBeginning) {
  player.setURL(MakePlain("red.mp4", "red", 0.6));
  ASSERT_TRUE(watch.AwaitColour(kPlayedRed));
  ASSERT_TRUE(watch.AwaitEnd());
  ASSERT_TRUE(watch.AwaitColour(kNothingPlayed));
  player.controls.play();
  EXPECT_TRUE(watch.AwaitColour(kPlayedRed));
}

TEST_F(APlayer, PausesWithThePictureAndGoesOn) {
  player.setURL(MakePlain("red.mp4", "red", 20));
  ASSERT_TRUE(watch.AwaitColour(kPlayedRed));
  player.controls.pause();
  ASSERT_TRUE(watch.StandsStill());
  EXPECT_TRUE(PlayerWatch::Like(watch.Colour(), 0xFD0000));
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

TEST_F(APlayer, GoesBackToTheBeginningAndBlackWhenStopped) {
  player.setURL(MakePlain("red.mp4", "red", 20));
  ASSERT_TRUE(watch.AwaitPosition(1));
  player.controls.stop();
  ASSERT_TRUE(watch.AwaitColour(kNothingPlayed));
  EXPECT_EQ(player.controls.currentPositionString(), u"00:00"_s);
  player.controls.play();
  ASSERT_TRUE(watch.AwaitColour(kPlayedRed));
  EXPECT_LT(watch.Core().Position(), 1);
  EXPECT_TRUE(watch.Moves());
  EXPECT_NEAR(player.currentMediaDuration().value_or(0), 20, 0.1);
}

TEST_F(APlayer, StoppedAndStartedAtOnceGoesOnPlaying) {
  player.setURL(MakePlain("red.mp4", "red", 20));
  ASSERT_TRUE(watch.AwaitPosition(1));
  player.controls.stop();
  player.controls.play();
  EXPECT_TRUE(PumpUntil([&] { return watch.Core().Position() < 1; }));
  ASSERT_TRUE(watch.AwaitColour(kPlayedRed));
  EXPECT_TRUE(watch.Moves());
  player.controls.pause();
  EXPECT_TRUE(watch.StandsStill()) << "it knows that it plays";
  EXPECT_TRUE(PlayerWatch::Like(watch.Colour(), 0xFD0000));
}

TEST_F(APlayer, IsNotPausedAfterTheEndOrAStop) {
  player.setURL(MakePlain("red.mp4", "red", 3));
  ASSERT_TRUE(watch.AwaitColour(kPlayedRed));
  player.controls.stop();
  ASSERT_TRUE(watch.AwaitColour(kNothingPlayed));
  player.controls.pause();
  player.controls.play();
  ASSERT_TRUE(watch.AwaitColour(kPlayedRed));
  EXPECT_TRUE(watch.Moves());
}

TEST_F(APlayer, StartsTheSameFileAgainFromItsBeginningEvenWhilePaused) {
  const QString file = MakePlain("red.mp4", "red", 20);
  player.setURL(file);
  ASSERT_TRUE(watch.AwaitPosition(1));
  player.controls.pause();
  player.setURL(file);
  EXPECT_TRUE(PumpUntil([&] { return watch.Core().Position() < 0.9; }));
  EXPECT_TRUE(watch.Moves());
  EXPECT_NEAR(player.currentMediaDuration().value_or(0), 20, 0.1);
}

TEST_F(APlayer, ShowsTheLastOfSeveralFilesGivenAtOnce) {
  const QString red = MakePlain("red.mp4", "red", 5);
  const QString blue = MakePlain("blue.mp4", "blue", 5);
  for (int round = 0; round < 10; ++round) {
    player.setURL(red);
    player.setURL(blue);
  }
  ASSERT_TRUE(watch.AwaitColour(kPlayedBlue));
  EXPECT_TRUE(HoldsFor(kAWhile, [&] { return PlayerWatch::Like(watch.Colour(), kPlayedBlue); }));
  EXPECT_TRUE(watch.Moves());
}

TEST_F(APlayer, UnloadsWithAnEmptyFile) {
  player.setURL(MakePlain("red.mp4", "red", 20));
  ASSERT_TRUE(watch.AwaitColour(kPlayedRed));
  player.setURL(QString());
  EXPECT_EQ(player.controls.currentPositionString(), QString());
  EXPECT_EQ(player.currentMediaDuration(), std::nullopt);
  EXPECT_TRUE(watch.AwaitColour(kNothingPlayed));
  player.controls.play();
  EXPECT_TRUE(HoldsFor(kAWhile, [&] { return watch.Colour() == kNothingPlayed; }));
}

TEST_F(APlayer, PlaysAFileWithBlanksAndForeignLettersInItsName) {
  player.setURL(MakePlain(u"rote Fl\u00e4che \u8d64.mp4"_s, "red", 5));
  EXPECT_TRUE(watch.AwaitColour(kPlayedRed));
}

TEST_F(APlayer, PrintsNothing) {
  ::testing::internal::CaptureStdout();
  ::testing::internal::CaptureStderr();
  player.setURL(MakePlain("red.mp4", "red", 1));
  const bool played = watch.AwaitColour(kPlayedRed) && watch.AwaitColour(kNothingPlayed);
  player.setURL(u"/nowhere/nothing.mp4"_s);
  const bool failed = watch.AwaitEnd();
  form.reset();
  EXPECT_EQ(::testing::internal::GetCapturedStdout(), "");
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
  EXPECT_TRUE(played);
  EXPECT_TRUE(failed);
}

TEST_F(APlayer, OffersAMenuOnThePicture) {
  player.setURL(MakePlain("red.mp4", "red", 20));
  ASSERT_TRUE(watch.AwaitColour(kPlayedRed));
  const auto choose = [&](const char* entry) {
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(10, 10), QPoint(10, 10));
    QApplication::sendEvent(&player, &event);
    auto* menu = player.findChild<QMenu*>();
    ASSERT_NE(menu, nullptr);
    EXPECT_TRUE(menu->isVisible());
    for (QAction* action : menu->actions()) {
      if (action->text() == QLatin1String(entry)) action->trigger();
    }
    menu->close();
    EXPECT_TRUE(PumpUntil([&] { return player.findChild<QMenu*>() == nullptr; }));
  };
  choose("Pause");
  EXPECT_TRUE(watch.StandsStill());
  choose("Play");
  EXPECT_TRUE(watch.Moves());
  choose("Stop");
  EXPECT_TRUE(watch.AwaitColour(kNothingPlayed));
}

TEST_F(APlayer, OffersNoMenuBeforeAnythingIsLoaded) {
  QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(10, 10), QPoint(10, 10));
  QApplication::sendEvent(&player, &event);
  EXPECT_EQ(player.findChild<QMenu*>(), nullptr);
}

}  // namespace
}  // namespace kelvane::testing
