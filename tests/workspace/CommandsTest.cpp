// The commands of the main window: how they are given, and the command lines that they run.
#include <QComboBox>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QWindow>
#include <QtTest/QTest>

#include "platform/App.h"
#include "shared/SharedValues.h"
#include "support/TabOrder.h"
#include "workspace/MainWindowTest.h"

namespace kelvane::testing {
namespace {

class Commands : public MainWindowTest {
 protected:
  static void SetRegion(int width, int height, int left, int top) {
    CropWidth = width;
    CropHeight = height;
    CropLeft = left;
    CropTop = top;
  }
  static void RunTheJob() {
    ASSERT_NE(JobWindow(), nullptr);
    RunJob(*JobWindow());
  }
};

TEST_F(Commands, AreGivenByTheReleaseOfAnyButton) {
  LoadVideoOf(640, 360);
  std::string state = PauseState();
  for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton}) {
    for (int command = LoadVideo; command <= ResetMarkers; ++command) {
      Press(Get<Label>("Label14", command), button);
    }
    EXPECT_EQ(PauseState(), state) << "a press alone has given a command";
    Release(Get<Label>("Label14", PauseVideo), button);
    EXPECT_NE(std::exchange(state, PauseState()), state);
    Bar(LeftBar).setLeft(50);
    Release(Get<Label>("Label14", ResetMarkers), button);
    EXPECT_EQ(Bar(LeftBar).Left(), 0);
  }
}

TEST_F(Commands, AreReachedByTabInTheirOrderOnTheScreen) {
  LoadVideoOf(640, 360);
  EXPECT_EQ(TabOrder(*form_),
            "Label14(0)\nLabel14(1)\nLabel14(2)\nLabel14(3)\nLabel14(4)\nLabel14(5)\nLabel14(6)");
}

TEST_F(Commands, AreStartedBySpaceAndEnter) {
  LoadVideoOf(640, 360);
  std::string state = PauseState();
  for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
    QTest::keyClick(&Get<Label>("Label14", PauseVideo), key);
    EXPECT_NE(std::exchange(state, PauseState()), state) << key;
    Bar(LeftBar).setLeft(50);
    QTest::keyClick(&Get<Label>("Label14", ResetMarkers), key);
    EXPECT_EQ(Bar(LeftBar).Left(), 0) << key;
  }
  const DialogAnswers answers({CancelDialog()});
  QTest::keyClick(&Get<Label>("Label14", LoadVideo), Qt::Key_Space);
  EXPECT_EQ(answers.seen().size(), 1U);
}

TEST_F(Commands, ResetMarkersPutsTheBarsAtTheEdgesOfTheCanvasAlsoWithoutAVideo) {
  for (const MarkerBar bar : {LeftBar, TopBar, RightBar, BaseBar}) {
    Bar(bar).setLeft(50);
    Bar(bar).setTop(60);
  }
  Bar(LeftBar).setHeight(1);
  Bar(TopBar).setWidth(2);
  Bar(RightBar).setHeight(3);
  Bar(BaseBar).setWidth(4);
  Give(ResetMarkers);
  struct Place {
    MarkerBar bar;
    float left, top, width, height;
  };
  for (const auto& [bar, left, top, width, height] : {Place{LeftBar, 0, 0, 5, 249},
                                                      {TopBar, 0, 0, 417, 5},
                                                      {RightBar, 412, 0, 5, 249},
                                                      {BaseBar, 0, 244, 417, 5}}) {
    EXPECT_EQ(Bar(bar).Left(), left) << bar;
    EXPECT_EQ(Bar(bar).Top(), top) << bar;
    EXPECT_EQ(Bar(bar).Width(), width) << bar;
    EXPECT_EQ(Bar(bar).Height(), height) << bar;
  }
}

TEST_F(Commands, PauseTogglesItsStateAndNotItsCaption) {
  LoadVideoOf(640, 360);
  Texts states = {PauseState()};
  for (int times = 0; times < 3; ++times) {
    Give(PauseVideo);
    states.push_back(PauseState());
  }
  EXPECT_EQ(states, (Texts{"Pause", "Paused", "Pause", "Paused"}));
  EXPECT_EQ(Get<Label>("Label14", PauseVideo).Caption(), "Pause Video");
}

TEST_F(Commands, RunStopAndCropDoNotChangeThePauseState) {
  LoadVideoOf(640, 360);
  Give(PauseVideo);
  Give(RunVideo);
  Give(StopVideo);
  Cancel(CropVideo);
  EXPECT_EQ(PauseState(), "Paused");
}

TEST_F(Commands, RunPauseAndStopHaveNoEffectWithoutAVideo) {
  for (const Command command : {RunVideo, PauseVideo, StopVideo}) Give(command);
  EXPECT_EQ(Get<WindowsMediaPlayer>("wmp").URL(), "");
  EXPECT_EQ(PauseState(), "Pause");
}

TEST_F(Commands, PreviewRunsFfplayWithoutAVideoAsWell) {
  Give(PreviewCroppedVideo);
  EXPECT_EQ(LastRun(), "ffplay | -i | -vf | crop=0:0:0:0");
}

TEST_F(Commands, PreviewShowsTheRegionOfTheLastTick) {
  const QString video = LoadVideoOf(640, 360);
  MeasureRegion();
  Bar(LeftBar).setLeft(100);
  Give(PreviewCroppedVideo);
  EXPECT_EQ(LastRun(), "ffplay | -i | " + video.toStdString() + " | -vf | crop=635:355:0:0");
  EXPECT_EQ(CropFilter, "635:355:0:0");
}

TEST_F(Commands, PreviewTakesNegativeAndOddNumbersAsTheyAre) {
  SetRegion(-20, 337, 3, -5);
  Give(PreviewCroppedVideo);
  EXPECT_EQ(LastRun(), "ffplay | -i | -vf | crop=-20:337:3:-5");
}

TEST_F(Commands, PreviewWithoutFfplayHasNoEffect) {
  LoadVideoOf(640, 360);
  const QString store = Store();
  tools_.Remove("ffplay");
  Give(PreviewCroppedVideo);
  EXPECT_EQ(Store(), store);
  EXPECT_EQ(Number(SourceWidth), "0,640");
}

TEST_F(Commands, PreviewAndCropUseTheShownPathAndNotTheLoadedOne) {
  ProbeDimensionsDone = true;
  Path().setText("  /shown.mp4 ");
  VideoPath = "/loaded.mp4";
  Give(PreviewCroppedVideo);
  EXPECT_EQ(LastRun(), "ffplay | -i | /shown.mp4 | -vf | crop=0:0:0:0");
  CropTo("/tmp/out.mp4");
  RunTheJob();
  EXPECT_EQ(LastRun(), "ffmpeg | -i | /shown.mp4 | -vf | crop=0:0:0:0 | /tmp/out.mp4");
}

TEST_F(Commands, CropUsesTheRegionAtTheCommandAndNotAtTheJobsStart) {
  const QString video = LoadVideoOf(640, 360);
  MeasureRegion();
  CropTo("/tmp/out.mp4");
  EXPECT_EQ(OutputPath, "/tmp/out.mp4");
  EXPECT_EQ(CropFilter, "635:355:0:0");
  EXPECT_EQ(tools_.Runs().size(), 2U);
  SetRegion(7, 7, 7, 7);
  RunTheJob();
  EXPECT_EQ(LastRun(),
            "ffmpeg | -i | " + video.toStdString() + " | -vf | crop=635:355:0:0 | /tmp/out.mp4");
}

TEST_F(Commands, CropAsksForTheNewFileInTheFolderOfTheLoadedVideo) {
  LoadVideoOf(640, 360);
  QString folder;
  const DialogAnswers answers({[&folder](QDialog& dialog) {
    folder = dynamic_cast<QFileDialog&>(dialog).directory().path();
    dialog.reject();
  }});
  Give(CropVideo);
  EXPECT_EQ(folder, tools_.Path());
}

TEST_F(Commands, CropSplitsAnOutputAtItsBlanks) {
  CropTo("/tmp/my new clip.mp4");
  EXPECT_EQ(OutputPath, "/tmp/my new clip.mp4");
  RunTheJob();
  EXPECT_EQ(LastRun(), "ffmpeg | -i | -vf | crop=0:0:0:0 | /tmp/my | new | clip.mp4");
}

TEST_F(Commands, PassLettersOfAnyLanguageToTheTools) {
  const QString video = tools_.MakeFile(QString::fromUtf8("\u00D6land.mp4"));
  Pick(video, SizeText(640, 360), DurationText("00:00:10.00"));
  EXPECT_EQ(tools_.Runs(), (Texts{SizeRun(video), DurationRun(video)}));
  SetRegion(1, 2, 3, 4);
  Get<Timer>("Timer2").setEnabled(false);
  const std::string cropped = " | -i | " + video.toStdString() + " | -vf | crop=1:2:3:4";
  Give(PreviewCroppedVideo);
  EXPECT_EQ(LastRun(), "ffplay" + cropped);
  const QString output = tools_.Path() + QString::fromUtf8("/\u00E4.mp4");
  CropTo(output);
  EXPECT_EQ(JobWindow()->Find<Label>("Label1(1)").Caption(), output);
  RunTheJob();
  EXPECT_EQ(LastRun(), "ffmpeg" + cropped + " | " + output.toStdString());
}

TEST_F(Commands, RunTheToolsByALinkWhereTheProgramsFolderHasABlank) {
  const QTemporaryDir place;
  const QString folder = place.filePath("my programs");
  ASSERT_TRUE(QFile::link(tools_.Path(), folder));
  App::setPath(folder.toStdString());
  const QString tellWhere =
      QStringLiteral("printf '%s\\n' \"$0\" >> '%1/started'\n").arg(tools_.Path());
  tools_.StreamProbeDoes(tellWhere);
  tools_.DurationProbeDoes(tellWhere);
  tools_.FfplayDoes(tellWhere);
  tools_.FfmpegDoes(tellWhere);
  Pick(tools_.MakeFile("a.mp4"));
  Give(PreviewCroppedVideo);
  CropTo("/tmp/out.mp4");
  RunTheJob();

  QFile file(tools_.Path() + "/started");
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  Texts started;
  for (const QString& line : QString::fromUtf8(file.readAll()).split('\n', Qt::SkipEmptyParts)) {
    EXPECT_FALSE(line.contains(' ')) << line.toStdString();
    EXPECT_EQ(QFileInfo(QFileInfo(line).path()).canonicalFilePath(), tools_.Path());
    started.push_back(QFileInfo(line).fileName().toStdString());
  }
  EXPECT_EQ(started, (Texts{"ffprobe", "ffprobe", "ffplay", "ffmpeg"}));
}

TEST_F(Commands, CropShowsTheJobWindowInFrontOfTheMainWindowWhichStaysUsable) {
  CropTo("/tmp/out.mp4");
  ASSERT_NE(JobWindow(), nullptr);
  EXPECT_TRUE(JobWindow()->isVisible());
  EXPECT_FALSE(JobWindow()->isModal());
  EXPECT_EQ(JobWindow()->windowHandle()->transientParent(), form_->windowHandle());
  EXPECT_EQ(JobWindow()->windowIcon().cacheKey(), form_->windowIcon().cacheKey());
  EXPECT_TRUE(tools_.Runs().empty());
}

TEST_F(Commands, CropAsksForItsOutputInASaveDialogWithThreeKindsOfFiles) {
  OutputPath = "/tmp/earlier.mp4";
  Texts seen;
  const DialogAnswers answers({[&](QDialog& dialog) {
    const auto& files = dynamic_cast<QFileDialog&>(dialog);
    const auto* kinds = files.findChild<QComboBox*>("fileTypeCombo");
    for (int kind = 0; kind < kinds->count(); ++kind) {
      seen.push_back(kinds->itemText(kind).trimmed().toStdString());
    }
    seen.push_back("chosen: " + kinds->currentText().trimmed().toStdString());
    seen.push_back("name: " + files.findChild<QLineEdit*>("fileNameEdit")->text().toStdString());
    seen.push_back("title: " + files.windowTitle().toStdString());
    seen.emplace_back(files.acceptMode() == QFileDialog::AcceptSave ? "saves" : "opens");
    dialog.reject();
  }});
  Give(CropVideo);
  EXPECT_EQ(seen, (Texts{"MP4 Files (*.mp4)", "AVI Files (*.avi)", "All Files (*.*)",
                         "chosen: MP4 Files (*.mp4)", "name: ", "title: Save Cropped Video As",
                         "saves"}));
}

TEST_F(Commands, CropThatIsCancelledStartsNothingAndKeepsTheEarlierOutputAndFilter) {
  SetRegion(1, 2, 3, 4);
  CropTo("/tmp/first.mp4");
  ASSERT_NE(JobWindow(), nullptr);
  JobWindow()->close();
  SetRegion(9, 9, 9, 9);
  Cancel(CropVideo);
  EXPECT_EQ(JobWindow(), nullptr);
  EXPECT_EQ(OutputPath, "/tmp/first.mp4");
  EXPECT_EQ(CropFilter, "1:2:3:4");
}

TEST_F(Commands, CropThatIsCancelledDoesNotUseTheLoadedFileAsItsOutput) {
  LoadVideoOf(640, 360);
  Cancel(CropVideo);
  EXPECT_EQ(OutputPath, "");
  EXPECT_EQ(JobWindow(), nullptr);
}

}  // namespace
}  // namespace kelvane::testing
