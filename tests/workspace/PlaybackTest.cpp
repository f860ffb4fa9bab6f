// The player in the main window: the commands over a real video, the read-outs and the sound.
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
  // Makes a red video and loads it.
  QString LoadRed(double seconds = 20) const {
    QString file = tools_.Path() + QStringLiteral("/red.mp4");
    EXPECT_TRUE(MakePlainVideo(file, QStringLiteral("red"), seconds));
    Pick(file, SizeText(320, 180), DurationText("00:00:20.00"));
    return file;
  }
  void RunRed() const {
    LoadRed();
    Give(RunVideo);
    ASSERT_TRUE(watch_.AwaitColour(kPlayedRed));
  }

  void PushHiddenButton(int index) const {
    Get<CommandButton>("Command1", index).findChild<QPushButton*>()->click();
  }
  void StartFresh() const {
    const DialogAnswers answers({PressButton(QMessageBox::Yes)});
    PushHiddenButton(StartFreshButton);
  }

  std::string PauseState() const {
    return Get<CommandButton>("Command1", PauseVideo).Caption().toStdString();
  }
  std::string Duration() const { return Get<Label>("Label12").Caption().toStdString(); }
  std::string Position() const { return Get<Label>("Label13").Caption().toStdString(); }

  WindowsMediaPlayer& wmp_ = Get<WindowsMediaPlayer>("wmp");
  const PlayerWatch watch_{wmp_};
};

TEST_F(Playback, OfNothingIsNeitherRunNorPausedNorStopped) {
  for (const Command command : {RunVideo, PauseVideo, StopVideo}) Give(command);
  EXPECT_TRUE(wmp_.URL().isEmpty());
  EXPECT_FALSE(watch_.Made());
  EXPECT_EQ(PauseState(), "Pause");
}

// As a load leaves it whose file has no short path.
TEST_F(Playback, GoesOnUntouchedByCommandsThatFindNoPathOnShow) {
  RunRed();
  ASSERT_TRUE(watch_.AwaitPosition(1));
  const QString former = wmp_.URL();
  Path().setText(QString());
  for (const Command command : {RunVideo, PauseVideo, StopVideo}) {
    const double position = watch_.Core().Position();
    Give(command);
    EXPECT_EQ(wmp_.URL(), former) << command;
    EXPECT_TRUE(watch_.Moves()) << command;
    EXPECT_GT(watch_.Core().Position(), position) << command;
    EXPECT_TRUE(HoldsFor([&] { return watch_.Core().Position() > position; }, 300ms)) << command;
  }
  EXPECT_EQ(PauseState(), "Pause");
}

TEST_F(Playback, DoesNotStartWithTheLoad) {
  LoadRed();
  EXPECT_TRUE(wmp_.URL().isEmpty());
  EXPECT_EQ(watch_.Colour(), kNothingPlayed);
}

TEST_F(Playback, RunsTheLoadedVideo) {
  const QString file = LoadRed();
  Give(RunVideo);
  EXPECT_EQ(wmp_.URL(), file);
  EXPECT_TRUE(watch_.AwaitColour(kPlayedRed));
  EXPECT_TRUE(watch_.Moves());
  EXPECT_EQ(wmp_.pos(), QPoint(0, 0));
  EXPECT_EQ(wmp_.size(), QSize(320, 180));
}

TEST_F(Playback, IsRunAndStoppedByTheHiddenRowAsWell) {
  const QString file = LoadRed();
  PushHiddenButton(RunVideo);
  EXPECT_EQ(wmp_.URL(), file);
  EXPECT_TRUE(watch_.AwaitColour(kPlayedRed));
  PushHiddenButton(StopVideo);
  EXPECT_TRUE(watch_.AwaitColour(kNothingPlayed));
}

TEST_F(Playback, LiesUnderTheBars) {
  RunRed();
  const QImage canvas = Canvas().grab().toImage();
  for (const QPoint place : {QPoint(2, 90), QPoint(160, 2), QPoint(317, 90), QPoint(160, 177)}) {
    EXPECT_EQ(Hex(canvas.pixel(place) & RGB_MASK), "0x00ff00") << place.x() << ',' << place.y();
  }
  EXPECT_TRUE(PlayerWatch::Like(canvas.pixel(6, 6) & RGB_MASK, kPlayedRed));
}

TEST_F(Playback, IsPausedAndGoesOnByOneCommand) {
  RunRed();
  Give(PauseVideo);
  EXPECT_EQ(PauseState(), "Paused");
  EXPECT_TRUE(watch_.StandsStill());
  Give(PauseVideo);
  EXPECT_EQ(PauseState(), "Pause");
  EXPECT_TRUE(watch_.Moves());
  EXPECT_EQ(Get<Label>("Label14", PauseVideo).Caption(), QStringLiteral("Pause Video"));
}

TEST_F(Playback, RunWhilePausedStartsAnewAndThePauseStateStays) {
  RunRed();
  ASSERT_TRUE(watch_.AwaitPosition(1));
  Give(PauseVideo);
  Give(RunVideo);
  EXPECT_EQ(PauseState(), "Paused");
  EXPECT_TRUE(WaitFor([&] { return watch_.Core().Position() < 1; }));
  EXPECT_TRUE(watch_.Moves());
  Give(PauseVideo);
  EXPECT_EQ(PauseState(), "Pause");
  EXPECT_TRUE(watch_.Moves()) << "the command plays what plays already";
  Give(PauseVideo);
  EXPECT_TRUE(watch_.StandsStill());
}

TEST_F(Playback, IsStoppedAndThePauseStateStays) {
  RunRed();
  Give(PauseVideo);
  Give(StopVideo);
  EXPECT_EQ(PauseState(), "Paused");
  EXPECT_TRUE(watch_.AwaitColour(kNothingPlayed));
  Give(PauseVideo);
  EXPECT_EQ(PauseState(), "Pause");
  EXPECT_TRUE(watch_.AwaitColour(kPlayedRed)) << "the other half of the toggle plays";
}

TEST_F(Playback, PauseAfterAStopTogglesThoughNothingPlays) {
  RunRed();
  Give(StopVideo);
  ASSERT_TRUE(watch_.AwaitColour(kNothingPlayed));
  Give(PauseVideo);
  EXPECT_EQ(PauseState(), "Paused");
  EXPECT_EQ(watch_.Colour(), kNothingPlayed);
}

TEST_F(Playback, IsPausedBeforeACropAsksForItsFile) {
  RunRed();
  {
    const DialogAnswers answers({[this](QDialog& dialog) {
      EXPECT_TRUE(watch_.StandsStill()) << "while the dialog is open";
      dialog.reject();
    }});
    Give(CropVideo);
  }
  EXPECT_EQ(PauseState(), "Pause") << "the state isn't told";
  EXPECT_TRUE(watch_.StandsStill());
}

TEST_F(Playback, GoesOnThroughACropThatFindsNoPathOnShow) {
  RunRed();
  Path().setText(QString());
  const DialogAnswers answers({[this](QDialog& dialog) {
    EXPECT_TRUE(watch_.Moves()) << "while the dialog is open";
    dialog.reject();
  }});
  Give(CropVideo);
  EXPECT_TRUE(watch_.Moves());
}

TEST_F(Playback, PausedAlreadyStaysPausedThroughACrop) {
  RunRed();
  Give(PauseVideo);
  {
    const DialogAnswers answers({CancelDialog()});
    Give(CropVideo);
  }
  EXPECT_EQ(PauseState(), "Paused");
  EXPECT_TRUE(watch_.StandsStill());
}

TEST_F(Playback, GoesOnThroughThePreview) {
  RunRed();
  Give(PreviewCroppedVideo);
  EXPECT_TRUE(watch_.Moves());
}

TEST_F(Playback, GoesOnWhileAnotherVideoIsLoaded) {
  RunRed();
  const QString former = wmp_.URL();
  LoadVideoOf(640, 360);
  EXPECT_EQ(wmp_.URL(), former);
  EXPECT_TRUE(watch_.Moves());
}

TEST_F(Playback, EndsWithAFreshStart) {
  RunRed();
  ASSERT_TRUE(watch_.AwaitPosition(0.3));
  StartFresh();
  EXPECT_TRUE(wmp_.URL().isEmpty());
  EXPECT_TRUE(WaitFor([&] { return watch_.Core().Position() == 0; }));
  EXPECT_TRUE(HoldsFor([&] { return watch_.Core().Position() == 0; }, 300ms));
}

TEST_F(Playback, EndsWithTheWindow) {
  RunRed();
  form_->Unload();
  EXPECT_TRUE(watch_.AwaitColour(kNothingPlayed));
}

TEST_F(Playback, ReadOutsSayNoughtWithoutAVideoFromTheFirstTickOn) {
  EXPECT_EQ(Duration(), "00:00:00");
  EXPECT_EQ(Position(), "00");
  ASSERT_TRUE(WaitForTicks(Get<Timer>("Timer3"), 1));
  EXPECT_EQ(Duration(), "0:00:00");
  EXPECT_EQ(Position(), "00:00");
}

TEST_F(Playback, ReadOutsComeEveryHalfSecondFromTheStart) {
  EXPECT_TRUE(Get<Timer>("Timer3").Enabled());
  EXPECT_EQ(Get<Timer>("Timer3").Interval(), 500);
}

TEST_F(Playback, ReadOutsAreWrittenPositionFirst) {
  RunRed();
  ASSERT_TRUE(watch_.AwaitPosition(1.2));
  std::vector<std::string> written;
  for (const char* name : {"Label12", "Label13"}) {
    Get<Label>(name).setCaption(QString());
    Before(Get<Label>(name).Change,
           [&written, name](int /*index*/) { written.emplace_back(name); });
  }
  Tick(Get<Timer>("Timer3"));
  EXPECT_EQ(written, (std::vector<std::string>{"Label13", "Label12"}));
}

TEST_F(Playback, ReadOutsTellDurationAndPosition) {
  const QString file = tools_.Path() + QStringLiteral("/long.mkv");
  ASSERT_TRUE(RunTool(QStringLiteral("ffmpeg"),
                      {"-v", "error", "-f", "lavfi", "-i",
                       "color=red:size=320x180:rate=2:duration=75", "-preset", "ultrafast", file}));
  Pick(file, SizeText(320, 180), DurationText("00:01:15.00"));
  Give(RunVideo);
  ASSERT_TRUE(watch_.AwaitPosition(1));
  ASSERT_TRUE(WaitFor([&] { return wmp_.currentMediaDuration() > 0.0; }));
  Tick(Get<Timer>("Timer3"));
  EXPECT_EQ(Duration(), "0:01:15");
  EXPECT_EQ(Position(), "00:01");
}

TEST_F(Playback, ReadOutsGoBackToNoughtWithAStop) {
  RunRed();
  ASSERT_TRUE(watch_.AwaitPosition(1));
  Tick(Get<Timer>("Timer3"));
  ASSERT_EQ(Position(), "00:01");
  Give(StopVideo);
  ASSERT_TRUE(watch_.AwaitColour(kNothingPlayed));
  Tick(Get<Timer>("Timer3"));
  EXPECT_EQ(Position(), "00:00");
  EXPECT_EQ(Duration(), "0:00:20") << "the video stays loaded";
}

TEST_F(Playback, ReadOutsGoOnAfterAFreshStart) {
  RunRed();
  ASSERT_TRUE(watch_.AwaitPosition(1));
  Tick(Get<Timer>("Timer3"));
  ASSERT_EQ(Position(), "00:01");
  ASSERT_EQ(Duration(), "0:00:20");
  StartFresh();
  EXPECT_TRUE(Get<Timer>("Timer3").Enabled());
  ASSERT_TRUE(WaitForTicks(Get<Timer>("Timer3"), 1));
  EXPECT_EQ(Position(), "00:00");
  EXPECT_EQ(Duration(), "0:00:00");
}

TEST_F(Playback, ReadOutsOfAFileThatCannotBePlayedSayNought) {
  const QString file = tools_.File(QStringLiteral("notes.txt"));
  Pick(file);
  Give(RunVideo);
  ASSERT_TRUE(watch_.AwaitEnd());
  Tick(Get<Timer>("Timer3"));
  EXPECT_EQ(Duration(), "0:00:00");
  EXPECT_EQ(Position(), "00:00");
}

class Sound : public Playback {
 protected:
  std::string VolumeCaption() const { return Get<Label>("Label8").Caption().toStdString(); }
  std::string BalanceCaption() const { return Get<Label>("Label9").Caption().toStdString(); }
  QSlider& Thumb(const char* slider) const { return *Get<Slider>(slider).findChild<QSlider*>(); }
};

TEST_F(Sound, StartsAtThirtyInTheMiddle) {
  EXPECT_EQ(wmp_.settings.volume(), 30);
  EXPECT_EQ(wmp_.settings.balance(), 0);
  EXPECT_EQ(VolumeCaption(), "Audio Volume 30%");
  EXPECT_EQ(BalanceCaption(), "Audio Balance 100% Left : 100% Right");
}

TEST_F(Sound, VolumeFollowsItsSlider) {
  for (const int value : {0, 100, 7}) {
    Get<Slider>("Slider2").setValue(value);
    EXPECT_EQ(wmp_.settings.volume(), value);
    EXPECT_EQ(VolumeCaption(), "Audio Volume " + std::to_string(value) + "%");
  }
}

// The minus signs are meant.
TEST_F(Sound, BalanceFollowsItsSlider) {
  const std::vector<std::pair<int, std::string>> cases = {
      {-40, "Audio Balance 100% Left : -40% Right"},
      {40, "Audio Balance -40% Left : 100% Right"},
      {0, "Audio Balance -0% Left : 100% Right"},
      {-100, "Audio Balance 100% Left : -100% Right"},
      {100, "Audio Balance -100% Left : 100% Right"}};
  for (const auto& [value, caption] : cases) {
    Get<Slider>("Slider3").setValue(value);
    EXPECT_EQ(wmp_.settings.balance(), value);
    EXPECT_EQ(BalanceCaption(), caption);
  }
}

TEST_F(Sound, IsSetBeforeItIsTold) {
  std::vector<int> told;
  Before(Get<Label>("Label8").Change,
         [&](int /*index*/) { told.push_back(wmp_.settings.volume()); });
  Before(Get<Label>("Label9").Change,
         [&](int /*index*/) { told.push_back(wmp_.settings.balance()); });
  Get<Slider>("Slider2").setValue(55);
  Get<Slider>("Slider3").setValue(-20);
  EXPECT_EQ(told, (std::vector<int>{55, -20}));
}

TEST_F(Sound, FollowsTheThumbsWhileTheyAreDragged) {
  Thumb("Slider2").setSliderDown(true);
  Thumb("Slider2").setSliderPosition(64);
  EXPECT_EQ(wmp_.settings.volume(), 64);
  EXPECT_EQ(VolumeCaption(), "Audio Volume 64%");
  Thumb("Slider3").setSliderDown(true);
  Thumb("Slider3").setSliderPosition(-25);
  EXPECT_EQ(wmp_.settings.balance(), -25);
  EXPECT_EQ(BalanceCaption(), "Audio Balance 100% Left : -25% Right");
}

}  // namespace
}  // namespace kelvane::testing
