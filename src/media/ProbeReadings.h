#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

// Reads the text that the tools print. Lengths are in bytes. Searches ignore the case of ASCII
// letters.
namespace kelvane {

// Returns `text` with a carriage return inserted before every line feed that has none. The fixed
// offsets of ReadSize count both.
std::string WidenLineBreaks(std::string_view text);

// The texts that ReadSize cuts from a block of the size probe. The block should hold one size with
// widened line breaks: a line "width=1920" and a line "height=1080". The cuts have fixed offsets,
// which fit widths of three and four digits; from any other block they yield other parts of it. The
// texts include line breaks.
struct SizeReading {
  // Each is std::nullopt if its word is missing; `width` is empty if only "height=" is missing.
  std::optional<std::string> width;
  std::optional<std::string> height;
  // True after a width of four digits: nothing else is to be done with the block. Otherwise, even
  // after a width of three digits, the block is to be shown and searched for a duration as well,
  // and no later block is to be read as a size.
  bool usedUp = false;
};
SizeReading ReadSize(std::string_view block);

// Returns the length of the first line with its line feed or carriage return; 0 if it hasn't ended.
std::size_t EndOfLine(std::string_view text);

// Returns the length of the first block: up to the first "width=" if other text precedes that,
// otherwise up to the end of the line of the first "height="; 0 if that end hasn't come. The probe
// prints a width and a height for each stream, and its warnings in between.
std::size_t EndOfSize(std::string_view text);

// Finds the first "Duration:" in a text that comes in blocks, even if a block ends inside it.
class DurationReading {
 public:
  // Takes the next block. Returns what has come of the nine bytes after "Duration:", trimmed, such
  // as "00:03:20"; std::nullopt until "Duration:" has come. The cost of a call doesn't grow with
  // the text before.
  std::optional<std::string> Append(std::string_view block);

 private:
  bool found_ = false;
  // Until the word is found, the end of the text, which may be the word's beginning. Then the word
  // and what has come of the nine bytes after it.
  std::string kept_;
};

// Returns the time in a line of ffmpeg's progress, "time=00:01:23.45", in seconds; 0 if it is
// negative. Returns std::nullopt for any other line, and if the time is unknown, "time=N/A". The
// lines end with carriage returns: EndOfLine cuts the text into them.
std::optional<double> ReadProgress(std::string_view line);

// Returns the time of the picture, in seconds, from a line of ffplay's status, such as
// "  12.34 A-V: -0.012 fd=   0". There, 12.34 is the time of the player's clock (the sound's, if
// there is sound), and -0.012 is how far that clock is ahead of the picture, be it seconds. The
// time is not-a-number until a picture has been shown. Returns std::nullopt for any other line.
std::optional<double> ReadPlayedTime(std::string_view line);

// Returns the last line of a tool's text that says what went wrong, without a "[name @ address]" at
// its beginning; an empty text if there is none. If all such lines name only consequences, such as
// "Conversion failed!", returns the first of them. Looks at the last 64 KiB.
std::string LastComplaint(std::string_view text);

}  // namespace kelvane
