// Tools of the joiner that misbehave: its window rests while one runs, whatever it prints, and goes
// on when its text ends, however it ended.
#include <csignal>

#include "desktop/JoinerTest.h"
#include "support/Sanitized.h"

namespace kelvane::desktop {
namespace {

constexpr QSize kSize(320, 240);

class FaultsOfJoinersTools : public JoinerTest {
 protected:
  // Begins a join whose tool does this, and waits until the tool runs.
  void StartJoin(const QString& behaviour) {
    program.ReplaceTool("ffmpeg", behaviour);
    ASSERT_TRUE(joiner.ChooseFile(JoinerButton::kJoinSections, output));
    ASSERT_TRUE(WaitFor([&] { return program.RunsOf("ffmpeg").size() == 1; }));
    ASSERT_TRUE(WaitFor([&] { return Tool() != 0; }));
  }
  void ExpectRests() {
    ExpectRestsWhateverComes(
        [&] { screen.MovePointer(joiner.ButtonCentre(JoinerButton::kSaveList)); });
  }
  void ExpectBoxAndEnd() {
    ASSERT_TRUE(ConfirmJoin(screen, 60s));
    EXPECT_TRUE(joiner.AwaitProcess("Process: Video Created."));
    EXPECT_TRUE(WaitFor([&] { return program.Children("RSDTZ").isEmpty(); }));
    CloseJoinerAndExpectEnd();
  }

  QString clip = program.PathOf("clip.mp4");
  QString output = program.PathOf("joined.mp4");
};

TEST_F(FaultsOfJoinersTools, AToolThatIsKilledEndsTheJoinAndNoSourceIsTouched) {
  program.ReplaceTool("ffmpeg", "echo begun\nkill -KILL $$");
  ASSERT_TRUE(MakeVideo(clip, kSize, 10));
  const QByteArray content = ContentOf(clip);
  ASSERT_NO_FATAL_FAILURE(Add(clip));
  ASSERT_NO_FATAL_FAILURE(JoinTo(output));
  EXPECT_EQ(program.RunsOf("ffmpeg").size(), 1);
  EXPECT_EQ(ContentOf(clip), content);
  EXPECT_TRUE(WaitFor([&] { return program.Children("RSDTZ").isEmpty(); }));
  CloseJoinerAndExpectEnd();
}

TEST_F(FaultsOfJoinersTools, AStoppedToolHoldsTheJoinUntilItIsContinued) {
  ASSERT_TRUE(MakeVideo(clip, kSize, 10));
  ASSERT_NO_FATAL_FAILURE(Add(clip));
  ASSERT_NO_FATAL_FAILURE(StartJoin("echo begun\nkill -STOP $$\nexec \"$real\" \"$@\""));
  ASSERT_TRUE(AwaitStopped());
  ExpectRests();
  EXPECT_EQ(ContentOf(output), "(not there)");
  const pid_t tool = Tool();
  ASSERT_NE(tool, 0);
  ASSERT_EQ(kill(tool, SIGCONT), 0);
  ASSERT_TRUE(WaitFor([&] { return screen.Find("Kelvane").has_value(); }));
  EXPECT_EQ(Pictures(output), Pictures(clip));
  ExpectBoxAndEnd();
}

TEST_F(FaultsOfJoinersTools, AStoppedProbeHoldsTheSectionUntilItIsContinued) {
  ASSERT_TRUE(MakeVideo(clip, kSize, 10));
  program.ReplaceTool("ffprobe", "kill -STOP $$\nexec \"$real\" \"$@\"");
  ASSERT_TRUE(joiner.ChooseFile(JoinerButton::kAddSection, clip));
  ASSERT_TRUE(AwaitStopped());
  ExpectRests();
  const pid_t tool = Tool();
  ASSERT_NE(tool, 0);
  ASSERT_EQ(kill(tool, SIGCONT), 0);
  EXPECT_TRUE(joiner.AwaitTotals(1, "00,010", "00:00:10"));
  EXPECT_TRUE(joiner.AwaitRow(0, "1", "clip.mp4", "10"));
  EXPECT_EQ(program.RunsOf("ffprobe").size(), 1);
  CloseJoinerAndExpectEnd();
}

// Everything that a tool prints is kept to the end of its run, and some room for it in advance.
TEST_F(FaultsOfJoinersTools, AFloodInAJoinTakesTwiceItsSizeOfMemoryAtMost) {
  constexpr qint64 kFlood = 256 * 1024;  // KiB
  const qint64 before = program.Memory();
  ASSERT_GT(before, 0);
  ASSERT_NO_FATAL_FAILURE(
      StartJoin("yes 'Non-monotonous DTS in output stream 0:0; changing to 9' | "
                "head -c 256M\n" +
                program.Gate("end")));
  EXPECT_TRUE(WaitFor([&] { return program.Memory() - before > kFlood; }, 100s))
      << "it is kept whole";
  EXPECT_EQ(screen.Windows(), QList{joiner.Id()}) << "its text hasn't ended";
  ASSERT_TRUE(program.Open("end"));
  ASSERT_TRUE(ConfirmJoin(screen, 60s));
  if (!kSanitized) {
    EXPECT_LT(program.MostMemory() - before, kFlood * 2 + kFlood / 20);
    EXPECT_TRUE(WaitFor([&] { return program.Memory() < before + kFlood / 10; }))
        << "and given back once the box is closed";
  }
  EXPECT_TRUE(joiner.AwaitProcess("Process: Video Created."));
  CloseJoinerAndExpectEnd();
}

TEST_F(FaultsOfJoinersTools, AnswersWithoutALineEndAreReadAsAnyOthers) {
  program.ReplaceTool("ffprobe", "printf '  Duration: 00:03:20.00' >&2");
  ASSERT_NO_FATAL_FAILURE(WriteFile(clip, "no video"));
  ASSERT_NO_FATAL_FAILURE(Add(clip));
  EXPECT_TRUE(joiner.AwaitTotals(1, "00,200", "00:03:20"));
  EXPECT_TRUE(joiner.AwaitRow(0, "1", "clip.mp4", "200"));
  EXPECT_EQ(joiner.Strip(0).width(), 20);
  ASSERT_NO_FATAL_FAILURE(StartJoin("printf '  Duration: 00:01:40.00'\n" + program.Gate("end")));
  ASSERT_TRUE(program.Open("end"));
  ASSERT_TRUE(ConfirmJoin(screen));
  EXPECT_TRUE(joiner.AwaitTotals(1, "00,300", "00:05:00")) << "a join's words are heard as well";
  CloseJoinerAndExpectEnd();
}

TEST_F(FaultsOfJoinersTools, AToolThatIgnoresSignalsRunsToItsOwnEnd) {
  ASSERT_NO_FATAL_FAILURE(
      StartJoin("trap '' HUP INT TERM QUIT PIPE\n" + Note("deaf") + program.Gate("end")));
  ASSERT_TRUE(AwaitNote("deaf"));
  const pid_t tool = Tool();
  ASSERT_NE(tool, 0);
  for (const int ignored : {SIGHUP, SIGINT, SIGTERM, SIGQUIT, SIGPIPE}) kill(tool, ignored);
  ExpectRests();
  EXPECT_EQ(Tool(), tool);
  ASSERT_TRUE(program.Open("end"));
  ExpectBoxAndEnd();
}

TEST_F(FaultsOfJoinersTools, AToolThatClosesItsOutputAndLivesOnIsDoneWith) {
  program.ReplaceTool("ffmpeg", "exec > /dev/null 2>&1\n" + program.Gate("end"));
  ASSERT_NO_FATAL_FAILURE(JoinTo(output));
  EXPECT_EQ(program.Children("RSD").size(), 1);
  ASSERT_TRUE(program.Open("end"));
  EXPECT_TRUE(WaitFor([&] { return program.Children("RSDTZ").isEmpty(); }));
  CloseJoinerAndExpectEnd();
}

}  // namespace
}  // namespace kelvane::desktop
