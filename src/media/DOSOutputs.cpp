#include "media/DOSOutputs.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <optional>
#include <system_error>
#include <utility>
#include <vector>

#include "media/CommandLines.h"
#include "media/ToolText.h"

namespace kelvane {
namespace {

// The tools that were started and not yet reaped. Until a tool is reaped, the system gives its
// process id to no other process.
std::vector<pid_t> startedChildren;

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
    // The null device comes last: if the program was started without its standard descriptors, the
    // pipe has some of their numbers, and 0 can only be the read end's.
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
// false if it can't be started.
bool SpawnTool(std::vector<std::string> arguments, int writeEnd) {
  std::vector<char*> pointers;
  pointers.reserve(arguments.size() + 1);
  for (std::string& argument : arguments) pointers.push_back(argument.data());
  pointers.push_back(nullptr);

  const SpawnSettings settings(writeEnd);
  // Memory is reserved first, so that the process id of a started tool can always be kept.
  startedChildren.reserve(startedChildren.size() + 1);
  pid_t child = 0;
  if (!settings.usable() || posix_spawn(&child, pointers.front(), settings.files(),
                                        settings.attributes(), pointers.data(), environ) != 0) {
    return false;
  }
  startedChildren.push_back(child);
  return true;
}

}  // namespace

std::string DOSOutputs::Outputs() const { return text_ ? text_->UpToCursor() : std::string(); }

std::string DOSOutputs::ExecuteCommand(const std::string& CommandLine) {
  if (!CommandLine.empty()) commandText_ = CommandLine;
  std::vector<std::string> arguments = SplitCommandLine(commandText_);
  if (arguments.empty()) return {};
  const auto text = std::make_shared<ToolText>();
  std::optional<ToolReader> reader;
  try {
    reader.emplace(*text);
  } catch (const std::system_error&) {
    return {};
  }
  if (!SpawnTool(std::move(arguments), reader->writeEnd().number())) return {};
  reader->CloseWriteEnd();
  text_ = text;

  const BlockLength length = blockLength_;
  std::string block;
  do {
    block = text->NextBlock(length);
    if (ReceiveOutputs) ReceiveOutputs(block);
  } while (!block.empty());
  ReapEndedChildren();
  return text->UpToCursor();
}

void DOSOutputs::ReapEndedChildren() {
  std::erase_if(startedChildren, [](pid_t child) { return waitpid(child, nullptr, WNOHANG) != 0; });
}

}  // namespace kelvane
