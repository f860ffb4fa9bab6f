#include "PlainText.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace kelvane::fuzz {
namespace {

bool IsDigit(QChar c) { return c.unicode() >= u'0' && c.unicode() <= u'9'; }

QString WithoutSpaceRound(const QString& text) {
  qsizetype from = 0;
  qsizetype to = text.size();
  while (from < to && text[from].isSpace()) ++from;
  while (to > from && text[to - 1].isSpace()) --to;
  return text.mid(from, to - from);
}

qsizetype DigitsFrom(const QString& text, qsizetype place) {
  qsizetype count = 0;
  while (place + count < text.size() && IsDigit(text[place + count])) ++count;
  return count;
}

// A sign, digits with or without a point, and a power of ten: the whole of the text.
bool IsNumber(const QString& text) {
  qsizetype place = 0;
  if (place < text.size() && (text[place] == u'+' || text[place] == u'-')) ++place;
  qsizetype digits = DigitsFrom(text, place);
  place += digits;
  if (place < text.size() && text[place] == u'.') {
    ++place;
    const qsizetype decimals = DigitsFrom(text, place);
    place += decimals;
    digits += decimals;
  }
  if (digits == 0) return false;
  if (place < text.size() && (text[place] == u'e' || text[place] == u'E')) {
    ++place;
    if (place < text.size() && (text[place] == u'+' || text[place] == u'-')) ++place;
    const qsizetype power = DigitsFrom(text, place);
    if (power == 0) return false;
    place += power;
  }
  return place == text.size();
}

// Commas that have a digit before them and exactly three behind them.
QString WithoutGroupingCommas(const QString& text) {
  QString left;
  for (qsizetype place = 0; place < text.size(); ++place) {
    const bool groups = text[place] == u',' && place > 0 && IsDigit(text[place - 1]) &&
                        DigitsFrom(text, place + 1) == 3;
    if (!groups) left += text[place];
  }
  return left;
}

}  // namespace

Separators PlainSeparators() { return {QStringLiteral(","), QStringLiteral(".")}; }

std::size_t Position(std::string_view text, std::string_view word) {
  for (std::size_t place = 0; place + word.size() <= text.size(); ++place) {
    std::size_t same = 0;
    while (same < word.size()) {
      char c = text[place + same];
      if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + 32);
      if (c != word[same]) break;
      ++same;
    }
    if (same == word.size()) return place + 1;
  }
  return 0;
}

std::string_view Middle(std::string_view text, std::size_t from, std::size_t length) {
  return from > text.size() ? std::string_view() : text.substr(from - 1, length);
}

std::string TrimBlanks(std::string_view text) {
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  return std::string(text);
}

std::optional<QString> DurationIn(std::string_view text) {
  const std::size_t word = Position(text, "duration:");
  if (word == 0) return std::nullopt;
  return QString::fromUtf8(TrimBlanks(Middle(Middle(text, word, 18), 10, 9)));
}

QString Grouped(double number, std::size_t leastDigits, const Separators& separators) {
  std::vector<char> buffer(400);
  std::snprintf(buffer.data(), buffer.size(), "%.0f", std::round(std::fabs(number)));
  std::string digits = buffer.data();
  const bool negative = number < 0 && digits != "0";
  while (digits.size() < leastDigits) digits.insert(digits.begin(), '0');
  QString text;
  for (std::size_t place = 0; place < digits.size(); ++place) {
    if (place > 0 && (digits.size() - place) % 3 == 0) text += separators.group;
    text += QLatin1Char(digits[place]);
  }
  return negative ? QLatin1Char('-') + text : text;
}

QString GroupedText(const QString& text, const Separators& separators) {
  constexpr std::size_t kLeastDigits = 4;
  const std::optional<double> number = Number(text, separators);
  return number ? Grouped(*number, kLeastDigits, separators) : text;
}

std::optional<double> Number(const QString& text, const Separators& separators) {
  QString plain = WithoutSpaceRound(text).remove(separators.group);
  if (separators.decimal != QLatin1String(",")) plain = WithoutGroupingCommas(plain);
  plain.replace(separators.decimal, QLatin1String("."));
  // Space that stood before a separator, or behind one.
  plain = WithoutSpaceRound(plain);
  if (!IsNumber(plain)) return std::nullopt;
  const double number = std::strtod(plain.toStdString().c_str(), nullptr);
  bool isNought = true;
  for (const QChar c : plain) {
    if (c == u'e' || c == u'E') break;
    isNought = isNought && (c < u'1' || c > u'9');
  }
  const bool fits = std::isfinite(number) && (number != 0 || isNought);
  return fits ? std::optional(number) : std::nullopt;
}

std::optional<int> Seconds(const QString& text) {
  const QString time = WithoutSpaceRound(text);
  std::vector<int> parts;
  qsizetype place = 0;
  for (bool more = true; more;) {
    const qsizetype digits = DigitsFrom(time, place);
    if (digits < 1 || digits > 2) return std::nullopt;
    int part = 0;
    for (qsizetype i = 0; i < digits; ++i) part = part * 10 + (time[place + i].unicode() - u'0');
    parts.push_back(part);
    place += digits;
    more = place < time.size();
    if (more && time[place++] != u':') return std::nullopt;
  }
  if (parts.size() == 2) parts.push_back(0);
  if (parts.size() != 3 || parts[0] > 23 || parts[1] > 59 || parts[2] > 59) return std::nullopt;
  return parts[0] * 3600 + parts[1] * 60 + parts[2];
}

QString TimeText(std::int64_t seconds) {
  const std::int64_t ofDay = seconds % 86400;
  char text[40];
  std::snprintf(text, sizeof(text), "%02d:%02d:%02d", static_cast<int>(ofDay / 3600),
                static_cast<int>(ofDay % 3600 / 60), static_cast<int>(ofDay % 60));
  return QLatin1String(text);
}

QString PercentText(std::int64_t part, std::int64_t whole) {
  const std::int64_t hundredths = (2 * part * 10000 + whole) / (2 * whole);
  char text[40];
  std::snprintf(text, sizeof(text), "%02d.%02d", static_cast<int>(hundredths / 100),
                static_cast<int>(hundredths % 100));
  return QLatin1String(text);
}

}  // namespace kelvane::fuzz
