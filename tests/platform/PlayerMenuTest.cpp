// The player's context menu: its entries, and what they do.
#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>

#include "platform/PlayerTest.h"

namespace kelvane::testing {
namespace {

constexpr QRgb kPlayedWhite = 0xFFFFFF;
constexpr double kSecondsPerPicture = 0.04;

class PlayerMenu : public PlayerTest {
 protected:
  QMenu* Open() const {
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(10, 10), QPoint(10, 10));
    QApplication::sendEvent(&player, &event);
    return player.findChild<QMenu*>();
  }
  void Close(QMenu* menu) const {
    menu->close();
    EXPECT_TRUE(WaitFor([&] { return player.findChild<QMenu*>() == nullptr; }));
  }
  static QAction& Entry(const QMenu& menu, const QString& caption) {
    for (QAction* entry : menu.actions()) {
      if (entry->text() == caption) return *entry;
    }
    throw std::out_of_range(caption.toStdString());
  }
  void Choose(const QString& caption) const {
    QMenu* menu = Open();
    ASSERT_NE(menu, nullptr);
    EXPECT_TRUE(menu->isVisible());
    EXPECT_TRUE(Entry(*menu, caption).isEnabled()) << caption.toStdString();
    Entry(*menu, caption).trigger();
    Close(menu);
  }
  // Returns the entries, one to a line: a dimmed one in brackets, a separator as a hyphen.
  std::string Entries() const {
    QMenu* menu = Open();
    std::string lines;
    for (const QAction* entry : menu->actions()) {
      const std::string caption = entry->isSeparator() ? "-" : entry->text().toStdString();
      lines += (entry->isEnabled() ? caption : "[" + caption + "]") + "\n";
    }
    Close(menu);
    return lines;
  }
  // Waits until the position is `seconds` or a seek to there is under way.
  bool AwaitExactPosition(double seconds) const {
    constexpr double kNear = 0.001;
    return WaitFor([&] { return std::abs(watch.Core().Position() - seconds) < kNear; });
  }
  // Plays a red video of that length and waits until it is visible.
  void PlayRed(double seconds) const {
    player.setURL(MakePlain("red.mp4", "red", seconds));
    ASSERT_TRUE(watch.AwaitColour(kPlayedRed));
  }
  // Opens a video with a second each of red, blue and white, paused at `seconds`. It has a key
  // frame at the beginning only.
  void OpenColours(double seconds) const {
    const QString path = InFolder("colours.mp4");
    ASSERT_TRUE(MakeColours(path, QSize(320, 180), {0xffff0000, 0xff0000ff, 0xffffffff}));
    player.OpenPaused(path);
    player.controls.setCurrentPosition(seconds);
    ASSERT_TRUE(AwaitExactPosition(seconds));
  }
};

TEST_F(PlayerMenu, PlaysPausesAndStops) {
  PlayRed(20);
  Choose("Pause");
  EXPECT_TRUE(watch.AwaitStandstill());
  Choose("Play");
  EXPECT_TRUE(watch.AwaitMove());
  Choose("Stop");
  EXPECT_TRUE(watch.AwaitColour(kNothingPlayed));
}

TEST_F(PlayerMenu, DimsWhatHasNoEffect) {
  const std::string all =
      "Play\nPause\nStop\n-\nBack 10 Seconds\nForward 10 Seconds\nPrevious Frame\nNext Frame\n"
      "Back to the Beginning\n";
  const std::string onlyPlay =
      "Play\n[Pause]\n[Stop]\n-\n[Back 10 Seconds]\n[Forward 10 Seconds]\n[Previous Frame]\n"
      "[Next Frame]\n[Back to the Beginning]\n";
  player.setURL(Write("notes.txt", "no video\n"));
  ASSERT_TRUE(watch.AwaitEnd());
  EXPECT_EQ(Entries(), onlyPlay) << "a file that can't be played";
  PlayRed(20);
  EXPECT_EQ(Entries(), all);
  player.controls.pause();
  EXPECT_EQ(Entries(), std::string(all).replace(all.find("Pause"), 5, "[Pause]"));
  player.controls.stop();
  EXPECT_EQ(Entries(), onlyPlay);
}

TEST_F(PlayerMenu, HasNoEffectOnAFileThatHasEndedSinceTheMenuOpened) {
  PlayRed(20);
  for (const char* caption : {"Pause", "Stop", "Back 10 Seconds", "Forward 10 Seconds",
                              "Previous Frame", "Next Frame", "Back to the Beginning"}) {
    QMenu* menu = Open();
    player.controls.stop();
    Entry(*menu, caption).trigger();
    EXPECT_FALSE(watch.Core().Active()) << caption;
    Close(menu);
    player.controls.play();
  }
}

TEST_F(PlayerMenu, SkipsTenSecondsFromThePictureShownAndStaysPaused) {
  PlayRed(25);
  player.controls.setCurrentPosition(2.52);
  player.controls.pause();
  player.controls.setCurrentPosition(2.52);
  ASSERT_TRUE(AwaitExactPosition(2.52));
  Choose("Forward 10 Seconds");
  EXPECT_TRUE(AwaitExactPosition(12.52));
  Choose("Back 10 Seconds");
  EXPECT_TRUE(AwaitExactPosition(2.52));
  EXPECT_TRUE(watch.AwaitStandstill());
  EXPECT_FALSE(player.controls.playing());
}

TEST_F(PlayerMenu, AddsUpSkipsThatComeDuringASeek) {
  PlayRed(40);
  player.controls.pause();
  player.controls.setCurrentPosition(1);
  for (int i = 0; i < 3; ++i) Choose("Forward 10 Seconds");
  EXPECT_EQ(player.controls.currentPositionString(), "00:31");
  Choose("Back 10 Seconds");
  EXPECT_EQ(player.controls.currentPosition(), 21);
  EXPECT_TRUE(watch.AwaitStandstill());
  EXPECT_TRUE(AwaitExactPosition(21));
}

TEST_F(PlayerMenu, SkipsFromThePositionThatASeekHasJustReached) {
  PlayRed(60);
  player.controls.pause();
  player.controls.setCurrentPosition(0);
  ASSERT_TRUE(AwaitExactPosition(0));
  for (double goal = 10; goal < 55; goal += 10) {
    Choose("Forward 10 Seconds");
    EXPECT_TRUE(HoldsFor([&] { return player.controls.currentPosition() == goal; }, 200ms));
  }
}

TEST_F(PlayerMenu, SkipsAtMostToTheBeginningAndToTheLastPicture) {
  OpenColours(1.4);
  Choose("Forward 10 Seconds");
  EXPECT_TRUE(watch.AwaitColour(kPlayedWhite));
  EXPECT_TRUE(AwaitExactPosition(2.96));
  Choose("Back 10 Seconds");
  EXPECT_TRUE(watch.AwaitColour(kPlayedRed));
  EXPECT_TRUE(AwaitExactPosition(0));
  player.controls.setCurrentPosition(1.4);
  ASSERT_TRUE(AwaitExactPosition(1.4));
  Choose("Forward 10 Seconds");
  Choose("Back 10 Seconds");
  EXPECT_TRUE(AwaitExactPosition(0)) << "the part of a skip beyond the end must not count";
}

TEST_F(PlayerMenu, SkipsInAPlayingFileWhichPlaysOnAndEndsAfterItsLastPicture) {
  PlayRed(25);
  Choose("Forward 10 Seconds");
  EXPECT_TRUE(watch.AwaitPosition(10));
  EXPECT_TRUE(watch.AwaitMove());
  EXPECT_TRUE(player.controls.playing());
  Choose("Forward 10 Seconds");
  Choose("Forward 10 Seconds");
  EXPECT_TRUE(watch.AwaitEnd());
  EXPECT_TRUE(watch.AwaitColour(kNothingPlayed));
  EXPECT_EQ(player.controls.currentPosition(), 0);
}

TEST_F(PlayerMenu, StepsToTheNextAndToThePreviousPicture) {
  OpenColours(1.0);
  ASSERT_TRUE(watch.AwaitColour(kPlayedBlue));
  Choose("Previous Frame");
  EXPECT_TRUE(watch.AwaitColour(kPlayedRed));
  EXPECT_TRUE(AwaitExactPosition(0.96));
  Choose("Previous Frame");
  EXPECT_TRUE(AwaitExactPosition(0.92));
  Choose("Next Frame");
  EXPECT_TRUE(AwaitExactPosition(0.96));
  Choose("Next Frame");
  EXPECT_TRUE(watch.AwaitColour(kPlayedBlue));
  EXPECT_TRUE(AwaitExactPosition(1.0));
  EXPECT_TRUE(watch.AwaitStandstill());
}

TEST_F(PlayerMenu, AddsUpStepsThatComeInQuickSuccession) {
  OpenColours(1.48);
  for (int i = 0; i < 5; ++i) player.controls.step(1);
  EXPECT_TRUE(AwaitExactPosition(1.48 + 5 * kSecondsPerPicture));
  for (int i = 0; i < 5; ++i) player.controls.step(-1);
  EXPECT_TRUE(AwaitExactPosition(1.48));
  player.controls.setCurrentPosition(0.48);
  Choose("Next Frame");
  Choose("Next Frame");
  EXPECT_TRUE(AwaitExactPosition(0.56)) << "the steps don't count from the picture that is sought";
  EXPECT_TRUE(watch.AwaitStandstill());
}

TEST_F(PlayerMenu, PausesAPlayingFileByAStep) {
  PlayRed(20);
  for (const char* step : {"Next Frame", "Previous Frame"}) {
    player.controls.play();
    ASSERT_TRUE(watch.AwaitMove());
    Choose(step);
    EXPECT_FALSE(player.controls.playing());
    EXPECT_TRUE(watch.AwaitStandstill());
    EXPECT_TRUE(PlayerWatch::Like(watch.Colour(), kPlayedRed));
  }
}

TEST_F(PlayerMenu, PlaysOnIfPlayIsChosenBeforeTheStepsAreDone) {
  PlayRed(20);
  for (const char* step : {"Next Frame", "Previous Frame"}) {
    Choose(step);
    Choose(step);
    Choose("Play");
    EXPECT_TRUE(player.controls.playing());
    EXPECT_TRUE(watch.AwaitPosition(watch.Core().Position() + 1)) << step;
  }
}

TEST_F(PlayerMenu, StepsFromThePositionThatPlayingHasReachedSinceAnEarlierStep) {
  OpenColours(0);
  for (const char* step : {"Next Frame", "Previous Frame"}) {
    player.controls.setCurrentPosition(1);
    ASSERT_TRUE(AwaitExactPosition(1));
    Choose("Next Frame");
    ASSERT_TRUE(AwaitExactPosition(1.04));
    Choose("Play");
    Choose(step);
    EXPECT_TRUE(WaitFor([&] { return watch.Core().Position() > 0.9; })) << step;
    EXPECT_TRUE(watch.AwaitStandstill());
    EXPECT_LT(watch.Core().Position(), 2) << step;
    player.controls.setCurrentPosition(2);
    EXPECT_TRUE(AwaitExactPosition(2)) << step;
  }
}

TEST_F(PlayerMenu, KeepsTheFirstAndTheLastPictureAtAStepBeyondThem) {
  OpenColours(0);
  ASSERT_TRUE(watch.AwaitColour(kPlayedRed));
  Choose("Previous Frame");
  EXPECT_TRUE(watch.AwaitStandstill());
  EXPECT_EQ(watch.Core().Position(), 0);
  player.controls.setCurrentPosition(2.92);
  ASSERT_TRUE(AwaitExactPosition(2.92));
  for (int i = 0; i < 4; ++i) Choose("Next Frame");
  EXPECT_TRUE(AwaitExactPosition(2.96));
  EXPECT_TRUE(watch.AwaitStandstill());
  EXPECT_TRUE(PlayerWatch::Like(watch.Colour(), kPlayedWhite));
  Choose("Previous Frame");
  EXPECT_TRUE(AwaitExactPosition(2.92));
}

TEST_F(PlayerMenu, PlaysOnFromTheLastPictureToTheEndOfTheFile) {
  OpenColours(2.92);
  for (int i = 0; i < 3; ++i) Choose("Next Frame");
  ASSERT_TRUE(watch.AwaitStandstill());
  Choose("Play");
  EXPECT_TRUE(watch.AwaitEnd());
  EXPECT_TRUE(watch.AwaitColour(kNothingPlayed));
}

TEST_F(PlayerMenu, KeepsTheLastPictureAtASkipOrAStepIfTheSoundIsLonger) {
  player.OpenPaused(Make("tail.mp4",
                         "-f lavfi -i color=red:size=320x180:rate=25:duration=1 -f lavfi -i "
                         "sine=duration=4 -pix_fmt yuv420p"));
  Choose("Forward 10 Seconds");
  EXPECT_TRUE(watch.AwaitColour(kPlayedRed));
  Choose("Next Frame");
  EXPECT_TRUE(watch.AwaitStandstill());
  EXPECT_TRUE(PlayerWatch::Like(watch.Colour(), kPlayedRed));
}

TEST_F(PlayerMenu, GoesBackToTheBeginningPlayingOrPaused) {
  PlayRed(20);
  player.controls.setCurrentPosition(10);
  ASSERT_TRUE(watch.AwaitPosition(10));
  Choose("Back to the Beginning");
  EXPECT_TRUE(WaitFor([&] { return watch.Core().Position() < 1; }));
  EXPECT_TRUE(watch.AwaitMove());
  EXPECT_TRUE(player.controls.playing());
  player.controls.pause();
  player.controls.setCurrentPosition(10);
  ASSERT_TRUE(AwaitExactPosition(10));
  Choose("Back to the Beginning");
  EXPECT_TRUE(AwaitExactPosition(0));
  EXPECT_TRUE(watch.AwaitStandstill());
}

TEST_F(PlayerMenu, StepsAndSkipsInAPictureThatFitsItsBox) {
  player.setFitsBox();
  OpenColours(1.0);
  Choose("Previous Frame");
  EXPECT_TRUE(watch.AwaitColour(kPlayedRed));
  Choose("Next Frame");
  EXPECT_TRUE(watch.AwaitColour(kPlayedBlue));
  Choose("Forward 10 Seconds");
  EXPECT_TRUE(watch.AwaitColour(kPlayedWhite));
}

// A step has no effect on a paused file that has no picture, or only a cover.
TEST_F(PlayerMenu, SkipsInASoundFileAfterAStepWithoutEffect) {
  const QString sound = "-f lavfi -i sine=duration=30";
  for (const QString& file :
       {Make("sound.mp3", sound),
        Make("cover.mp3", sound + " -f lavfi -i color=red:size=320x180:duration=0.04 -map 0 -map 1 "
                                  "-c:v mjpeg -disposition:v attached_pic")}) {
    for (const char* step : {"Previous Frame", "Next Frame"}) {
      player.OpenPaused(file);
      Choose(step);
      Choose("Forward 10 Seconds");
      EXPECT_TRUE(watch.AwaitPosition(9.9)) << file.toStdString() << ", " << step;
      EXPECT_TRUE(watch.AwaitStandstill());
      EXPECT_LT(watch.Core().Position(), 10.1);
    }
  }
}

}  // namespace
}  // namespace kelvane::testing
