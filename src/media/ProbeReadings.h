#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

// What is read from the text that the probe tool prints. Positions are counted in bytes; searches
// ignore case.
namespace kelvane {

// `text` with every line feed that has no carriage return before it given one. The size reading's
// fixed offsets count both.
std::string WidenLineBreaks(std::string_view text);

// The texts cut from one block of the size probe, which is expected to hold the tool's whole answer
// with its line breaks widened: "width=1920", "height=1080". The cuts have fixed offsets that are
// exact for widths of three and four digits; for others, and for text that isn't such an answer,
// they yield what they yield, line breaks included.
struct SizeReading {
  // Unset where the block has no such word. Empty where the block has "width=" but no "height=".
  std::optional<std::string> width;
  std::optional<std::string> height;
  // The height was cut behind a width of four digits: the block is used up, and the next one is
  // still the size probe's.
  bool usedUp = false;
};
SizeReading ReadSize(std::string_view block);

// The length of the text's first line, its line feed or carriage return included; 0 where it hasn't
// ended.
std::size_t EndOfLine(std::string_view text);

// The length of what comes first in the text: a size up to the end of the line of its "height=",
// line break included, or what stands before a "width="; 0 where neither has ended. The probe
// prints a width and a height for each stream, and what it has to complain of in between.
std::size_t EndOfSize(std::string_view text);

// The first "Duration:" of all the text ever given to it, in whichever blocks it came.
class DurationReading {
 public:
  // Takes one more block. Returns the duration text as far as it has come, "hh:mm:ss" once it is
  // whole, with the blanks round it dropped; nothing while no "Duration:" has been seen. Its cost
  // doesn't grow with what came before.
  std::optional<std::string> Append(std::string_view block);

 private:
  bool found_ = false;
  // Until found: the end of the text that may be the word's beginning. From then on: the text from
  // the word on, as much of it as is read.
  std::string kept_;
};

}  // namespace kelvane
