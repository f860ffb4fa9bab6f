// The seven commands, and what they put on the tools' command lines.
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QWindow>

#include "platform/App.h"
#include "workspace/CommandsTest.h"

namespace kelvane::testing {
namespace {

class CommandsByButton : public Commands, public ::testing::WithParamInterface<Qt::MouseButton> {
 protected:
  void GiveByButton(Command command) const { Click(Get<Label>("Label14", command), GetParam()); }
};

INSTANTIATE_TEST_SUITE_P(Commands, CommandsByButton,
                         ::testing::Values(Qt::LeftButton, Qt::RightButton, Qt::MiddleButton),
                         [](const auto& button) {
                           return std::string(button.param == Qt::LeftButton    ? "Left"
                                              : button.param == Qt::RightButton ? "Right"
                                                                                : "Middle");
                         });

TEST_P(CommandsByButton, LoadVideoOpensTheDialog) {
  const DialogAnswers answers({CancelDialog()});
  GiveByButton(LoadVideo);
  EXPECT_TRUE(answers.AllGiven());
}

TEST_P(CommandsByButton, PauseVideoTogglesThePauseState) {
  LoadVideoOf(640, 360);
  GiveByButton(PauseVideo);
  EXPECT_EQ(PauseState(), "Paused");
}

TEST_P(CommandsByButton, PreviewRunsThePlayer) {
  GiveByButton(PreviewCroppedVideo);
  EXPECT_EQ(LastRun(), "ffplay | -i | -vf | crop=0:0:0:0");
}

TEST_P(CommandsByButton, CropOpensTheSaveDialog) {
  const DialogAnswers answers({CancelDialog()});
  GiveByButton(CropVideo);
  EXPECT_EQ(answers.seen(), Texts{"Save Cropped Video As"});
}

TEST_P(CommandsByButton, ResetMarkersPutsTheBarsBack) {
  LoadVideoOf(640, 360);
  for (const MarkerBar bar : {LeftBar, TopBar, RightBar, BaseBar}) {
    Bar(bar).setLeft(50);
    Bar(bar).setTop(60);
  }
  Bar(LeftBar).setHeight(1);
  Bar(TopBar).setWidth(2);
  Bar(RightBar).setHeight(3);
  Bar(BaseBar).setWidth(4);
  GiveByButton(ResetMarkers);
  struct Place {
    MarkerBar bar;
    float left, top, width, height;
  };
  for (const auto& [bar, left, top, width, height] :
       std::vector<Place>{{LeftBar, 0, 0, 5, 360},
                          {TopBar, 0, 0, 640, 5},
                          {RightBar, 635, 0, 5, 360},
                          {BaseBar, 0, 355, 640, 5}}) {
    EXPECT_EQ(Bar(bar).Left(), left) << bar;
    EXPECT_EQ(Bar(bar).Top(), top) << bar;
    EXPECT_EQ(Bar(bar).Width(), width) << bar;
    EXPECT_EQ(Bar(bar).Height(), height) << bar;
  }
}

TEST_F(Commands, APressAloneGivesNoCommand) {
  LoadVideoOf(640, 360);
  Bar(LeftBar).setLeft(33);
  for (int index = LoadVideo; index <= ResetMarkers; ++index) {
    Press(Get<Label>("Label14", index));
  }
  EXPECT_EQ(PauseState(), "Pause");
  EXPECT_EQ(Bar(LeftBar).Left(), 33);
  EXPECT_EQ(tools_.Runs().size(), 2U);
}

TEST_F(Commands, ResetMarkersWithoutAVideoGoesByTheDesignsCanvas) {
  Bar(RightBar).setLeft(3);
  Bar(BaseBar).setTop(4);
  Give(ResetMarkers);
  EXPECT_EQ(Bar(RightBar).Left(), 417 - 5);
  EXPECT_EQ(Bar(BaseBar).Top(), 249 - 5);
}

TEST_F(Commands, ResetMarkersLetsTheNumbersFollowAtTheNextTick) {
  LoadVideoOf(640, 360);
  Bar(LeftBar).setLeft(100);
  ASSERT_TRUE(WaitForTicks(Get<Timer>("Timer2"), 1));
  Give(ResetMarkers);
  EXPECT_EQ(Number(RegionLeft), "0,100");
  EXPECT_EQ(CropLeft, 100);
  ASSERT_TRUE(WaitForTicks(Get<Timer>("Timer2"), 1));
  EXPECT_EQ(Number(RegionLeft), "0,000");
  EXPECT_EQ(CropLeft, 0);
}

TEST_F(Commands, PauseGoesBackAndForthAndItsCaptionOnShowStays) {
  LoadVideoOf(640, 360);
  Texts states = {PauseState()};
  for (int times = 0; times < 3; ++times) {
    Give(PauseVideo);
    states.push_back(PauseState());
  }
  EXPECT_EQ(states, (Texts{"Pause", "Paused", "Pause", "Paused"}));
  EXPECT_EQ(Get<Label>("Label14", PauseVideo).Caption().toStdString(), "Pause Video");
}

TEST_F(Commands, RunStopAndCropLeaveThePauseStateAlone) {
  LoadVideoOf(640, 360);
  Give(PauseVideo);
  Give(RunVideo);
  Give(StopVideo);
  const DialogAnswers answers({CancelDialog()});
  Give(CropVideo);
  EXPECT_EQ(PauseState(), "Paused");
}

TEST_F(Commands, WithoutAVideoRunPauseAndStopDoNothing) {
  for (const Command command : {RunVideo, PauseVideo, StopVideo}) Give(command);
  EXPECT_EQ(PauseState(), "Pause");
  EXPECT_TRUE(tools_.Runs().empty());
}

TEST_F(Commands, AnUnknownPauseStateStays) {
  LoadVideoOf(640, 360);
  Get<CommandButton>("Command1", PauseVideo).setCaption(QStringLiteral("else"));
  Give(PauseVideo);
  EXPECT_EQ(PauseState(), "else");
}

TEST_F(Commands, ThePreviewsLineHoldsThePathAndTheRegionOfTheLastTick) {
  const QString video = LoadVideoOf(640, 360);
  ASSERT_TRUE(WaitForTicks(Get<Timer>("Timer2"), 1));
  Get<Timer>("Timer2").setEnabled(false);
  Bar(LeftBar).setLeft(100);  // not measured any more
  Give(PreviewCroppedVideo);
  EXPECT_EQ(LastRun(), "ffplay | -i | " + video.toStdString() + " | -vf | crop=635:355:0:0");
  EXPECT_EQ(CropFilter.toStdString(), "635:355:0:0");
}

TEST_F(Commands, NegativeAndOddNumbersGoOutAsTheyAre) {
  SetRegion(-20, 337, 3, -5);
  Give(PreviewCroppedVideo);
  EXPECT_EQ(LastRun(), "ffplay | -i | -vf | crop=-20:337:3:-5");
  SetRegion(2147483647, -2147483647 - 1, 12345, 0);
  Give(PreviewCroppedVideo);
  EXPECT_EQ(LastRun(), "ffplay | -i | -vf | crop=2147483647:-2147483648:12345:0");
}

TEST_F(Commands, ThePathOnShowGoesOnTheLinesAndNotTheOneLoaded) {
  ProbeDimensionsDone = true;
  Path().setText(QStringLiteral("  /shown.mp4 "));
  VideoPath = QStringLiteral("/loaded.mp4");
  Give(PreviewCroppedVideo);
  EXPECT_EQ(LastRun(), "ffplay | -i | /shown.mp4 | -vf | crop=0:0:0:0");
  CropTo(QStringLiteral("/tmp/out.mp4"));
  RunTheJob();
  EXPECT_EQ(LastRun(), "ffmpeg | -i | /shown.mp4 | -vf | crop=0:0:0:0 | /tmp/out.mp4");
}

TEST_F(Commands, ThePreviewWaitsForThePlayerAndKeepsItsText) {
  LoadVideoOf(1920, 1080);
  const Gate gate(tools_.PathOf("gate"));
  tools_.PreviewDoes(Print(QStringLiteral("playing\n")) + Wait(gate) +
                     Print(QStringLiteral("done\n")));
  const QString before = Store();
  QString during;
  Get<TextBox>("Text2").Change = [&](int) {
    if (during.isEmpty()) gate.Open();
    during = Store();
  };
  Give(PreviewCroppedVideo);
  EXPECT_EQ(Store().toStdString(), before.toStdString() + "playing\ndone\n");
}

TEST_F(Commands, AMissingPlayerChangesNothingAndSaysNothing) {
  LoadVideoOf(640, 360);
  tools_.Remove(QStringLiteral("ffplay"));
  const QString store = Store();
  Give(PreviewCroppedVideo);
  EXPECT_EQ(Store(), store);
  EXPECT_EQ(Number(SourceWidth), "0,640");
}

TEST_F(Commands, TheCropsLineHoldsPathRegionAndOutput) {
  const QString video = LoadVideoOf(640, 360);
  ASSERT_TRUE(WaitForTicks(Get<Timer>("Timer2"), 1));
  const QString output = tools_.Path() + QLatin1String("/out.mp4");
  CropTo(output);
  EXPECT_EQ(OutputPath, output);
  EXPECT_EQ(CropFilter.toStdString(), "635:355:0:0");
  EXPECT_EQ(tools_.Runs().size(), 2U);
  RunTheJob();
  EXPECT_EQ(LastRun(), "ffmpeg | -i | " + video.toStdString() + " | -vf | crop=635:355:0:0 | " +
                           output.toStdString());
}

TEST_F(Commands, TheRegionOfTheCommandIsCroppedAndNotTheOneAtTheStartOfTheTool) {
  SetRegion(100, 50, 1, 2);
  CropTo(QStringLiteral("/tmp/out.mp4"));
  SetRegion(7, 7, 7, 7);
  RunTheJob();
  EXPECT_EQ(LastRun(), "ffmpeg | -i | -vf | crop=100:50:1:2 | /tmp/out.mp4");
}

TEST_F(Commands, AnOutputWithABlankIsCutIntoArguments) {
  CropTo(QStringLiteral("/tmp/my new clip.mp4"));
  EXPECT_EQ(OutputPath.toStdString(), "/tmp/my new clip.mp4");
  RunTheJob();
  EXPECT_EQ(LastRun(), "ffmpeg | -i | -vf | crop=0:0:0:0 | /tmp/my | new | clip.mp4");
}

TEST_F(Commands, LettersOfOtherLanguagesGoOutAsTheyAre) {
  const QString video = tools_.File(QString::fromUtf8("\u00D6land.mp4"));
  Pick(video, SizeText(640, 360), DurationText("00:00:10.00"));
  const QString output = tools_.Path() + QString::fromUtf8("/\u00E4.mp4");
  EXPECT_EQ(Path().Text(), video);
  EXPECT_EQ(tools_.Runs(), (Texts{SizeRun(video), DurationRun(video)}));
  SetRegion(1, 2, 3, 4);
  Get<Timer>("Timer2").setEnabled(false);
  Give(PreviewCroppedVideo);
  EXPECT_EQ(LastRun(), "ffplay | -i | " + video.toStdString() + " | -vf | crop=1:2:3:4");
  CropTo(output);
  EXPECT_EQ(OutputPath, output);
  EXPECT_EQ(JobWindow()->Find<Label>(QStringLiteral("Label1(1)")).Caption(), output);
  RunTheJob();
  EXPECT_EQ(LastRun(), "ffmpeg | -i | " + video.toStdString() + " | -vf | crop=1:2:3:4 | " +
                           output.toStdString());
}

TEST_F(Commands, AProgramFolderWithABlankRunsItsToolsThroughALinkWithoutOne) {
  const QTemporaryDir place;
  const QString folder = place.path() + QLatin1String("/my programs");
  ASSERT_TRUE(QFile::link(tools_.Path(), folder));
  App::setPath(folder.toStdString());
  const QString tellWhere =
      QStringLiteral("printf '%s\\n' \"$0\" >> '%1/started'\n").arg(tools_.Path());
  tools_.SizeProbeDoes(tellWhere);
  tools_.DurationProbeDoes(tellWhere);
  tools_.PreviewDoes(tellWhere);
  tools_.CropDoes(tellWhere);
  Pick(tools_.File(QStringLiteral("a.mp4")));
  Give(PreviewCroppedVideo);
  CropTo(QStringLiteral("/tmp/out.mp4"));
  RunTheJob();

  QFile file(tools_.Path() + QLatin1String("/started"));
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  Texts started;
  for (const QString& line : QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'))) {
    if (line.isEmpty()) continue;
    EXPECT_FALSE(line.contains(QLatin1Char(' '))) << line.toStdString();
    const QFileInfo tool(line);
    EXPECT_EQ(QFileInfo(tool.path()).canonicalFilePath(), tools_.Path());
    EXPECT_NE(tool.path(), tools_.Path());
    started.push_back(tool.fileName().toStdString());
  }
  EXPECT_EQ(started, (Texts{"ffprobe", "ffprobe", "ffplay", "ffmpeg"}));
}

TEST_F(Commands, TheJobWindowComesUpInFrontOfTheMainWindowWhichStaysUsable) {
  CropTo(QStringLiteral("/tmp/out.mp4"));
  ASSERT_NE(JobWindow(), nullptr);
  EXPECT_TRUE(JobWindow()->isVisible());
  EXPECT_FALSE(JobWindow()->isModal());
  EXPECT_EQ(JobWindow()->windowHandle()->transientParent(), form_->windowHandle());
  EXPECT_TRUE(form_->isEnabled());
  EXPECT_EQ(JobWindow()->windowIcon().cacheKey(), form_->windowIcon().cacheKey());
  EXPECT_TRUE(tools_.Runs().empty());
}

}  // namespace
}  // namespace kelvane::testing
