#pragma once

#include <sys/types.h>

#include <set>
#include <string>
#include <vector>

#include "media/DOSOutputs.h"
#include "support/Gate.h"
#include "support/Process.h"
#include "support/Wait.h"

// Temporary files, small tools to run, and what the system knows of processes and descriptors.
namespace kelvane::testing {

// A new folder whose path has no blank. The destructor removes it with all that is in it.
class TemporaryFolder {
 public:
  TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder();

  const std::string& path() const { return path_; }
  std::string operator/(const std::string& name) const { return path_ + '/' + name; }

  // Both make a file and return its path. /bin/sh runs the script's commands.
  std::string MakeFile(const std::string& name, const std::string& contents = "contents") const;
  std::string Script(const std::string& name, const std::string& commands) const;

  // The names in the folder, sorted.
  std::vector<std::string> Names() const;

 private:
  std::string path_;
};

// Changes the current folder until the object's end.
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

// Runs a command line and returns the tool's blocks. The test fails unless they make up the text
// that ExecuteCommand returns and, if there are any, also the text that Outputs returns.
Events RunLine(DOSOutputs& outputs, const std::string& commandLine);
Events RunLine(const std::string& commandLine);
std::string Joined(const Events& events);

// The state of a process in /proc, such as 'Z' for a zombie; a blank if there is no such process.
char ProcessState(pid_t process);

// Of this process.
std::set<int> OpenDescriptors();
std::vector<pid_t> Threads();

std::string ReadFile(const std::string& path);

}  // namespace kelvane::testing
