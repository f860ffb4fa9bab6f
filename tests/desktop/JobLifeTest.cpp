// What goes on beside a running job, and how the program ends.
#include "desktop/DesktopTest.h"

namespace kelvane::desktop {
namespace {

class JobLife : public DesktopTest {
 protected:
  QString first = program.PathOf("first.mp4");
};

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

TEST_F(JobLife, TwentyLoadsAndCropsLeaveNothingOpen) {
  ReplaceProbe("00:00:10.00");
  program.ReplaceTool("ffmpeg", "echo 'time=00:00:10.00'");
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithPretendedVideo());
  int before = 0;
  const QString other = program.PathOf("other.mp4");
  ASSERT_NO_FATAL_FAILURE(WriteFile(other, "no video"));
  for (int crop = 0; crop < 21; ++crop) {
    ASSERT_TRUE(ChooseFile(screen, window, kLoadVideo, crop % 2 == 0 ? other : video));
    ASSERT_TRUE(WaitFor([&] { return program.RunsOf("ffprobe").size() == 4 + 2 * crop; }));
    ASSERT_NO_FATAL_FAILURE(StartCrop(program.PathOf("cropped.mp4")));
    ASSERT_TRUE(job.AwaitSuccess());
    job.Cancel();
    ASSERT_TRUE(WaitFor([&] { return !job.Open(); }));
    // The first round opens what stays open for good.
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
