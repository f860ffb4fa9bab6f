#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kelvane::fuzz {

// The bytes of one input, taken from the front. After the end, a byte is 0 and a text is empty.
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

// One event of a window: a step of the target, numbered below `steps`, or a block of a tool's text.
struct Event {
  std::uint8_t step;
  std::string_view block;  // 1 to 256 bytes; empty for a step
};

// The first byte tells: 255 is step 0, 254 step 1 and so on. Below the steps stands the length of a
// block less one, but the highest such value means a full block.
inline Event NextEvent(Input& input, std::uint8_t steps) {
  constexpr int kHighest = 0xFF;
  constexpr std::size_t kFullBlock = 256;
  const int head = input.Byte();
  if (head > kHighest - steps) return {static_cast<std::uint8_t>(kHighest - head), {}};
  return {steps, input.Take(head == kHighest - steps ? kFullBlock : std::size_t(head) + 1)};
}

}  // namespace kelvane::fuzz
