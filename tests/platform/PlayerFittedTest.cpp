// The picture that fits its box, files that are opened paused, and seeks.
#include <tuple>
#include <utility>

#include "platform/PlayerTest.h"

namespace kelvane::testing {
namespace {

class PlayerFitted : public PlayerTest {
 protected:
  PlayerFitted() { player.setFitsBox(); }

  // Makes a blue video that has passed through the filters, and returns its path.
  QString Blue(const QString& size, const QString& filters = "null") const {
    return Make(
        "blue.mkv",
        u"-f lavfi -i color=blue:size=%1:rate=25:duration=20 -vf %2 -c:v ffv1 -pix_fmt bgr0"_s.arg(
            size, filters));
  }
  // Returns the rectangle that is blue; empty unless everything else is black.
  QRect BlueArea() const {
    const QImage picture = Picture(player);
    const QRect area = Ink(picture, kNothingPlayed);
    const QRgb blue = picture.pixel(area.center()) & RGB_MASK;
    return PlayerWatch::Like(blue, kPlayedBlue) && AllOf(picture, area, blue) ? area : QRect();
  }
  bool AwaitBlue(const QRect& area) const {
    return WaitFor([&] { return BlueArea() == area; });
  }
};

TEST_F(PlayerFitted, IsScaledToItsBoxBetweenBlackBarsAndKeepsTheShapeOfItsPixels) {
  struct Case {
    const char* size;
    const char* filters;
    QRect area;
  };
  for (const Case& given : {Case{"640x360", "null", {0, 0, 320, 180}},
                            {"160x90", "null", {0, 0, 320, 180}},
                            {"90x90", "null", {70, 0, 180, 180}},
                            {"640x180", "null", {0, 45, 320, 90}},
                            {"90x90", "setsar=2", {0, 10, 320, 160}},
                            {"720x576", "setsar=16/15", {40, 0, 240, 180}},
                            {"160x90", "setsar=1/2", {80, 0, 160, 180}}}) {
    SCOPED_TRACE(given.size + std::string(" ") + given.filters);
    player.setURL(Blue(given.size, given.filters));
    EXPECT_TRUE(AwaitBlue(given.area));
    EXPECT_TRUE(watch.AwaitMove());
  }
}

// The quarters of the picture have four colours. When ffmpeg decodes a file, it turns the picture
// as the file says; so ffmpeg makes the expected picture.
TEST_F(PlayerFitted, IsTurnedAsTheFileSays) {
  const QString quarters =
      "-f lavfi -i color=red:size=80x40:duration=1 -f lavfi -i color=blue:size=80x40:duration=1"
      " -f lavfi -i color=lime:size=80x40:duration=1 -f lavfi -i color=yellow:size=80x40:duration=1"
      " -lavfi xstack=inputs=4:layout=0_0|w0_0|0_h0|w0_h0 -pix_fmt yuv420p";
  const QString plain = Make("plain.mp4", quarters);
  struct Case {
    int degrees;
    QRect area;
  };
  for (const Case& given : {Case{90, {115, 0, 90, 180}},
                            {180, {0, 10, 320, 160}},
                            {270, {115, 0, 90, 180}},
                            {0, {0, 10, 320, 160}}}) {
    SCOPED_TRACE(given.degrees);
    const QString file = InFolder("turned.mp4");
    ASSERT_TRUE(MakeTurned(plain, file, given.degrees));
    const QImage expected =
        QImage(Make("turned.png", "-i " + file + " -frames:v 1")).scaled(given.area.size());
    player.OpenPaused(file);
    EXPECT_TRUE(WaitFor([&] {
      const QImage shown = Picture(player);
      const QImage inside = shown.copy(given.area);
      bool alike = Ink(shown, kNothingPlayed) == given.area;
      for (const QPoint quarter : {QPoint(1, 1), {3, 1}, {1, 3}, {3, 3}}) {
        const int x = quarter.x() * inside.width() / 4;
        const int y = quarter.y() * inside.height() / 4;
        alike = alike && PlayerWatch::Like(ColorAt(inside, x, y), ColorAt(expected, x, y));
      }
      return alike;
    }));
  }
}

TEST_F(PlayerFitted, KeepsTheShapeOfItsPixelsWhenItIsTurned) {
  const QString turned = InFolder("turned.mp4");
  ASSERT_TRUE(MakeTurned(
      Make("wide.mp4", "-f lavfi -i color=white:size=90x90:duration=1 -vf setsar=2"), turned, 90));
  player.OpenPaused(turned);
  EXPECT_TRUE(
      WaitFor([&] { return Ink(Picture(player), kNothingPlayed) == QRect(115, 0, 90, 180); }));
}

TEST_F(PlayerFitted, FollowsTheSizeOfItsBoxWhilePaused) {
  player.OpenPaused(Blue("160x90"));
  ASSERT_TRUE(AwaitBlue({0, 0, 320, 180}));
  player.setWidth(160);
  EXPECT_TRUE(AwaitBlue({0, 45, 160, 90}));
  player.setHeight(0);
  ServePendingEvents();
  player.setHeight(45);
  EXPECT_TRUE(AwaitBlue({40, 0, 80, 45}));
  EXPECT_FALSE(player.controls.playing());
}

// A file with a second each of red, blue and white, and a key frame at the beginning only.
class PlayerSeek : public PlayerFitted {
 protected:
  PlayerSeek() {
    EXPECT_TRUE(MakeColours(file, QSize(320, 180), {0xffff0000, 0xff0000ff, 0xffffffff}));
  }
  void OpenPaused() const {
    player.OpenPaused(file);
    ASSERT_TRUE(watch.AwaitColour(kPlayedRed));
  }
  void GoTo(double seconds) const { player.controls.setCurrentPosition(seconds); }

  const QString file = InFolder("colours.mp4");
  static constexpr QRgb kPlayedWhite = 0xFFFFFF;
};

TEST_F(PlayerSeek, IsNotNeededToShowTheFirstPictureOfAFileThatIsOpenedPaused) {
  OpenPaused();
  EXPECT_TRUE(watch.AwaitStandstill());
  EXPECT_EQ(player.controls.currentPosition(), 0);
  EXPECT_FALSE(player.controls.playing());
  EXPECT_EQ(player.URL(), file);
  player.controls.play();
  EXPECT_TRUE(player.controls.playing());
  EXPECT_TRUE(watch.AwaitColour(kPlayedBlue));
  OpenPaused();
  EXPECT_TRUE(watch.AwaitStandstill());
  EXPECT_EQ(player.controls.currentPosition(), 0) << "not back at the beginning";
  player.OpenPaused({});
  EXPECT_TRUE(watch.AwaitColour(kNothingPlayed));
  EXPECT_EQ(player.controls.currentPosition(), 0);
}

// A picture lasts 0.04 seconds.
TEST_F(PlayerSeek, ShowsTheFirstPictureAtOrAfterItsTimeAndStaysPaused) {
  OpenPaused();
  for (const auto& [seconds, colour, position] : {std::tuple{2.5, kPlayedWhite, 2.52},
                                                  {1.96, kPlayedBlue, 1.96},
                                                  {1.97, kPlayedWhite, 2.0},
                                                  {0.96, kPlayedRed, 0.96},
                                                  {1.0, kPlayedBlue, 1.0},
                                                  {0.0, kPlayedRed, 0.0},
                                                  {1.5, kPlayedBlue, 1.52},
                                                  {-3.0, kPlayedRed, 0.0}}) {
    SCOPED_TRACE(seconds);
    GoTo(seconds);
    EXPECT_TRUE(WaitFor([&, place = position] {
      return std::abs(player.controls.currentPosition() - place) < 0.001;
    }));
    EXPECT_TRUE(watch.AwaitColour(colour));
    EXPECT_FALSE(player.controls.playing());
  }
  EXPECT_TRUE(watch.AwaitStandstill());
}

TEST_F(PlayerSeek, LetsAPlayingFilePlayOnFromItsTime) {
  player.setURL(MakePlain("red.mp4", "red", 20));
  ASSERT_TRUE(watch.AwaitPosition(0.3));
  for (const double seconds : {12.0, 4.0}) {
    GoTo(seconds);
    EXPECT_TRUE(WaitFor([&] { return std::abs(watch.Core().Position() - seconds) < 0.3; }));
    EXPECT_TRUE(watch.AwaitMove());
    EXPECT_TRUE(player.controls.playing());
  }
}

TEST_F(PlayerSeek, GoesToTheLastPictureForATimeAfterTheEnd) {
  OpenPaused();
  for (const double seconds : {3.0, 100.0, 2.96}) {
    GoTo(0);
    EXPECT_TRUE(watch.AwaitColour(kPlayedRed));
    GoTo(seconds);
    EXPECT_TRUE(watch.AwaitColour(kPlayedWhite)) << seconds;
    EXPECT_TRUE(watch.AwaitStandstill()) << seconds;
  }
}

TEST_F(PlayerSeek, OpensAStoppedOrEndedFilePausedAtItsTime) {
  player.setURL(file);
  ASSERT_TRUE(watch.AwaitColour(kPlayedRed));
  player.controls.stop();
  GoTo(1.5);
  EXPECT_TRUE(watch.AwaitColour(kPlayedBlue));
  EXPECT_TRUE(watch.AwaitStandstill());
  player.controls.play();
  ASSERT_TRUE(watch.AwaitEnd());
  ASSERT_TRUE(watch.AwaitColour(kNothingPlayed));
  EXPECT_FALSE(player.controls.playing());
  GoTo(2.5);
  EXPECT_TRUE(watch.AwaitColour(kPlayedWhite));
  EXPECT_TRUE(watch.AwaitStandstill());
  EXPECT_FALSE(player.controls.playing());
}

TEST_F(PlayerSeek, IsNotRepeatedWhenTheFileIsPlayedAgainAfterItsEnd) {
  player.setURL(file);
  ASSERT_TRUE(watch.AwaitColour(kPlayedRed));
  GoTo(2.8);
  ASSERT_TRUE(watch.AwaitEnd());
  player.controls.play();
  EXPECT_TRUE(watch.AwaitColour(kPlayedRed));
  EXPECT_TRUE(player.controls.playing());
  EXPECT_LT(watch.Core().Position(), 1);
}

TEST_F(PlayerSeek, WaitsUntilTheFileIsOpenAndIsNotKeptForTheNextOne) {
  player.OpenPaused(file);
  GoTo(1.5);
  EXPECT_TRUE(watch.AwaitColour(kPlayedBlue));
  EXPECT_TRUE(watch.AwaitStandstill());
  player.OpenPaused(file);
  GoTo(2.5);
  player.setURL(MakePlain("red.mp4", "red", 20));
  ASSERT_TRUE(watch.AwaitColour(kPlayedRed));
  EXPECT_TRUE(watch.AwaitMove());
  EXPECT_LT(watch.Core().Position(), 2);
  GoTo(12);
  EXPECT_TRUE(watch.AwaitPosition(12)) << "a later seek wasn't done";
}

TEST_F(PlayerSeek, HasNoEffectWithoutAFiniteTimeOrAFileThatCanBePlayed) {
  OpenPaused();
  GoTo(1);
  ASSERT_TRUE(watch.AwaitColour(kPlayedBlue));
  for (const float seconds : {kNotANumber, kInfinite, -kInfinite}) GoTo(seconds);
  EXPECT_TRUE(watch.AwaitStandstill());
  EXPECT_EQ(watch.Core().Position(), 1);
  player.OpenPaused(Write("notes.txt", "no video\n"));
  GoTo(1);
  ASSERT_TRUE(watch.AwaitEnd());
  GoTo(1);
  ASSERT_TRUE(watch.AwaitEnd());
  EXPECT_TRUE(watch.AwaitColour(kNothingPlayed));
  OpenPaused();
}

}  // namespace
}  // namespace kelvane::testing
