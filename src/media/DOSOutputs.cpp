#include "media/DOSOutputs.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include "media/CommandLines.h"
#include "media/ToolText.h"

namespace kelvane {

struct StartedTool {
  pid_t process = 0;
  bool endsWithProgram = false;
  bool reaped = false;
  std::optional<int> exitStatus;
};

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kWaitingInterval(20);
// A tool mostly exits right after the end of its output.
constexpr std::chrono::milliseconds kReapingInterval(1);

// The tools that were started and not yet reaped. Until a tool is reaped, the system gives its
// process id to no other process.
std::vector<std::shared_ptr<StartedTool>> startedTools;

// Reaps the tool if it has ended, and keeps its exit status. Returns false while the tool runs.
bool Reap(StartedTool& tool) {
  int status = 0;
  const pid_t ended = waitpid(tool.process, &status, WNOHANG);
  tool.reaped = ended != 0;
  if (ended > 0) tool.exitStatus = WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status);
  return tool.reaped;
}

// When the program exits in the middle of a run, for example because its display is lost, kills the
// tools that End could have ended. Does nothing in a forked process, since the tools aren't its
// children.
struct EndOfProgram {
  ~EndOfProgram() {
    for (const auto& tool : startedTools) {
      if (tool->endsWithProgram && !Reap(*tool)) kill(tool->process, SIGKILL);
    }
  }
};
const EndOfProgram endOfProgram;

// Holds what posix_spawn needs to set a tool's descriptors and signals.
class SpawnSettings {
 public:
  explicit SpawnSettings(int writeEnd) {
    usable_ =
        posix_spawn_file_actions_init(&files_) == 0 && posix_spawnattr_init(&attributes_) == 0;
    sigset_t none;
    sigset_t brokenPipe;
    sigemptyset(&none);
    sigemptyset(&brokenPipe);
    sigaddset(&brokenPipe, SIGPIPE);
    // If the program was started without its standard descriptors, the pipe's ends may have numbers
    // from 0 to 2. Number 0, which is opened anew below, can only be that of the read end, which
    // the tool doesn't need.
    usable_ =
        usable_ && posix_spawn_file_actions_adddup2(&files_, writeEnd, STDOUT_FILENO) == 0 &&
        posix_spawn_file_actions_adddup2(&files_, STDOUT_FILENO, STDERR_FILENO) == 0 &&
        posix_spawn_file_actions_addopen(&files_, STDIN_FILENO, "/dev/null", O_RDONLY, 0) == 0 &&
        posix_spawn_file_actions_addclosefrom_np(&files_, STDERR_FILENO + 1) == 0 &&
        posix_spawnattr_setsigmask(&attributes_, &none) == 0 &&
        posix_spawnattr_setsigdefault(&attributes_, &brokenPipe) == 0 &&
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF) == 0;
  }
  SpawnSettings(const SpawnSettings&) = delete;
  SpawnSettings& operator=(const SpawnSettings&) = delete;
  ~SpawnSettings() {
    posix_spawn_file_actions_destroy(&files_);
    posix_spawnattr_destroy(&attributes_);
  }

  bool usable() const { return usable_; }
  const posix_spawn_file_actions_t* files() const { return &files_; }
  const posix_spawnattr_t* attributes() const { return &attributes_; }

 private:
  posix_spawn_file_actions_t files_{};
  posix_spawnattr_t attributes_{};
  bool usable_ = false;
};

// Starts the tool whose path is the first argument, with both its outputs on `writeEnd`. Returns
// null if it can't be started.
std::shared_ptr<StartedTool> SpawnTool(std::vector<std::string> arguments, int writeEnd) {
  std::vector<char*> pointers;
  pointers.reserve(arguments.size() + 1);
  for (std::string& argument : arguments) pointers.push_back(argument.data());
  pointers.push_back(nullptr);

  const SpawnSettings settings(writeEnd);
  // Memory is reserved first, so that the process id of a started tool can always be kept.
  auto tool = std::make_shared<StartedTool>();
  startedTools.reserve(startedTools.size() + 1);
  if (!settings.usable() || posix_spawn(&tool->process, pointers.front(), settings.files(),
                                        settings.attributes(), pointers.data(), environ) != 0) {
    return nullptr;
  }
  startedTools.push_back(tool);
  return tool;
}

}  // namespace

std::string DOSOutputs::Outputs() const { return text_ ? text_->UpToCursor() : std::string(); }

std::string DOSOutputs::ExecuteCommand(const std::string& CommandLine) {
  if (!CommandLine.empty()) commandText_ = CommandLine;
  tool_.reset();
  std::vector<std::string> arguments = SplitCommandLine(commandText_);
  if (arguments.empty()) return {};
  const auto text = std::make_shared<ToolText>();
  std::optional<ToolReader> reader;
  try {
    reader.emplace(*text);
  } catch (const std::system_error&) {
    return {};
  }
  const auto tool = SpawnTool(std::move(arguments), reader->writeEnd().number());
  if (!tool) return {};
  reader->CloseWriteEnd();
  text_ = text;
  tool_ = tool;
  tool->endsWithProgram = Waiting != nullptr;

  const BlockLength length = blockLength_;
  const std::function<void()> waiting = Waiting;
  const auto killTime = std::make_shared<std::optional<Clock::time_point>>();
  if (waiting) killTime_ = killTime;
  auto due = waiting ? Clock::now() : Clock::time_point::max();
  const auto raiseWaitingIfDue = [&] {
    if (Clock::now() < due) return;
    waiting();
    ReapEndedChildren();
    if (*killTime && tool->reaped) {
      // The reading is ended, since another process may still hold the output open.
      reader.reset();
    } else if (*killTime && Clock::now() >= **killTime) {
      kill(tool->process, SIGKILL);
    }
    due = Clock::now() + kWaitingInterval;
  };

  std::optional<std::string> block;
  do {
    raiseWaitingIfDue();
    block = text->NextBlock(length, due);
    if (block && ReceiveOutputs) ReceiveOutputs(*block);
  } while (!block || !block->empty());
  ReapEndedChildren();
  while (waiting && !tool->reaped) {
    std::this_thread::sleep_for(kReapingInterval);
    ReapEndedChildren();
    raiseWaitingIfDue();
  }
  return text->UpToCursor();
}

void DOSOutputs::End(std::chrono::milliseconds patience) {
  const auto killTime = killTime_.lock();
  if (!killTime || *killTime) return;
  *killTime = Clock::now() + patience;
  if (!tool_->reaped) kill(tool_->process, SIGTERM);
}

std::optional<int> DOSOutputs::ExitStatus() const {
  return tool_ ? tool_->exitStatus : std::nullopt;
}

void DOSOutputs::ReapEndedChildren() {
  std::erase_if(startedTools, [](const auto& tool) { return Reap(*tool); });
}

}  // namespace kelvane
