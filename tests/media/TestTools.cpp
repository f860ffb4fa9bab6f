#include "TestTools.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <numeric>
#include <stdexcept>
#include <system_error>

namespace kelvane::testing {

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder() : path_("/tmp/media-test-XXXXXX") {
  if (::mkdtemp(path_.data()) == nullptr) throw std::runtime_error("no temporary folder");
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

std::string TemporaryFolder::MakeFile(const std::string& name, const std::string& contents) const {
  std::string path = *this / name;
  std::ofstream file(path, std::ios::binary);
  file << contents;
  file.close();
  if (!file) throw std::runtime_error("can't write " + path);
  return path;
}

std::string TemporaryFolder::Script(const std::string& name, const std::string& commands) const {
  std::string path = MakeFile(name, "#!/bin/sh\n" + commands + "\n");
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

Process StartTestProgram(std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), MEDIA_TEST_PROGRAM);
  return Process(std::move(arguments));
}

Events RunLine(DOSOutputs& outputs, const std::string& commandLine) {
  Events events;
  outputs.ReceiveOutputs = [&events](const std::string& block) { events.push_back(block); };
  const std::string result = outputs.ExecuteCommand(commandLine);
  outputs.ReceiveOutputs = nullptr;
  EXPECT_TRUE(result == Joined(events));
  EXPECT_TRUE(events.empty() || result == outputs.Outputs());
  return events;
}

Events RunLine(const std::string& commandLine) {
  DOSOutputs outputs;
  return RunLine(outputs, commandLine);
}

std::string Joined(const Events& events) {
  return std::accumulate(events.begin(), events.end(), std::string());
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
  // The descriptor that read the folder is closed by now.
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
