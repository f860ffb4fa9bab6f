// Tools that stop, flood their reader, outlive their output or can't be started.
#include <sys/resource.h>

#include <csignal>

#include "desktop/JoinerTest.h"
#include "support/Sanitized.h"

namespace kelvane::desktop {
namespace {

constexpr QSize kSize(640, 360);

class ToolFaults : public DesktopTest {
 protected:
  // Starts a job of ten seconds whose tool runs the shell commands `behaviour`.
  void StartJob(const QString& behaviour) {
    ReplaceProbe();
    program.ReplaceTool("ffmpeg", behaviour);
    ASSERT_NO_FATAL_FAILURE(OpenWindowWithFakeVideo());
    ASSERT_NO_FATAL_FAILURE(StartCrop(program.PathOf("cropped.mp4")));
  }

  // Waits until the job's bar shows that many of the ten seconds.
  bool AwaitProgress(int seconds) const {
    constexpr int kBarWidth = 409;
    return WaitFor([&] { return std::abs(job.Progress() - kBarWidth * seconds / 10) <= 2; });
  }

  void ExpectWindowAnswersWhileToolRuns() {
    pid_t tool = 0;
    ASSERT_TRUE(WaitFor([&] { return (tool = Tool()) != 0; }));
    EXPECT_TRUE(window.Answers());
    EXPECT_EQ(Tool(), tool) << "the tool has ended";
  }

  bool AwaitToolsAreReaped() const {
    return WaitFor([&] { return program.Children().isEmpty(); }, 60s);
  }
};

// During a job the window handles its events only when the tool prints.
TEST_F(ToolFaults, AStoppedToolHoldsUpTheJobAndTheWindowUntilItIsContinued) {
  // Each line has 512 bytes. The program handles at most 256 at a time, so it handles each time by
  // itself.
  ASSERT_NO_FATAL_FAILURE(
      StartJob("printf '%-511s\\n' time=00:00:01.00 time=00:00:02.00\n"
               "kill -STOP $$\n"
               "printf '%-511s\\n' time=00:00:03.00 time=00:00:04.00\n" +
               program.PrintingGate("end") + "echo time=00:00:09.00"));
  ASSERT_TRUE(WaitFor([&] { return program.Children("T").size() == 1; }));
  ASSERT_TRUE(AwaitProgress(2));
  const QImage before = screen.Still();
  const std::chrono::milliseconds timeBefore = program.ProcessorTime();
  window.PointAt(kRunVideo);
  EXPECT_TRUE(HoldsFor([&] { return screen.Picture() == before; }, 1s));
  EXPECT_LT(program.ProcessorTime() - timeBefore, 100ms);

  ASSERT_EQ(kill(Tool(), SIGCONT), 0);
  EXPECT_TRUE(AwaitProgress(4));
  EXPECT_TRUE(window.Answers());
  ASSERT_TRUE(program.Open("end"));
  EXPECT_TRUE(AwaitProgress(9));
  EXPECT_EQ(program.RunsOf("ffmpeg").size(), 1);
  ExpectEndAndCloseJob();
  EXPECT_TRUE(AwaitToolsAreReaped());
}

TEST_F(ToolFaults, AStoppedToolDoesNotDelayTheEndOfTheProgramAndEndsOnceItIsContinued) {
  ASSERT_NO_FATAL_FAILURE(StartJob("kill -STOP $$\nwhile echo on; do sleep 0.02; done"));
  ASSERT_TRUE(WaitFor([&] { return program.Children("T").size() == 1; }));
  const pid_t tool = Tool();
  ASSERT_NE(tool, 0);
  ASSERT_EQ(kill(static_cast<pid_t>(program.Id()), SIGTERM), 0);
  EXPECT_EQ(program.AwaitExit(5s), -1);
  ASSERT_EQ(kill(tool, SIGCONT), 0);
  EXPECT_TRUE(WaitFor([&] { return kill(tool, 0) != 0; }));
}

TEST_F(ToolFaults, AToolThatClosesItsOutputEndsTheJobAndOutlivesTheProgram) {
  ASSERT_NO_FATAL_FAILURE(StartJob("exec > /dev/null 2>&1\n" + program.Gate("end")));
  EXPECT_TRUE(job.AwaitEndStatus());
  const pid_t tool = Tool();
  ASSERT_NE(tool, 0) << "the tool has ended";
  ExpectEndAndCloseJob();
  CloseAndExpectEnd();
  EXPECT_EQ(kill(tool, 0), 0) << "the tool has ended";
  ASSERT_TRUE(program.Open("end"));
  EXPECT_TRUE(WaitFor([&] { return kill(tool, 0) != 0; }));
}

// The runner keeps the tool's whole output until the run ends. A second copy exists while its
// buffer grows, and when the run returns the output.
TEST_F(ToolFaults, AGibibyteFromAJobsToolTakesTwiceItsSizeOfMemoryAtMost) {
  constexpr qint64 kFlood = 1024 * 1024;  // KiB
  ASSERT_NO_FATAL_FAILURE(StartJob("head -c 1G /dev/zero"));
  const qint64 before = program.Memory();
  ASSERT_GT(before, 0);
  ASSERT_NO_FATAL_FAILURE(ExpectWindowAnswersWhileToolRuns());
  EXPECT_TRUE(job.AwaitEndStatus(100s));
  const qint64 peak = program.PeakMemory() - before;
  EXPECT_GT(peak, kFlood);
  if (!kSanitized) {
    EXPECT_LT(peak, kFlood * 2 + kFlood / 20);
    EXPECT_LT(program.Memory(), before + kFlood / 20) << "the memory isn't freed";
  }
  ExpectEndAndCloseJob();
}

// A hidden text box of the main window keeps the probe tool's output as well, with two bytes per
// character. The flood is smaller than the one above: a gibibyte would take six of memory.
TEST_F(ToolFaults, AFloodFromTheProbeToolTakesSixTimesItsSizeOfMemoryAtMost) {
  // A sanitizer needs several times as much.
  constexpr qint64 kFlood = (kSanitized ? 64 : 256) * 1024;  // KiB
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(kSize, 1));
  program.ReplaceTool("ffprobe",
                      "case \"$*\" in\n*show_entries*) printf 'width=320\\nheight=240\\n' ;;\n"
                      "*) yes | head -c " +
                          QString::number(kFlood) + "K ;;\nesac");
  const QString other = program.PathOf("other.mp4");
  WriteFile(other, "no video");
  const qint64 before = program.Memory();
  ASSERT_TRUE(ChooseFile(screen, window, kLoadVideo, other));
  ASSERT_TRUE(WaitFor([&] { return program.RunsOf("ffprobe").size() == 2; }));
  ASSERT_NO_FATAL_FAILURE(ExpectWindowAnswersWhileToolRuns());
  EXPECT_TRUE(window.AwaitVideo(QSize(320, 240)));
  EXPECT_TRUE(AwaitToolsAreReaped());
  if (!kSanitized) {
    // The runner's copy is freed when the run ends.
    const auto freed = [&] { return program.PeakMemory() - program.Memory(); };
    EXPECT_TRUE(WaitFor([&] { return freed() > kFlood * 3 / 4; }, 60s)) << freed();
    const auto kept = [&] { return program.Memory() - before; };
    EXPECT_TRUE(WaitFor([&] { return kept() < kFlood * 2 + kFlood / 10; }, 60s)) << kept();
    EXPECT_GT(kept(), kFlood * 2 - kFlood / 20);
    EXPECT_LT(program.PeakMemory() - before, kFlood * 6);
  }
  CloseAndExpectEnd();
}

// Qt opens no window without a free descriptor, so the job's window opens before the limit is set.
TEST_F(ToolFaults, AJobInProgressNeedsNoFreeDescriptor) {
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(kSize, 1));
  // UBSan opens a pipe at the first use of a class, so a first job runs without the limit.
  ASSERT_NO_FATAL_FAILURE(StartCrop(program.PathOf("first.mp4")));
  ExpectEndAndCloseJob();
  program.ReplaceTool("ffmpeg", program.PrintingGate("go") + R"(exec "$real" "$@")");
  const QString output = program.PathOf("cropped.mp4");
  ASSERT_NO_FATAL_FAILURE(StartCrop(output));
  ASSERT_TRUE(job.AwaitStatus("Progress: 00.00 % Complete: Status: Cropping..."));
  const auto noFurtherOne = static_cast<std::uint64_t>(program.LowestFreeDescriptor());
  ASSERT_TRUE(program.SetLimit(RLIMIT_NOFILE, noFurtherOne));
  ASSERT_TRUE(program.Open("go"));
  ExpectEndAndCloseJob();
  EXPECT_EQ(VideoSize(output), QSize(634, 354));
  EXPECT_EQ(PicturesWithoutComplaint(output), PicturesWithoutComplaint(video));
  ASSERT_TRUE(program.LiftLimit(RLIMIT_NOFILE));
  CloseAndExpectEnd();
}

// The limit counts threads as well, and the program needs one to read a tool's output.
TEST_F(ToolFaults, WithoutRoomForAProcessALoadKeepsTheOldSizeAndACropMakesNoFile) {
  program.RunAsOrdinaryUser();
  const QString other = program.PathOf("other.mp4");
  const QString output = program.PathOf("cropped.mp4");
  ASSERT_TRUE(MakeVideo(other, QSize(320, 240), 1));
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(kSize, 1));
  window.Click(kLoadVideo);
  const WindowId dialog = screen.AwaitNew({window.Id()});
  ASSERT_NE(dialog, 0U);
  ASSERT_TRUE(program.SetLimit(RLIMIT_NPROC, 0));
  ASSERT_TRUE(TypeFileName(screen, dialog, other));
  EXPECT_TRUE(WaitFor([&] { return window.ShowsPath(other); }));
  EXPECT_TRUE(window.AwaitVideo(kSize));
  EXPECT_TRUE(window.AwaitBarsAround(kSize));
  EXPECT_EQ(screen.Windows().size(), 1) << "a message box is open";
  ASSERT_NO_FATAL_FAILURE(StartCrop(output));
  ExpectEndAndCloseJob();
  EXPECT_EQ(ContentOf(output), "(not there)");

  ASSERT_TRUE(program.LiftLimit(RLIMIT_NPROC));
  ASSERT_TRUE(ChooseFile(screen, window, kLoadVideo, video));
  EXPECT_TRUE(WaitFor([&] { return window.ShowsPath(video); }));
  ASSERT_TRUE(window.Answers());
  ASSERT_NO_FATAL_FAILURE(StartCrop(output));
  ExpectEndAndCloseJob();
  EXPECT_EQ(VideoSize(output), QSize(634, 354));
  CloseAndExpectEnd();
}

class JoinersToolFaults : public JoinerTest {
 protected:
  // Expects that the tool stops and the window doesn't respond, and continues the tool.
  void ExpectStandstillAndContinue() {
    ASSERT_TRUE(WaitFor([&] { return program.Children("T").size() == 1; }));
    const QImage before = screen.Still();
    const std::chrono::milliseconds timeBefore = program.ProcessorTime();
    screen.MovePointer(joiner.ButtonCentre(JoinerButton::kSaveList));
    EXPECT_TRUE(HoldsFor([&] { return screen.Picture() == before; }, 1s));
    EXPECT_LT(program.ProcessorTime() - timeBefore, 100ms);
    ASSERT_EQ(kill(Tool(), SIGCONT), 0);
  }

  const QString clip = program.PathOf("clip.mp4");
  const QString output = program.PathOf("joined.mp4");
};

TEST_F(JoinersToolFaults, AStoppedToolHoldsUpTheWindowUntilItIsContinued) {
  for (const char* tool : {"ffprobe", "ffmpeg"}) {
    program.ReplaceTool(tool, R"(kill -STOP $$; exec "$real" "$@")");
  }
  ASSERT_TRUE(MakeVideo(clip, kSize, 2));
  ASSERT_TRUE(joiner.ChooseFile(JoinerButton::kAddSection, clip));
  ASSERT_NO_FATAL_FAILURE(ExpectStandstillAndContinue());
  EXPECT_TRUE(joiner.AwaitTotals(1, "00,002", "00:00:02"));

  ASSERT_TRUE(joiner.ChooseFile(JoinerButton::kJoinSections, output));
  ASSERT_NO_FATAL_FAILURE(ExpectStandstillAndContinue());
  ASSERT_TRUE(CloseJoinMessage(screen));
  EXPECT_EQ(PicturesWithoutComplaint(output), PicturesWithoutComplaint(clip));
  CloseJoinerAndExpectEnd();
}

TEST_F(JoinersToolFaults, AFloodFromAJoinsToolTakesTwiceItsSizeOfMemoryAtMost) {
  constexpr qint64 kFlood = 128 * 1024;  // KiB
  program.ReplaceTool("ffmpeg", program.Gate("go") + "head -c 128M /dev/zero");
  ASSERT_TRUE(joiner.ChooseFile(JoinerButton::kJoinSections, output));
  ASSERT_TRUE(WaitFor([&] { return Tool() != 0; }));
  const qint64 before = program.Memory();
  ASSERT_GT(before, 0);
  ASSERT_TRUE(program.Open("go"));
  ASSERT_TRUE(CloseJoinMessage(screen, 100s));
  const qint64 peak = program.PeakMemory() - before;
  EXPECT_GT(peak, kFlood);
  if (!kSanitized) {
    EXPECT_LT(peak, kFlood * 2 + kFlood / 20);
    // The run's text is freed once the message box is closed.
    EXPECT_TRUE(WaitFor([&] { return program.Memory() < before + kFlood / 20; }));
  }
  CloseJoinerAndExpectEnd();
}

}  // namespace
}  // namespace kelvane::desktop
