// The tools as processes: what ends a run, who is reaped and when, and what signals do.

#include <gtest/gtest.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <stdexcept>
#include <string>
#include <vector>

#include "TestTools.h"
#include "media/DOSOutputs.h"

namespace kelvane {
namespace {

using testing::Gate;
using testing::ProcessState;
using testing::ReadFile;
using testing::RunLine;
using testing::TemporaryFolder;
using testing::Threads;
using testing::ToolRun;
using testing::WaitUntil;

using Events = std::vector<std::string>;

constexpr char kNone = ' ';
constexpr char kEndedAndNotReaped = 'Z';

bool IsReapedInTime(pid_t process) {
  return WaitUntil([process] {
    DOSOutputs::ReapEndedChildren();
    return ProcessState(process) == kNone;
  });
}

bool EndsInTime(pid_t process) {
  return WaitUntil([process] {
    return ProcessState(process) == kEndedAndNotReaped || ProcessState(process) == kNone;
  });
}

// Whether the program comes to have no child at all, neither running nor ended.
bool LosesEveryChildInTime() {
  return WaitUntil([] {
    DOSOutputs::ReapEndedChildren();
    siginfo_t found{};
    return ::waitid(P_ALL, 0, &found, WEXITED | WNOHANG | WNOWAIT) != 0 && errno == ECHILD;
  });
}

// The set of that name in the text of a process's "status".
unsigned long long SignalsIn(const std::string& status, const std::string& name) {
  constexpr int kHexadecimal = 16;
  return std::stoull(status.substr(status.find(name + ":\t") + name.size() + 2), nullptr,
                     kHexadecimal);
}

TEST(ConsoleRunnerChildren, NoEndedToolStaysBehind) {
  std::vector<pid_t> tools(20);
  for (pid_t& tool : tools) tool = std::stoi(RunLine("/bin/sh -c \"echo $$\"").result);
  for (const pid_t tool : tools) EXPECT_TRUE(IsReapedInTime(tool)) << tool;
  EXPECT_TRUE(LosesEveryChildInTime());
}

TEST(ConsoleRunnerChildren, TheEndOfALaterRunTakesLeaveOfEarlierTools) {
  const pid_t earlier = std::stoi(RunLine("/bin/sh -c \"echo $$\"").result);
  ASSERT_TRUE(EndsInTime(earlier));
  RunLine("/bin/true");
  EXPECT_EQ(ProcessState(earlier), kNone);
}

TEST(ConsoleRunnerChildren, AMissingToolLeavesNoProcessBehind) {
  const TemporaryFolder folder;
  RunLine(folder / "missing");
  EXPECT_TRUE(LosesEveryChildInTime());
}

TEST(ConsoleRunnerChildren, AToolThatClosesItsOutputEndsItsRunAndIsReapedWhenItEnds) {
  const TemporaryFolder folder;
  const Gate gate(folder / "gate");
  const std::string tool =
      folder.Script("tool", "echo $$; exec >&- 2>&-; read go < " + gate.path());
  const ToolRun run = RunLine(tool);
  ASSERT_EQ(run.events.size(), 2U);
  const pid_t process = std::stoi(run.result);

  DOSOutputs::ReapEndedChildren();
  RunLine("/bin/true");
  const char state = ProcessState(process);
  EXPECT_NE(state, kNone);
  EXPECT_NE(state, kEndedAndNotReaped);

  gate.Open();
  EXPECT_TRUE(IsReapedInTime(process));
}

TEST(ConsoleRunnerChildren, AProcessOfTheToolsThatHoldsTheOutputKeepsTheRunGoing) {
  const TemporaryFolder folder;
  const Gate gate(folder / "gate");
  const std::string tool =
      folder.Script("tool", "( read go < " + gate.path() + "; echo late ) & echo $$");
  DOSOutputs outputs;
  Events events;
  outputs.ReceiveOutputs = [&](const std::string& block) {
    events.push_back(block);
    if (events.size() > 1) return;
    // The tool itself has ended before the one that it left behind goes on.
    EXPECT_TRUE(EndsInTime(std::stoi(block)));
    gate.Open();
  };
  outputs.ExecuteCommand(tool);
  ASSERT_EQ(events.size(), 3U);
  EXPECT_EQ(events[1], "late\n");
  EXPECT_EQ(events[2], "");
}

TEST(ConsoleRunnerChildren, OtherProcessesOfTheProgramAreNotReaped) {
  constexpr int kExitCode = 7;
  const pid_t other = ::fork();
  ASSERT_GE(other, 0);
  if (other == 0) ::_exit(kExitCode);
  ASSERT_TRUE(WaitUntil([other] { return ProcessState(other) == kEndedAndNotReaped; }));

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
  const pid_t process = std::stoi(
      RunLine(folder.Script("tool", "echo $$; exec >&- 2>&-; read go < " + gate.path())).result);
  gate.Open();
  ASSERT_EQ(::waitpid(process, nullptr, 0), process);
  DOSOutputs::ReapEndedChildren();
  EXPECT_EQ(RunLine("/bin/echo on").result, "on\n");
}

TEST(ConsoleRunnerChildren, WhereAHandlerThrowsTheExceptionPassesAndTheToolLosesItsReader) {
  const TemporaryFolder folder;
  const std::string tool = folder.Script("tool", "echo $$; exec /usr/bin/yes");
  DOSOutputs outputs;
  outputs.ReceiveOutputs = [](const std::string&) { throw std::runtime_error("stop"); };
  EXPECT_THROW(outputs.ExecuteCommand(tool), std::runtime_error);
  ASSERT_FALSE(outputs.Outputs().empty());
  // It would print for ever, were there still a reader.
  EXPECT_TRUE(IsReapedInTime(std::stoi(outputs.Outputs())));

  EXPECT_EQ(RunLine(outputs, "/bin/echo again").result, "again\n");
}

TEST(ConsoleRunnerChildren, WhereAHandlerThrowsTheRunEndsThoughTheToolIsSilent) {
  const TemporaryFolder folder;
  const Gate gate(folder / "gate");
  const std::string tool = folder.Script("tool", "echo $$; read go < " + gate.path());
  const std::size_t threads = Threads().size();
  DOSOutputs outputs;
  outputs.ReceiveOutputs = [](const std::string&) { throw std::runtime_error("stop"); };
  EXPECT_THROW(outputs.ExecuteCommand(tool), std::runtime_error);
  EXPECT_EQ(Threads().size(), threads);
  const pid_t process = std::stoi(outputs.Outputs());
  EXPECT_FALSE(ProcessState(process) == kNone || ProcessState(process) == kEndedAndNotReaped);
  gate.Open();
  EXPECT_TRUE(IsReapedInTime(process));
}

TEST(ConsoleRunnerChildren, AHandlerMayThrowAtTheLastEvent) {
  DOSOutputs outputs;
  outputs.ReceiveOutputs = [](const std::string& block) {
    if (block.empty()) throw std::runtime_error("stop");
  };
  EXPECT_THROW(outputs.ExecuteCommand("/bin/echo text"), std::runtime_error);
  EXPECT_EQ(outputs.Outputs(), "text\n");
}

TEST(ConsoleRunnerChildren, TheToolStartsWithNoSignalBlockedAndABrokenPipeEndsIt) {
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

  const std::string status = RunLine("/bin/cat /proc/self/status").result;
  ::sigprocmask(SIG_SETMASK, &formerMask, nullptr);
  ::sigaction(SIGPIPE, &former, nullptr);

  EXPECT_EQ(SignalsIn(status, "SigBlk"), 0U);
  EXPECT_EQ(SignalsIn(status, "SigIgn") & (1ULL << (SIGPIPE - 1)), 0U);
}

// So that handlers run on the program's own threads.
TEST(ConsoleRunnerChildren, TheThreadThatReadsBlocksEverySignalThatCanBeBlocked) {
  const TemporaryFolder folder;
  const Gate gate(folder / "gate");
  const std::vector<pid_t> before = Threads();
  DOSOutputs outputs;
  std::vector<pid_t> readers;
  std::string status;
  outputs.ReceiveOutputs = [&](const std::string& block) {
    if (block.empty()) return;
    for (const pid_t thread : Threads()) {
      if (std::find(before.begin(), before.end(), thread) == before.end())
        readers.push_back(thread);
    }
    if (readers.size() == 1) {
      status = ReadFile("/proc/self/task/" + std::to_string(readers.front()) + "/status");
    }
    gate.Open();
  };
  // It is there for as long as its tool runs.
  outputs.ExecuteCommand(folder.Script("tool", "echo text; read go < '" + gate.path() + "'"));
  ASSERT_EQ(readers.size(), 1U);
  for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGALRM, SIGCHLD, SIGPIPE, SIGUSR1, SIGIO}) {
    EXPECT_NE(SignalsIn(status, "SigBlk") & (1ULL << (number - 1)), 0U) << number;
  }
  EXPECT_EQ(SignalsIn(ReadFile("/proc/thread-self/status"), "SigBlk"), 0U);
}

// Signals at short intervals, of which enough open a gate.
std::atomic<int> signalCount = 0;
std::atomic<int> gateEnd = -1;
constexpr int kSignals = 20;

extern "C" void CountSignal(int /*number*/) {
  const int saved = errno;
  if (++signalCount == kSignals) {
    [[maybe_unused]] const ssize_t written = ::write(gateEnd, "go\n", 3);
  }
  errno = saved;
}

TEST(ConsoleRunnerChildren, AnInterruptedReadIsNoEvent) {
  const TemporaryFolder folder;
  const Gate gate(folder / "gate");
  const std::string tool = folder.Script("tool", "read go < " + gate.path() + "; echo done");
  gateEnd = gate.number();
  signalCount = 0;
  struct sigaction count {};
  struct sigaction former {};
  count.sa_handler = CountSignal;  // without SA_RESTART, so that a read returns
  ASSERT_EQ(::sigaction(SIGALRM, &count, &former), 0);
  constexpr suseconds_t kMicroseconds = 2000;
  const itimerval often{{0, kMicroseconds}, {0, kMicroseconds}};
  ASSERT_EQ(::setitimer(ITIMER_REAL, &often, nullptr), 0);

  const ToolRun run = RunLine("/usr/bin/timeout 30 " + tool);

  const itimerval never{};
  ::setitimer(ITIMER_REAL, &never, nullptr);
  ::sigaction(SIGALRM, &former, nullptr);
  EXPECT_GE(signalCount, kSignals);
  EXPECT_EQ(run.events, (Events{"done\n", ""}));
  EXPECT_EQ(run.result, "done\n");
}

}  // namespace
}  // namespace kelvane
