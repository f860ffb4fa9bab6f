// Tools that misbehave: the windows rest while nothing comes of a tool, live while it prints, and
// go on when its text ends, however it ended.
#include <sys/resource.h>

#include <csignal>

#include "desktop/DesktopTest.h"
#include "support/Sanitized.h"

namespace kelvane::desktop {
namespace {

constexpr QSize kSize(640, 360);

class FaultsOfTools : public DesktopTest {
 protected:
  // A job whose tool does this.
  void StartJob(const QString& behaviour) {
    ReplaceProbe("00:00:10.00");
    program.ReplaceTool("ffmpeg", behaviour);
    ASSERT_NO_FATAL_FAILURE(OpenWindowWithPretendedVideo());
    ASSERT_NO_FATAL_FAILURE(StartCrop(program.PathOf("cropped.mp4")));
  }

  // Script that prints these times, each as a block of its own however late it is read.
  static QString PrintTimes(const QString& seconds) {
    return "for second in " + seconds +
           "; do printf '%-511s\\n' \"time=00:00:0$second.00\"; sleep 0.02; done\n";
  }
  // Begins a job of ten seconds whose tool stops itself after the third and goes on with
  // `behaviour` when it is continued.
  void StartJobThatStops(const QString& behaviour, pid_t& tool) {
    ASSERT_NO_FATAL_FAILURE(StartJob(PrintTimes("1 2 3") + "kill -STOP $$\n" + behaviour));
    ASSERT_TRUE(AwaitStopped());
    tool = Tool();
    ASSERT_NE(tool, 0);
    ASSERT_TRUE(AwaitProgress(3));
  }
  // Waits until the bar stands at so many of ten seconds.
  bool AwaitProgress(int seconds) const {
    constexpr int kWhole = 409;
    return WaitFor([&] { return std::abs(job.Progress() - kWhole * seconds / 10) <= 2; });
  }
  // The window answers the pointer before the one tool has ended.
  void ExpectWindowLivesMeanwhile() {
    pid_t tool = 0;
    ASSERT_TRUE(WaitFor([&] { return (tool = Tool()) != 0; }));
    window.PointAt(kRunVideo);
    EXPECT_TRUE(WaitFor([&] { return window.Shows("Label14(1)", "Run Video", kLit); }));
    EXPECT_EQ(Tool(), tool) << "it floods still";
  }
  static bool Ended(pid_t process) { return kill(process, 0) != 0; }

  void ExpectSuccessAndEnd() {
    EXPECT_TRUE(job.AwaitSuccess());
    EXPECT_EQ(screen.Windows().size(), 2) << "no message";
    job.Cancel();
    EXPECT_TRUE(WaitFor([&] { return !job.Open(); }));
    EXPECT_TRUE(WaitFor([&] { return program.Children("RSDTZ").isEmpty(); }));
    CloseAndExpectEnd();
  }
};

TEST_F(FaultsOfTools, AProbeThatIsKilledLeavesTheOldVideo) {
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(kSize, 1));
  program.ReplaceTool("ffprobe", "kill -KILL $$");
  const QString other = program.PathOf("other.mp4");
  ASSERT_NO_FATAL_FAILURE(WriteFile(other, "no video"));
  ASSERT_TRUE(ChooseFile(screen, window, kLoadVideo, other));
  ExpectVideoUnderPath(kSize, other);
  EXPECT_TRUE(WaitFor([&] { return program.Children("RSDTZ").isEmpty(); }));
  CloseAndExpectEnd();
}

TEST_F(FaultsOfTools, AMissingProbeLeavesTheOldVideo) {
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(kSize, 1));
  const QString other = program.PathOf("other.mp4");
  ASSERT_TRUE(MakeVideo(other, QSize(320, 240), 1));
  program.RemoveTool("ffprobe");
  ASSERT_TRUE(ChooseFile(screen, window, kLoadVideo, other));
  ExpectVideoUnderPath(kSize, other);
  CloseAndExpectEnd();
}

TEST_F(FaultsOfTools, AStoppedToolHoldsTheJobWhereItIsUntilItIsContinued) {
  pid_t tool = 0;
  ASSERT_NO_FATAL_FAILURE(StartJobThatStops(
      PrintTimes("4") + program.TalkingGate("end") + PrintTimes("5 6 7 8 9"), tool));
  ExpectRestsWhateverComes([&] { window.PointAt(kRunVideo); });

  ASSERT_EQ(kill(tool, SIGCONT), 0);
  EXPECT_TRUE(WaitFor([&] { return window.Shows("Label14(1)", "Run Video", kLit); }))
      << "the windows live again";
  EXPECT_TRUE(AwaitProgress(4));
  EXPECT_TRUE(job.AwaitStatus("Progress: 30.00% Complete: Status: Cropping Video"))
      << "the figure trails by one: it knows where it was";
  ASSERT_TRUE(program.Open("end"));
  EXPECT_TRUE(job.AwaitSuccess());
  EXPECT_TRUE(AwaitProgress(9));
  EXPECT_EQ(program.RunsOf("ffmpeg").size(), 1);
  ExpectSuccessAndEnd();
}

TEST_F(FaultsOfTools, AStoppedToolEndsOnceItIsContinuedWhereTheProgramWasEnded) {
  pid_t tool = 0;
  ASSERT_NO_FATAL_FAILURE(StartJobThatStops("while echo on; do sleep 0.02; done", tool));
  ASSERT_EQ(kill(static_cast<pid_t>(program.Id()), SIGTERM), 0);
  EXPECT_EQ(program.AwaitExit(), -1) << "ended by the signal, without a wait for the tool";
  kill(tool, SIGCONT);
  EXPECT_TRUE(WaitFor([&] { return Ended(tool); })) << "nobody reads what it prints";
}

// Everything that a tool prints is kept to the end of its run, and some room for it in advance.
TEST_F(FaultsOfTools, AGibibyteInAJobTakesTwiceItsSizeOfMemoryAtMost) {
  constexpr qint64 kFlood = 1024 * 1024;  // KiB
  ASSERT_NO_FATAL_FAILURE(StartJob("head -c 1G /dev/zero"));
  const qint64 before = program.Memory();
  ASSERT_GT(before, 0);
  ASSERT_NO_FATAL_FAILURE(ExpectWindowLivesMeanwhile());
  EXPECT_TRUE(job.AwaitSuccess(100s));
  const qint64 most = program.MostMemory() - before;
  EXPECT_GT(most, kFlood) << "it is kept whole";
  if (!kSanitized) {
    EXPECT_LT(most, kFlood * 2 + kFlood / 20);
    EXPECT_LT(program.Memory(), before + kFlood / 20) << "and given back";
  }
  ExpectSuccessAndEnd();
}

TEST_F(FaultsOfTools, OneLineWithoutAnEndMovesTheJobAsAnyOther) {
  ASSERT_NO_FATAL_FAILURE(StartJob("printf 'time=00:00:03.00 '\n" + program.TalkingGate("second") +
                                   "printf 'time=00:00:08.00'\n" + program.TalkingGate("end")));
  const int whole = 409;
  EXPECT_TRUE(WaitFor([&] { return job.Progress() > 0; }));
  ASSERT_TRUE(program.Open("second"));
  EXPECT_TRUE(WaitFor([&] { return job.Progress() > whole / 2; }));
  ASSERT_TRUE(program.Open("end"));
  ExpectSuccessAndEnd();
}

TEST_F(FaultsOfTools, AnAnswerWithoutALineEndIsReadAsAnyOther) {
  program.ReplaceTool("ffprobe",
                      "case \"$*\" in\n*show_entries*) printf 'width=320\\nheight=240' ;;\n"
                      "*) printf '  Duration: 00:00:10.00' >&2 ;;\nesac");
  video = program.PathOf("pretended.mp4");
  ASSERT_NO_FATAL_FAILURE(WriteFile(video, "no video"));
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  ASSERT_TRUE(ChooseFile(screen, window, kLoadVideo, video));
  EXPECT_TRUE(window.AwaitVideo(QSize(320, 240)));
  EXPECT_TRUE(window.AwaitBarsAround(QSize(320, 240)));
  CloseAndExpectEnd();
}

TEST_F(FaultsOfTools, AToolThatClosesItsOutputAndLivesOnIsDoneWithAndTakenLeaveOfLater) {
  ASSERT_NO_FATAL_FAILURE(StartJob("exec > /dev/null 2>&1\n" + program.Gate("end")));
  EXPECT_TRUE(job.AwaitSuccess());
  EXPECT_NE(Tool(), 0) << "it goes on";
  window.PointAt(kRunVideo);
  EXPECT_TRUE(WaitFor([&] { return window.Shows("Label14(1)", "Run Video", kLit); }));
  ASSERT_TRUE(program.Open("end"));
  ExpectSuccessAndEnd();
}

TEST_F(FaultsOfTools, AToolThatLivesOnDoesNotKeepTheProgramFromEnding) {
  ASSERT_NO_FATAL_FAILURE(StartJob("exec > /dev/null 2>&1\n" + program.Gate("end")));
  EXPECT_TRUE(job.AwaitSuccess());
  const pid_t tool = Tool();
  ASSERT_NE(tool, 0);
  job.Cancel();
  EXPECT_TRUE(WaitFor([&] { return !job.Open(); }));
  CloseAndExpectEnd();
  EXPECT_FALSE(Ended(tool)) << "no running tool is ended";
  ASSERT_TRUE(program.Open("end"));
  EXPECT_TRUE(WaitFor([&] { return Ended(tool); }));
}

TEST_F(FaultsOfTools, AToolThatIgnoresSignalsRunsToItsOwnEnd) {
  ASSERT_NO_FATAL_FAILURE(
      StartJob("trap '' HUP INT TERM QUIT PIPE\n" + Note("deaf") + program.TalkingGate("end")));
  ASSERT_TRUE(AwaitNote("deaf"));
  const pid_t tool = Tool();
  ASSERT_NE(tool, 0);
  for (const int ignored : {SIGHUP, SIGINT, SIGTERM, SIGQUIT, SIGPIPE}) kill(tool, ignored);
  window.PointAt(kRunVideo);
  EXPECT_TRUE(WaitFor([&] { return window.Shows("Label14(1)", "Run Video", kLit); }));
  EXPECT_FALSE(job.AwaitSuccess(200ms));
  ASSERT_TRUE(program.Open("end"));
  ExpectSuccessAndEnd();
}

// The text box of the main window keeps it as well, two bytes to a letter, for good. A flood of as
// much as in a job would take six gibibytes of any machine that runs this. A sanitizer, which
// keeps more than that for itself, is spared the most of it.
TEST_F(FaultsOfTools, AFloodingProbeTakesSixTimesItsSizeOfMemoryAtMost) {
  constexpr qint64 kFlood = (kSanitized ? 64 : 256) * 1024;  // KiB
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(kSize, 1));
  program.ReplaceTool("ffprobe",
                      "case \"$*\" in\n*show_entries*) printf 'width=320\\nheight=240\\n' ;;\n"
                      "*) yes | head -c " +
                          QString::number(kFlood) + "K ;;\nesac");
  const QString other = program.PathOf("other.mp4");
  ASSERT_NO_FATAL_FAILURE(WriteFile(other, "no video"));
  const qint64 before = program.Memory();
  ASSERT_TRUE(ChooseFile(screen, window, kLoadVideo, other));
  ASSERT_TRUE(WaitFor([&] { return program.RunsOf("ffprobe").size() == 2; }));
  ASSERT_NO_FATAL_FAILURE(ExpectWindowLivesMeanwhile());
  EXPECT_TRUE(window.AwaitVideo(QSize(320, 240)));
  EXPECT_TRUE(WaitFor([&] { return program.Children("RSDTZ").isEmpty(); }, 60s));
  if (!kSanitized) {
    const auto givenBack = [&] { return program.MostMemory() - program.Memory(); };
    EXPECT_TRUE(WaitFor([&] { return givenBack() > kFlood * 3 / 4; }, 60s)) << "the run's own text";
    EXPECT_GT(program.MostMemory() - before, kFlood * 2);
    const auto kept = [&] { return program.Memory() - before; };
    EXPECT_TRUE(WaitFor([&] { return kept() < kFlood * 2 + kFlood / 10; })) << kept();
    EXPECT_GT(kept(), kFlood * 2 - kFlood / 20);
    EXPECT_LT(program.MostMemory() - before, kFlood * 6);
  }
  CloseAndExpectEnd();
}

}  // namespace
}  // namespace kelvane::desktop
