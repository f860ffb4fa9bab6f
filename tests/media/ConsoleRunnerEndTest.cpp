// Runs that have the event Waiting: the caller may end such a run, and gets the exit status.

#include <gtest/gtest.h>
#include <sys/types.h>
#include <sys/wait.h>

#include <chrono>
#include <csignal>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "TestTools.h"
#include "media/DOSOutputs.h"
#include "media/ProbeReadings.h"

namespace kelvane::testing {
namespace {

using std::chrono::steady_clock;

constexpr std::chrono::milliseconds kShortPatience = 50ms;

// Runs a tool that prints its process id first. Calls `waiting` with that id each time that Waiting
// is raised after that. Returns the tool's blocks.
Events RunWaiting(DOSOutputs& outputs, const std::string& tool,
                  const std::function<void(pid_t tool)>& waiting) {
  outputs.Waiting = [&] {
    if (!outputs.Outputs().empty()) waiting(std::stoi(outputs.Outputs()));
  };
  return RunLine(outputs, tool);
}

TEST(ConsoleRunnerWaiting, IsRaisedOnTheCallersThreadAgainAndAgainWhileTheToolIsSilent) {
  const TemporaryFolder folder;
  const Gate gate(folder / "gate");
  DOSOutputs outputs;
  const std::thread::id caller = std::this_thread::get_id();
  int calls = 0;
  const Events events =
      RunWaiting(outputs, folder.Script("tool", "echo $$\n" + gate.WaitCommands() + "echo late"),
                 [&](pid_t /*tool*/) {
                   EXPECT_EQ(std::this_thread::get_id(), caller);
                   if (++calls == 3) gate.Open();
                 });
  EXPECT_GE(calls, 3);
  EXPECT_EQ(events.size(), 3U);
  EXPECT_EQ(events.at(1), "late\n");
}

TEST(ConsoleRunnerWaiting, IsRaisedBeforeTheFirstBlock) {
  DOSOutputs outputs;
  int calls = 0;
  outputs.Waiting = [&] { ++calls; };
  outputs.ReceiveOutputs = [&](const std::string& /*block*/) { EXPECT_GE(calls, 1); };
  outputs.ExecuteCommand("/bin/true");
  EXPECT_GE(calls, 1);
}

TEST(ConsoleRunnerWaiting, IsRaisedBetweenBlocksThatKeepComing) {
  DOSOutputs outputs;
  int calls = 0;
  outputs.Waiting = [&] { ++calls; };
  outputs.CutBlocks(EndOfLine);
  outputs.ReceiveOutputs = [](const std::string& /*block*/) { std::this_thread::sleep_for(1ms); };
  // The tool prints everything at once; the handler then takes 200 ms for the 200 lines.
  outputs.ExecuteCommand("/usr/bin/seq 200");
  EXPECT_GE(calls, 3);
}

TEST(ConsoleRunnerWaiting, MakesTheRunLastUntilAToolThatClosedItsOutputHasExited) {
  const TemporaryFolder folder;
  const Gate gate(folder / "gate");
  DOSOutputs outputs;
  Events events;
  int callsAfterTheStreamsEnd = 0;
  outputs.ReceiveOutputs = [&](const std::string& block) { events.push_back(block); };
  outputs.Waiting = [&] {
    if (!events.empty() && events.back().empty() && ++callsAfterTheStreamsEnd == 3) gate.Open();
  };
  outputs.ExecuteCommand(
      folder.Script("tool", "echo $$; exec >&- 2>&-\n" + gate.WaitCommands() + "exit 7"));
  EXPECT_EQ(events.size(), 2U);
  EXPECT_GE(callsAfterTheStreamsEnd, 3);
  EXPECT_EQ(outputs.ExitStatus(), 7);
  EXPECT_EQ(ProcessState(std::stoi(outputs.Outputs())), ' ') << "the tool isn't reaped";
}

TEST(ConsoleRunnerWaiting, MayRunAnotherTool) {
  const TemporaryFolder folder;
  const Gate gate(folder / "gate");
  DOSOutputs outputs;
  DOSOutputs inner;
  inner.Waiting = [] {};
  RunWaiting(outputs, folder.Script("tool", "echo $$\n" + gate.WaitCommands() + "exit 1"),
             [&](pid_t /*tool*/) {
               inner.ExecuteCommand(folder.Script("inner", "exit 2"));
               gate.Open();
             });
  EXPECT_EQ(outputs.ExitStatus(), 1);
  EXPECT_EQ(inner.ExitStatus(), 2);
}

TEST(ConsoleRunnerEnd, SendsSigtermToTheTool) {
  const TemporaryFolder folder;
  const Gate gate(folder / "gate");
  const std::string tool =
      folder.Script("tool", "trap 'echo asked; exit 3' TERM; echo $$\n" + gate.WaitCommands());
  DOSOutputs outputs;
  EXPECT_EQ(RunWaiting(outputs, tool, [&](pid_t /*tool*/) { outputs.End(); }).at(1), "asked\n");
  EXPECT_EQ(outputs.ExitStatus(), 3);
}

TEST(ConsoleRunnerEnd, MayBeCalledByTheHandlerOfABlock) {
  const TemporaryFolder folder;
  const Gate gate(folder / "gate");
  DOSOutputs outputs;
  outputs.Waiting = [] {};
  outputs.ReceiveOutputs = [&](const std::string& /*block*/) { outputs.End(); };
  outputs.ExecuteCommand(folder.Script("tool", "echo $$\n" + gate.WaitCommands()));
  EXPECT_EQ(outputs.ExitStatus(), -SIGTERM);
}

TEST(ConsoleRunnerEnd, KillsAToolThatIgnoresSigtermButOnlyAfterThePatience) {
  const TemporaryFolder folder;
  const Gate gate(folder / "gate");
  DOSOutputs outputs;
  std::optional<steady_clock::time_point> asked;
  RunWaiting(outputs, folder.Script("tool", "trap '' TERM; echo $$\n" + gate.WaitCommands()),
             [&](pid_t /*tool*/) {
               if (!asked) asked = steady_clock::now();
               outputs.End(kShortPatience);
             });
  EXPECT_EQ(outputs.ExitStatus(), -SIGKILL);
  EXPECT_GE(steady_clock::now() - *asked, kShortPatience);
}

TEST(ConsoleRunnerEnd, KillsAToolThatClosedItsOutput) {
  const TemporaryFolder folder;
  const Gate gate(folder / "gate");
  DOSOutputs outputs;
  RunWaiting(outputs,
             folder.Script("tool", "trap '' TERM; echo $$; exec >&- 2>&-\n" + gate.WaitCommands()),
             [&](pid_t /*tool*/) { outputs.End(kShortPatience); });
  EXPECT_EQ(outputs.ExitStatus(), -SIGKILL);
}

TEST(ConsoleRunnerEnd, KillsAStoppedTool) {
  const TemporaryFolder folder;
  DOSOutputs outputs;
  RunWaiting(outputs, folder.Script("tool", "echo $$; kill -STOP $$"), [&](pid_t tool) {
    if (ProcessState(tool) == 'T') outputs.End(kShortPatience);
  });
  EXPECT_EQ(outputs.ExitStatus(), -SIGKILL);
}

TEST(ConsoleRunnerEnd, DoesNotWaitForAChildOfTheToolThatStillHoldsTheOutput) {
  const TemporaryFolder folder;
  const Gate gate(folder / "gate");
  const Gate childsGate(folder / "childs-gate");
  for (const std::string& child : {childsGate.WaitCommands(), std::string("/usr/bin/yes 2>&-")}) {
    DOSOutputs outputs;
    RunWaiting(outputs,
               folder.Script("tool", "echo $$; ( " + child + " ) &\n" + gate.WaitCommands()),
               [&](pid_t /*tool*/) { outputs.End(); });
    EXPECT_EQ(outputs.ExitStatus(), -SIGTERM) << child;
  }
  childsGate.Open();
}

TEST(ConsoleRunnerEnd, EndsARunWhoseToolHasAlreadyExited) {
  const TemporaryFolder folder;
  const Gate childsGate(folder / "gate");
  DOSOutputs outputs;
  RunWaiting(outputs,
             folder.Script("tool", "echo $$; ( " + childsGate.WaitCommands() + " ) &\nexit 4"),
             [&](pid_t /*tool*/) {
               if (outputs.ExitStatus()) outputs.End();
             });
  EXPECT_EQ(outputs.ExitStatus(), 4);
  childsGate.Open();
}

TEST(ConsoleRunnerEnd, DoesNotKillTheToolSoonerIfCalledAgain) {
  const TemporaryFolder folder;
  const Gate gate(folder / "gate");
  DOSOutputs outputs;
  int calls = 0;
  RunWaiting(outputs,
             folder.Script("tool", "trap '' TERM; echo $$\n" + gate.WaitCommands() + "exit 5"),
             [&](pid_t /*tool*/) {
               outputs.End(calls == 0 ? std::chrono::hours(1) : 0ms);
               if (++calls == 5) gate.Open();
             });
  EXPECT_EQ(outputs.ExitStatus(), 5);
}

TEST(ConsoleRunnerEnd, HasNoEffectInARunWithoutWaiting) {
  const TemporaryFolder folder;
  const Gate gate(folder / "gate");
  DOSOutputs outputs;
  outputs.ReceiveOutputs = [&](const std::string& block) {
    outputs.End(0ms);
    if (block == "first\n") gate.Open();
  };
  EXPECT_EQ(outputs.ExecuteCommand(
                folder.Script("tool", "echo first\n" + gate.WaitCommands() + "echo on")),
            "first\non\n");
}

TEST(ConsoleRunnerEnd, HasNoEffectOutsideARun) {
  const TemporaryFolder folder;
  const Gate gate(folder / "gate");
  DOSOutputs outputs;
  outputs.End(0ms);
  outputs.Waiting = [] { throw std::runtime_error("stop"); };
  // The exception ends the run, but the tool lives on.
  EXPECT_THROW(outputs.ExecuteCommand(
                   folder.Script("tool", "trap 'echo ended >" + folder / "ended" + "' TERM\n" +
                                             gate.WaitCommands() + "touch " + folder / "exited")),
               std::runtime_error);
  outputs.End(0ms);
  gate.Open();
  EXPECT_TRUE(WaitFor([&] {
    DOSOutputs::ReapEndedChildren();
    return outputs.ExitStatus().has_value();
  })) << "ReapEndedChildren doesn't reap the tool";
  EXPECT_EQ(outputs.ExitStatus(), 0);
  EXPECT_EQ(folder.Names(), (std::vector<std::string>{"exited", "gate", "tool"}));
}

TEST(ConsoleRunnerExitStatus, IsThatOfTheLastRun) {
  const TemporaryFolder folder;
  const std::vector<std::pair<std::string, std::optional<int>>> cases = {
      {"/bin/true", 0},
      {folder.Script("fails", "exit 3"), 3},
      {folder.Script("dies", "kill -KILL $$"), -SIGKILL},
      {folder / "missing", std::nullopt},
      {folder.Script("other", "exit 255"), 255},
      {" ", std::nullopt},
  };
  DOSOutputs outputs;
  EXPECT_EQ(outputs.ExitStatus(), std::nullopt) << "no run yet";
  outputs.Waiting = [] {};
  for (const auto& [line, status] : cases) {
    outputs.ExecuteCommand(line);
    EXPECT_EQ(outputs.ExitStatus(), status) << line;
  }
}

TEST(ConsoleRunnerExitStatus, IsUnknownWhileTheToolRuns) {
  const TemporaryFolder folder;
  const Gate gate(folder / "gate");
  DOSOutputs outputs;
  RunLine(outputs, "/bin/false");
  RunWaiting(outputs, folder.Script("tool", "echo $$\n" + gate.WaitCommands() + "exit 6"),
             [&, first = true](pid_t /*tool*/) mutable {
               if (std::exchange(first, false)) {
                 EXPECT_EQ(outputs.ExitStatus(), std::nullopt);
                 gate.Open();
               }
             });
  EXPECT_EQ(outputs.ExitStatus(), 6);
}

TEST(ConsoleRunnerExitStatus, IsKeptIfAnotherRunReapsTheTool) {
  const TemporaryFolder folder;
  const Gate gate(folder / "gate");
  DOSOutputs outputs;
  outputs.Waiting = [] {};
  outputs.ReceiveOutputs = [&](const std::string& block) {
    if (block.empty()) return;
    const pid_t tool = std::stoi(block);
    gate.Open();
    EXPECT_TRUE(WaitFor([&] { return ProcessState(tool) == 'Z'; }));
    RunLine("/bin/true");
    EXPECT_EQ(ProcessState(tool), ' ');
  };
  outputs.ExecuteCommand(folder.Script("tool", "echo $$\n" + gate.WaitCommands() + "exit 9"));
  EXPECT_EQ(outputs.ExitStatus(), 9);
}

TEST(ConsoleRunnerExitStatus, IsUnknownIfOtherCodeReapedTheTool) {
  const TemporaryFolder folder;
  const Gate gate(folder / "gate");
  DOSOutputs outputs;
  outputs.Waiting = [] {};
  outputs.ReceiveOutputs = [&](const std::string& block) {
    if (block.empty()) return;
    gate.Open();
    EXPECT_EQ(::waitpid(std::stoi(block), nullptr, 0), std::stoi(block));
  };
  outputs.ExecuteCommand(folder.Script("tool", "echo $$\n" + gate.WaitCommands()));
  EXPECT_EQ(outputs.ExitStatus(), std::nullopt);
}

}  // namespace
}  // namespace kelvane::testing
