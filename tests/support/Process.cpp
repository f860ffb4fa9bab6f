#include "support/Process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <system_error>
#include <utility>

namespace kelvane::testing {
namespace {

void ThrowIfFailed(int error, const char* what) {
  if (error != 0) throw std::system_error(error, std::generic_category(), what);
}

// Returns the read end and the write end.
std::array<Descriptor, 2> Pipe() {
  std::array<int, 2> ends{};
  ThrowIfFailed(::pipe2(ends.data(), O_CLOEXEC) == 0 ? 0 : errno, "pipe2");
  return {Descriptor(ends[0]), Descriptor(ends[1])};
}

}  // namespace

// Doesn't use QProcess, which doesn't work under ThreadSanitizer: the child of a QProcess at first
// shares the memory of this process.
Process::Process(std::vector<std::string> arguments, Errors errors) {
  std::vector<char*> pointers;
  for (std::string& argument : arguments) pointers.push_back(argument.data());
  pointers.push_back(nullptr);
  std::array<Descriptor, 2> in = Pipe();
  std::array<Descriptor, 2> out = Pipe();
  posix_spawn_file_actions_t files;
  ::posix_spawn_file_actions_init(&files);
  ::posix_spawn_file_actions_adddup2(&files, in[0].number(), STDIN_FILENO);
  ::posix_spawn_file_actions_adddup2(&files, out[1].number(), STDOUT_FILENO);
  if (errors == Errors::kInOutput) {
    ::posix_spawn_file_actions_adddup2(&files, STDOUT_FILENO, STDERR_FILENO);
  }
  const int failure =
      ::posix_spawnp(&process_, pointers.front(), &files, nullptr, pointers.data(), environ);
  ::posix_spawn_file_actions_destroy(&files);
  ThrowIfFailed(failure, pointers.front());
  input_ = std::move(in[1]);
  output_ = std::move(out[0]);
}

Process::~Process() {
  if (process_ == 0) return;
  ::kill(process_, SIGKILL);
  ::waitpid(process_, nullptr, 0);
}

void Process::Write(const std::string& text) const {
  const ssize_t written = ::write(input_.number(), text.data(), text.size());
  ThrowIfFailed(written == static_cast<ssize_t>(text.size()) ? 0 : errno, "write");
}

std::string Process::ReadLine() const {
  std::string line;
  for (char c = 0; ::read(Output(), &c, 1) == 1 && c != '\n';) line += c;
  return line;
}

std::string Process::ReadToTheEnd() const {
  std::string text;
  std::array<char, 4096> block{};
  for (ssize_t got = 0; (got = ::read(Output(), block.data(), block.size())) > 0;) {
    text.append(block.data(), static_cast<std::size_t>(got));
  }
  return text;
}

int Process::Wait() {
  int status = 0;
  ThrowIfFailed(::waitpid(process_, &status, 0) == process_ ? 0 : errno, "waitpid");
  process_ = 0;
  return status;
}

}  // namespace kelvane::testing
