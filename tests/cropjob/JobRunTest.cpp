// The run of the tool: when it starts, its line, and that it succeeds whatever it does.
#include <new>
#include <utility>

#include "cropjob/JobWindowTest.h"
#include "platform/MsgBox.h"

namespace kelvane::testing {
namespace {

constexpr const char* kRun = "ffmpeg | -i | /tmp/in.mp4 | -vf | crop=640:360:100:50 | /tmp/out.mp4";

class JobRun : public JobWindowTest {
 protected:
  void SetUp() override {
    LoadJob();
    statuses_.clear();
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

TEST_F(JobRun, IsASuccessWhateverTheToolDoes) {
  const std::pair<const char*, QString> tools[] = {
      {"prints nothing", {}},
      {"fails", Print(QStringLiteral("out.mp4: Permission denied\n")) + QStringLiteral("exit 1\n")},
      {"is killed", QStringLiteral("kill -9 $$\n")},
      {"is missing", {}},
  };
  for (const auto& [name, commands] : tools) {
    SCOPED_TRACE(name);
    if (std::string(name) == "is missing") tools_.Remove(QStringLiteral("ffmpeg"));
    SetUp();
    Run(commands);
    EXPECT_EQ(statuses_, (Texts{kStarting, kCropping, kSuccessful}));
    EXPECT_FALSE(JobTimer().Enabled());
    EXPECT_EQ(Job().cursor().shape(), Qt::ArrowCursor);
    Cancel();
    PumpOnce();
  }
}

TEST_F(JobRun, TakesTheVideoTheFilterAndTheOutputOfThatMoment) {
  mainWindow_.video = QStringLiteral("  /tmp/other.mp4 ");
  CropFilter = QStringLiteral("1:2:3:4");
  OutputPath = QStringLiteral("/tmp/my second.avi");
  Run();
  EXPECT_EQ(tools_.Runs(), Texts{"ffmpeg | -i | /tmp/other.mp4 | -vf | crop=1:2:3:4 | /tmp/my | "
                                 "second.avi"});
  EXPECT_EQ(Get<Label>("Label1(1)").Caption().toStdString(), "/tmp/out.mp4");
}

TEST_F(JobRun, RunsWithoutAVideoAllTheSame) {
  mainWindow_.video.clear();
  Run();
  EXPECT_EQ(tools_.Runs(), Texts{"ffmpeg | -i | -vf | crop=640:360:100:50 | /tmp/out.mp4"});
}

TEST_F(JobRun, ShowsAnHourglassAndKeepsItsTimerOnWhileItLasts) {
  EXPECT_EQ(Job().cursor().shape(), Qt::ArrowCursor);
  bool served = false;
  AtNextDoEvents([&] {
    served = true;
    EXPECT_EQ(Job().cursor().shape(), Qt::WaitCursor);
    EXPECT_TRUE(JobTimer().Enabled());
  });
  Run(Print(QStringLiteral("one\n")));
  EXPECT_TRUE(served);
  EXPECT_EQ(Job().cursor().shape(), Qt::ArrowCursor);
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

TEST_F(JobRun, ShowsAMessageAndKeepsStatusAndHourglassWhereTheRunItselfFails) {
  mainWindow_.VideoAsked = [] { throw std::bad_alloc(); };
  const DialogAnswers answers({PressButton(QMessageBox::Ok)});
  Run();
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
