// What a run yields: its events, its result, its command line.

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include "TestTools.h"
#include "media/DOSOutputs.h"

namespace kelvane {
namespace {

using testing::CurrentFolder;
using testing::Gate;
using testing::RunLine;
using testing::TemporaryFolder;
using testing::ToolRun;

using Events = std::vector<std::string>;

constexpr std::size_t kMebibyte = 1U << 20;

std::string Joined(const Events& events) {
  return std::accumulate(events.begin(), events.end(), std::string());
}

// Bytes of every value, in an order of no pattern.
std::string AnyBytes(std::size_t count) {
  std::mt19937 random(7);  // the same bytes every time
  std::string bytes(count, '\0');
  std::generate(bytes.begin(), bytes.end(), [&random] { return static_cast<char>(random()); });
  return bytes;
}

TEST(ConsoleRunner, AToolThatPrintsNothingYieldsOneEmptyEventAndAnEmptyResult) {
  const ToolRun run = RunLine("/bin/true");
  EXPECT_EQ(run.events, Events{""});
  EXPECT_EQ(run.result, "");
}

TEST(ConsoleRunner, AShortTextYieldsItselfAndAnEmptyEvent) {
  const ToolRun run = RunLine("/bin/echo width=1920");
  EXPECT_EQ(run.events, (Events{"width=1920\n", ""}));
  EXPECT_EQ(run.result, "width=1920\n");
}

TEST(ConsoleRunner, ATextOfExactly256BytesYieldsTwoEventsTheLastEmpty) {
  const TemporaryFolder folder;
  const std::string text = AnyBytes(256);
  const ToolRun run = RunLine("/bin/cat " + folder.File("text", text));
  EXPECT_EQ(run.events, (Events{text, ""}));
  EXPECT_EQ(run.result, text);
}

TEST(ConsoleRunner, ATextOf257BytesYieldsThreeEventsTheLastEmpty) {
  const TemporaryFolder folder;
  const std::string text = AnyBytes(257);
  const ToolRun run = RunLine("/bin/cat " + folder.File("text", text));
  EXPECT_EQ(run.events, (Events{text.substr(0, 256), text.substr(256), ""}));
  EXPECT_EQ(run.result, text);
}

TEST(ConsoleRunner, AMebibyteOfAnyBytesComesWholeInBlocksOf256BytesAtMost) {
  const TemporaryFolder folder;
  const std::string text = AnyBytes(kMebibyte);
  DOSOutputs outputs;
  const ToolRun run = RunLine(outputs, "/bin/cat " + folder.File("text", text));
  EXPECT_TRUE(Joined(run.events) == text);
  EXPECT_TRUE(run.result == text);
  EXPECT_TRUE(outputs.Outputs() == text);
  ASSERT_FALSE(run.events.empty());
  EXPECT_TRUE(run.events.back().empty());
  for (std::size_t place = 0; place + 1 < run.events.size(); ++place) {
    ASSERT_GE(run.events[place].size(), 1U) << place;
    ASSERT_LE(run.events[place].size(), 256U) << place;
  }
}

TEST(ConsoleRunner, AWordCutByABlocksEndComesInTwoPiecesAndIsHeldJoined) {
  const TemporaryFolder folder;
  DOSOutputs outputs;
  const ToolRun run = RunLine(
      outputs, "/bin/cat " + folder.File("text", std::string(250, '.') + "Duration: 00:01"));
  EXPECT_EQ(run.events, (Events{std::string(250, '.') + "Durati", "on: 00:01", ""}));
  EXPECT_NE(outputs.Outputs().find("Duration: 00:01"), std::string::npos);
}

TEST(ConsoleRunner, BothOutputsComeInOneStreamInTheOrderOfWriting) {
  const TemporaryFolder folder;
  const std::string tool = folder.Script(
      "tool", "i=0; while [ $i -lt 100 ]; do echo out $i; echo err $i >&2; i=$((i + 1)); done");
  std::string expected;
  for (int line = 0; line < 100; ++line) {
    expected += "out " + std::to_string(line) + "\nerr " + std::to_string(line) + "\n";
  }
  const ToolRun run = RunLine(tool);
  EXPECT_EQ(run.result, expected);
  EXPECT_EQ(Joined(run.events), expected);
}

TEST(ConsoleRunner, BlocksAreDeliveredWhileTheToolStillRuns) {
  const TemporaryFolder folder;
  const Gate gate(folder / "gate");
  // The tool goes on only when its first words have been received; the time limit is there for a
  // runner that holds them back.
  const std::string tool =
      folder.Script("tool", "echo first; read go < " + gate.path() + "; echo $go second");
  DOSOutputs outputs;
  Events events;
  outputs.ReceiveOutputs = [&](const std::string& block) {
    events.push_back(block);
    if (block == "first\n") gate.Open();
  };
  EXPECT_EQ(outputs.ExecuteCommand("/usr/bin/timeout 30 " + tool), "first\ngo second\n");
  EXPECT_EQ(events, (Events{"first\n", "go second\n", ""}));
}

TEST(ConsoleRunner, OutputsStartsEmptyWithEachRunAndGrowsBlockByBlock) {
  const TemporaryFolder folder;
  const std::string line = "/bin/cat " + folder.File("text", AnyBytes(1000));
  DOSOutputs outputs;
  for (int run = 0; run < 2; ++run) {
    std::string received;
    outputs.ReceiveOutputs = [&](const std::string& block) {
      received += block;
      EXPECT_EQ(outputs.Outputs(), received);
    };
    outputs.ExecuteCommand(line);
    EXPECT_EQ(received, AnyBytes(1000));
  }
}

TEST(ConsoleRunner, WithoutAHandlerTheResultIsTheSame) {
  DOSOutputs outputs;
  EXPECT_EQ(outputs.ExecuteCommand("/bin/echo text"), "text\n");
  EXPECT_EQ(outputs.Outputs(), "text\n");
}

TEST(ConsoleRunner, AToolThatAsksAQuestionGetsNoAnswer) {
  const TemporaryFolder folder;
  const std::string tool = folder.Script(
      "tool",
      "printf 'Overwrite? '; if read answer; then echo \"got $answer\"; else echo none; fi");
  EXPECT_EQ(RunLine("/usr/bin/timeout 30 " + tool).result, "Overwrite? none\n");
}

TEST(ConsoleRunner, AFailingToolEndsItsRunLikeAnyOther) {
  const TemporaryFolder folder;
  const ToolRun failed = RunLine(folder.Script("fails", "echo complaint >&2; exit 3"));
  EXPECT_EQ(failed.events, (Events{"complaint\n", ""}));
  const ToolRun killed = RunLine(folder.Script("dies", "echo last words; kill -KILL $$"));
  EXPECT_EQ(killed.events, (Events{"last words\n", ""}));
}

TEST(ConsoleRunner, AMissingToolYieldsNothingAndOutputsKeepsItsText) {
  const TemporaryFolder folder;
  DOSOutputs outputs;
  RunLine(outputs, "/bin/echo earlier");
  const ToolRun run = RunLine(outputs, folder / "missing -i a.mp4");
  EXPECT_EQ(run.events, Events{});
  EXPECT_EQ(run.result, "");
  EXPECT_EQ(outputs.Outputs(), "earlier\n");
}

TEST(ConsoleRunner, AFileThatIsNoProgramYieldsNothingAndOutputsKeepsItsText) {
  const TemporaryFolder folder;
  const std::string notExecutable = folder.File("not-executable", "#!/bin/sh\necho ran\n");
  const std::string noFormat = folder.File("no-format", "echo ran\n");
  std::filesystem::permissions(noFormat, std::filesystem::perms::owner_all);
  const std::string noInterpreter = folder.Script("no-interpreter", "");
  folder.File("no-interpreter", "#!/missing/interpreter\n");
  for (const std::string& tool :
       {notExecutable, noFormat, noInterpreter, folder.path(), notExecutable + "/below"}) {
    DOSOutputs outputs;
    RunLine(outputs, "/bin/echo earlier");
    const ToolRun run = RunLine(outputs, tool);
    EXPECT_EQ(run.events, Events{}) << tool;
    EXPECT_EQ(run.result, "") << tool;
    EXPECT_EQ(outputs.Outputs(), "earlier\n") << tool;
  }
}

TEST(ConsoleRunner, AnEmptyCommandLineYieldsNothingAndOutputsKeepsItsText) {
  const ToolRun neverSet = RunLine("");
  EXPECT_EQ(neverSet.events, Events{});
  EXPECT_EQ(neverSet.result, "");

  DOSOutputs outputs;
  RunLine(outputs, "/bin/echo earlier");
  outputs.setCommandLine("");
  const ToolRun run = RunLine(outputs, "");
  EXPECT_EQ(run.events, Events{});
  EXPECT_EQ(run.result, "");
  EXPECT_EQ(outputs.Outputs(), "earlier\n");
}

TEST(ConsoleRunner, ABlankCommandLineYieldsNothingAndOutputsKeepsItsText) {
  for (const char* line : {" ", "\t", "  \t ", "\"\""}) {
    DOSOutputs outputs;
    RunLine(outputs, "/bin/echo earlier");
    const ToolRun run = RunLine(outputs, line);
    EXPECT_EQ(run.events, Events{}) << line;
    EXPECT_EQ(run.result, "") << line;
    EXPECT_EQ(outputs.Outputs(), "earlier\n") << line;
    EXPECT_EQ(outputs.CommandLine(), line);
  }
}

TEST(ConsoleRunner, TheCommandLineThatIsHeldRunsWhereNoOtherIsGiven) {
  DOSOutputs outputs;
  outputs.setCommandLine("/bin/echo held");
  EXPECT_EQ(outputs.CommandLine(), "/bin/echo held");
  EXPECT_EQ(outputs.ExecuteCommand(""), "held\n");
  EXPECT_EQ(outputs.ExecuteCommand(), "held\n");
}

TEST(ConsoleRunner, ACommandLineThatIsGivenReplacesTheOneHeld) {
  DOSOutputs outputs;
  outputs.setCommandLine("/bin/echo held");
  EXPECT_EQ(outputs.ExecuteCommand("/bin/echo given"), "given\n");
  EXPECT_EQ(outputs.CommandLine(), "/bin/echo given");
  EXPECT_EQ(outputs.ExecuteCommand(""), "given\n");
}

TEST(ConsoleRunner, ArgumentsReachTheToolAsTheyAreCutAndNoShellReadsThem) {
  const TemporaryFolder folder;
  const std::string tool = folder.Script("tool", R"(for a; do printf '[%s]' "$a"; done)");
  EXPECT_EQ(RunLine(tool + R"(  -i  a.mp4	"b c" "" $HOME * ; | > 'd e' \ )").result,
            R"([-i][a.mp4][b c][][$HOME][*][;][|][>]['d][e'][\])");
}

TEST(ConsoleRunner, AToolUnderAPathWithABlankIsStartedInQuotesAndNotWithout) {
  const TemporaryFolder folder;
  const std::string tool = folder.Script("my tool", "echo ran");
  EXPECT_EQ(RunLine('"' + tool + '"').result, "ran\n");
  EXPECT_EQ(RunLine(tool).events, Events{});
}

TEST(ConsoleRunner, ATooLongCommandLineYieldsNothing) {
  EXPECT_EQ(RunLine("/bin/echo " + std::string(4 * kMebibyte, 'x')).events, Events{});
}

TEST(ConsoleRunner, ABareNameIsAFileInTheCurrentFolderAndIsNotSearchedFor) {
  const TemporaryFolder folder;
  folder.Script("tool", "echo ran");
  const CurrentFolder current(folder.path());
  EXPECT_EQ(RunLine("tool").result, "ran\n");
  EXPECT_EQ(RunLine("echo text").events, Events{});
}

TEST(ConsoleRunner, TheToolRunsInTheProgramsFolderWithItsEnvironment) {
  const TemporaryFolder folder;
  const CurrentFolder current(folder.path());
  ASSERT_EQ(::setenv("RUNNER_TEST_VALUE", "of the program", 1), 0);
  EXPECT_EQ(RunLine("/bin/pwd").result, folder.path() + "\n");
  EXPECT_EQ(RunLine("/usr/bin/printenv RUNNER_TEST_VALUE").result, "of the program\n");
  ::unsetenv("RUNNER_TEST_VALUE");
}

TEST(ConsoleRunner, ARunInsideAnEventOfAnotherRunIsWholeAndSoIsTheOuterOne) {
  const TemporaryFolder folder;
  const Gate gate(folder / "gate");
  const std::string outerTool =
      folder.Script("outer", "echo one; read go < " + gate.path() + "; echo two");
  DOSOutputs outer;
  DOSOutputs inner;
  Events events;
  inner.ReceiveOutputs = [&](const std::string& block) { events.push_back("inner " + block); };
  outer.ReceiveOutputs = [&](const std::string& block) {
    events.push_back("outer " + block);
    if (block == "one\n") {
      EXPECT_EQ(inner.ExecuteCommand("/bin/echo nested"), "nested\n");
      gate.Open();
    }
  };
  EXPECT_EQ(outer.ExecuteCommand("/usr/bin/timeout 30 " + outerTool), "one\ntwo\n");
  EXPECT_EQ(inner.Outputs(), "nested\n");
  EXPECT_EQ(events, (Events{"outer one\n", "inner nested\n", "inner ", "outer two\n", "outer "}));
}

TEST(ConsoleRunner, RunsNestSeveralDeep) {
  constexpr int kDepth = 20;
  std::string seen;
  std::function<void(int)> run = [&](int depth) {
    DOSOutputs outputs;
    outputs.ReceiveOutputs = [&, depth](const std::string& block) {
      if (block.empty()) return;
      seen += block;
      if (depth < kDepth) run(depth + 1);
    };
    EXPECT_EQ(outputs.ExecuteCommand("/bin/echo " + std::to_string(depth)),
              std::to_string(depth) + "\n");
  };
  run(1);
  std::string expected;
  for (int depth = 1; depth <= kDepth; ++depth) expected += std::to_string(depth) + "\n";
  EXPECT_EQ(seen, expected);
}

}  // namespace
}  // namespace kelvane
