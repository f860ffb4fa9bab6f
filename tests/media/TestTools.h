#pragma once

#include <sys/types.h>

#include <functional>
#include <set>
#include <string>
#include <vector>

#include "media/DOSOutputs.h"
#include "media/Descriptor.h"

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

// A named pipe at which a tool waits for the test: `read go < path` goes on after Open().
class Gate {
 public:
  explicit Gate(const std::string& path);

  const std::string& path() const { return path_; }
  int number() const { return end_.number(); }
  void Open() const;

 private:
  std::string path_;
  Descriptor end_;
};

// A run of the test program, its standard input and output on pipes. Killed and reaped at the end
// of its life where it still runs.
class StartedProgram {
 public:
  explicit StartedProgram(const std::vector<std::string>& arguments);
  StartedProgram(const StartedProgram&) = delete;
  StartedProgram& operator=(const StartedProgram&) = delete;
  ~StartedProgram();

  // The next line that it prints, without its line break.
  std::string ReadLine() const;
  // Everything that it still prints.
  std::string ReadToTheEnd() const;
  void CloseInput() { input_.Close(); }
  // Waits for its end and returns the status as waitpid() tells it.
  int Wait();

 private:
  pid_t process_ = 0;
  Descriptor input_;
  Descriptor output_;
};

// The events and the result of one run.
struct ToolRun {
  std::vector<std::string> events;
  std::string result;
};
ToolRun RunLine(DOSOutputs& outputs, const std::string& commandLine);
ToolRun RunLine(const std::string& commandLine);

// Waits for a condition. False where it doesn't come true in good time.
bool WaitUntil(const std::function<bool()>& condition);

// The letter of a process's state as the system shows it, 'Z' for one that ended and isn't reaped;
// a blank for none.
char ProcessState(pid_t process);

std::set<int> OpenDescriptors();

// Of this process.
std::vector<pid_t> Threads();

std::string ReadFile(const std::string& path);

}  // namespace kelvane::testing
