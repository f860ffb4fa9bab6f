// Commands inside a job, and the ends of windows during it.
#include <QFile>
#include <QPointer>

#include "shared/SharedValues.h"
#include "workspace/NestingTest.h"

namespace kelvane::testing {
namespace {

TEST_F(Nesting, ASecondCropWhileTheFirstRunsStartsNothingAndReplacesTheSharedValues) {
  const Gate gate(tools_.PathOf("gate"));
  tools_.CropDoes(Print(QStringLiteral("one\n")) + Wait(gate) + Print(QStringLiteral("two\n")));
  CropWidth = 111;
  CropTo("/tmp/first.mp4");
  Form2* const job = JobWindow();
  ASSERT_NE(job, nullptr);
  bool nested = false;
  AtNextDoEvents([&] {
    CropWidth = 222;
    CropTo("/tmp/second.mp4");
    nested = true;
    EXPECT_EQ(JobWindow(), job);
    EXPECT_EQ(StatusOf(*job), "Progress: 00.00 % Complete: Status: Cropping...");
    gate.Open();
  });
  RunJob(*job);
  EXPECT_TRUE(nested);
  EXPECT_EQ(tools_.Runs(), Texts{"ffmpeg | -i | -vf | crop=111:0:0:0 | /tmp/first.mp4"});
  EXPECT_EQ(OutputPath.toStdString(), "/tmp/second.mp4");
  EXPECT_EQ(CropFilter.toStdString(), "222:0:0:0");
  EXPECT_EQ(job->Find<Label>(QStringLiteral("Label1(1)")).Caption().toStdString(),
            "/tmp/first.mp4");
  EXPECT_EQ(StatusOf(*job), "Progress: 100 % Complete: Status: Cropping Successful");
  EXPECT_TRUE(job->isVisible());
}

TEST_F(Nesting, AVideoChosenBeforeAJobHasBegunIsLoadedAtOnceAndTheOtherTimersGoOn) {
  const QString chosen = tools_.File(QStringLiteral("chosen.mp4"));
  tools_.SizeProbeDoes(Print(SizeText(1920, 1080)));
  CropWidth = 111;
  CropTo("/tmp/first.mp4");
  Form2* const job = JobWindow();
  ASSERT_NE(job, nullptr);
  const DialogAnswers answers({[&](QDialog& dialog) {
    Bar(LeftBar).setLeft(100);
    RunJob(*job);
    EXPECT_TRUE(WaitForTicks(Get<Timer>("Timer2"), 1));
    EXPECT_EQ(CropLeft, 100);
    TypeFile(chosen)(dialog);
    RunJob(*job);
  }});
  Give(LoadVideo);
  EXPECT_EQ(Path().Text(), chosen);
  EXPECT_EQ(Number(SourceWidth), "1,920");
  EXPECT_EQ(tools_.Runs(), (Texts{SizeRun(chosen), DurationRun(chosen)}));
  RunJob(*job);
  EXPECT_EQ(tools_.Runs().back(),
            "ffmpeg | -i | " + chosen.toStdString() + " | -vf | crop=111:0:0:0 | /tmp/first.mp4");
}

TEST_F(Nesting, ACropWhileTheFinishedJobsWindowIsOpenBringsItUpAndStartsNothing) {
  CropTo("/tmp/first.mp4");
  Form2* const job = JobWindow();
  ASSERT_NE(job, nullptr);
  RunJob(*job);
  job->hide();
  CropTo("/tmp/second.mp4");
  EXPECT_EQ(JobWindow(), job);
  EXPECT_TRUE(job->isVisible());
  EXPECT_FALSE(TimerOf(*job).Enabled());
  EXPECT_EQ(StatusOf(*job), "Progress: 100 % Complete: Status: Cropping Successful");
  EXPECT_EQ(OutputPath.toStdString(), "/tmp/second.mp4");
  EXPECT_EQ(tools_.Runs().size(), 1U);
}

TEST_F(Nesting, CancelDuringAJobAndANewCropInsideIt) {
  const Gate gate(tools_.PathOf("gate"));
  const QString output = tools_.Path() + QLatin1String("/whole");
  tools_.CropDoes(Print(QStringLiteral("time=00:00:01.00 ")) + Wait(gate) +
                  Print(QStringLiteral("time=00:00:07.00 ")) +
                  QStringLiteral("echo whole > '%1'\n").arg(output));
  CropTo("/tmp/first.mp4");
  const QPointer<Form2> first = JobWindow();
  ASSERT_FALSE(first.isNull());
  QPointer<Form2> second;
  AtNextDoEvents([&] {
    Cancel(*first);
    EXPECT_EQ(JobWindow(), nullptr);
    EXPECT_FALSE(first->isVisible());
    EXPECT_TRUE(form_->isVisible());
    tools_.CropDoes(Print(QStringLiteral("time=00:00:03.00 ")));
    CropTo("/tmp/second.mp4");
    second = JobWindow();
    ASSERT_FALSE(second.isNull());
    EXPECT_NE(second, first);
    EXPECT_EQ(StatusOf(*second), "Progress: 00.00 % Complete: Status: Getting Crop Regions");
    RunJob(*second);
    EXPECT_EQ(MainBar(), 3);
    EXPECT_FALSE(QFile::exists(output));
    gate.Open();
  });
  RunJob(*first);
  ASSERT_FALSE(second.isNull());
  EXPECT_EQ(tools_.Runs(), (Texts{"ffmpeg | -i | -vf | crop=0:0:0:0 | /tmp/first.mp4",
                                  "ffmpeg | -i | -vf | crop=0:0:0:0 | /tmp/second.mp4"}));
  EXPECT_EQ(MainBar(), 7);  // the cancelled job goes on feeding it
  EXPECT_TRUE(QFile::exists(output));
  EXPECT_EQ(StatusOf(*second), "Progress: 100 % Complete: Status: Cropping Successful");
  EXPECT_EQ(JobWindow(), second);
  PumpOnce();
  EXPECT_TRUE(first.isNull()) << "the cancelled window is still there";
}

TEST_F(Nesting, TheNewJobMayOutlastTheCancelledOne) {
  tools_.CropDoes(Print(QStringLiteral("one\n")));
  CropTo("/tmp/first.mp4");
  const QPointer<Form2> first = JobWindow();
  ASSERT_FALSE(first.isNull());
  AtNextDoEvents([&] {
    Cancel(*first);
    CropTo("/tmp/second.mp4");
  });
  RunJob(*first);
  const QPointer<Form2> second = JobWindow();
  ASSERT_FALSE(second.isNull());
  PumpOnce();
  EXPECT_TRUE(first.isNull());
  EXPECT_TRUE(TimerOf(*second).Enabled());
  RunJob(*second);
  EXPECT_EQ(StatusOf(*second), "Progress: 100 % Complete: Status: Cropping Successful");
}

TEST_F(Nesting, CancelBeforeTheSecondTickRunsNoTool) {
  CropTo("/tmp/out.mp4");
  const QPointer<Form2> job = JobWindow();
  ASSERT_FALSE(job.isNull());
  ASSERT_TRUE(WaitForTicks(TimerOf(*job), 1));
  Cancel(*job);
  PumpOnce();
  EXPECT_TRUE(job.isNull());
  ASSERT_TRUE(WaitForTicks(Get<Timer>("Timer3"), 4));  // two seconds
  EXPECT_TRUE(tools_.Runs().empty());
}

TEST_F(Nesting, ALoadDuringAJobIsPossibleAndChangesTheJobsLineNoMore) {
  const QString video = tools_.File(QStringLiteral("other.mp4"));
  const Gate gate(tools_.PathOf("gate"));
  tools_.CropDoes(Print(QStringLiteral("one\n")) + Wait(gate));
  CropTo("/tmp/out.mp4");
  AtNextDoEvents([&] {
    Pick(video, SizeText(1920, 1080), DurationText("00:00:10.00"));
    gate.Open();
  });
  RunJob(*JobWindow());
  EXPECT_EQ(tools_.Runs(), (Texts{"ffmpeg | -i | -vf | crop=0:0:0:0 | /tmp/out.mp4", SizeRun(video),
                                  DurationRun(video)}));
  EXPECT_EQ(Number(SourceWidth), "1,920");
}

TEST_F(Nesting, AJobGoesOnWhileADialogIsOpen) {
  const QString ended = tools_.Path() + QLatin1String("/ended");
  tools_.CropDoes(MuchTextAndThen(ended));
  CropTo("/tmp/out.mp4");
  Form2* const job = JobWindow();
  ASSERT_NE(job, nullptr);
  bool endedMeanwhile = false;
  AtNextDoEvents([&] {
    const DialogAnswers answers({[&](QDialog& dialog) {
      endedMeanwhile = WaitFor([&] { return QFile::exists(ended); });
      CancelDialog()(dialog);
    }});
    Give(LoadVideo);
    EXPECT_EQ(StatusOf(*job), "Progress: 00.00 % Complete: Status: Cropping...");
  });
  RunJob(*job);
  EXPECT_TRUE(endedMeanwhile);
  EXPECT_EQ(StatusOf(*job), "Progress: 100 % Complete: Status: Cropping Successful");
}

TEST_F(Nesting, StartingFreshDuringAJobUnloadsItsWindowAndLeavesTheToolToItsEnd) {
  const Gate gate(tools_.PathOf("gate"));
  const QString output = tools_.Path() + QLatin1String("/whole");
  tools_.CropDoes(Print(QStringLiteral("time=00:00:05.00 ")) + Wait(gate) +
                  Print(QStringLiteral("time=00:00:09.00 ")) +
                  QStringLiteral("echo whole > '%1'\n").arg(output));
  CropTo("/tmp/out.mp4");
  const QPointer<Form2> job = JobWindow();
  AtNextDoEvents([&] {
    const DialogAnswers answers({PressButton(QMessageBox::Yes)});
    Get<CommandButton>("Command1", StartFreshButton).Click(StartFreshButton);
    EXPECT_EQ(JobWindow(), nullptr);
    EXPECT_EQ(MainBar(), 0);
    gate.Open();
  });
  RunJob(*job);
  EXPECT_TRUE(QFile::exists(output));
  EXPECT_EQ(MainBar(), 9);
  PumpOnce();
  EXPECT_TRUE(job.isNull());
}

TEST_F(Nesting, ClosingTheMainWindowDuringAJobLeavesTheJobToItsEnd) {
  const Gate gate(tools_.PathOf("gate"));
  const QString output = tools_.Path() + QLatin1String("/whole");
  tools_.CropDoes(Print(QStringLiteral("time=00:00:05.00 ")) + Wait(gate) +
                  Print(QStringLiteral("time=00:00:09.00 ")) +
                  QStringLiteral("echo whole > '%1'\n").arg(output));
  CropTo("/tmp/out.mp4");
  Form2* const job = JobWindow();
  AtNextDoEvents([&] {
    EXPECT_TRUE(form_->close());
    EXPECT_FALSE(form_->isVisible());
    EXPECT_FALSE(form_->Loaded());
    EXPECT_TRUE(job->isVisible());
    gate.Open();
  });
  RunJob(*job);
  EXPECT_TRUE(QFile::exists(output));
  EXPECT_TRUE(job->isVisible());
  EXPECT_EQ(StatusOf(*job), "Progress: 100 % Complete: Status: Cropping Successful");
}

TEST_F(Nesting, WithItsWindowsClosedDuringAJobTheProgramEndsByItselfAfterTheTool) {
  const Gate gate(tools_.PathOf("gate"));
  const QString output = tools_.Path() + QLatin1String("/whole");
  CropTo("/tmp/out.mp4");
  Texts events;
  tools_.CropDoes(Print(QStringLiteral("one\n")) + Wait(gate) + Print(QStringLiteral("two\n")) +
                  QStringLiteral("echo whole > '%1'\n").arg(output));
  Timer& timer = TimerOf(*JobWindow());
  const std::function<void()> wired = timer.Tick;
  timer.Tick = [&, wired] {
    events.emplace_back("tick");
    AtNextDoEvents([&] {
      if (tools_.Runs().empty()) return;
      form_->close();
      Cancel(*JobWindow());
      events.emplace_back("closed");
      gate.Open();
    });
    wired();
    if (!tools_.Runs().empty()) events.emplace_back("handler returned");
  };
  EXPECT_EQ(RunProgram(), 0);
  events.emplace_back("program ended");
  EXPECT_TRUE(QFile::exists(output));
  EXPECT_EQ(events, (Texts{"tick", "tick", "closed", "handler returned", "program ended"}));
}

TEST_F(Nesting, WithNoJobTheProgramEndsWhenItsWindowIsClosed) {
  AtNextDoEvents([this] { form_->close(); });
  EXPECT_EQ(RunProgram(), 0);
  EXPECT_FALSE(form_->Loaded());
}

TEST_F(Nesting, AProgramWhoseMainWindowIsClosedLivesUntilTheJobWindowIsClosedToo) {
  CropTo("/tmp/out.mp4");
  Texts events;
  AtNextDoEvents([&] {
    form_->close();
    events.emplace_back("main window closed");
  });
  Timer& timer = TimerOf(*JobWindow());
  const std::function<void()> wired = timer.Tick;
  timer.Tick = [&, wired] {
    wired();
    if (timer.Enabled()) return;
    events.emplace_back("job done");
    JobWindow()->close();
  };
  EXPECT_EQ(RunProgram(), 0);
  EXPECT_EQ(events, (Texts{"main window closed", "job done"}));
  EXPECT_EQ(tools_.Runs().size(), 1U);
}

}  // namespace
}  // namespace kelvane::testing
