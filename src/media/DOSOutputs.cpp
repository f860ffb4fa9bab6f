#include "media/DOSOutputs.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <optional>
#include <thread>
#include <vector>

#include "media/CommandLines.h"
#include "media/Descriptor.h"

namespace kelvane {
namespace {

constexpr std::size_t kBlockSize = 256;

// The tools that were started and not yet reaped. A number in here can't pass to another process,
// since the system keeps it for the ended tool until it is reaped.
std::vector<pid_t> startedChildren;

// How a tool is started: what becomes of its descriptors and its signals.
class StartSettings {
 public:
  explicit StartSettings(int writeEnd) {
    usable_ =
        posix_spawn_file_actions_init(&files_) == 0 && posix_spawnattr_init(&attributes_) == 0;
    sigset_t none;
    sigset_t brokenPipe;
    sigemptyset(&none);
    sigemptyset(&brokenPipe);
    sigaddset(&brokenPipe, SIGPIPE);
    // The null device comes last: where the program itself was started without its standard
    // descriptors, the pipe's own numbers are among them, and 0 can only be the read end's.
    usable_ =
        usable_ && posix_spawn_file_actions_adddup2(&files_, writeEnd, STDOUT_FILENO) == 0 &&
        posix_spawn_file_actions_adddup2(&files_, STDOUT_FILENO, STDERR_FILENO) == 0 &&
        posix_spawn_file_actions_addopen(&files_, STDIN_FILENO, "/dev/null", O_RDONLY, 0) == 0 &&
        posix_spawn_file_actions_addclosefrom_np(&files_, STDERR_FILENO + 1) == 0 &&
        posix_spawnattr_setsigmask(&attributes_, &none) == 0 &&
        posix_spawnattr_setsigdefault(&attributes_, &brokenPipe) == 0 &&
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF) == 0;
  }
  StartSettings(const StartSettings&) = delete;
  StartSettings& operator=(const StartSettings&) = delete;
  ~StartSettings() {
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

// Starts the tool that the first argument names, with both its outputs on `writeEnd`. False where
// it can't be started.
bool Start(std::vector<std::string> arguments, int writeEnd) {
  std::vector<char*> pointers;
  pointers.reserve(arguments.size() + 1);
  for (std::string& argument : arguments) pointers.push_back(argument.data());
  pointers.push_back(nullptr);

  const StartSettings settings(writeEnd);
  // Room is made beforehand, so that no started tool can fail to be remembered.
  startedChildren.reserve(startedChildren.size() + 1);
  pid_t child = 0;
  if (!settings.usable() || posix_spawn(&child, pointers.front(), settings.files(),
                                        settings.attributes(), pointers.data(), environ) != 0) {
    return false;
  }
  startedChildren.push_back(child);
  return true;
}

// Starts the tool of the command line; returns the end of a pipe from which to read what it prints,
// none where there is no tool or it can't be started.
Descriptor StartReading(const std::string& commandLine) {
  std::vector<std::string> arguments = SplitCommandLine(commandLine);
  std::array<int, 2> ends{};
  if (arguments.empty() || pipe2(ends.data(), O_CLOEXEC) != 0) return {};
  Descriptor readEnd(ends[0]);
  const Descriptor writeEnd(ends[1]);
  if (!Start(std::move(arguments), writeEnd.number())) return {};
  return readEnd;
}

// Returns when a block is full, when nothing more of it has come for so long, or when the stream
// has ended.
void Gather(int readEnd, std::chrono::milliseconds quiet) {
  constexpr std::chrono::milliseconds kLook{1};
  pollfd stream{.fd = readEnd, .events = POLLIN, .revents = 0};
  if (poll(&stream, 1, -1) != 1) return;
  int known = 0;
  auto since = std::chrono::steady_clock::now();
  while ((stream.revents & (POLLHUP | POLLERR)) == 0) {
    int available = 0;
    if (ioctl(readEnd, FIONREAD, &available) != 0 || available >= static_cast<int>(kBlockSize))
      return;
    const auto now = std::chrono::steady_clock::now();
    if (available != known) {
      known = available;
      since = now;
    } else if (now - since >= quiet) {
      return;
    }
    std::this_thread::sleep_for(kLook);
    if (poll(&stream, 1, 0) != 1) return;
  }
}

// The next block; empty at the end of the stream and where it can't be read on.
std::string_view ReadBlock(int readEnd, std::array<char, kBlockSize>& buffer) {
  ssize_t count = 0;
  do {
    count = read(readEnd, buffer.data(), buffer.size());
  } while (count < 0 && errno == EINTR);
  return count > 0 ? std::string_view(buffer.data(), static_cast<std::size_t>(count))
                   : std::string_view();
}

}  // namespace

std::string DOSOutputs::ExecuteCommand(const std::string& CommandLine) {
  if (!CommandLine.empty()) commandText_ = CommandLine;
  const Descriptor readEnd = StartReading(commandText_);
  if (!readEnd) return {};
  outputText_.clear();

  std::array<char, kBlockSize> buffer{};
  std::string block;
  do {
    if (quiet_.count() > 0) Gather(readEnd.number(), quiet_);
    block = ReadBlock(readEnd.number(), buffer);
    outputText_ += block;
    if (ReceiveOutputs) ReceiveOutputs(block);
  } while (!block.empty());
  ReapEndedChildren();
  return outputText_;
}

void DOSOutputs::ReapEndedChildren() {
  std::erase_if(startedChildren, [](pid_t child) { return waitpid(child, nullptr, WNOHANG) != 0; });
}

}  // namespace kelvane
