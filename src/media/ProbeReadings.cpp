#include "media/ProbeReadings.h"

#include <algorithm>
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

}  // namespace kelvane
