// These tests check when the crop tool starts, its command line and its end.
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
    Tick(JobTimer());
    Tick(JobTimer());
    dialog.accept();
    Tick(JobTimer());
  }});
  MsgBox("An Error");
  ServePendingEvents();
  EXPECT_EQ(Status(), kGettingCropRegions);
  EXPECT_TRUE(tools_.Runs().empty());
  Tick(JobTimer());
  EXPECT_EQ(tools_.Runs(), Texts{kRun});
}

TEST_F(JobRun, ShowsItsStatusesInOrder) {
  Run(PrintBlocks({"banner", "time=00:00:05.00", "time=00:00:06.00"}));
  EXPECT_EQ(statuses_,
            (Texts{kStarting, kCropping, "Progress: 00.00% Complete: Status: Cropping Video",
                   "Progress: 50.00% Complete: Status: Cropping Video", kSuccessful}));
}

TEST_F(JobRun, EndsAsASuccessWhateverTheToolDoes) {
  const std::pair<const char*, QString> cases[] = {
      {"prints nothing", {}},
      {"fails", PrintCommands("out.mp4: Permission denied\n") + "exit 1\n"},
      {"is killed", "kill -9 $$\n"},
      {"is missing", {}},
  };
  for (const auto& [name, commands] : cases) {
    SCOPED_TRACE(name);
    if (std::string(name) == "is missing") tools_.Remove("ffmpeg");
    SetUp();
    Run(commands);
    EXPECT_EQ(statuses_, (Texts{kStarting, kCropping, kSuccessful}));
    EXPECT_FALSE(JobTimer().Enabled());
    EXPECT_EQ(Job().cursor().shape(), Qt::ArrowCursor);
    Cancel();
    ServePendingEvents();
  }
}

TEST_F(JobRun, TakesTheVideoTheFilterAndTheOutputPathAsTheyAreAtItsStart) {
  mainWindow_.video = "  /tmp/other.mp4 ";
  CropFilter = "1:2:3:4";
  OutputPath = "/tmp/my second.avi";
  Run();
  EXPECT_EQ(tools_.Runs(), Texts{"ffmpeg | -i | /tmp/other.mp4 | -vf | crop=1:2:3:4 | /tmp/my | "
                                 "second.avi"});
  EXPECT_EQ(Get<Label>("Label1(1)").Caption(), "/tmp/out.mp4");
}

TEST_F(JobRun, NeedsNoVideo) {
  mainWindow_.video.clear();
  Run();
  EXPECT_EQ(tools_.Runs(), Texts{"ffmpeg | -i | -vf | crop=640:360:100:50 | /tmp/out.mp4"});
}

TEST_F(JobRun, ShowsAnHourglassAndKeepsItsTimerOnUntilItsEnd) {
  EXPECT_EQ(Job().cursor().shape(), Qt::ArrowCursor);
  bool handled = false;
  AtNextDoEvents([&] {
    handled = true;
    EXPECT_EQ(Job().cursor().shape(), Qt::WaitCursor);
    EXPECT_TRUE(JobTimer().Enabled());
  });
  Run(PrintCommands("one\n"));
  EXPECT_TRUE(handled);
  EXPECT_EQ(Job().cursor().shape(), Qt::ArrowCursor);
  EXPECT_FALSE(JobTimer().Enabled());
}

TEST_F(JobRun, StartsNoSecondRunAtLaterTicks) {
  bool ticked = false;
  AtNextDoEvents([&] {
    // More ticks than 16 bits can count.
    for (int ticks = 0; ticks < 65536 + 5; ++ticks) Tick(JobTimer());
    ticked = true;
  });
  Run(PrintCommands("one\n"));
  EXPECT_TRUE(ticked);
  EXPECT_EQ(tools_.Runs(), Texts{kRun});
  EXPECT_EQ(statuses_, (Texts{kStarting, kCropping, kSuccessful}));
}

TEST_F(JobRun, ThatThrowsShowsAMessageAndKeepsStatusAndHourglass) {
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
