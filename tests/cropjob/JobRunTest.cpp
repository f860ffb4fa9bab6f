// The run of the tool: when it starts, its line, and that it succeeds whatever it does.
#include "cropjob/JobWindowTest.h"
#include "platform/MsgBox.h"
#include "support/AllocationFailure.h"

namespace kelvane::testing {
namespace {

constexpr const char* kRun = "ffmpeg | -i | /tmp/in.mp4 | -vf | crop=640:360:100:50 | /tmp/out.mp4";

class JobRun : public JobWindowTest {
 protected:
  void SetUp() override {
    LoadJob();
    Get<Label>("Label1(2)").Change = [this](int) { statuses_.push_back(Status()); };
  }
  Texts statuses_;
};

TEST_F(JobRun, StartsAtTheSecondTick) {
  Tick(JobTimer());
  EXPECT_EQ(Status(), kGettingCropRegions);
  EXPECT_TRUE(tools_.Runs().empty());
  Tick(JobTimer());
  EXPECT_EQ(tools_.Runs(), Texts{kRun});
}

TEST_F(JobRun, StartsByItselfTwoSecondsAfterTheLoad) {
  ASSERT_TRUE(WaitForTicks(JobTimer(), 1));
  EXPECT_TRUE(tools_.Runs().empty());
  ASSERT_TRUE(WaitFor([this] { return !JobTimer().Enabled(); }));
  EXPECT_EQ(tools_.Runs(), Texts{kRun});
  EXPECT_EQ(Status(), kSuccessful);
}

TEST_F(JobRun, CountsNoTickWhileADialogIsOpen) {
  Tick(JobTimer());
  const DialogAnswers answers({[this](QDialog& dialog) {
    ASSERT_TRUE(WaitForTicks(JobTimer(), 2));
    dialog.accept();
    Tick(JobTimer());
  }});
  MsgBox(QStringLiteral("An Error"));
  EXPECT_EQ(Status(), kGettingCropRegions);
  EXPECT_TRUE(tools_.Runs().empty());
  PumpOnce();
  EXPECT_TRUE(tools_.Runs().empty()) << "the ticks are made up";
  Tick(JobTimer());
  EXPECT_EQ(tools_.Runs(), Texts{kRun});
}

TEST_F(JobRun, ShowsItsStatusesInOrder) {
  Run(PrintBlocks({"banner", "time=00:00:05.00", "time=00:00:06.00"}));
  EXPECT_EQ(statuses_,
            (Texts{kStarting, kCropping, "Progress: 00.00% Complete: Status: Cropping Video",
                   "Progress: 50.00% Complete: Status: Cropping Video", kSuccessful}));
}

TEST_F(JobRun, OfAToolThatPrintsNothingIsASuccess) {
  Run();
  EXPECT_EQ(statuses_, (Texts{kStarting, kCropping, kSuccessful}));
}

TEST_F(JobRun, OfAToolThatFailsIsASuccess) {
  Run(Print(QStringLiteral("out.mp4: Permission denied\n")) + QStringLiteral("exit 1\n"));
  EXPECT_EQ(statuses_, (Texts{kStarting, kCropping, kSuccessful}));
}

TEST_F(JobRun, OfAToolThatIsKilledIsASuccess) {
  Run(PrintBlocks({"time=00:00:02.00"}) + QStringLiteral("kill -9 $$\n"));
  EXPECT_EQ(Status(), kSuccessful);
  EXPECT_EQ(Bar().Value(), 2);
}

TEST_F(JobRun, OfAToolThatIsMissingIsASuccess) {
  tools_.Remove(QStringLiteral("ffmpeg"));
  Run();
  EXPECT_EQ(statuses_, (Texts{kStarting, kCropping, kSuccessful}));
  EXPECT_FALSE(JobTimer().Enabled());
  EXPECT_EQ(Job().cursor().shape(), Qt::ArrowCursor);
}

TEST_F(JobRun, OfAToolThatAsksAQuestionGetsNoAnswer) {
  Run(
      QStringLiteral("if read answer; then echo 'time=00:00:09.00'; "
                     "else echo 'time=00:00:01.00'; fi\n"));
  EXPECT_EQ(Bar().Value(), 1);
  EXPECT_EQ(Status(), kSuccessful);
}

TEST_F(JobRun, TakesTheVideoTheFilterAndTheOutputOfThatMoment) {
  mainWindow_.video = QStringLiteral("  /tmp/other.mp4 ");
  CropFilter = QStringLiteral("1:2:3:4");
  OutputPath = QStringLiteral("/tmp/second.avi");
  Run();
  EXPECT_EQ(tools_.Runs(), Texts{"ffmpeg | -i | /tmp/other.mp4 | -vf | crop=1:2:3:4 | "
                                 "/tmp/second.avi"});
  EXPECT_EQ(Get<Label>("Label1(1)").Caption().toStdString(), "/tmp/out.mp4");
}

TEST_F(JobRun, WithoutAVideoRunsAllTheSame) {
  mainWindow_.video.clear();
  Run();
  EXPECT_EQ(tools_.Runs(), Texts{"ffmpeg | -i | -vf | crop=640:360:100:50 | /tmp/out.mp4"});
}

TEST_F(JobRun, CutsAnOutputWithABlank) {
  OutputPath = QStringLiteral("/tmp/my clip.mp4");
  Run();
  EXPECT_EQ(tools_.Runs(),
            Texts{"ffmpeg | -i | /tmp/in.mp4 | -vf | crop=640:360:100:50 | /tmp/my | clip.mp4"});
}

TEST_F(JobRun, ShowsAnHourglassWhileItLasts) {
  EXPECT_EQ(Job().cursor().shape(), Qt::ArrowCursor);
  Qt::CursorShape during = Qt::ArrowCursor;
  AtNextDoEvents([&] { during = Job().cursor().shape(); });
  Run(Print(QStringLiteral("one\n")));
  EXPECT_EQ(during, Qt::WaitCursor);
  EXPECT_EQ(Job().cursor().shape(), Qt::ArrowCursor);
}

TEST_F(JobRun, KeepsTheTimerOnWhileItLastsAndTurnsItOffAfterwards) {
  bool during = false;
  AtNextDoEvents([&] { during = JobTimer().Enabled(); });
  Run(Print(QStringLiteral("one\n")));
  EXPECT_TRUE(during);
  EXPECT_FALSE(JobTimer().Enabled());
}

TEST_F(JobRun, TicksDuringItOnlyCountOn) {
  bool ticked = false;
  AtNextDoEvents([&] {
    // More than a count of 16 bits has numbers for.
    for (int ticks = 0; ticks < 65536 + 5; ++ticks) Tick(JobTimer());
    ticked = true;
  });
  Run(Print(QStringLiteral("one\n")));
  EXPECT_TRUE(ticked);
  EXPECT_EQ(tools_.Runs(), Texts{kRun});
  EXPECT_EQ(statuses_, (Texts{kStarting, kCropping, kSuccessful}));
  EXPECT_FALSE(JobTimer().Enabled());
}

TEST_F(JobRun, TicksByTheClockComeWhileItLasts) {
  const Gate gate(tools_.PathOf("gate"));
  tools_.CropDoes(Print(QStringLiteral("one\n")) + Wait(gate));
  int ticks = 0;
  Before(JobTimer().Tick, [&ticks] { ++ticks; });
  Tick(JobTimer());
  AtNextDoEvents([&] {
    EXPECT_TRUE(WaitFor([&] { return ticks == 3; }));
    gate.Open();
  });
  Tick(JobTimer());
  EXPECT_EQ(ticks, 3);
  EXPECT_EQ(tools_.Runs(), Texts{kRun});
}

TEST_F(JobRun, AnErrorOfTheRunItselfIsAMessageAndTheStatusAndTheHourglassStay) {
  // The tool's line is the first text of that length.
  OutputPath = QStringLiteral("/tmp/") + QString(5000, QLatin1Char('x'));
  Before(Get<Label>("Label1(2)").Change, [this](int) {
    if (Status() == kCropping) FailNextAllocation(5000, 12000);
  });
  const DialogAnswers answers({PressButton(QMessageBox::Ok)});
  Run();
  EXPECT_TRUE(AllocationHasFailed());
  EXPECT_EQ(answers.seen(),
            Texts{"Kelvane | An Error Occurred trying to crop the Video. | no icon | OK"});
  EXPECT_EQ(statuses_, (Texts{kStarting, kCropping}));
  EXPECT_EQ(Job().cursor().shape(), Qt::WaitCursor);
  EXPECT_FALSE(JobTimer().Enabled());
  EXPECT_TRUE(tools_.Runs().empty());
  EXPECT_TRUE(Job().isVisible());
}

}  // namespace
}  // namespace kelvane::testing
