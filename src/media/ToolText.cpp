#include "media/ToolText.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <exception>
#include <system_error>

namespace kelvane {
namespace {

constexpr std::size_t kBlockSize = 256;
// The capacity of a pipe, so that one read empties it.
constexpr std::size_t kReadSize = 65536;

void ThrowErrnoUnless(bool done) {
  if (!done) throw std::system_error(errno, std::generic_category());
}

// While an object exists, its thread gets no signal; threads started meanwhile never get one.
class SignalsBlocked {
 public:
  SignalsBlocked() {
    sigset_t all;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &former_);
  }
  SignalsBlocked(const SignalsBlocked&) = delete;
  SignalsBlocked& operator=(const SignalsBlocked&) = delete;
  ~SignalsBlocked() { pthread_sigmask(SIG_SETMASK, &former_, nullptr); }

 private:
  sigset_t former_{};
};

}  // namespace

void ToolText::Append(std::string_view printed) noexcept {
  const std::lock_guard lock(mutex_);
  try {
    text_ += printed;
  } catch (const std::exception&) {
    return;
  }
  changed_.notify_one();
}

void ToolText::End() {
  const std::lock_guard lock(mutex_);
  ended_ = true;
  changed_.notify_one();
}

std::optional<std::string> ToolText::NextBlock(const BlockLength& length,
                                               std::chrono::steady_clock::time_point due) {
  std::unique_lock lock(mutex_);
  std::string_view block;
  const bool came = changed_.wait_until(lock, due, [&] {
    block = std::string_view(text_).substr(cursor_, kBlockSize);
    const std::size_t end = length ? length(block) : block.size();
    if (end > 0) block = block.substr(0, end);
    return ended_ || end > 0 || block.size() == kBlockSize;
  });
  if (!came) return std::nullopt;
  cursor_ += block.size();
  return std::string(block);
}

std::string ToolText::UpToCursor() const {
  const std::lock_guard lock(mutex_);
  return text_.substr(0, cursor_);
}

ToolReader::ToolReader(ToolText& text) : text_(text) {
  std::array<int, 2> ends{};
  ThrowErrnoUnless(pipe2(ends.data(), O_CLOEXEC) == 0);
  readEnd_ = Descriptor(ends[0]);
  writeEnd_ = Descriptor(ends[1]);
  stop_ = Descriptor(eventfd(0, EFD_CLOEXEC));
  ThrowErrnoUnless(static_cast<bool>(stop_));
  // Signal handlers must not run on the new thread.
  const SignalsBlocked blocked;
  thread_ = std::thread([this] { ReadToTheEnd(); });
}

ToolReader::~ToolReader() {
  eventfd_write(stop_.number(), 1);
  thread_.join();
}

void ToolReader::ReadToTheEnd() {
  std::array<char, kReadSize> buffer{};
  std::array<pollfd, 2> awaited = {pollfd{readEnd_.number(), POLLIN, 0},
                                   pollfd{stop_.number(), POLLIN, 0}};
  for (;;) {
    const int ready = poll(awaited.data(), awaited.size(), -1);
    if (ready < 0 && errno == EINTR) continue;
    if (ready < 0) break;
    // What is in the pipe is read even if the thread must end.
    if (awaited[0].revents != 0) {
      const ssize_t count = read(readEnd_.number(), buffer.data(), buffer.size());
      if (count <= 0) break;
      text_.Append({buffer.data(), static_cast<std::size_t>(count)});
    }
    if (awaited[1].revents != 0) break;
  }
  text_.End();
}

}  // namespace kelvane
