#pragma once

#include <condition_variable>
#include <cstddef>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>

#include "media/Descriptor.h"

namespace kelvane {

// Returns how long the next block is, given the text behind the last one, 256 bytes of it at most;
// 0 while the block's end hasn't come. Must not throw.
using BlockLength = std::function<std::size_t(std::string_view text)>;

// Everything that one tool prints, kept once, with a cursor that moves through it block by block.
// Thread-safe.
class ToolText {
 public:
  // Adds to the text. What there is no memory for is dropped.
  void Append(std::string_view printed) noexcept;
  // Nothing is added after this.
  void End();

  // Waits for the next block of 1 to 256 bytes, moves the cursor behind it and returns it. The
  // block ends where `length` says, or when it is full or the text has ended; without a `length` it
  // is whatever there is. Returns an empty text at the end.
  std::string NextBlock(const BlockLength& length);

  // A copy of the text up to the cursor.
  std::string UpToCursor() const;

 private:
  mutable std::mutex mutex_;
  std::condition_variable changed_;
  std::string text_;
  std::size_t cursor_ = 0;
  bool ended_ = false;
};

// A pipe, and a thread that reads it to its end into a text, as fast as something is written to it.
class ToolReader {
 public:
  // `text` must outlive the reader. Throws std::system_error where there is no descriptor or no
  // thread for it.
  explicit ToolReader(ToolText& text);
  ToolReader(const ToolReader&) = delete;
  ToolReader& operator=(const ToolReader&) = delete;
  // Ends the thread and closes the pipe, without waiting for whoever may still write to it.
  ~ToolReader();

  // The end to write to, the reader's until it is closed. As long as it is open, the text doesn't
  // end.
  const Descriptor& writeEnd() const { return writeEnd_; }
  void CloseWriteEnd() { writeEnd_.Close(); }

 private:
  void ReadToTheEnd();

  ToolText& text_;
  Descriptor readEnd_;
  Descriptor writeEnd_;
  // Becomes readable when the thread shall end.
  Descriptor stop_;
  std::thread thread_;
};

}  // namespace kelvane
