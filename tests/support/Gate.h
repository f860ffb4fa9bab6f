#pragma once

#include <string>

#include "media/Descriptor.h"

namespace kelvane::testing {

// A named pipe at which a tool's shell script waits for the test.
class Gate {
 public:
  // Makes the pipe at that path. Throws std::system_error if it can't be made.
  explicit Gate(std::string path);

  // Returns shell commands that wait until Open is called or the test's process ends. Each script
  // that waits needs a call of its own.
  std::string WaitCommands() const { return "read go < '" + path_ + "'\n"; }
  // Lets one script go on: one that waits or, if none does, the next. Async-signal-safe.
  void Open() const;
  // Returns whether a script has gone on for each call of Open.
  bool IsPassed() const;

 private:
  std::string path_;
  Descriptor end_;
};

}  // namespace kelvane::testing
