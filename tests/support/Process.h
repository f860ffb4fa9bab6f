#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

#include "media/Descriptor.h"

namespace kelvane::testing {

// A child process with its standard input and output on pipes. The destructor kills and reaps it.
class Process {
 public:
  // Where the child's standard error goes: to the parent's standard error, or into the child's
  // standard output.
  enum class Errors { kInherited, kInOutput };

  // Starts the program that the first argument names, found in PATH. Throws std::system_error if it
  // can't be started.
  explicit Process(std::vector<std::string> arguments, Errors errors = Errors::kInherited);
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;
  ~Process();

  pid_t Id() const { return process_; }
  // The descriptor from which the process's standard output is read.
  int Output() const { return output_.number(); }

  // Writes to the process's standard input.
  void Write(const std::string& text) const;
  void CloseInput() { input_.Close(); }
  // These wait for what the process prints: the next line, without its line break, or all the rest.
  std::string ReadLine() const;
  std::string ReadToTheEnd() const;
  // Waits until the process ends, and returns its status as waitpid() reports it.
  int Wait();

 private:
  pid_t process_ = 0;
  Descriptor input_;
  Descriptor output_;
};

}  // namespace kelvane::testing
