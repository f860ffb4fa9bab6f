// One crop: what the job's window and the main window show, and what the tool is told.
#include <QFile>

#include "desktop/DesktopTest.h"

namespace kelvane::desktop {
namespace {

constexpr const char* kBeforeTheStart = "Progress: 00.00 % Complete: Status: Getting Crop Regions";

class Crop : public DesktopTest {
 protected:
  // The tool prints the time of a frame, and goes on printing until the gate of this name is
  // opened.
  QString PrintTime(const QString& time, const QString& gate) {
    return QStringLiteral("printf 'size=    1kB time=%1.00 bitrate= 8.0kbits/s speed=2x\\r' >&2\n")
               .arg(time) +
           program.TalkingGate(gate);
  }

  QString output = program.PathOf("cropped.mp4");
};

TEST_F(Crop, WritesWhatTheBareCommandWrites) {
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(QSize(640, 360), 20));
  const QByteArray source = ContentOf(video);
  ASSERT_NO_FATAL_FAILURE(StartCrop(output));
  EXPECT_TRUE(job.AwaitStatus(kBeforeTheStart));
  EXPECT_TRUE(job.ShowsOutput(output));
  int jobProgress = 0;
  int mainProgress = 0;
  EXPECT_TRUE(WaitFor(
      [&] {
        jobProgress = std::max(jobProgress, job.Progress());
        mainProgress = std::max(mainProgress, window.Progress());
        return job.AwaitSuccess(0ms);
      },
      60s));
  EXPECT_GT(jobProgress, 0);
  EXPECT_GT(mainProgress, 0);
  // 635 by 355, rounded down by the crop filter to whole colour samples.
  EXPECT_EQ(VideoSize(output), QSize(634, 354));
  const QString bare = program.PathOf("bare.mp4");
  ASSERT_TRUE(RunTool("ffmpeg", {"-i", video, "-vf", "crop=635:355:0:0", bare}));
  EXPECT_EQ(ContentOf(output), ContentOf(bare));
  EXPECT_EQ(ContentOf(video), source);

  EXPECT_TRUE(HoldsFor([&] { return job.Open(); }, 300ms));
  job.Cancel();
  EXPECT_TRUE(WaitFor([&] { return !job.Open(); }));
  CloseAndExpectEnd();
}

TEST_F(Crop, PutsTheFigureIntoTheTitleOfAMinimisedWindowAlone) {
  ReplaceProbe("00:00:10.00");
  program.ReplaceTool("ffmpeg", program.TalkingGate("start") + PrintTime("00:00:02", "first") +
                                    PrintTime("00:00:04", "second") +
                                    PrintTime("00:00:06", "third"));
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithPretendedVideo());
  ASSERT_NO_FATAL_FAILURE(StartCrop(output));
  ASSERT_TRUE(job.AwaitStatus("Progress: 00.00 % Complete: Status: Cropping..."));
  ASSERT_TRUE(program.Open("start"));
  ASSERT_TRUE(WaitFor([&] { return window.Progress() > 0; }));
  EXPECT_EQ(screen.Title(window.Id()), "Kelvane");

  screen.Minimise(window.Id());
  ASSERT_TRUE(WaitFor([&] { return screen.Minimised(window.Id()); }));
  EXPECT_TRUE(HoldsFor([&] { return screen.Title(window.Id()) == "Kelvane"; }, 300ms))
      << "until the next update";
  ASSERT_TRUE(program.Open("first"));
  EXPECT_TRUE(WaitFor([&] { return screen.Title(window.Id()) == "Crop: 20.00%"; }))
      << screen.Title(window.Id()).toStdString();

  screen.Activate(window.Id());
  ASSERT_TRUE(WaitFor([&] { return !screen.Minimised(window.Id()); }));
  EXPECT_TRUE(HoldsFor([&] { return screen.Title(window.Id()) == "Crop: 20.00%"; }, 300ms))
      << "until the next update";
  ASSERT_TRUE(program.Open("second"));
  EXPECT_TRUE(WaitFor([&] { return screen.Title(window.Id()) == "Kelvane"; }));
  ASSERT_TRUE(program.Open("third"));
  EXPECT_TRUE(job.AwaitSuccess());
}

}  // namespace
}  // namespace kelvane::desktop
