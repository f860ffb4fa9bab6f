#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

#include "media/Descriptor.h"

namespace kelvane::testing {

// A child process with its standard input and output on pipes. Killed and reaped at the end of the
// object's life where it still runs.
class Process {
 public:
  enum class Errors { kInherited, kInOutput };

  // Starts the program, found in PATH, with these arguments; the program's name is the first.
  // Throws std::system_error where it can't be started.
  explicit Process(std::vector<std::string> arguments, Errors errors = Errors::kInherited);
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;
  ~Process();

  pid_t Id() const { return process_; }
  // The end of the pipe at which its standard output is read.
  int Output() const { return output_.number(); }

  // Writes to its standard input.
  void Write(const std::string& text) const;
  void CloseInput() { input_.Close(); }
  // The next line that it prints, without its line break.
  std::string ReadLine() const;
  // Everything that it still prints.
  std::string ReadToTheEnd() const;
  // Waits for its end and returns the status as waitpid() tells it.
  int Wait();

 private:
  pid_t process_ = 0;
  Descriptor input_;
  Descriptor output_;
};

}  // namespace kelvane::testing
