#include "TestTools.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>
#include <thread>

namespace kelvane::testing {
namespace {

namespace fs = std::filesystem;

void Require(bool done, const char* what) {
  if (!done) throw std::system_error(errno, std::generic_category(), what);
}

// The read end first.
std::array<Descriptor, 2> Pipe() {
  std::array<int, 2> ends{};
  Require(::pipe2(ends.data(), O_CLOEXEC) == 0, "pipe2");
  return {Descriptor(ends[0]), Descriptor(ends[1])};
}

}  // namespace

TemporaryFolder::TemporaryFolder() : path_("/tmp/media-test-XXXXXX") {
  Require(::mkdtemp(path_.data()) != nullptr, "mkdtemp");
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

std::string TemporaryFolder::File(const std::string& name, const std::string& contents) const {
  std::string path = *this / name;
  std::ofstream file(path, std::ios::binary);
  file << contents;
  file.close();
  if (!file) throw std::runtime_error("can't write " + path);
  return path;
}

std::string TemporaryFolder::Script(const std::string& name, const std::string& commands) const {
  std::string path = File(name, "#!/bin/sh\n" + commands + "\n");
  fs::permissions(path, fs::perms::owner_all);
  return path;
}

std::vector<std::string> TemporaryFolder::Names() const {
  std::vector<std::string> names;
  for (const fs::directory_entry& entry : fs::directory_iterator(path_)) {
    names.push_back(entry.path().filename());
  }
  std::sort(names.begin(), names.end());
  return names;
}

CurrentFolder::CurrentFolder(const std::string& path) : former_(fs::current_path()) {
  fs::current_path(path);
}

CurrentFolder::~CurrentFolder() {
  std::error_code ignored;
  fs::current_path(former_, ignored);
}

Gate::Gate(const std::string& path) : path_(path) {
  Require(::mkfifo(path.c_str(), S_IRUSR | S_IWUSR) == 0, "mkfifo");
  // Both ways, so that neither this nor the tool's opening waits for the other.
  end_ = Descriptor(::open(path.c_str(), O_RDWR | O_CLOEXEC));
  Require(static_cast<bool>(end_), "open");
}

void Gate::Open() const { Require(::write(end_.number(), "go\n", 3) == 3, "write"); }

StartedProgram::StartedProgram(const std::vector<std::string>& arguments) {
  std::vector<std::string> all = {MEDIA_TEST_PROGRAM};
  all.insert(all.end(), arguments.begin(), arguments.end());
  std::vector<char*> pointers;
  pointers.reserve(all.size() + 1);
  for (std::string& argument : all) pointers.push_back(argument.data());
  pointers.push_back(nullptr);

  std::array<Descriptor, 2> in = Pipe();
  std::array<Descriptor, 2> out = Pipe();
  process_ = ::fork();
  Require(process_ >= 0, "fork");
  if (process_ == 0) {
    constexpr int kCannotStart = 127;
    ::dup2(in[0].number(), STDIN_FILENO);
    ::dup2(out[1].number(), STDOUT_FILENO);
    ::execv(pointers.front(), pointers.data());
    ::_exit(kCannotStart);
  }
  input_ = std::move(in[1]);
  output_ = std::move(out[0]);
}

StartedProgram::~StartedProgram() {
  if (process_ == 0) return;
  ::kill(process_, SIGKILL);
  ::waitpid(process_, nullptr, 0);
}

std::string StartedProgram::ReadLine() const {
  std::string line;
  for (char c = 0; ::read(output_.number(), &c, 1) == 1 && c != '\n';) line += c;
  return line;
}

std::string StartedProgram::ReadToTheEnd() const {
  std::string text;
  for (char c = 0; ::read(output_.number(), &c, 1) == 1;) text += c;
  return text;
}

int StartedProgram::Wait() {
  int status = 0;
  Require(::waitpid(process_, &status, 0) == process_, "waitpid");
  process_ = 0;
  return status;
}

ToolRun RunLine(DOSOutputs& outputs, const std::string& commandLine) {
  ToolRun run;
  outputs.ReceiveOutputs = [&run](const std::string& block) { run.events.push_back(block); };
  run.result = outputs.ExecuteCommand(commandLine);
  outputs.ReceiveOutputs = nullptr;
  return run;
}

ToolRun RunLine(const std::string& commandLine) {
  DOSOutputs outputs;
  return RunLine(outputs, commandLine);
}

bool WaitUntil(const std::function<bool()>& condition) {
  using Clock = std::chrono::steady_clock;
  const Clock::time_point deadline = Clock::now() + std::chrono::seconds(30);
  while (!condition()) {
    if (Clock::now() > deadline) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return true;
}

char ProcessState(pid_t process) {
  const std::string text = ReadFile("/proc/" + std::to_string(process) + "/stat");
  // The name before the state may hold anything, a closing bracket too.
  const std::size_t nameEnd = text.rfind(") ");
  return nameEnd == std::string::npos ? ' ' : text.at(nameEnd + 2);
}

std::set<int> OpenDescriptors() {
  std::set<int> numbers;
  for (const fs::directory_entry& entry : fs::directory_iterator("/proc/self/fd")) {
    numbers.insert(std::stoi(entry.path().filename()));
  }
  // The listing's own is closed by now.
  std::erase_if(numbers, [](int number) { return ::fcntl(number, F_GETFD) < 0; });
  return numbers;
}

std::vector<pid_t> Threads() {
  std::vector<pid_t> threads;
  for (const fs::directory_entry& entry : fs::directory_iterator("/proc/self/task")) {
    threads.push_back(std::stoi(entry.path().filename()));
  }
  return threads;
}

std::string ReadFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

}  // namespace kelvane::testing
