#include <gtest/gtest.h>
#include <pthread.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <random>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "TestTools.h"
#include "media/DOSOutputs.h"
#include "support/Sanitized.h"

namespace kelvane::testing {
namespace {

constexpr unsigned kMebibyte = 1U << 20;

// Returns random bytes, the same ones in every call.
std::string AnyBytes(std::size_t count) {
  std::mt19937 random(7);
  std::string bytes(count, '\0');
  std::generate(bytes.begin(), bytes.end(), [&random] { return static_cast<char>(random()); });
  return bytes;
}

TEST(ConsoleRunner, DeliversAnyBytesInBlocksOfAtMost256AndAnEmptyOneAtTheEnd) {
  const TemporaryFolder folder;
  for (const std::size_t size : {0U, 1U, 255U, 256U, 257U, 513U, kMebibyte}) {
    const std::string text = AnyBytes(size);
    const Events events = RunLine("/bin/cat " + folder.MakeFile("text", text));
    EXPECT_TRUE(Joined(events) == text) << size;
    EXPECT_EQ(std::ranges::count(events, std::string()), 1) << size;
    EXPECT_EQ(events.back(), "") << size;
    EXPECT_TRUE(std::ranges::all_of(events, [](const auto& block) { return block.size() <= 256; }));
  }
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
  // `timeout` ends the tool if the runner holds the first block back.
  const std::string tool =
      "/usr/bin/timeout 30 " +
      folder.Script("tool", "echo first\n" + gate.WaitCommands() + "echo second");
  DOSOutputs outputs;
  Events events;
  outputs.ReceiveOutputs = [&](const std::string& block) {
    events.push_back(block);
    if (block == "first\n") gate.Open();
  };
  outputs.ExecuteCommand(tool);
  EXPECT_EQ(events, (Events{"first\n", "second\n", ""}));
}

TEST(ConsoleRunner, RaisesItsEventOnTheThreadOfItsCaller) {
  DOSOutputs outputs;
  std::set<std::thread::id> threads;
  outputs.ReceiveOutputs = [&](const std::string&) { threads.insert(std::this_thread::get_id()); };
  outputs.ExecuteCommand("/bin/echo text");
  EXPECT_EQ(threads, std::set{std::this_thread::get_id()});
}

TEST(ConsoleRunner, StartsEachRunWithEmptyOutputsAndAppendsEachBlock) {
  const TemporaryFolder folder;
  const std::string line = "/bin/cat " + folder.MakeFile("text", AnyBytes(1000));
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

TEST(ConsoleRunner, EndsTheRunOfAFailingOrKilledToolLikeAnyOther) {
  const TemporaryFolder folder;
  EXPECT_EQ(RunLine(folder.Script("fails", "echo complaint >&2; exit 3")),
            (Events{"complaint\n", ""}));
  EXPECT_EQ(RunLine(folder.Script("dies", "echo last words; kill -KILL $$")),
            (Events{"last words\n", ""}));
}

TEST(ConsoleRunner, RaisesNoEventAndKeepsOutputsIfNoToolCanBeStarted) {
  const TemporaryFolder folder;
  const std::string notExecutable = folder.MakeFile("not-executable", "#!/bin/sh\necho ran\n");
  const std::string noFormat = folder.MakeFile("no-format", "echo ran\n");
  std::filesystem::permissions(noFormat, std::filesystem::perms::owner_all);
  const std::string noInterpreter = folder.Script("no-interpreter", "");
  folder.MakeFile("no-interpreter", "#!/missing/interpreter\n");
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
  EXPECT_EQ(RunLine(""), Events{}) << "no command line was ever given";
}

TEST(ConsoleRunner, RunsItsCommandLineIfNoneIsGivenAndKeepsTheOneGiven) {
  DOSOutputs outputs;
  outputs.setCommandLine("/bin/echo held");
  EXPECT_EQ(outputs.CommandLine(), "/bin/echo held");
  EXPECT_EQ(outputs.ExecuteCommand(""), "held\n");
  EXPECT_EQ(outputs.Outputs(), "held\n");
  EXPECT_EQ(outputs.ExecuteCommand(), "held\n");
  EXPECT_EQ(outputs.ExecuteCommand("/bin/echo given"), "given\n");
  EXPECT_EQ(outputs.CommandLine(), "/bin/echo given");
  EXPECT_EQ(outputs.ExecuteCommand(""), "given\n");
}

TEST(ConsoleRunner, PassesArgumentsWithoutAShell) {
  const TemporaryFolder folder;
  const std::string tool = folder.Script("my tool", R"(for a; do printf '[%s]' "$a"; done)");
  EXPECT_EQ(Joined(RunLine('"' + tool + R"("  -i  a.mp4	"b c" "" $HOME * ; | > 'd e' \ )")),
            R"([-i][a.mp4][b c][][$HOME][*][;][|][>]['d][e'][\])");
}

TEST(ConsoleRunner, RunsToolsInTheCurrentFolderWithTheProgramsEnvironmentAndDoesNotSearchPath) {
  const TemporaryFolder folder;
  folder.Script("tool", "pwd; echo $RUNNER_TEST_VALUE");
  const CurrentFolder current(folder.path());
  ASSERT_EQ(::setenv("RUNNER_TEST_VALUE", "of the program", 1), 0);
  EXPECT_EQ(Joined(RunLine("tool")), folder.path() + "\nof the program\n");
  ::unsetenv("RUNNER_TEST_VALUE");
  EXPECT_EQ(RunLine("echo text"), Events{});
}

TEST(ConsoleRunner, NeverMakesAToolWaitForAHandlerOrANestedRun) {
  const TemporaryFolder folder;
  constexpr std::size_t kMuch = 400'000;  // bytes, more than a pipe holds
  const std::string text = "begin\n" + std::string(kMuch, '\0') + "end\n";
  int waitedFor = 0;
  const std::function<void(int)> run = [&](int depth) {
    constexpr int kDepth = 3;
    const std::string ended = folder / "ended" + std::to_string(depth);
    const std::string tool = folder.Script(
        "tool" + std::to_string(depth),
        "echo begin; head -c " + std::to_string(kMuch) + " /dev/zero; echo end; touch " + ended);
    DOSOutputs outputs;
    std::string received;
    outputs.ReceiveOutputs = [&](const std::string& block) {
      if (received.empty()) {
        if (depth < kDepth) run(depth + 1);
        if (WaitFor([&] { return std::filesystem::exists(ended); })) ++waitedFor;
      }
      received += block;
    };
    EXPECT_TRUE(outputs.ExecuteCommand(tool) == text);
    EXPECT_TRUE(received == text);
  };
  run(1);
  EXPECT_EQ(waitedFor, 3);
}

TEST(ConsoleRunner, StartsNoToolWithoutAThreadToReadIt) {
  const TemporaryFolder folder;
  pthread_attr_t former;
  ASSERT_EQ(pthread_getattr_default_np(&former), 0);
  pthread_attr_t tooLarge;
  ASSERT_EQ(pthread_getattr_default_np(&tooLarge), 0);
  constexpr std::size_t kWholeAddressSpace = std::size_t{1} << 47U;
  ASSERT_EQ(pthread_attr_setstacksize(&tooLarge, kWholeAddressSpace), 0);

  DOSOutputs outputs;
  RunLine(outputs, "/bin/echo earlier");
  ASSERT_EQ(pthread_setattr_default_np(&tooLarge), 0);
  const Events events = RunLine(outputs, "/bin/touch " + folder / "started");
  pthread_setattr_default_np(&former);
  pthread_attr_destroy(&former);
  pthread_attr_destroy(&tooLarge);

  EXPECT_EQ(events, Events{});
  EXPECT_EQ(outputs.Outputs(), "earlier\n");
  EXPECT_FALSE(std::filesystem::exists(folder / "started"));
  EXPECT_EQ(Joined(RunLine(outputs, "/bin/echo later")), "later\n");
}

// The run is made by a process of its own, so that no other memory is measured.
TEST(ConsoleRunner, NeedsAtMostTwiceTheMemoryOfTheText) {
  if (kSanitized) GTEST_SKIP() << "a sanitizer needs memory of its own";
  constexpr long kText = 256 * 1024;  // KiB
  Process program = StartTestProgram({"flood", std::to_string(kText)});
  const long most = std::stol(program.ReadLine());
  EXPECT_EQ(program.Wait(), 0);
  EXPECT_GT(most, kText) << "not the whole text is kept";
  EXPECT_LT(most, 2 * kText + kText / 20);
}

}  // namespace
}  // namespace kelvane::testing
