// What goes on beside a running job, and how the program ends.
#include "desktop/DesktopTest.h"

namespace kelvane::desktop {
namespace {

class JobLife : public DesktopTest {
 protected:
  QString first = program.PathOf("first.mp4");
  QString second = program.PathOf("second.mp4");
};

TEST_F(JobLife, ASecondCropBringsTheWindowUpAndStartsNothing) {
  ReplaceProbe("00:00:10.00");
  program.ReplaceTool("ffmpeg", program.TalkingGate("end"));
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithPretendedVideo());
  ASSERT_NO_FATAL_FAILURE(StartCrop(first));
  ASSERT_TRUE(job.AwaitStatus("Progress: 00.00 % Complete: Status: Cropping..."));
  ASSERT_NO_FATAL_FAILURE(StartCrop(second));
  EXPECT_TRUE(WaitFor([&] { return screen.Active(job.Id()); }));
  EXPECT_EQ(screen.Windows().size(), 2);
  EXPECT_TRUE(WaitFor([&] { return job.ShowsOutput(first); }))
      << "a loaded window isn't loaded again";
  // Longer than a job needs to start.
  EXPECT_TRUE(HoldsFor([&] { return program.RunsOf("ffmpeg").size() == 1; }, 3s));
  ASSERT_TRUE(program.Open("end"));
  EXPECT_TRUE(job.AwaitSuccess());
  EXPECT_TRUE(HoldsFor([&] { return program.RunsOf("ffmpeg").size() == 1; }, 3s));
}

TEST_F(JobLife, ACropAfterTheEndNeedsTheWindowClosedFirst) {
  ReplaceProbe("00:00:10.00");
  program.ReplaceTool("ffmpeg", "");
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithPretendedVideo());
  ASSERT_NO_FATAL_FAILURE(StartCrop(first));
  ASSERT_TRUE(job.AwaitSuccess());
  ASSERT_NO_FATAL_FAILURE(StartCrop(second));
  EXPECT_TRUE(HoldsFor([&] { return program.RunsOf("ffmpeg").size() == 1; }, 3s));
  job.Cancel();
  ASSERT_TRUE(WaitFor([&] { return !job.Open(); }));
  ASSERT_NO_FATAL_FAILURE(StartCrop(second));
  EXPECT_TRUE(WaitFor([&] { return job.ShowsOutput(second); }));
  EXPECT_TRUE(job.AwaitSuccess());
  EXPECT_EQ(program.RunsOf("ffmpeg").value(1).value(4), second);
}

TEST_F(JobLife, CancelBeforeTheStartStartsNothing) {
  ReplaceProbe("00:00:10.00");
  program.ReplaceTool("ffmpeg", "");
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithPretendedVideo());
  ASSERT_NO_FATAL_FAILURE(StartCrop(first));
  job.Cancel();
  ASSERT_TRUE(WaitFor([&] { return !job.Open(); }));
  EXPECT_TRUE(HoldsFor([&] { return program.RunsOf("ffmpeg").isEmpty(); }, 3s));
  CloseAndExpectEnd();
}

TEST_F(JobLife, ANewCropRunsBesideACancelledOne) {
  ReplaceProbe("00:00:10.00");
  program.ReplaceTool("ffmpeg", "case \"$*\" in\n*first.mp4)\n" + program.TalkingGate("first") +
                                    "echo 'time=00:00:08.00'\n" + program.TalkingGate("leave") +
                                    ";;\n*)\n" + program.TalkingGate("second") + ";;\nesac");
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithPretendedVideo());
  ASSERT_NO_FATAL_FAILURE(StartCrop(first));
  ASSERT_TRUE(job.AwaitStatus("Progress: 00.00 % Complete: Status: Cropping..."));
  job.Cancel();
  ASSERT_TRUE(WaitFor([&] { return !job.Open(); }));
  EXPECT_EQ(program.Children("RSD").size(), 1) << "the tool goes on";
  window.PointAt(kRunVideo);
  EXPECT_TRUE(WaitFor([&] { return window.Shows("Label14(1)", "Run Video", kLit); }))
      << "the main window lives";

  ASSERT_NO_FATAL_FAILURE(StartCrop(second));
  EXPECT_TRUE(WaitFor([&] { return job.ShowsOutput(second); }));
  ASSERT_TRUE(job.AwaitStatus("Progress: 00.00 % Complete: Status: Cropping..."));
  EXPECT_EQ(program.Children("RSD").size(), 2);
  ASSERT_TRUE(program.Open("second"));
  EXPECT_TRUE(job.AwaitSuccess());

  // The cancelled tool still moves the main window's bar.
  ASSERT_TRUE(program.Open("first"));
  EXPECT_TRUE(WaitFor([&] { return window.Progress() > 0; }));
  EXPECT_NEAR(window.Progress(), window.Place("pbar").width() * 0.8, 2);
  ASSERT_TRUE(program.Open("leave"));
  EXPECT_TRUE(WaitFor([&] { return program.Children("RSDTZ").isEmpty(); }));
  EXPECT_EQ(program.RunsOf("ffmpeg").size(), 2);
  job.Cancel();
  EXPECT_TRUE(WaitFor([&] { return !job.Open(); }));
  CloseAndExpectEnd();
}

TEST_F(JobLife, TheToolOutlivesACancelledJobAndAClosedMainWindow) {
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(QSize(640, 360), 10));
  program.ReplaceTool("ffmpeg", program.TalkingGate("go") + R"(exec "$real" "$@")");
  ASSERT_NO_FATAL_FAILURE(StartCrop(first));
  ASSERT_TRUE(job.AwaitStatus("Progress: 00.00 % Complete: Status: Cropping..."));
  job.Cancel();
  ASSERT_TRUE(WaitFor([&] { return !job.Open(); }));
  screen.Close(window.Id());
  ASSERT_TRUE(WaitFor([&] { return screen.Windows().isEmpty(); }));
  EXPECT_TRUE(program.Running()) << "the run goes on";
  ASSERT_TRUE(program.Open("go"));
  EXPECT_EQ(program.AwaitExit(60s), 0);
  EXPECT_EQ(VideoSize(first), QSize(634, 354));
  EXPECT_EQ(Pictures(first), Pictures(video));
}

TEST_F(JobLife, TheJobsWindowOutlivesTheMainWindow) {
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(QSize(640, 360), 10));
  program.ReplaceTool("ffmpeg", program.TalkingGate("go") + R"(exec "$real" "$@")");
  ASSERT_NO_FATAL_FAILURE(StartCrop(first));
  ASSERT_TRUE(job.AwaitStatus("Progress: 00.00 % Complete: Status: Cropping..."));
  screen.Close(window.Id());
  ASSERT_TRUE(WaitFor([&] { return !screen.Exists(window.Id()); }));
  EXPECT_TRUE(HoldsFor([&] { return job.Open() && program.Running(); }, 500ms));
  ASSERT_TRUE(program.Open("go"));
  EXPECT_TRUE(job.AwaitSuccess(60s));
  EXPECT_EQ(Pictures(first), Pictures(video));
  EXPECT_TRUE(HoldsFor([&] { return job.Open() && program.Running(); }, 500ms));
  job.Cancel();
  EXPECT_EQ(program.AwaitExit(), 0);
}

TEST_F(JobLife, TheMainWindowClosedDuringAProbeEndsTheProgramBehindIt) {
  program.ReplaceTool("ffprobe",
                      "case \"$*\" in\n*show_entries*) printf 'width=640\\nheight=360\\n' "
                      ";;\n*) " +
                          program.TalkingGate("probe") + ";;\nesac");
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  const QString pretended = program.PathOf("pretended.mp4");
  ASSERT_NO_FATAL_FAILURE(WriteFile(pretended, "no video"));
  ASSERT_TRUE(ChooseFile(screen, window, kLoadVideo, pretended));
  ASSERT_TRUE(window.AwaitCaption("Label1(3)", "0,360"));
  screen.Close(window.Id());
  ASSERT_TRUE(WaitFor([&] { return screen.Windows().isEmpty(); }));
  EXPECT_TRUE(HoldsFor([&] { return program.Running(); }, 500ms));
  ASSERT_TRUE(program.Open("probe"));
  EXPECT_EQ(program.AwaitExit(), 0);
}

TEST_F(JobLife, ClosingTheWindowEndsTheProgram) {
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  CloseAndExpectEnd();
}

class Resources : public DesktopTest {};

TEST_F(Resources, TwentyLoadsLeaveNothingOpen) {
  ReplaceProbe("00:00:10.00");
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithPretendedVideo());
  const QString other = program.PathOf("other.mp4");
  ASSERT_NO_FATAL_FAILURE(WriteFile(other, "no video"));
  ASSERT_TRUE(WaitFor([&] { return program.Children("RSDTZ").isEmpty(); }));
  ASSERT_TRUE(ChooseFile(screen, window, kLoadVideo, other));
  ASSERT_TRUE(WaitFor([&] { return program.RunsOf("ffprobe").size() == 4; }));
  const int before = program.OpenDescriptors();
  for (int load = 0; load < 20; ++load) {
    ASSERT_TRUE(ChooseFile(screen, window, kLoadVideo, load % 2 == 0 ? video : other));
    ASSERT_TRUE(WaitFor([&] { return program.RunsOf("ffprobe").size() == 6 + 2 * load; }));
  }
  EXPECT_TRUE(WaitFor([&] { return program.OpenDescriptors() <= before; }, 5s))
      << before << " before, " << program.OpenDescriptors() << " after";
  EXPECT_TRUE(WaitFor([&] { return program.Children("RSDTZ").isEmpty(); }, 5s));
}

TEST_F(Resources, TwentyCropsLeaveNothingOpen) {
  ReplaceProbe("00:00:10.00");
  program.ReplaceTool("ffmpeg", "echo 'time=00:00:10.00'");
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithPretendedVideo());
  int before = 0;
  for (int crop = 0; crop < 21; ++crop) {
    ASSERT_NO_FATAL_FAILURE(StartCrop(program.PathOf("cropped.mp4")));
    ASSERT_TRUE(job.AwaitSuccess());
    job.Cancel();
    ASSERT_TRUE(WaitFor([&] { return !job.Open(); }));
    // The first crop opens what stays open for good.
    if (crop == 0) before = program.OpenDescriptors();
  }
  EXPECT_EQ(program.RunsOf("ffmpeg").size(), 21);
  EXPECT_TRUE(WaitFor([&] { return program.OpenDescriptors() <= before; }, 5s))
      << before << " before, " << program.OpenDescriptors() << " after";
  EXPECT_TRUE(WaitFor([&] { return program.Children("RSDTZ").isEmpty(); }, 5s));
  CloseAndExpectEnd();
}

}  // namespace
}  // namespace kelvane::desktop
