// These tests play a real video in the main window and check its times and its sound.
#include <QPushButton>
#include <QSlider>

#include "platform/player/PlaybackCore.h"
#include "support/PlayerWatch.h"
#include "support/Videos.h"
#include "workspace/MainWindowTest.h"

namespace kelvane::testing {
namespace {

class Playback : public MainWindowTest {
 protected:
  // Makes a red video of 20 seconds and loads it.
  QString LoadRed() const {
    QString file = tools_.Path() + "/red.mp4";
    EXPECT_TRUE(MakePlainVideo(file, "red", 20));
    Pick(file, SizeText(320, 180), DurationText("00:00:20.00"));
    return file;
  }
  void RunRed() const {
    LoadRed();
    Give(RunVideo);
    ASSERT_TRUE(watch_.AwaitColour(kPlayedRed));
  }
  void StartFresh() const {
    const DialogAnswers answers({PressButton(QMessageBox::Yes)});
    Get<CommandButton>("Command1", StartFreshButton).Click(StartFreshButton);
  }

  // Lets the timer of the read-outs tick, and returns the duration and the position that they show.
  Texts ReadOuts() const {
    Tick(Get<Timer>("Timer3"));
    return {Get<Label>("Label12").Caption().toStdString(),
            Get<Label>("Label13").Caption().toStdString()};
  }

  WindowsMediaPlayer& wmp_ = Get<WindowsMediaPlayer>("wmp");
  const PlayerWatch watch_{wmp_};
};

TEST_F(Playback, StartsByRunAndNotByTheLoad) {
  const QString file = LoadRed();
  EXPECT_EQ(wmp_.URL(), "");
  EXPECT_EQ(watch_.Colour(), kNothingPlayed);
  Give(RunVideo);
  EXPECT_EQ(wmp_.URL(), file);
  EXPECT_TRUE(watch_.AwaitColour(kPlayedRed));
  EXPECT_TRUE(watch_.AwaitMove());
  EXPECT_EQ(wmp_.geometry(), QRect(0, 0, 320, 180));
}

// The path is empty, for example, after a load of a file for which no short path can be made.
TEST_F(Playback, IsNotChangedByCommandsWhileThePathIsEmpty) {
  RunRed();
  const QString former = wmp_.URL();
  Path().setText({});
  for (const Command command : {RunVideo, PauseVideo, StopVideo, CropVideo}) {
    const double position = watch_.Core().Position();
    if (command == CropVideo) {
      Cancel(command);
    } else {
      Give(command);
    }
    EXPECT_EQ(wmp_.URL(), former) << command;
    EXPECT_TRUE(watch_.AwaitMove()) << command;
    EXPECT_GT(watch_.Core().Position(), position) << command;
  }
  EXPECT_EQ(PauseState(), "Pause");
}

TEST_F(Playback, IsPausedByAFrameStepWhichDoesNotChangeThePauseState) {
  RunRed();
  wmp_.controls.step(1);
  EXPECT_TRUE(watch_.AwaitStandstill());
  EXPECT_EQ(PauseState(), "Pause");
}

TEST_F(Playback, IsPausedAndResumedByOneCommand) {
  RunRed();
  Give(PauseVideo);
  EXPECT_TRUE(watch_.AwaitStandstill());
  Give(PauseVideo);
  EXPECT_TRUE(watch_.AwaitMove());
}

TEST_F(Playback, StartsAgainByRunWhilePausedAndKeepsThePauseState) {
  RunRed();
  ASSERT_TRUE(watch_.AwaitPosition(1));
  Give(PauseVideo);
  Give(RunVideo);
  EXPECT_EQ(PauseState(), "Paused");
  EXPECT_TRUE(WaitFor([&] { return watch_.Core().Position() < 1; }));
  EXPECT_TRUE(watch_.AwaitMove());
  Give(PauseVideo);
  EXPECT_EQ(PauseState(), "Pause");
  EXPECT_TRUE(watch_.AwaitMove()) << "the second Pause has stopped a video that played";
  Give(PauseVideo);
  EXPECT_TRUE(watch_.AwaitStandstill());
}

TEST_F(Playback, RunsAndStopsByTheHiddenButtonsAsWell) {
  const auto push = [this](Command command) {
    Get<CommandButton>("Command1", command).findChild<QPushButton*>()->click();
  };
  RunRed();
  Give(StopVideo);
  ASSERT_TRUE(watch_.AwaitColour(kNothingPlayed));
  push(RunVideo);
  EXPECT_TRUE(watch_.AwaitColour(kPlayedRed));
  push(StopVideo);
  EXPECT_TRUE(watch_.AwaitColour(kNothingPlayed));
}

TEST_F(Playback, EndsByStopAndStartsAgainByTheSecondPause) {
  RunRed();
  Give(StopVideo);
  EXPECT_TRUE(watch_.AwaitColour(kNothingPlayed));
  Give(PauseVideo);
  EXPECT_EQ(PauseState(), "Paused");
  EXPECT_EQ(watch_.Colour(), kNothingPlayed);
  Give(PauseVideo);
  EXPECT_EQ(PauseState(), "Pause");
  EXPECT_TRUE(watch_.AwaitColour(kPlayedRed));
}

TEST_F(Playback, IsPausedBeforeACropAsksForItsFile) {
  RunRed();
  {
    const DialogAnswers answers({[this](QDialog& dialog) {
      EXPECT_TRUE(watch_.AwaitStandstill()) << "the video isn't paused while the dialog is open";
      dialog.reject();
    }});
    Give(CropVideo);
  }
  EXPECT_EQ(PauseState(), "Pause");
  EXPECT_TRUE(watch_.AwaitStandstill());
}

TEST_F(Playback, GoesOnDuringAPreviewAndALoad) {
  RunRed();
  const QString former = wmp_.URL();
  Give(PreviewCroppedVideo);
  LoadVideoOf(640, 360);
  EXPECT_EQ(wmp_.URL(), former);
  EXPECT_TRUE(watch_.AwaitMove());
}

TEST_F(Playback, EndsWithAFreshStartWhichClearsTheReadOuts) {
  RunRed();
  ASSERT_TRUE(watch_.AwaitPosition(1));
  EXPECT_EQ(ReadOuts(), (Texts{"0:00:20", "00:01"}));
  StartFresh();
  EXPECT_EQ(wmp_.URL(), "");
  EXPECT_TRUE(WaitFor([&] { return watch_.Core().Position() == 0; }));
  EXPECT_TRUE(Get<Timer>("Timer3").Enabled());
  EXPECT_TRUE(WaitFor([&] { return ReadOuts() == Texts{"0:00:00", "00:00"}; }));
}

TEST_F(Playback, EndsWithTheWindow) {
  RunRed();
  form_->Unload();
  EXPECT_TRUE(watch_.AwaitColour(kNothingPlayed));
}

TEST_F(Playback, ShowsZeroTimesWithoutAVideoFromTheFirstTickOn) {
  EXPECT_EQ(Get<Label>("Label12").Caption(), "00:00:00");
  EXPECT_EQ(Get<Label>("Label13").Caption(), "00");
  EXPECT_EQ(ReadOuts(), (Texts{"0:00:00", "00:00"}));
}

TEST_F(Playback, ShowsDurationAndPositionAndOnlyTheDurationAfterAStop) {
  RunRed();
  ASSERT_TRUE(watch_.AwaitPosition(1));
  ASSERT_TRUE(WaitFor([&] { return wmp_.currentMediaDuration() > 0.0; }));
  EXPECT_EQ(ReadOuts(), (Texts{"0:00:20", "00:01"}));
  Give(StopVideo);
  ASSERT_TRUE(watch_.AwaitColour(kNothingPlayed));
  EXPECT_EQ(ReadOuts(), (Texts{"0:00:20", "00:00"}));
}

TEST_F(Playback, ShowsZeroTimesForAFileThatCannotBePlayed) {
  Pick(tools_.MakeFile("notes.txt"));
  Give(RunVideo);
  ASSERT_TRUE(watch_.AwaitEnd());
  EXPECT_EQ(ReadOuts(), (Texts{"0:00:00", "00:00"}));
}

class Sound : public MainWindowTest {
 protected:
  std::string VolumeCaption() const { return Get<Label>("Label8").Caption().toStdString(); }
  std::string BalanceCaption() const { return Get<Label>("Label9").Caption().toStdString(); }

  WindowsMediaPlayer::Settings& sound_ = Get<WindowsMediaPlayer>("wmp").settings;
};

TEST_F(Sound, HasTheVolumeOfItsSlider) {
  EXPECT_EQ(sound_.volume(), 30);
  for (const int value : {0, 100, 7}) {
    Get<Slider>("Slider2").setValue(value);
    EXPECT_EQ(sound_.volume(), value);
    EXPECT_EQ(VolumeCaption(), "Audio Volume " + std::to_string(value) + "%");
  }
}

// The minus signs are intended.
TEST_F(Sound, HasTheBalanceOfItsSlider) {
  EXPECT_EQ(sound_.balance(), 0);
  for (const auto& [value, caption] : {std::pair(-40, "Audio Balance 100% Left : -40% Right"),
                                       {40, "Audio Balance -40% Left : 100% Right"},
                                       {0, "Audio Balance -0% Left : 100% Right"}}) {
    Get<Slider>("Slider3").setValue(value);
    EXPECT_EQ(sound_.balance(), value);
    EXPECT_EQ(BalanceCaption(), caption);
  }
}

TEST_F(Sound, FollowsTheThumbsWhileTheyAreDragged) {
  const auto drag = [this](const char* slider, int value) {
    auto* thumb = Get<Slider>(slider).findChild<QSlider*>();
    thumb->setSliderDown(true);
    thumb->setSliderPosition(value);
  };
  drag("Slider2", 64);
  EXPECT_EQ(sound_.volume(), 64);
  EXPECT_EQ(VolumeCaption(), "Audio Volume 64%");
  drag("Slider3", -25);
  EXPECT_EQ(sound_.balance(), -25);
  EXPECT_EQ(BalanceCaption(), "Audio Balance 100% Left : -25% Right");
}

}  // namespace
}  // namespace kelvane::testing
