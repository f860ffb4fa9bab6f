#pragma once

#include <chrono>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "media/ToolText.h"

namespace kelvane {

struct StartedTool;

// Runs one console tool at a time and passes on what it prints while it runs.
//
// Command lines are UTF-8; a tool's text is the bytes that it prints. ReceiveOutputs and Waiting
// are raised on the thread that calls ExecuteCommand, so a handler may process the program's events
// and even start a run on another instance. Each run has a thread that reads the tool's text, so
// that the tool never has to wait for a handler; that thread calls no function of the caller. An
// instance must outlive its run. All instances belong to one thread.
class DOSOutputs {
 public:
  // Raised for each block of the text, 1 to 256 bytes of the tool's standard output and standard
  // error in the order of writing, and once more with an empty text at the end of the stream. A
  // block may end in the middle of a word or of a character.
  std::function<void(const std::string& CommandOutputs)> ReceiveOutputs;

  // Lets the caller process events: if it is set when a run starts, it is raised as soon as the
  // tool is started and about every 20 ms after that, except while a handler runs. Such a run lasts
  // until its stream has ended and the tool has exited, unless End ends it. If the program exits
  // meanwhile, the tool is killed.
  std::function<void()> Waiting;

  const std::string& CommandLine() const { return commandText_; }
  void setCommandLine(const std::string& DosCommand) { commandText_ = DosCommand; }

  // From the next run on, `length` decides where a block that isn't full ends. It is called on the
  // thread that calls ExecuteCommand. Null removes it: a block is then raised as soon as there is
  // any text, so a line that a tool prints word by word is read word by word.
  void CutBlocks(BlockLength length) { blockLength_ = std::move(length); }

  // Returns a copy of the text raised so far in the current run or, between runs, in the last one.
  std::string Outputs() const;

  // Runs the command, blocks until the stream ends and returns the output text. A `CommandLine`
  // that isn't empty replaces the one held. SplitCommandLine splits it; no shell is involved. The
  // tool's standard input is the null device.
  //
  // Returns an empty text, raises no event and leaves Outputs unchanged if the command line is
  // empty or blank, or if the tool or the thread that reads it can't be started. Without Waiting,
  // the run ends with the stream and doesn't wait for the tool to exit. Throws std::bad_alloc and
  // what an event's handler throws; a started tool then has no reader any more.
  std::string ExecuteCommand(const std::string& CommandLine = {});

  // Ends the run in progress; to be called by a handler, inside ExecuteCommand. Sends SIGTERM to
  // the tool. If the tool hasn't exited after `patience`, ExecuteCommand sends SIGKILL as soon as
  // no handler runs. The run ends when the tool has exited, even if another process still holds the
  // tool's output. Has no effect outside a run, in a run without Waiting, and if it was called in
  // this run before.
  void End(std::chrono::milliseconds patience = std::chrono::seconds(5));

  // Returns the exit status of the last run's tool, or the negative number of the signal that ended
  // it. Returns std::nullopt before the first run, if the tool couldn't be started, while it isn't
  // reaped, and if other code has reaped it.
  std::optional<int> ExitStatus() const;

  // Reaps the started tools that have ended, so that none stays a zombie. To be called on the
  // thread of the runs. Doesn't wait, and reaps no process that this class didn't start.
  static void ReapEndedChildren();

 private:
  std::string commandText_;
  // The text of the last run whose tool was started.
  std::shared_ptr<ToolText> text_;
  BlockLength blockLength_;
  // The last run's tool; null if none was started.
  std::shared_ptr<StartedTool> tool_;
  // When the tool is to be killed; std::nullopt until End is called. It exists only during a run
  // with Waiting.
  std::weak_ptr<std::optional<std::chrono::steady_clock::time_point>> killTime_;
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
