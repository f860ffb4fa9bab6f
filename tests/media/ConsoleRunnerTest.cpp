// What a run yields: its events, its result, its command line.

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "TestTools.h"
#include "media/DOSOutputs.h"

namespace kelvane::testing {
namespace {

constexpr std::size_t kMebibyte = 1U << 20;

// Bytes of every value, in an order of no pattern.
std::string AnyBytes(std::size_t count) {
  std::mt19937 random(7);  // the same bytes every time
  std::string bytes(count, '\0');
  std::generate(bytes.begin(), bytes.end(), [&random] { return static_cast<char>(random()); });
  return bytes;
}

TEST(ConsoleRunner, DeliversBlocksOfAtMost256BytesAndAnEmptyOneAtTheEnd) {
  const TemporaryFolder folder;
  for (const std::size_t size : {0U, 1U, 255U, 256U, 257U, 512U, 513U}) {
    const std::string text = AnyBytes(size);
    Events expected;
    for (std::size_t place = 0; place < size; place += 256) {
      expected.push_back(text.substr(place, 256));
    }
    expected.emplace_back();
    EXPECT_EQ(RunLine("/bin/cat " + folder.File("text", text)), expected) << size;
  }
}

TEST(ConsoleRunner, DeliversAMebibyteOfAnyBytesWhole) {
  const TemporaryFolder folder;
  const std::string text = AnyBytes(kMebibyte);
  const Events events = RunLine("/bin/cat " + folder.File("text", text));
  EXPECT_TRUE(Joined(events) == text);
  EXPECT_EQ(std::count(events.begin(), events.end(), ""), 1);
  EXPECT_EQ(events.back(), "");
  EXPECT_TRUE(std::ranges::all_of(events, [](const auto& block) { return block.size() <= 256; }));
}

TEST(ConsoleRunner, DeliversBothOutputsInTheOrderOfWriting) {
  const TemporaryFolder folder;
  const std::string tool = folder.Script(
      "tool", "i=0; while [ $i -lt 100 ]; do echo out $i; echo err $i >&2; i=$((i + 1)); done");
  std::string expected;
  for (int line = 0; line < 100; ++line) {
    expected += "out " + std::to_string(line) + "\nerr " + std::to_string(line) + "\n";
  }
  EXPECT_EQ(Joined(RunLine(tool)), expected);
}

TEST(ConsoleRunner, DeliversBlocksWhileTheToolStillRuns) {
  const TemporaryFolder folder;
  const Gate gate(folder / "gate");
  // The time-out is there for a runner that holds the first block back.
  const std::string tool =
      "/usr/bin/timeout 30 " + folder.Script("tool", "echo first\n" + gate.Wait() + "echo second");
  DOSOutputs outputs;
  Events events;
  outputs.ReceiveOutputs = [&](const std::string& block) {
    events.push_back(block);
    if (block == "first\n") gate.Open();
  };
  outputs.ExecuteCommand(tool);
  EXPECT_EQ(events, (Events{"first\n", "second\n", ""}));
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

TEST(ConsoleRunner, ReturnsTheSameTextWithoutAHandler) {
  DOSOutputs outputs;
  EXPECT_EQ(outputs.ExecuteCommand("/bin/echo text"), "text\n");
  EXPECT_EQ(outputs.Outputs(), "text\n");
}

TEST(ConsoleRunner, EndsTheRunOfAFailingToolLikeAnyOther) {
  const TemporaryFolder folder;
  EXPECT_EQ(RunLine(folder.Script("fails", "echo complaint >&2; exit 3")),
            (Events{"complaint\n", ""}));
  EXPECT_EQ(RunLine(folder.Script("dies", "echo last words; kill -KILL $$")),
            (Events{"last words\n", ""}));
}

TEST(ConsoleRunner, YieldsNothingAndKeepsOutputsWhereNoToolCanBeStarted) {
  const TemporaryFolder folder;
  const std::string notExecutable = folder.File("not-executable", "#!/bin/sh\necho ran\n");
  const std::string noFormat = folder.File("no-format", "echo ran\n");
  std::filesystem::permissions(noFormat, std::filesystem::perms::owner_all);
  const std::string noInterpreter = folder.Script("no-interpreter", "");
  folder.File("no-interpreter", "#!/missing/interpreter\n");
  const std::string withBlank = folder.Script("my tool", "echo ran");
  const std::string tooLong = "/bin/echo " + std::string(4 * kMebibyte, 'x');
  for (const std::string& line :
       {std::string(), std::string(" "), std::string("  \t "), std::string("\"\""),
        folder / "missing -i a.mp4", notExecutable, noFormat, noInterpreter, folder.path(),
        notExecutable + "/below", withBlank, tooLong}) {
    SCOPED_TRACE(line.substr(0, 100));
    DOSOutputs outputs;
    RunLine(outputs, "/bin/echo earlier");
    outputs.setCommandLine("");
    EXPECT_EQ(RunLine(outputs, line), Events{});
    EXPECT_EQ(outputs.Outputs(), "earlier\n");
    EXPECT_TRUE(outputs.CommandLine() == line);
  }
  EXPECT_EQ(RunLine(""), Events{}) << "where no line was ever given";
}

TEST(ConsoleRunner, RunsTheLineHeldWhereNoneIsGivenAndHoldsTheOneGiven) {
  DOSOutputs outputs;
  outputs.setCommandLine("/bin/echo held");
  EXPECT_EQ(outputs.CommandLine(), "/bin/echo held");
  EXPECT_EQ(outputs.ExecuteCommand(""), "held\n");
  EXPECT_EQ(outputs.ExecuteCommand(), "held\n");
  EXPECT_EQ(outputs.ExecuteCommand("/bin/echo given"), "given\n");
  EXPECT_EQ(outputs.CommandLine(), "/bin/echo given");
  EXPECT_EQ(outputs.ExecuteCommand(""), "given\n");
}

TEST(ConsoleRunner, HandsTheToolItsArgumentsWithoutAShell) {
  const TemporaryFolder folder;
  const std::string tool = folder.Script("my tool", R"(for a; do printf '[%s]' "$a"; done)");
  EXPECT_EQ(Joined(RunLine('"' + tool + R"("  -i  a.mp4	"b c" "" $HOME * ; | > 'd e' \ )")),
            R"([-i][a.mp4][b c][][$HOME][*][;][|][>]['d][e'][\])");
}

TEST(ConsoleRunner, TakesABareNameForAFileInTheCurrentFolderAndSearchesNowhereElse) {
  const TemporaryFolder folder;
  folder.Script("tool", "echo ran");
  const CurrentFolder current(folder.path());
  EXPECT_EQ(Joined(RunLine("tool")), "ran\n");
  EXPECT_EQ(RunLine("echo text"), Events{});
}

TEST(ConsoleRunner, RunsTheToolInTheProgramsFolderWithItsEnvironment) {
  const TemporaryFolder folder;
  const CurrentFolder current(folder.path());
  ASSERT_EQ(::setenv("RUNNER_TEST_VALUE", "of the program", 1), 0);
  EXPECT_EQ(Joined(RunLine("/bin/pwd")), folder.path() + "\n");
  EXPECT_EQ(Joined(RunLine("/usr/bin/printenv RUNNER_TEST_VALUE")), "of the program\n");
  ::unsetenv("RUNNER_TEST_VALUE");
}

TEST(ConsoleRunner, RunsAToolWholeInsideAnEventOfAnotherRun) {
  const TemporaryFolder folder;
  const Gate gate(folder / "gate");
  const std::string outerTool =
      "/usr/bin/timeout 30 " + folder.Script("outer", "echo one\n" + gate.Wait() + "echo two");
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
  EXPECT_EQ(outer.ExecuteCommand(outerTool), "one\ntwo\n");
  EXPECT_EQ(inner.Outputs(), "nested\n");
  EXPECT_EQ(events, (Events{"outer one\n", "inner nested\n", "inner ", "outer two\n", "outer "}));
}

}  // namespace
}  // namespace kelvane::testing
