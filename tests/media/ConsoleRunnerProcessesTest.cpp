// The tools as child processes: their end, their signals and their descriptors.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <iterator>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "TestTools.h"
#include "media/DOSOutputs.h"
#include "media/Descriptor.h"

namespace kelvane::testing {
namespace {

constexpr char kReaped = ' ';
constexpr char kZombie = 'Z';

bool IsReapedInTime(pid_t process) {
  return WaitFor([process] {
    DOSOutputs::ReapEndedChildren();
    return ProcessState(process) == kReaped;
  });
}

bool HasEnded(pid_t process) {
  const char state = ProcessState(process);
  return state == kZombie || state == kReaped;
}

// Returns the signals, a bit each, of the line `name` of /proc/PID/status, such as "SigBlk".
unsigned long long SignalsIn(const std::string& status, const std::string& name) {
  constexpr int kHexadecimal = 16;
  return std::stoull(status.substr(status.find(name + ":\t") + name.size() + 2), nullptr,
                     kHexadecimal);
}

// Runs a tool that prints its process id first. Returns the id.
pid_t ProcessOf(const std::string& tool) { return std::stoi(RunLine(tool).front()); }

TEST(ConsoleRunnerChildren, AreAllReapedAfterTheirEnd) {
  const TemporaryFolder folder;
  RunLine(folder / "missing");
  for (int tool = 0; tool < 20; ++tool) RunLine("/bin/true");
  EXPECT_TRUE(WaitFor([] {
    DOSOutputs::ReapEndedChildren();
    siginfo_t child{};
    return ::waitid(P_ALL, 0, &child, WEXITED | WNOHANG | WNOWAIT) != 0 && errno == ECHILD;
  }));
}

TEST(ConsoleRunnerChildren, AreReapedByTheEndOfALaterRun) {
  const pid_t earlier = ProcessOf("/bin/sh -c \"echo $$\"");
  ASSERT_TRUE(WaitFor([&] { return HasEnded(earlier); }));
  RunLine("/bin/true");
  EXPECT_EQ(ProcessState(earlier), kReaped);
}

TEST(ConsoleRunnerChildren, AToolThatClosesItsOutputEndsTheRunAndIsReapedAfterItsOwnEnd) {
  const TemporaryFolder folder;
  const Gate gate(folder / "gate");
  const pid_t process =
      ProcessOf(folder.Script("tool", "echo $$; exec >&- 2>&-\n" + gate.WaitCommands()));
  DOSOutputs::ReapEndedChildren();
  RunLine("/bin/true");
  EXPECT_FALSE(HasEnded(process));
  gate.Open();
  EXPECT_TRUE(IsReapedInTime(process));
}

TEST(ConsoleRunnerChildren, ARunLastsUntilTheLastProcessThatHoldsTheOutputEnds) {
  const TemporaryFolder folder;
  const Gate gate(folder / "gate");
  const std::string tool =
      folder.Script("tool", "( " + gate.WaitCommands() + "echo late ) & echo $$");
  DOSOutputs outputs;
  Events events;
  outputs.ReceiveOutputs = [&](const std::string& block) {
    events.push_back(block);
    if (events.size() > 1) return;
    // The tool ends before the process that it left in the background.
    EXPECT_TRUE(WaitFor([&] { return HasEnded(std::stoi(block)); }));
    gate.Open();
  };
  outputs.ExecuteCommand(tool);
  ASSERT_EQ(events.size(), 3U);
  EXPECT_EQ(events[1], "late\n");
}

TEST(ConsoleRunnerChildren, ReapingLeavesOtherChildrenOfTheProgramAlone) {
  constexpr int kExitCode = 7;
  const pid_t other = ::fork();
  ASSERT_GE(other, 0);
  if (other == 0) ::_exit(kExitCode);
  ASSERT_TRUE(WaitFor([other] { return ProcessState(other) == kZombie; }));
  RunLine("/bin/true");
  DOSOutputs::ReapEndedChildren();
  int status = 0;
  ASSERT_EQ(::waitpid(other, &status, 0), other);
  EXPECT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), kExitCode);
}

TEST(ConsoleRunnerChildren, AToolThatOtherCodeReapedDisturbsNoLaterRun) {
  const TemporaryFolder folder;
  const Gate gate(folder / "gate");
  const pid_t process =
      ProcessOf(folder.Script("tool", "echo $$; exec >&- 2>&-\n" + gate.WaitCommands()));
  gate.Open();
  ASSERT_EQ(::waitpid(process, nullptr, 0), process);
  DOSOutputs::ReapEndedChildren();
  EXPECT_EQ(Joined(RunLine("/bin/echo on")), "on\n");
}

void Throw(const std::string& /*block*/) { throw std::runtime_error("stop"); }

TEST(ConsoleRunnerException, PassesThroughAndLeavesTheToolWithoutAReader) {
  const TemporaryFolder folder;
  DOSOutputs outputs;
  outputs.ReceiveOutputs = Throw;
  // Without a reader, the tool's next write fails and ends the tool.
  EXPECT_THROW(outputs.ExecuteCommand(folder.Script("tool", "echo $$; exec /usr/bin/yes")),
               std::runtime_error);
  EXPECT_TRUE(IsReapedInTime(std::stoi(outputs.Outputs())));
  EXPECT_EQ(Joined(RunLine(outputs, "/bin/echo again")), "again\n");
}

TEST(ConsoleRunnerException, EndsTheReadingThreadOfASilentTool) {
  const TemporaryFolder folder;
  const Gate gate(folder / "gate");
  DOSOutputs outputs;
  outputs.ReceiveOutputs = Throw;
  const std::size_t threads = Threads().size();
  EXPECT_THROW(outputs.ExecuteCommand(folder.Script("tool", "echo $$\n" + gate.WaitCommands())),
               std::runtime_error);
  EXPECT_EQ(Threads().size(), threads);
  const pid_t process = std::stoi(outputs.Outputs());
  EXPECT_FALSE(HasEnded(process));
  gate.Open();
  EXPECT_TRUE(IsReapedInTime(process));
}

TEST(ConsoleRunnerSignals, AreNotBlockedInTheToolAndABrokenPipeEndsIt) {
  struct sigaction ignore {};
  struct sigaction former {};
  ignore.sa_handler = SIG_IGN;
  ASSERT_EQ(::sigaction(SIGPIPE, &ignore, &former), 0);
  sigset_t blocked;
  sigset_t formerMask;
  sigemptyset(&blocked);
  sigaddset(&blocked, SIGUSR1);
  sigaddset(&blocked, SIGTERM);
  ASSERT_EQ(::sigprocmask(SIG_BLOCK, &blocked, &formerMask), 0);

  const std::string status = DOSOutputs().ExecuteCommand("/bin/cat /proc/self/status");
  ::sigprocmask(SIG_SETMASK, &formerMask, nullptr);
  ::sigaction(SIGPIPE, &former, nullptr);

  EXPECT_EQ(SignalsIn(status, "SigBlk"), 0U);
  EXPECT_EQ(SignalsIn(status, "SigIgn") & (1ULL << (SIGPIPE - 1)), 0U);
}

TEST(ConsoleRunnerSignals, AreBlockedInTheReadingThread) {
  const TemporaryFolder folder;
  const Gate gate(folder / "gate");
  const std::vector<pid_t> before = Threads();
  DOSOutputs outputs;
  std::vector<pid_t> readers;
  std::string status;
  outputs.ReceiveOutputs = [&](const std::string& block) {
    if (block.empty()) return;
    std::ranges::copy_if(Threads(), std::back_inserter(readers), [&](pid_t thread) {
      return std::ranges::find(before, thread) == before.end();
    });
    ASSERT_EQ(readers.size(), 1U);
    status = ReadFile("/proc/self/task/" + std::to_string(readers.front()) + "/status");
    gate.Open();
  };
  outputs.ExecuteCommand(folder.Script("tool", "echo text\n" + gate.WaitCommands()));
  for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGALRM, SIGCHLD, SIGPIPE, SIGUSR1, SIGIO}) {
    EXPECT_NE(SignalsIn(status, "SigBlk") & (1ULL << (number - 1)), 0U) << number;
  }
  EXPECT_EQ(SignalsIn(ReadFile("/proc/thread-self/status"), "SigBlk"), 0U);
}

// What `ls` shows of its own descriptors: the standard ones, and the one that reads the folder.
constexpr const char* kStandardAndListing = "0\n1\n2\n3\n";

TEST(ConsoleRunnerDescriptors, AToolGetsTheStandardOnesAlone) {
  // Opened without O_CLOEXEC: only the runner closes it in a tool.
  const Descriptor stray(::open("/dev/null", O_RDONLY));
  ASSERT_TRUE(stray);
  DOSOutputs outer;
  std::string inner;
  outer.ReceiveOutputs = [&inner](const std::string& block) {
    if (!block.empty()) inner = Joined(RunLine("/bin/ls /proc/self/fd"));
  };
  EXPECT_EQ(outer.ExecuteCommand("/bin/ls /proc/self/fd"), kStandardAndListing);
  EXPECT_EQ(inner, kStandardAndListing) << "a tool inside another run";
}

TEST(ConsoleRunnerDescriptors, OfARunAreClosedInProgramsThatOtherCodeStarts) {
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
  // The pipe's read end, and the event descriptor that stops the reading thread.
  EXPECT_EQ(flags, std::vector<int>(2, FD_CLOEXEC));
}

TEST(ConsoleRunnerDescriptors, AreAllClosedHoweverARunEnds) {
  const TemporaryFolder folder;
  const std::string notExecutable = folder.MakeFile("not-executable");
  DOSOutputs throwing;
  throwing.ReceiveOutputs = Throw;
  const std::set<int> before = OpenDescriptors();
  for (int run = 0; run < 10; ++run) {
    for (const std::string& line :
         {std::string("/bin/echo text"), folder / "missing", notExecutable, std::string(" ")}) {
      RunLine(line);
      ASSERT_EQ(OpenDescriptors(), before) << line;
    }
    EXPECT_THROW(throwing.ExecuteCommand("/bin/echo text"), std::runtime_error);
    ASSERT_EQ(OpenDescriptors(), before) << "a handler that throws";
  }
}

TEST(ConsoleRunnerDescriptors, AToolGetsTheStandardOnesEvenIfTheProgramHasNone) {
  const TemporaryFolder folder;
  const std::string tool =
      folder.Script("tool",
                    "echo out; echo err >&2; readlink /proc/self/fd/0\n"
                    "ls /proc/self/fd\n"
                    "if read answer; then echo got $answer; else echo none; fi");
  const std::string found = folder / "found";
  for (const char* closed : {"", "0", "1", "2", "01", "02", "12", "012"}) {
    Process program = StartTestProgram({"run-without-descriptors", closed, found, tool});
    program.CloseInput();
    EXPECT_EQ(program.Wait(), 0) << closed;
    EXPECT_EQ(ReadFile(found), "out\nerr\n/dev/null\n" + std::string(kStandardAndListing) +
                                   "none\nand no descriptor leaked")
        << closed;
  }
}

TEST(ConsoleRunnerDescriptors, ARunNeedsThreeUnusedOnesAndIsEmptyWithFewer) {
  for (const char* free : {"0", "1", "2", "3"}) {
    Process program = StartTestProgram({"run-with-free-descriptors", free, "/bin/echo text"});
    const std::string during = *free == '3'
                                   ? "events 2, result [text during\n], Outputs [text during\n]\n"
                                   : "events 0, result [], Outputs [text before\n]\n";
    EXPECT_EQ(program.ReadToTheEnd(),
              "events 2, result [text before\n], Outputs [text before\n]\n" + during +
                  "events 2, result [text after\n], Outputs [text after\n]\n")
        << free;
    EXPECT_EQ(program.Wait(), 0);
  }
}

}  // namespace
}  // namespace kelvane::testing
