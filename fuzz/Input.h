#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kelvane::fuzz {

// The bytes of one input, taken from the front. What has run out is nought or empty.
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

// What comes to a window in the course of an input: a step of a number below `steps`, or a block of
// 1 to 256 bytes.
struct Happening {
  std::uint8_t step;
  std::string_view block;  // empty for a step
};

constexpr std::size_t kBlockSize = 256;

// One byte tells: the last `steps` of its values are the steps, counted from the highest one, any
// other is the block's length less one, and the longest of these stands for a full block.
inline Happening Next(Input& input, std::uint8_t steps) {
  constexpr int kHighest = 0xFF;
  const int head = input.Byte();
  if (head > kHighest - steps) return {static_cast<std::uint8_t>(kHighest - head), {}};
  const std::size_t length = head == kHighest - steps ? kBlockSize : std::size_t(head) + 1;
  return {steps, input.Take(length)};
}

}  // namespace kelvane::fuzz
