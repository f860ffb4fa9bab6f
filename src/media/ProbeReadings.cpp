#include "media/ProbeReadings.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <span>
#include <system_error>
#include <utility>

#include "media/Trim.h"

namespace kelvane {
namespace {

using std::size_t;
using std::string;
using std::string_view;

constexpr string_view kWidthWord = "width=";
constexpr string_view kHeightWord = "height=";
constexpr string_view kDurationWord = "duration:";

char LowerCase(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

// Returns the first position of `word`, which is in lower case, in `text`; npos if there is none.
size_t FindIgnoringCase(string_view text, string_view word) {
  const auto* const found = std::search(text.begin(), text.end(), word.begin(), word.end(),
                                        [](char c, char wanted) { return LowerCase(c) == wanted; });
  return found == text.end() ? string_view::npos : static_cast<size_t>(found - text.begin());
}

// Returns whether `line` has any of the lower-case `words`, whatever its own case.
bool HasAnyOf(std::span<const string_view> words, string_view line) {
  return std::any_of(words.begin(), words.end(), [line](string_view word) {
    return FindIgnoringCase(line, word) != string_view::npos;
  });
}

// Returns the text from a position on, which is counted from 1; empty if the text is shorter.
string_view FromCharacter(string_view text, size_t position) {
  return text.substr(std::min(position - 1, text.size()));
}

}  // namespace

string WidenLineBreaks(string_view text) {
  string wide;
  wide.reserve(text.size());
  for (const char c : text) {
    if (c == '\n' && (wide.empty() || wide.back() != '\r')) wide += '\r';
    wide += c;
  }
  return wide;
}

SizeReading ReadSize(string_view block) {
  constexpr size_t kWidthDigits = 7;   // after "width=" at the start of the block
  constexpr size_t kHeightLine = 12;   // after "width=", three digits and a line break
  constexpr size_t kHeightDigits = 8;  // after "height="
  SizeReading reading;
  const size_t height = FindIgnoringCase(block, kHeightWord);
  if (FindIgnoringCase(block, kWidthWord) != string_view::npos) {
    const string_view upToHeight =
        height == string_view::npos ? string_view() : block.substr(0, height);
    reading.width = string(FromCharacter(upToHeight, kWidthDigits));
  }
  if (height != string_view::npos) {
    string digits(FromCharacter(Trim(FromCharacter(block, kHeightLine)), kHeightDigits));
    // After a width of four digits the cut begins with the equals sign of "height=".
    reading.usedUp = digits.starts_with('=');
    if (reading.usedUp) std::erase(digits, '=');
    reading.height = std::move(digits);
  }
  return reading;
}

size_t EndOfLine(string_view text) { return text.find_first_of("\r\n") + 1; }

size_t EndOfSize(string_view text) {
  const size_t width = FindIgnoringCase(text, kWidthWord);
  if (width != 0 && width != string_view::npos) return width;
  // If there is no such word, no line break is found after it either. npos + 1 is 0.
  return text.find('\n', FindIgnoringCase(text, kHeightWord)) + 1;
}

std::optional<string> DurationReading::Append(string_view block) {
  constexpr size_t kTextLength = 18;  // the word, a blank and "hh:mm:ss"
  constexpr size_t kValueStart = 10;  // after the colon
  if (found_) {
    kept_ += block.substr(0, kTextLength - kept_.size());
  } else {
    kept_ += block;
    const size_t word = FindIgnoringCase(kept_, kDurationWord);
    found_ = word != string_view::npos;
    if (found_) {
      kept_ = kept_.substr(word, kTextLength);
    } else {
      kept_.erase(0, kept_.size() - std::min(kept_.size(), kDurationWord.size() - 1));
    }
  }
  if (!found_) return std::nullopt;
  return string(Trim(FromCharacter(kept_, kValueStart)));
}

std::optional<double> ReadPlayedTime(string_view line) {
  constexpr string_view kLead = "-V:";
  const size_t lead = line.find(kLead);
  if (lead == string_view::npos || line.find(" fd=") == string_view::npos) return std::nullopt;
  const auto number = [](string_view text) {
    text = Trim(text);
    double seconds = std::nan("");
    std::from_chars(text.data(), text.data() + text.size(), seconds);
    return seconds;
  };
  return number(line) - number(line.substr(lead + kLead.size()));
}

std::optional<double> ReadProgress(string_view line) {
  constexpr string_view kTimeWord = "time=";
  // What ends each number, and its unit in hundredths of a second.
  constexpr std::array<std::pair<char, std::uint64_t>, 4> kNumbers{
      {{':', 360'000}, {':', 6000}, {'.', 100}, {' ', 1}}};
  const size_t word = FindIgnoringCase(line, kTimeWord);
  if (word == string_view::npos) return std::nullopt;
  line.remove_prefix(word + kTimeWord.size());
  if (line.starts_with('-')) return 0;
  std::uint64_t hundredths = 0;
  for (const auto& [end, unit] : kNumbers) {
    std::uint32_t number = 0;
    const auto [next, error] = std::from_chars(line.data(), line.data() + line.size(), number);
    line.remove_prefix(static_cast<size_t>(next - line.data()));
    if (error != std::errc() || !line.starts_with(end)) return std::nullopt;
    line.remove_prefix(1);
    hundredths += number * unit;
  }
  return static_cast<double>(hundredths) / 100;
}

string LastComplaint(string_view text) {
  constexpr size_t kLookedAt = size_t{1} << 16U;
  static constexpr auto kComplaints = std::to_array<string_view>(
      {"error", "fail", "invalid", "unable", "unknown ", "not ", "cannot", "no such", "denied",
       "no space", "exceeded", "too ", "read-only", "is a directory", "supported"});
  // What ffmpeg says after the line that names the cause.
  static constexpr auto kConsequences = std::to_array<string_view>(
      {"invalid argument", "error opening input file", "error opening output file",
       "error initializing output stream", "error selecting an encoder",
       "error reinitializing filters", "failed to inject frame", "failed to configure",
       "error while processing the decoded data", "could not open encoder before",
       "nothing was written", "task finished", "terminating thread", "conversion failed"});
  text = text.substr(text.size() - std::min(text.size(), kLookedAt));
  string_view consequence;
  while (!text.empty()) {
    // If there is no line break, the line is the whole text. npos + 1 is 0.
    const size_t start = text.find_last_of("\r\n") + 1;
    string_view line = text.substr(start);
    const size_t nameEnd = line.starts_with('[') ? line.find("] ") : string_view::npos;
    if (nameEnd != string_view::npos) line.remove_prefix(nameEnd + 2);
    // Lines that begin like this describe the files, with names and titles that may have any word.
    if (!line.starts_with(' ') && !line.starts_with("Input #") && !line.starts_with("Output #") &&
        HasAnyOf(kComplaints, line)) {
      if (!HasAnyOf(kConsequences, line)) return string(line);
      consequence = line;
    }
    text = text.substr(0, std::max(start, size_t{1}) - 1);
  }
  return string(consequence);
}

}  // namespace kelvane
