#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>

#include "media/Descriptor.h"

namespace kelvane {

// Returns the length of the next block, given at most 256 bytes of the text that follows the last
// block; 0 if the block's end hasn't come. Called with the text locked: it must not use the
// ToolText, and must not throw.
using BlockLength = std::function<std::size_t(std::string_view text)>;

// Holds everything that one tool prints, and a cursor that moves through it block by block.
// Thread-safe.
class ToolText {
 public:
  // Adds to the text; drops `printed` if there is no memory for it. Must not be called after End.
  void Append(std::string_view printed) noexcept;
  // Ends the text.
  void End();

  // Waits for the next block of 1 to 256 bytes, moves the cursor past it and returns it. The block
  // ends where `length` says, or when it is full or the text has ended. If `length` is null, the
  // block is all the text that has come, up to 256 bytes. Returns an empty text at the end;
  // std::nullopt if no block has come by `due`.
  std::optional<std::string> NextBlock(
      const BlockLength& length,
      std::chrono::steady_clock::time_point due = std::chrono::steady_clock::time_point::max());

  // Returns a copy of the text up to the cursor.
  std::string UpToCursor() const;

 private:
  mutable std::mutex mutex_;
  std::condition_variable changed_;
  std::string text_;
  std::size_t cursor_ = 0;
  bool ended_ = false;
};

// Owns a pipe and a thread that reads the pipe to its end, as fast as it fills, into a text.
class ToolReader {
 public:
  // `text` must outlive the reader. Throws std::system_error if there are no descriptors for it or
  // no thread.
  explicit ToolReader(ToolText& text);
  ToolReader(const ToolReader&) = delete;
  ToolReader& operator=(const ToolReader&) = delete;
  // Ends the thread and closes the pipe without waiting for a process that may still write to it.
  ~ToolReader();

  // The end to write to, which the reader owns. The text doesn't end while this end is open.
  const Descriptor& writeEnd() const { return writeEnd_; }
  void CloseWriteEnd() { writeEnd_.Close(); }

 private:
  void ReadToTheEnd();

  ToolText& text_;
  Descriptor readEnd_;
  Descriptor writeEnd_;
  // Becomes readable when the thread must end.
  Descriptor stop_;
  std::thread thread_;
};

}  // namespace kelvane
