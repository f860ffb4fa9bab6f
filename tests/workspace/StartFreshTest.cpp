// The row of buttons that is never shown, and the reset that only it can give.
#include <QLocale>
#include <QPushButton>

#include "shared/SharedValues.h"
#include "workspace/MainWindowTest.h"

namespace kelvane::testing {
namespace {

constexpr const char* kQuestion =
    "Start Fresh | Are you sure that you want to start over again ? | exclamation | Yes No Cancel";

class HiddenRow : public MainWindowTest {
 protected:
  void PushButton(int index) const {
    Get<CommandButton>("Command1", index).findChild<QPushButton*>()->click();
  }
  Texts StartFresh(QMessageBox::StandardButton answer) const {
    if (answer == QMessageBox::Yes) {
      const DialogAnswers answers({PressButton(answer)});
      PushButton(StartFreshButton);
      return answers.seen();
    }
    const DialogAnswers answers({PressButton(answer), PressButton(QMessageBox::Ok)});
    PushButton(StartFreshButton);
    return answers.seen();
  }
};

TEST_F(HiddenRow, LoadsAndTogglesAndPreviewsAndCropsLikeTheCommands) {
  const QString video = tools_.File(QStringLiteral("a.mp4"));
  {
    const DialogAnswers answers({TypeFile(video)});
    PushButton(LoadVideo);
  }
  EXPECT_EQ(Path().Text(), video);
  PushButton(PauseVideo);
  EXPECT_EQ(Get<CommandButton>("Command1", PauseVideo).Caption().toStdString(), "Paused");
  PushButton(PreviewCroppedVideo);
  EXPECT_EQ(tools_.Runs().back(), "ffplay | -i | " + video.toStdString() + " | -vf | crop=0:0:0:0");
  const DialogAnswers answers({TypeFile(QStringLiteral("/tmp/out.mp4"))});
  PushButton(CropVideo);
  EXPECT_EQ(OutputPath.toStdString(), "/tmp/out.mp4");
  EXPECT_NE(JobWindow(), nullptr);
}

TEST_F(HiddenRow, ResetAsksAndOnNoSaysNoChange) {
  const QString video = LoadVideoOf(640, 360);
  EXPECT_EQ(StartFresh(QMessageBox::No), (Texts{kQuestion, "Kelvane | no change | no icon | OK"}));
  EXPECT_EQ(Path().Text(), video);
  EXPECT_TRUE(Get<Timer>("Timer2").Enabled());
}

TEST_F(HiddenRow, ResetAsksAndOnCancelSaysCancel) {
  const QString video = LoadVideoOf(640, 360);
  EXPECT_EQ(StartFresh(QMessageBox::Cancel), (Texts{kQuestion, "Kelvane | cancel | no icon | OK"}));
  EXPECT_EQ(Path().Text(), video);
}

TEST_F(HiddenRow, ClosingTheQuestionIsCancel) {
  const DialogAnswers answers(
      {[](QDialog& dialog) { dialog.close(); }, PressButton(QMessageBox::Ok)});
  PushButton(StartFreshButton);
  EXPECT_EQ(answers.seen(), (Texts{kQuestion, "Kelvane | cancel | no icon | OK"}));
}

TEST_F(HiddenRow, ResetIsNoResetOfTheMarkers) {
  LoadVideoOf(640, 360);
  Bar(LeftBar).setLeft(40);
  StartFresh(QMessageBox::No);
  EXPECT_EQ(Bar(LeftBar).Left(), 40);
}

class StartedFresh : public HiddenRow {
 protected:
  void SetUp() override {
    LoadVideoOf(640, 360);
    Bar(LeftBar).setLeft(40);
    Bar(TopBar).setTop(25);
    ASSERT_TRUE(WaitForTicks(Get<Timer>("Timer2"), 1));
    Get<ProgressBar>("pbar").setValue(70);
    CropFilter = QStringLiteral("1:2:3:4");
    OutputPath = QStringLiteral("/tmp/out.mp4");
  }
};

TEST_F(StartedFresh, OnYesTheQuestionIsTheOnlyMessage) {
  EXPECT_EQ(StartFresh(QMessageBox::Yes), Texts{kQuestion});
}

TEST_F(StartedFresh, EverythingIsAsBeforeTheFirstVideo) {
  StartFresh(QMessageBox::Yes);
  EXPECT_FALSE(Get<Timer>("Timer2").Enabled());
  EXPECT_FALSE(Canvas().Visible());
  EXPECT_EQ(Path().Text().toStdString(), "");
  EXPECT_EQ(Get<ProgressBar>("pbar").Value(), 0);
  for (const ReadOut number : {SourceWidth, SourceHeight, RegionLeft, RegionTop, RegionWidth,
                               RegionHeight, RegionBase, RegionRight}) {
    EXPECT_EQ(Number(number), "0,000") << number;
  }
  EXPECT_FALSE(ProbeDimensionsDone);
  EXPECT_EQ((std::vector<int>{CropWidth, CropHeight, CropLeft, CropTop}),
            (std::vector<int>{0, 0, 0, 0}));
  EXPECT_EQ(CropFilter.toStdString(), "0");
  EXPECT_EQ(VideoDuration.toStdString(), "");
  EXPECT_EQ(VideoPath.toStdString(), "");
}

TEST_F(StartedFresh, WhatTheResetDoesNotNameStays) {
  Give(PauseVideo);
  const QString store = Store();
  StartFresh(QMessageBox::Yes);
  EXPECT_EQ(OutputPath.toStdString(), "/tmp/out.mp4");
  EXPECT_TRUE(Store().startsWith(store));
  EXPECT_FALSE(Store().isEmpty());
  EXPECT_EQ(Get<CommandButton>("Command1", PauseVideo).Caption().toStdString(), "Paused");
}

TEST_F(StartedFresh, OneMoreDurationProbeRunsOnTheEmptyPath) {
  StartFresh(QMessageBox::Yes);
  ASSERT_EQ(tools_.Runs().size(), 3U);
  EXPECT_EQ(tools_.Runs().back(), DurationRun(QString()));
}

TEST_F(StartedFresh, AfterACancelledDialogTheSizeProbeRunsOnTheEmptyPathAsWell) {
  {
    const DialogAnswers answers({CancelDialog()});
    Give(LoadVideo);
  }
  StartFresh(QMessageBox::Yes);
  const Texts runs = tools_.Runs();
  ASSERT_EQ(runs.size(), 4U);
  EXPECT_EQ(runs[2], SizeRun(QString()));
  EXPECT_EQ(runs[3], DurationRun(QString()));
}

TEST_F(StartedFresh, TheCanvasCollapsesAndWithItTheRangeOfTheScrollBars) {
  StartFresh(QMessageBox::Yes);
  for (const char* name : {"Picture1(2)", "Picture1(3)", "wmp"}) {
    EXPECT_EQ(Get<Control>(name).Width(), 0) << name;
    EXPECT_EQ(Get<Control>(name).Height(), 0) << name;
  }
  EXPECT_EQ(Get<HScrollBar>("HScroll1").Max(), 0);
  EXPECT_EQ(Get<VScrollBar>("VScroll1").Max(), 0);
  EXPECT_EQ(Bar(LeftBar).Left(), 0);
  EXPECT_EQ(Bar(RightBar).Left(), -5);
  EXPECT_EQ(Bar(BaseBar).Top(), -5);
}

TEST_F(StartedFresh, WhereACommaIsNoSeparatorTheCanvasCollapsesAllTheSame) {
  QLocale::setDefault(QLocale(QLocale::German, QLocale::Switzerland));
  LoadVideoOf(1920, 1080);
  const float loaded = Canvas().Width();
  StartFresh(QMessageBox::Yes);
  QLocale::setDefault(QLocale::c());
  EXPECT_EQ(loaded, 1920);
  EXPECT_EQ(Number(SourceWidth), "0,000");
  EXPECT_EQ(Canvas().Width(), 0);
  EXPECT_EQ(Canvas().Height(), 0);
  EXPECT_EQ(Get<HScrollBar>("HScroll1").Max(), 0);
}

TEST_F(StartedFresh, AJobWindowOnShowIsUnloaded) {
  CropTo("/tmp/out.mp4");
  ASSERT_NE(JobWindow(), nullptr);
  StartFresh(QMessageBox::Yes);
  EXPECT_EQ(JobWindow(), nullptr);
}

TEST_F(StartedFresh, AJobWindowOutOfSightStaysLoaded) {
  {
    const DialogAnswers answers({TypeFile(QStringLiteral("/tmp/out.mp4"))});
    Give(CropVideo);
  }
  Form2* const job = JobWindow();
  ASSERT_NE(job, nullptr);
  job->hide();
  StartFresh(QMessageBox::Yes);
  EXPECT_EQ(JobWindow(), job);
}

TEST_F(StartedFresh, TheProbeOfTheEmptyPathFindsTheVideoGoneAndTheProgressStillThere) {
  int changes = 0;
  Before(Get<TextBox>("Text1", 1).Change, [&](int /*index*/) {
    ++changes;
    EXPECT_FALSE(Get<Timer>("Timer2").Enabled());
    EXPECT_EQ(Get<WindowsMediaPlayer>("wmp").URL().toStdString(), "");
    EXPECT_FALSE(Canvas().Visible());
    EXPECT_EQ(Get<ProgressBar>("pbar").Value(), 70);
  });
  Get<WindowsMediaPlayer>("wmp").setURL(Path().Text());
  StartFresh(QMessageBox::Yes);
  EXPECT_EQ(changes, 1);
}

TEST_F(StartedFresh, TheCaptionsAreWrittenInTheirOrder) {
  Texts written;
  for (int index = 0; index < 16; ++index) {
    Before(Get<Label>("Label1", index).Change, [&](int which) {
      written.push_back(std::to_string(which) + " with " + std::to_string(tools_.Runs().size()) +
                        " runs");
    });
  }
  StartFresh(QMessageBox::Yes);
  EXPECT_EQ(written, (Texts{"5 with 3 runs", "7 with 3 runs", "9 with 3 runs", "11 with 3 runs",
                            "13 with 3 runs", "15 with 3 runs", "1 with 3 runs", "3 with 3 runs"}));
}

TEST_F(StartedFresh, TheSameFileCanBeLoadedAgainAndItsDurationIsTheFirstOnesStill) {
  StartFresh(QMessageBox::Yes);
  LoadVideoOf(640, 360);
  EXPECT_EQ(Number(SourceWidth), "0,640");
  EXPECT_EQ(Canvas().Width(), 640);
  EXPECT_TRUE(Canvas().isVisible());
  EXPECT_TRUE(Get<Timer>("Timer2").Enabled());
  EXPECT_EQ(VideoDuration.toStdString(), "00:00:10");
}

}  // namespace
}  // namespace kelvane::testing
