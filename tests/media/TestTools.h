#pragma once

#include <sys/types.h>

#include <set>
#include <string>
#include <vector>

#include "media/DOSOutputs.h"
#include "support/Gate.h"
#include "support/Process.h"
#include "support/Wait.h"

// What the tests of this room stand on: files and folders of their own, small tools to run, and a
// look at the system's view of processes and descriptors.
namespace kelvane::testing {

// A new folder under a path that can stand bare, removed with all that is in it.
class TemporaryFolder {
 public:
  TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder();

  const std::string& path() const { return path_; }
  std::string operator/(const std::string& name) const { return path_ + '/' + name; }

  // Each makes a file and returns its path. A script is run by the system's plain shell.
  std::string File(const std::string& name, const std::string& contents = "contents") const;
  std::string Script(const std::string& name, const std::string& commands) const;

  // The names in the folder, sorted.
  std::vector<std::string> Names() const;

 private:
  std::string path_;
};

// Makes a folder the program's current one, and the former again at the end of its life.
class CurrentFolder {
 public:
  explicit CurrentFolder(const std::string& path);
  CurrentFolder(const CurrentFolder&) = delete;
  CurrentFolder& operator=(const CurrentFolder&) = delete;
  ~CurrentFolder();

 private:
  std::string former_;
};

// Starts the test program of this room.
Process StartTestProgram(std::vector<std::string> arguments);

using Events = std::vector<std::string>;

// The events of one run. The test fails where the result, or the text held after a run that raised
// an event, isn't theirs together.
Events RunLine(DOSOutputs& outputs, const std::string& commandLine);
Events RunLine(const std::string& commandLine);
std::string Joined(const Events& events);

// The letter of a process's state as the system shows it, 'Z' for one that ended and isn't reaped;
// a blank for none.
char ProcessState(pid_t process);

std::set<int> OpenDescriptors();

// Of this process.
std::vector<pid_t> Threads();

std::string ReadFile(const std::string& path);

}  // namespace kelvane::testing
