// Hidden buttons give the same commands as the labels. Only they can start fresh.
#include <QLocale>
#include <QPushButton>

#include "shared/SharedValues.h"
#include "workspace/MainWindowTest.h"

namespace kelvane::testing {
namespace {

constexpr const char* kQuestion =
    "Start Fresh | Are you sure that you want to start over again ? | exclamation | Yes No Cancel";

class HiddenButtons : public MainWindowTest {
 protected:
  void Push(int index) const {
    Get<CommandButton>("Command1", index).findChild<QPushButton*>()->click();
  }
};

TEST_F(HiddenButtons, RunTheSameCommandsAsTheLabels) {
  const QString video = tools_.MakeFile("a.mp4");
  {
    const DialogAnswers answers({TypeFile(video)});
    Push(LoadVideo);
  }
  EXPECT_EQ(Path().Text(), video);
  Push(PauseVideo);
  EXPECT_EQ(PauseState(), "Paused");
  Push(RunVideo);
  EXPECT_EQ(Get<WindowsMediaPlayer>("wmp").URL(), video);
  MeasureRegion();
  Push(PreviewCroppedVideo);
  EXPECT_EQ(LastRun(), "ffplay | -i | " + video.toStdString() + " | -vf | crop=412:244:0:0");
  const DialogAnswers answers({TypeFile("/tmp/out.mp4")});
  Push(CropVideo);
  EXPECT_NE(JobWindow(), nullptr);
}

TEST_F(HiddenButtons, StartFreshChangesNothingUnlessTheAnswerIsYes) {
  const QString video = LoadVideoOf(640, 360);
  Bar(LeftBar).setLeft(40);
  const std::pair<Answer, const char*> cases[] = {
      {PressButton(QMessageBox::No), "Kelvane | no change | no icon | OK"},
      {PressButton(QMessageBox::Cancel), "Kelvane | cancel | no icon | OK"},
      {[](QDialog& dialog) { dialog.close(); }, "Kelvane | cancel | no icon | OK"},
  };
  for (const auto& [answer, message] : cases) {
    const DialogAnswers answers({answer, PressButton(QMessageBox::Ok)});
    Push(StartFreshButton);
    EXPECT_EQ(answers.seen(), (Texts{kQuestion, message}));
  }
  EXPECT_EQ(Path().Text(), video);
  EXPECT_EQ(Bar(LeftBar).Left(), 40);
  EXPECT_TRUE(Get<Timer>("Timer2").Enabled());
}

// A video is loaded and its bars are moved.
class StartFresh : public HiddenButtons {
 protected:
  void SetUp() override {
    LoadVideoOf(640, 360);
    Bar(LeftBar).setLeft(40);
    Bar(TopBar).setTop(25);
    MeasureRegion();
    Get<ProgressBar>("pbar").setValue(70);
    CropFilter = "1:2:3:4";
    OutputPath = "/tmp/out.mp4";
  }
  void Reset() const {
    const DialogAnswers answers({PressButton(QMessageBox::Yes)});
    Push(StartFreshButton);
    EXPECT_EQ(answers.seen(), Texts{kQuestion});
  }
  void ExpectEmptyCanvas() const {
    for (const char* name : {"Picture1(2)", "Picture1(3)", "wmp"}) {
      EXPECT_EQ(Get<Control>(name).Width(), 0) << name;
      EXPECT_EQ(Get<Control>(name).Height(), 0) << name;
    }
    EXPECT_EQ(Get<HScrollBar>("HScroll1").Max(), 0);
    EXPECT_EQ(Get<VScrollBar>("VScroll1").Max(), 0);
  }
};

TEST_F(StartFresh, ResetsEverythingOfTheVideo) {
  Reset();
  EXPECT_FALSE(Get<Timer>("Timer2").Enabled());
  EXPECT_FALSE(Canvas().Visible());
  EXPECT_EQ(Path().Text(), "");
  EXPECT_EQ(Get<ProgressBar>("pbar").Value(), 0);
  for (const ReadOut number : {SourceWidth, SourceHeight, RegionLeft, RegionTop, RegionWidth,
                               RegionHeight, RegionBase, RegionRight}) {
    EXPECT_EQ(Number(number), "0,000") << number;
  }
  EXPECT_FALSE(ProbeDimensionsDone);
  EXPECT_EQ((std::vector<int>{CropWidth, CropHeight, CropLeft, CropTop}),
            (std::vector<int>{0, 0, 0, 0}));
  EXPECT_EQ(CropFilter, "0");
  EXPECT_EQ(VideoDuration, "");
  EXPECT_EQ(VideoPath, "");
  ExpectEmptyCanvas();
  EXPECT_EQ(Bar(LeftBar).Left(), 0);
  EXPECT_EQ(Bar(RightBar).Left(), -5);
  EXPECT_EQ(Bar(BaseBar).Top(), -5);
}

TEST_F(StartFresh, KeepsTheOutputPathThePauseStateAndTheToolsText) {
  Give(PauseVideo);
  const QString store = Store();
  Reset();
  EXPECT_EQ(OutputPath, "/tmp/out.mp4");
  EXPECT_TRUE(Store().startsWith(store));
  EXPECT_EQ(PauseState(), "Paused");
}

TEST_F(StartFresh, ProbesTheDurationOfTheEmptyPathAndAlsoItsSizeAfterACancelledDialog) {
  Reset();
  EXPECT_EQ(tools_.Runs().size(), 3U);
  EXPECT_EQ(LastRun(), DurationRun({}));
  LoadVideoOf(640, 360);
  Cancel(LoadVideo);
  Reset();
  const Texts runs = tools_.Runs();
  EXPECT_EQ(Texts(runs.begin() + 5, runs.end()), (Texts{SizeRun({}), DurationRun({})}));
}

TEST_F(StartFresh, StopsTheVideoBeforeItProbesTheEmptyPathAndClearsTheReadOutsAfterwards) {
  int changes = 0;
  Before(Path().Change, [&](int /*index*/) {
    ++changes;
    EXPECT_FALSE(Get<Timer>("Timer2").Enabled());
    EXPECT_EQ(Get<WindowsMediaPlayer>("wmp").URL(), "");
    EXPECT_FALSE(Canvas().Visible());
    EXPECT_EQ(Get<ProgressBar>("pbar").Value(), 70);
    EXPECT_EQ(Number(SourceWidth), "0,640");
    EXPECT_EQ(Number(RegionLeft), "0,040");
  });
  Get<WindowsMediaPlayer>("wmp").setURL(Path().Text());
  Reset();
  EXPECT_EQ(changes, 1);
}

TEST_F(StartFresh, EmptiesTheCanvasInALocaleWithoutCommasAsWell) {
  QLocale::setDefault(QLocale(QLocale::German, QLocale::Switzerland));
  LoadVideoOf(1920, 1080);
  const float loaded = Canvas().Width();
  Reset();
  QLocale::setDefault(QLocale::c());
  EXPECT_EQ(loaded, 1920);
  EXPECT_EQ(Number(SourceWidth), "0,000");
  ExpectEmptyCanvas();
}

TEST_F(StartFresh, UnloadsAVisibleJobWindowAndKeepsAHiddenOne) {
  CropTo("/tmp/out.mp4");
  Form2* const job = JobWindow();
  ASSERT_NE(job, nullptr);
  job->hide();
  Reset();
  EXPECT_EQ(JobWindow(), job);
  job->show();
  Reset();
  EXPECT_EQ(JobWindow(), nullptr);
}

TEST_F(StartFresh, LetsTheSameFileBeLoadedAgain) {
  Reset();
  LoadVideoOf(640, 360);
  EXPECT_EQ(Number(SourceWidth), "0,640");
  EXPECT_EQ(Canvas().Width(), 640);
  EXPECT_TRUE(Canvas().isVisible());
  EXPECT_TRUE(Get<Timer>("Timer2").Enabled());
  EXPECT_EQ(VideoDuration, "00:00:10");
}

}  // namespace
}  // namespace kelvane::testing
