// While a tool runs, a window handles pending events once for each block of output that it reads as
// text.
// These tests start loads, previews and crops at such a moment, inside the run.
#include <QFile>
#include <QPointer>
#include <QTimer>
#include <utility>

#include "shared/SharedValues.h"
#include "support/FileDrag.h"
#include "workspace/MainWindowTest.h"

namespace kelvane::testing {
namespace {

constexpr const char* kSuccessful = "Progress: 100 % Complete: Status: Cropping Successful";

class NestedRuns : public MainWindowTest {
 protected:
  // As soon as that block has been stored, opens the gate for the tool to go on. Does the step when
  // events are next handled.
  void AfterBlock(const QString& block, std::function<void()> step) const {
    Get<TextBox>("Text2").Change = [this, block, step = std::move(step)](int) mutable {
      if (!step || !Store().endsWith(block)) return;
      AtNextDoEvents(std::exchange(step, nullptr));
      gate_.Open();
    };
  }
  static QString StatusOf(const Form2& job) { return job.Find<Label>("Label1(2)").Caption(); }

  // Returns shell commands that print more than a pipe holds and then make a file of that name.
  QString PrintMuchAndMake(const char* name) const {
    return QStringLiteral("yes | head -c %1\ntouch '%2/%3'\n")
        .arg(kMuch)
        .arg(tools_.Path(), QLatin1String(name));
  }
  bool AwaitFile(const char* name) const {
    return WaitFor([&] { return QFile::exists(tools_.Path() + '/' + name); });
  }
  // Runs a job whose tool ends only when the step has been done.
  void RunAJobDuring(std::function<void()> step) const {
    const Gate done(tools_.PathOf("done"));
    tools_.FfmpegDoes(PrintCommands("begun\n") + WaitCommands(done));
    CropTo("/tmp/out.mp4");
    AtNextDoEvents([&] {
      step();
      done.Open();
    });
    RunJob(*JobWindow());
    EXPECT_EQ(StatusOf(*JobWindow()), kSuccessful);
  }
  // Does the step during a job whose tool prints more than a pipe holds and then makes the file
  // "ended".
  void DuringAJobThatPrintsMuch(std::function<void()> step) const {
    tools_.FfmpegDoes(PrintMuchAndMake("ended"));
    CropTo("/tmp/out.mp4");
    AtNextDoEvents(std::move(step));
    RunJob(*JobWindow());
    EXPECT_EQ(StatusOf(*JobWindow()), kSuccessful);
  }
  // Returns an answer for DuringAJobThatPrintsMuch that waits until the job's tool has ended.
  Answer WhenItHasEnded(const Answer& answer) const {
    return [this, answer](QDialog& dialog) {
      EXPECT_TRUE(AwaitFile("ended"));
      answer(dialog);
    };
  }

  static constexpr int kMuch = 400'000;  // bytes
  const Gate gate_{tools_.PathOf("gate")};
};

TEST_F(NestedRuns, ALoadDuringADurationProbeReplacesPathAndSizeOfTheFirstLoad) {
  const QString first = tools_.MakeFile("first.mp4");
  const QString second = tools_.MakeFile("second.mp4");
  tools_.StreamProbeDoes(PrintCommands(SizeText(640, 360)));
  tools_.DurationProbeDoes(PrintCommands("one\n") + WaitCommands(gate_) +
                           PrintCommands("two, Duration: 00:00:11.00\n") + WaitCommands(gate_) +
                           PrintCommands("three\n"));
  Texts inside;
  AfterBlock("one\n", [&] {
    inside = {Path().Text().toStdString(), Number(SourceWidth), Number(SourceHeight)};
    Pick(second, SizeText(1920, 1080), "Duration: 00:00:22.00\n");
    gate_.Open();
  });
  Pick(first);

  EXPECT_EQ(inside, (Texts{first.toStdString(), "0,640", "0,360"}));
  EXPECT_EQ(tools_.Runs(),
            (Texts{SizeRun(first), DurationRun(first), SizeRun(second), DurationRun(second)}));
  EXPECT_EQ(Store(),
            "width=640\nheight=360\none\nDuration: 00:00:22.00\n"
            "two, Duration: 00:00:11.00\nthree\n");
  EXPECT_EQ(VideoDuration, "00:00:22");
  EXPECT_EQ(Path().Text(), second);
  EXPECT_EQ(VideoPath, second);
  EXPECT_EQ(Number(SourceWidth), "1,920");
  EXPECT_EQ(Canvas().size(), QSize(1920, 1080));
  EXPECT_TRUE(ProbeDimensionsDone);
}

TEST_F(NestedRuns, ALoadWhoseWindowIsClosedGoesOnToItsEnd) {
  tools_.StreamProbeDoes(PrintCommands(SizeText(1920, 1080)));
  tools_.DurationProbeDoes(PrintCommands("one\n") + WaitCommands(gate_) +
                           PrintCommands("Duration: 00:00:11.00\n"));
  AfterBlock("one\n", [&] {
    EXPECT_TRUE(form_->close());
    gate_.Open();
  });
  Pick(tools_.MakeFile("a.mp4"));
  EXPECT_EQ(VideoDuration, "00:00:11");
  EXPECT_FALSE(form_->isVisible());
}

TEST_F(NestedRuns, ALoadDuringASizeProbeReplacesThePathThatTheFirstLoadProbesNext) {
  const QString first = tools_.MakeFile("first.mp4");
  const QString second = tools_.MakeFile("second.mp4");
  tools_.StreamProbeDoes(PrintCommands(SizeText(640, 360)));
  tools_.DurationProbeDoes(PrintCommands("text\n"));
  Before(Path().Change, [&](int) {
    if (Path().Text() == first) AtNextDoEvents([&] { Pick(second); });
  });
  Pick(first);
  EXPECT_EQ(tools_.Runs(),
            (Texts{SizeRun(first), SizeRun(second), DurationRun(second), DurationRun(second)}));
  EXPECT_EQ(Path().Text(), second);
  EXPECT_EQ(VideoPath, second);
  EXPECT_EQ(Store(), "width=640\nheight=360\ntext\nwidth=640\nheight=360\ntext\n");
}

TEST_F(NestedRuns, ALoadDuringAPreviewDoesNotLoseThePreviewsLaterText) {
  ProbeDimensionsDone = true;
  tools_.FfplayDoes(PrintCommands("one\n") + WaitCommands(gate_) + PrintCommands("two\n"));
  AfterBlock("one\n", [&] { Pick(tools_.MakeFile("a.mp4"), SizeText(1920, 1080), "loaded\n"); });
  Give(PreviewCroppedVideo);
  EXPECT_EQ(Store(), "one\nloaded\ntwo\n");
  EXPECT_EQ(Number(SourceWidth), "1,920");
}

TEST_F(NestedRuns, APreviewDuringADurationProbeDoesNotLoseTheProbesLaterText) {
  tools_.StreamProbeDoes(PrintCommands(SizeText(1920, 1080)));
  tools_.DurationProbeDoes(PrintCommands("one\n") + WaitCommands(gate_) +
                           PrintCommands("Duration: 00:00:11.00\n"));
  tools_.FfplayDoes(PrintCommands("playing\n"));
  AfterBlock("one\n", [&] { Give(PreviewCroppedVideo); });
  Pick(tools_.MakeFile("a.mp4"));
  EXPECT_EQ(Store(), "one\nplaying\nDuration: 00:00:11.00\n");
  EXPECT_EQ(VideoDuration, "00:00:11");
}

TEST_F(NestedRuns, ALoadHandlesNoEventsUntilItHasShownTheSize) {
  for (const auto& [size, width, height] :
       {std::tuple(QSize(1920, 1080), "1,920", "1,080"), {QSize(640, 360), "0,640", "0,360"}}) {
    Get<TextBox>("Text2").setText({});
    const std::size_t runs = tools_.Runs().size();
    Texts state;
    const std::function<void(int)> wired = Path().Change;
    Before(Path().Change, [&](int) {
      AtNextDoEvents([&] {
        state = {Number(SourceWidth), Number(SourceHeight), Store().toStdString()};
        EXPECT_EQ(tools_.Runs().size(), runs + 1);
        EXPECT_TRUE(ProbeDimensionsDone);
      });
    });
    LoadVideoOf(size.width(), size.height());
    Path().Change = wired;
    EXPECT_EQ(state, (Texts{width, height, ""}));
  }
}

TEST_F(NestedRuns, EventsAreHandledForEachBlockOfTextBeforeItIsStored) {
  tools_.StreamProbeDoes(PrintCommands(SizeText(1920, 1080)));
  tools_.DurationProbeDoes(PrintCommands("one\n") + WaitCommands(gate_) +
                           PrintCommands("Duration: 00:00:01") + WaitCommands(gate_) +
                           PrintCommands("\nthree\n"));
  Texts handled;
  Get<TextBox>("Text2").Change = [&](int) {
    AtNextDoEvents([&] {
      EXPECT_FALSE(Canvas().Visible()) << "the canvas is shown before the end of the load";
      handled.push_back(Store().toStdString() + ", duration: " + VideoDuration.toStdString());
    });
    gate_.Open();
  };
  Pick(tools_.MakeFile("a.mp4"));
  EXPECT_EQ(handled, (Texts{"one\n, duration: ", "one\nDuration: 00:00:01, duration: 00:00:01",
                            "one\nDuration: 00:00:01\nthree\n, duration: 00:00:01"}));
}

TEST_F(NestedRuns, ACropDuringAJobReplacesTheSharedValuesAndStartsNoTool) {
  tools_.FfmpegDoes(PrintCommands("one\n") + WaitCommands(gate_) + PrintCommands("two\n"));
  CropWidth = 111;
  CropTo("/tmp/first.mp4");
  Form2* const job = JobWindow();
  ASSERT_NE(job, nullptr);
  AtNextDoEvents([&] {
    CropWidth = 222;
    CropTo("/tmp/second.mp4");
    EXPECT_EQ(JobWindow(), job);
    EXPECT_EQ(StatusOf(*job), "Progress: 00.00 % Complete: Status: Cropping...");
    gate_.Open();
  });
  RunJob(*job);
  EXPECT_EQ(tools_.Runs(), Texts{"ffmpeg | -i | -vf | crop=111:0:0:0 | /tmp/first.mp4"});
  EXPECT_EQ(OutputPath, "/tmp/second.mp4");
  EXPECT_EQ(CropFilter, "222:0:0:0");
  EXPECT_EQ(job->Find<Label>("Label1(1)").Caption(), "/tmp/first.mp4");
  EXPECT_EQ(StatusOf(*job), kSuccessful);
  EXPECT_TRUE(job->isVisible());
}

TEST_F(NestedRuns, ACropAfterAJobShowsItsWindowAgainAndStartsNoTool) {
  CropTo("/tmp/first.mp4");
  Form2* const job = JobWindow();
  ASSERT_NE(job, nullptr);
  RunJob(*job);
  job->hide();
  CropTo("/tmp/second.mp4");
  EXPECT_EQ(JobWindow(), job);
  EXPECT_TRUE(job->isVisible());
  EXPECT_FALSE(TimerOf(*job).Enabled());
  EXPECT_EQ(StatusOf(*job), kSuccessful);
  EXPECT_EQ(OutputPath, "/tmp/second.mp4");
}

TEST_F(NestedRuns, AJobDoesNotStartWhileALoadsDialogIsOpenButOtherTimersTick) {
  const QString chosen = tools_.MakeFile("chosen.mp4");
  tools_.StreamProbeDoes(PrintCommands(SizeText(1920, 1080)));
  CropWidth = 111;
  CropTo("/tmp/first.mp4");
  Form2* const job = JobWindow();
  ASSERT_NE(job, nullptr);
  const DialogAnswers answers({[&](QDialog& dialog) {
    Get<Timer>("Timer1").setEnabled(true);  // its tick disables it
    Bar(LeftBar).setLeft(100);
    Get<Label>("Label13").setCaption("?");  // a tick of Timer3 shows the position
    RunJob(*job);
    EXPECT_TRUE(WaitFor([&] { return !Get<Timer>("Timer1").Enabled(); }));
    EXPECT_TRUE(WaitFor([&] { return CropLeft == 100; }));
    EXPECT_TRUE(WaitFor([&] { return Get<Label>("Label13").Caption() == "00:00"; }));
    TypeFile(chosen)(dialog);
    RunJob(*job);
  }});
  Give(LoadVideo);
  EXPECT_EQ(Path().Text(), chosen);
  EXPECT_EQ(Number(SourceWidth), "1,920");
  EXPECT_EQ(tools_.Runs(), (Texts{SizeRun(chosen), DurationRun(chosen)}));
  RunJob(*job);
  EXPECT_EQ(LastRun(),
            "ffmpeg | -i | " + chosen.toStdString() + " | -vf | crop=111:0:0:0 | /tmp/first.mp4");
}

TEST_F(NestedRuns, AJobsToolCanPrintMoreThanAPipeHoldsWhileADialogIsOpen) {
  DuringAJobThatPrintsMuch([&] {
    const DialogAnswers answers({WhenItHasEnded(CancelDialog())});
    Give(LoadVideo);
  });
}

TEST_F(NestedRuns, AJobsToolCanPrintMoreThanAPipeHoldsWhileAMessageBoxIsOpen) {
  DuringAJobThatPrintsMuch([&] {
    const DialogAnswers answers(
        {WhenItHasEnded(PressButton(QMessageBox::No)), PressButton(QMessageBox::Ok)});
    Get<CommandButton>("Command1", StartFreshButton).Click(StartFreshButton);
  });
}

TEST_F(NestedRuns, APreviewCanPrintMoreThanAPipeHoldsAndEndWhileAJobRunsInsideIt) {
  ProbeDimensionsDone = true;
  tools_.FfplayDoes(PrintCommands("one\n") + WaitCommands(gate_) + PrintMuchAndMake("ended"));
  AfterBlock("one\n", [&] { RunAJobDuring([&] { EXPECT_TRUE(AwaitFile("ended")); }); });
  Give(PreviewCroppedVideo);
  EXPECT_EQ(Store().size(), 4 + kMuch);
}

TEST_F(NestedRuns, ALoadAndAPreviewInsideItCanEndWhileAJobRunsInsideBoth) {
  tools_.StreamProbeDoes(PrintCommands(SizeText(1920, 1080)));
  tools_.DurationProbeDoes(PrintCommands("one\n") + WaitCommands(gate_) +
                           PrintMuchAndMake("probed"));
  tools_.FfplayDoes(PrintCommands("two\n") + WaitCommands(gate_) + PrintMuchAndMake("played"));
  AfterBlock("one\n", [&] {
    AfterBlock("two\n", [&] {
      RunAJobDuring([&] { EXPECT_TRUE(AwaitFile("probed") && AwaitFile("played")); });
      EXPECT_EQ(Store(), "one\ntwo\n");
    });
    Give(PreviewCroppedVideo);
    EXPECT_EQ(Store().size(), 8 + kMuch);
  });
  Pick(tools_.MakeFile("a.mp4"));
  EXPECT_EQ(Store().size(), 8 + 2 * kMuch);
}

TEST_F(NestedRuns, ALoadDuringAJobDoesNotChangeTheJobsCommandLine) {
  const QString video = tools_.MakeFile("other.mp4");
  tools_.FfmpegDoes(PrintCommands("one\n") + WaitCommands(gate_));
  CropTo("/tmp/out.mp4");
  AtNextDoEvents([&] {
    Pick(video, SizeText(1920, 1080), DurationText("00:00:10.00"));
    gate_.Open();
  });
  RunJob(*JobWindow());
  EXPECT_EQ(tools_.Runs(), (Texts{"ffmpeg | -i | -vf | crop=0:0:0:0 | /tmp/out.mp4", SizeRun(video),
                                  DurationRun(video)}));
  EXPECT_EQ(Number(SourceWidth), "1,920");
}

TEST_F(NestedRuns, ANewJobCanStartDuringACancelledOneAndEndAfterIt) {
  tools_.FfmpegDoes(PrintCommands("one\n"));
  CropTo("/tmp/first.mp4");
  const QPointer<Form2> first = JobWindow();
  ASSERT_FALSE(first.isNull());
  AtNextDoEvents([&] {
    Release(first->Find<Label>("Label2"));
    EXPECT_EQ(JobWindow(), nullptr);
    CropTo("/tmp/second.mp4");
  });
  RunJob(*first);
  ServePendingEvents();
  EXPECT_TRUE(first.isNull());
  ASSERT_NE(JobWindow(), nullptr);
  RunJob(*JobWindow());
  EXPECT_EQ(tools_.Runs(), (Texts{"ffmpeg | -i | -vf | crop=0:0:0:0 | /tmp/first.mp4",
                                  "ffmpeg | -i | -vf | crop=0:0:0:0 | /tmp/second.mp4"}));
  EXPECT_EQ(StatusOf(*JobWindow()), kSuccessful);
}

TEST_F(NestedRuns, StartFreshDuringAJobUnloadsItsWindowAndLetsTheToolUpdateTheProgressBar) {
  auto& bar = Get<ProgressBar>("pbar");
  tools_.FfmpegDoes(PrintCommands("time=00:00:05.00 ") + WaitCommands(gate_) +
                    PrintCommands("time=00:00:09.00 "));
  CropTo("/tmp/out.mp4");
  Form2* const job = JobWindow();
  AtNextDoEvents([&] {
    const DialogAnswers answers({PressButton(QMessageBox::Yes)});
    Get<CommandButton>("Command1", StartFreshButton).Click(StartFreshButton);
    EXPECT_EQ(JobWindow(), nullptr);
    EXPECT_EQ(bar.Value(), 0);
    gate_.Open();
  });
  RunJob(*job);
  EXPECT_EQ(bar.Value(), 9);
}

TEST_F(NestedRuns, TheProgramEndsAfterTheToolOfAJobWhoseWindowsWereClosed) {
  const QString whole = tools_.Path() + "/whole";
  tools_.FfmpegDoes(PrintCommands("one\n") + WaitCommands(gate_) + PrintCommands("two\n") +
                    QStringLiteral("echo whole > '%1'\n").arg(whole));
  CropTo("/tmp/out.mp4");
  Form2* const job = JobWindow();
  bool handled = false;
  QTimer::singleShot(0, [&] {
    AtNextDoEvents([&] {
      handled = true;
      EXPECT_TRUE(form_->close());
      EXPECT_TRUE(job->isVisible());
      EXPECT_TRUE(job->close());
      gate_.Open();
    });
    RunJob(*job);
  });
  QTimer deadline;
  QObject::connect(&deadline, &QTimer::timeout, [] { QApplication::exit(1); });
  deadline.start(kPatience);
  EXPECT_EQ(QApplication::exec(), 0);
  EXPECT_TRUE(handled);
  EXPECT_TRUE(QFile::exists(whole));
}

TEST_F(NestedRuns, AFileThatIsDroppedDuringAJobIsLoadedDuringIt) {
  LoadVideoOf(640, 360);
  const QString other = tools_.MakeFile("other.mp4");
  RunAJobDuring([&] {
    EXPECT_TRUE(DropFiles(Canvas(), {other}));
    EXPECT_TRUE(WaitFor([&] { return VideoPath == other; }));
  });
}

}  // namespace
}  // namespace kelvane::testing
