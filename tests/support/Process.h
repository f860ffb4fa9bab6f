#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

#include "media/Descriptor.h"

namespace kelvane::testing {

// A child process with its standard input and output on pipes. The destructor kills and reaps it.
class Process {
 public:
  enum class Errors { kInherited, kInOutput };

  // Starts the program that the first argument names, found in PATH. Throws std::system_error if it
  // can't be started.
  explicit Process(std::vector<std::string> arguments, Errors errors = Errors::kInherited);
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;
  ~Process();

  pid_t Id() const { return process_; }
  // The descriptor at which its standard output is read.
  int Output() const { return output_.number(); }

  // Writes to its standard input.
  void Write(const std::string& text) const;
  void CloseInput() { input_.Close(); }
  // Both wait for what is printed: the next line, without its line break, or the rest.
  std::string ReadLine() const;
  std::string ReadToTheEnd() const;
  // Waits for its end and returns the status as waitpid() tells it.
  int Wait();

 private:
  pid_t process_ = 0;
  Descriptor input_;
  Descriptor output_;
};

}  // namespace kelvane::testing
