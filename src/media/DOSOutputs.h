#pragma once

#include <exception>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "media/ToolText.h"

namespace kelvane {

// Runs one console tool at a time and hands on what it prints while it prints it.
//
// Text is bytes in the system's narrow encoding throughout. The event is raised on the thread that
// calls ExecuteCommand, so that a handler may pump the message queue and even start a run on
// another instance. A thread of the run's own reads meanwhile, so that the tool never has to wait
// for a handler; it calls nothing of the caller's. An instance must outlive its run and belongs to
// one thread.
class DOSOutputs {
 public:
  // Raised once for each block of the text, 1 to 256 bytes of the tool's standard output and
  // standard error in the order of writing, and once more with an empty text at the end of the
  // stream. A block may end anywhere, in the middle of a word or of a character.
  std::function<void(const std::string& CommandOutputs)> ReceiveOutputs;

  const std::string& CommandLine() const { return commandText_; }
  void setCommandLine(const std::string& DosCommand) { commandText_ = DosCommand; }

  // From the next run on, `length`, which is called on the thread of the event, says where a block
  // ends that isn't full. Without one, a block is raised as soon as there is any text, and a tool
  // that prints a line word by word is read word by word.
  void CutBlocks(BlockLength length) { blockLength_ = std::move(length); }

  // A copy of everything raised so far in the current run, or in the last one between runs.
  std::string Outputs() const;

  // Runs the command and blocks until the stream ends; returns the output text. A command line that
  // is not empty replaces the one held. Arguments are cut at blanks and tabs; double quotes group
  // and vanish; no shell is involved. The tool has no standard input.
  //
  // Returns an empty text, without an event and with Outputs unchanged, where the command line is
  // empty or the tool, or the thread that reads it, can't be started. Neither the tool's exit code
  // nor its end is waited for: the end of the run is the end of the stream. Exceptions of the
  // event's handler pass through; the tool then has no reader any more.
  std::string ExecuteCommand(const std::string& CommandLine = {});

  // Reaps those started tools that have ended since, so that none stays behind as a zombie. To be
  // called on the thread of the runs. Never waits, and touches no process that this class didn't
  // start.
  static void ReapEndedChildren();

 private:
  std::string commandText_;
  // Of the last run that was started.
  std::shared_ptr<ToolText> text_;
  BlockLength blockLength_;
};

// A handler whose failures are dropped: a tool whose text can't be kept or shown must still run to
// its end.
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
