// Descriptors: which a tool gets, and that none is lost.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <functional>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "TestTools.h"
#include "media/DOSOutputs.h"
#include "media/Descriptor.h"

namespace kelvane::testing {
namespace {

// What `ls` shows of its own descriptors: the three standard ones, and the one with which it looks.
constexpr const char* kStandardOnes = "0\n1\n2\n3\n";

TEST(ConsoleRunnerDescriptors, TheToolGetsTheThreeStandardOnesAndNoOther) {
  // One that doesn't close by itself at the start of another program.
  const Descriptor stray(::open("/dev/null", O_RDONLY));
  ASSERT_TRUE(stray);
  DOSOutputs outer;
  std::string inner;
  outer.ReceiveOutputs = [&inner](const std::string& block) {
    if (!block.empty()) inner = Joined(RunLine("/bin/ls /proc/self/fd"));
  };
  EXPECT_EQ(outer.ExecuteCommand("/bin/ls /proc/self/fd"), kStandardOnes);
  EXPECT_EQ(inner, kStandardOnes) << "a tool inside another run";
}

TEST(ConsoleRunnerDescriptors, TheRunsOwnOnesAreNotHandedToProgramsThatOthersStart) {
  const std::set<int> before = OpenDescriptors();
  DOSOutputs outputs;
  std::vector<int> flags;
  outputs.ReceiveOutputs = [&](const std::string& block) {
    if (block.empty()) return;
    for (const int number : OpenDescriptors()) {
      if (!before.contains(number)) flags.push_back(::fcntl(number, F_GETFD));
    }
  };
  outputs.ExecuteCommand("/bin/echo text");
  // The pipe's end, and what tells the reading thread to stop.
  EXPECT_EQ(flags, std::vector<int>(2, FD_CLOEXEC));
}

TEST(ConsoleRunnerDescriptors, AHundredRunsLoseNoneHoweverTheyEnd) {
  const TemporaryFolder folder;
  const std::string notExecutable = folder.File("not-executable");
  const auto throwInHandler = [] {
    DOSOutputs outputs;
    outputs.ReceiveOutputs = [](const std::string&) { throw std::runtime_error("stop"); };
    EXPECT_THROW(outputs.ExecuteCommand("/bin/echo text"), std::runtime_error);
  };
  const std::set<int> before = OpenDescriptors();
  for (int run = 0; run < 100; ++run) {
    for (const std::string& line :
         {std::string("/bin/echo text"), folder / "missing", notExecutable, std::string(" ")}) {
      RunLine(line);
      ASSERT_EQ(OpenDescriptors(), before) << line;
    }
    throwInHandler();
    ASSERT_EQ(OpenDescriptors(), before) << "a handler that throws";
  }
}

// The standard descriptors that are closed where the program starts, one digit each.
class ConsoleRunnerWithoutDescriptors : public ::testing::TestWithParam<const char*> {};

TEST_P(ConsoleRunnerWithoutDescriptors, RunsAToolWithTheNullDeviceForItsInput) {
  const TemporaryFolder folder;
  const std::string tool =
      folder.Script("tool",
                    "echo out; echo err >&2; readlink /proc/self/fd/0\n"
                    "ls /proc/self/fd\n"
                    "if read answer; then echo got $answer; else echo none; fi");
  const std::string found = folder / "found";
  Process program = StartTestProgram({"run-without-descriptors", GetParam(), found, tool});
  program.CloseInput();
  EXPECT_EQ(program.Wait(), 0);
  EXPECT_EQ(ReadFile(found),
            "out\nerr\n/dev/null\n" + std::string(kStandardOnes) + "none\nand no descriptor lost");
}

INSTANTIATE_TEST_SUITE_P(Closed, ConsoleRunnerWithoutDescriptors,
                         ::testing::Values("", "0", "1", "2", "01", "02", "12", "012"),
                         [](const auto& closed) {
                           const std::string digits = closed.param;
                           return digits.empty() ? "None" : digits;
                         });

TEST(ConsoleRunnerDescriptors, ARunNeedsThreeFreeOnesAndYieldsNothingWithFewer) {
  for (const char* free : {"0", "1", "2", "3"}) {
    Process program = StartTestProgram({"run-with-free-descriptors", free, "/bin/echo text"});
    const std::string amid = *free == '3' ? "events 2, result [text amid\n], held [text amid\n]\n"
                                          : "events 0, result [], held [text before\n]\n";
    EXPECT_EQ(program.ReadToTheEnd(), "events 2, result [text before\n], held [text before\n]\n" +
                                          amid +
                                          "events 2, result [text after\n], held [text after\n]\n")
        << free;
    EXPECT_EQ(program.Wait(), 0);
  }
}

}  // namespace
}  // namespace kelvane::testing
