#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kelvane::fuzz {

// The bytes of one input, which are taken from the front. At the end, Byte returns 0 and Take an
// empty text.
class Input {
 public:
  explicit Input(std::string_view bytes) : rest_(bytes) {}

  bool AtEnd() const { return rest_.empty(); }
  std::string_view Rest() const { return rest_; }

  std::uint8_t Byte() {
    const std::string_view byte = Take(1);
    return byte.empty() ? std::uint8_t{0} : static_cast<std::uint8_t>(byte.front());
  }
  std::string_view Take(std::size_t count) {
    const std::string_view taken = rest_.substr(0, count);
    rest_.remove_prefix(taken.size());
    return taken;
  }

 private:
  std::string_view rest_;
};

// One event of a window: a step of the target, or a block of a tool's text.
struct Event {
  std::uint8_t step;       // for a block, the number of the target's steps
  std::string_view block;  // up to 256 bytes; empty for a step
};

// Takes an event of a target that has `steps` steps. The first byte says which: 255 is step 0, 254
// step 1 and so on. A lower byte is the length of a block less one, but the highest of these lower
// bytes means a full block. The block is shorter if the input ends in it.
inline Event NextEvent(Input& input, std::uint8_t steps) {
  constexpr int kHighest = 0xFF;
  constexpr std::size_t kFullBlock = 256;
  const int head = input.Byte();
  if (head > kHighest - steps) return {static_cast<std::uint8_t>(kHighest - head), {}};
  return {steps, input.Take(head == kHighest - steps ? kFullBlock : std::size_t(head) + 1)};
}

}  // namespace kelvane::fuzz
