// The tools as processes: what ends a run, which are reaped and when, and what signals do.

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

#include "TestTools.h"
#include "media/DOSOutputs.h"

namespace kelvane::testing {
namespace {

constexpr char kNone = ' ';
constexpr char kEndedAndNotReaped = 'Z';

bool IsReapedInTime(pid_t process) {
  return WaitFor([process] {
    DOSOutputs::ReapEndedChildren();
    return ProcessState(process) == kNone;
  });
}

bool HasEnded(pid_t process) {
  return ProcessState(process) == kEndedAndNotReaped || ProcessState(process) == kNone;
}

// The set of that name in the text of a process's "status".
unsigned long long SignalsIn(const std::string& status, const std::string& name) {
  constexpr int kHexadecimal = 16;
  return std::stoull(status.substr(status.find(name + ":\t") + name.size() + 2), nullptr,
                     kHexadecimal);
}

pid_t ProcessOf(const std::string& tool) { return std::stoi(RunLine(tool).front()); }

TEST(ConsoleRunnerChildren, AreReapedWithoutExceptionSoonAfterTheirEnd) {
  const TemporaryFolder folder;
  RunLine(folder / "missing");
  for (int tool = 0; tool < 20; ++tool) RunLine("/bin/true");
  // The program comes to have no child at all, neither running nor ended.
  EXPECT_TRUE(WaitFor([] {
    DOSOutputs::ReapEndedChildren();
    siginfo_t found{};
    return ::waitid(P_ALL, 0, &found, WEXITED | WNOHANG | WNOWAIT) != 0 && errno == ECHILD;
  }));
}

TEST(ConsoleRunnerChildren, AreReapedByTheEndOfALaterRun) {
  const pid_t earlier = ProcessOf("/bin/sh -c \"echo $$\"");
  ASSERT_TRUE(WaitFor([&] { return HasEnded(earlier); }));
  RunLine("/bin/true");
  EXPECT_EQ(ProcessState(earlier), kNone);
}

TEST(ConsoleRunnerChildren, AToolThatClosesItsOutputEndsItsRunAndIsReapedWhenItEnds) {
  const TemporaryFolder folder;
  const Gate gate(folder / "gate");
  const pid_t process = ProcessOf(folder.Script("tool", "echo $$; exec >&- 2>&-\n" + gate.Wait()));
  DOSOutputs::ReapEndedChildren();
  RunLine("/bin/true");
  EXPECT_FALSE(HasEnded(process));
  gate.Open();
  EXPECT_TRUE(IsReapedInTime(process));
}

TEST(ConsoleRunnerChildren, AProcessOfTheToolsThatHoldsTheOutputKeepsTheRunGoing) {
  const TemporaryFolder folder;
  const Gate gate(folder / "gate");
  const std::string tool = folder.Script("tool", "( " + gate.Wait() + "echo late ) & echo $$");
  DOSOutputs outputs;
  Events events;
  outputs.ReceiveOutputs = [&](const std::string& block) {
    events.push_back(block);
    if (events.size() > 1) return;
    // The tool itself has ended before the one that it left behind goes on.
    EXPECT_TRUE(WaitFor([&] { return HasEnded(std::stoi(block)); }));
    gate.Open();
  };
  outputs.ExecuteCommand(tool);
  ASSERT_EQ(events.size(), 3U);
  EXPECT_EQ(events[1], "late\n");
}

TEST(ConsoleRunnerChildren, OtherProcessesOfTheProgramAreNotReaped) {
  constexpr int kExitCode = 7;
  const pid_t other = ::fork();
  ASSERT_GE(other, 0);
  if (other == 0) ::_exit(kExitCode);
  ASSERT_TRUE(WaitFor([other] { return ProcessState(other) == kEndedAndNotReaped; }));
  RunLine("/bin/true");
  DOSOutputs::ReapEndedChildren();
  int status = 0;
  ASSERT_EQ(::waitpid(other, &status, 0), other);
  EXPECT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), kExitCode);
}

TEST(ConsoleRunnerChildren, AToolThatSomeoneElseReapedDisturbsNoLaterRun) {
  const TemporaryFolder folder;
  const Gate gate(folder / "gate");
  const pid_t process = ProcessOf(folder.Script("tool", "echo $$; exec >&- 2>&-\n" + gate.Wait()));
  gate.Open();
  ASSERT_EQ(::waitpid(process, nullptr, 0), process);
  DOSOutputs::ReapEndedChildren();
  EXPECT_EQ(Joined(RunLine("/bin/echo on")), "on\n");
}

class ConsoleRunnerWhoseHandlerThrows : public ::testing::Test {
 protected:
  ConsoleRunnerWhoseHandlerThrows() {
    outputs_.ReceiveOutputs = [](const std::string&) { throw std::runtime_error("stop"); };
  }
  TemporaryFolder folder_;
  DOSOutputs outputs_;
};

TEST_F(ConsoleRunnerWhoseHandlerThrows, PassesTheExceptionOnAndLeavesTheToolWithoutAReader) {
  const std::string tool = folder_.Script("tool", "echo $$; exec /usr/bin/yes");
  EXPECT_THROW(outputs_.ExecuteCommand(tool), std::runtime_error);
  ASSERT_FALSE(outputs_.Outputs().empty());
  // It would print for ever, were there still a reader.
  EXPECT_TRUE(IsReapedInTime(std::stoi(outputs_.Outputs())));
  EXPECT_EQ(Joined(RunLine(outputs_, "/bin/echo again")), "again\n");
}

TEST_F(ConsoleRunnerWhoseHandlerThrows, EndsItsThreadThoughTheToolIsSilent) {
  const Gate gate(folder_ / "gate");
  const std::string tool = folder_.Script("tool", "echo $$\n" + gate.Wait());
  const std::size_t threads = Threads().size();
  EXPECT_THROW(outputs_.ExecuteCommand(tool), std::runtime_error);
  EXPECT_EQ(Threads().size(), threads);
  const pid_t process = std::stoi(outputs_.Outputs());
  EXPECT_FALSE(HasEnded(process));
  gate.Open();
  EXPECT_TRUE(IsReapedInTime(process));
}

TEST_F(ConsoleRunnerWhoseHandlerThrows, AtTheLastEventHasKeptTheText) {
  outputs_.ReceiveOutputs = [](const std::string& block) {
    if (block.empty()) throw std::runtime_error("stop");
  };
  EXPECT_THROW(outputs_.ExecuteCommand("/bin/echo text"), std::runtime_error);
  EXPECT_EQ(outputs_.Outputs(), "text\n");
}

TEST(ConsoleRunnerSignals, NoneIsBlockedInTheToolAndABrokenPipeEndsIt) {
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

// So that handlers run on the program's own threads, and no signal interrupts a read.
TEST(ConsoleRunnerSignals, AllThatCanBeAreBlockedInTheReadingThread) {
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
  // The thread is there for as long as its tool runs.
  outputs.ExecuteCommand(folder.Script("tool", "echo text\n" + gate.Wait()));
  for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGALRM, SIGCHLD, SIGPIPE, SIGUSR1, SIGIO}) {
    EXPECT_NE(SignalsIn(status, "SigBlk") & (1ULL << (number - 1)), 0U) << number;
  }
  EXPECT_EQ(SignalsIn(ReadFile("/proc/thread-self/status"), "SigBlk"), 0U);
}

}  // namespace
}  // namespace kelvane::testing
