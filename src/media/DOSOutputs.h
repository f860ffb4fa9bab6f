#pragma once

#include <exception>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "media/ToolText.h"

namespace kelvane {

// Runs one console tool at a time and passes on what it prints while it runs.
//
// Text is bytes in the locale's encoding. The event is raised on the thread that calls
// ExecuteCommand, so its handler may process events and even start a run on another instance. Each
// run has a thread that reads the tool's text, so that the tool never has to wait for a handler;
// that thread calls no function of the caller. An instance must outlive its run. All instances
// belong to one thread.
class DOSOutputs {
 public:
  // Raised for each block of the text, 1 to 256 bytes of the tool's standard output and standard
  // error in the order of writing, and once more with an empty text at the end of the stream. A
  // block may end in the middle of a word or of a character.
  std::function<void(const std::string& CommandOutputs)> ReceiveOutputs;

  const std::string& CommandLine() const { return commandText_; }
  void setCommandLine(const std::string& DosCommand) { commandText_ = DosCommand; }

  // From the next run on, `length` decides where a block ends that isn't full. It is called on the
  // thread of the event. Null removes it: a block is then raised as soon as there is any text, so
  // a line that a tool prints word by word is read word by word.
  void CutBlocks(BlockLength length) { blockLength_ = std::move(length); }

  // Returns a copy of the text raised so far in the current run or, between runs, in the last one.
  std::string Outputs() const;

  // Runs the command, blocks until the stream ends and returns the output text. A `CommandLine`
  // that isn't empty replaces the one held. SplitCommandLine splits it; no shell is involved. The
  // tool's standard input is the null device.
  //
  // Returns an empty text, raises no event and leaves Outputs unchanged if the command line is
  // empty, or if the tool or the thread that reads it can't be started. The run ends with the
  // stream: it neither waits for the tool to exit nor looks at its exit status. Throws
  // std::bad_alloc and what the event's handler throws; a started tool then has no reader any more.
  std::string ExecuteCommand(const std::string& CommandLine = {});

  // Reaps the started tools that have ended, so that none stays a zombie. To be called on the
  // thread of the runs. Doesn't wait, and reaps no process that this class didn't start.
  static void ReapEndedChildren();

 private:
  std::string commandText_;
  // Of the last run that was started.
  std::shared_ptr<ToolText> text_;
  BlockLength blockLength_;
};

// Returns a handler that calls `handler` and ignores its exceptions: a tool whose text can't be
// kept or shown must still run to its end.
template <class Handler>
auto IgnoringExceptions(Handler handler) {
  return [handler](const std::string& CommandOutputs) {
    try {
      handler(CommandOutputs);
    } catch (const std::exception&) {
    }
  };
}

}  // namespace kelvane
