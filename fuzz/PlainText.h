#pragma once

#include <QString>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// Texts, numbers and times once more, in the plainest way: what the models reckon with. Nothing of
// the program's own helpers is used here, and nothing is fast.
namespace kelvane::fuzz {

struct Separators {
  QString group;
  QString decimal;
};

// Of the plain locale, under which the windows are fuzzed.
Separators PlainSeparators();

// Where `word`, in lower case, first stands in the text, counted from 1 and without regard to the
// case of ASCII letters; 0 where it doesn't.
std::size_t Position(std::string_view text, std::string_view word);
// The text from that character on, counted from 1, and so many characters of it at most.
std::string_view Middle(std::string_view text, std::size_t from,
                        std::size_t length = std::string_view::npos);
std::string TrimBlanks(std::string_view text);
// What stands behind the first "duration:", nine characters at most; none without the word.
std::optional<QString> DurationIn(std::string_view text);

// At least so many digits, with the group separator before each three from the right.
QString Grouped(double number, std::size_t leastDigits, const Separators& separators);
// The same with four digits for a text that is a number; any other as it stands.
QString GroupedText(const QString& text, const Separators& separators);

// The whole text as a number; none where it is none or where double precision can't hold it.
std::optional<double> Number(const QString& text, const Separators& separators);

// Seconds from midnight of "h:m" or "h:m:s".
std::optional<int> Seconds(const QString& text);
// "hh:mm:ss" of a number of whole seconds, wrapped after a day.
QString TimeText(std::int64_t seconds);

// part * 100 / whole with two decimals, two digits at least before them, half rounded up.
QString PercentText(std::int64_t part, std::int64_t whole);

}  // namespace kelvane::fuzz
