// Numbers and times as texts and back, under locales with unlike separators.
#include <QLocale>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <limits>

#include "Input.h"
#include "PlainText.h"
#include "Target.h"
#include "shared/TextHelpers.h"

namespace kelvane::fuzz {
namespace {

struct FuzzedLocale {
  QLocale locale;
  Separators separators;
};

// Written out: what Qt says of a locale is part of what is looked at.
const FuzzedLocale kLocales[] = {
    {QLocale::c(), PlainSeparators()},
    {QLocale(QLocale::German, QLocale::Germany), {".", ","}},
    {QLocale(QLocale::French, QLocale::France), {QString(QChar(0x202F)), ","}},
    {QLocale(QLocale::German, QLocale::Switzerland), {QString(QChar(0x2019)), "."}},
    {QLocale(QLocale::Polish, QLocale::Poland), {QString(QChar(0x00A0)), ","}},
};

// The locale of one input; the plain one again behind it.
class UseLocale {
 public:
  explicit UseLocale(const QLocale& locale) { QLocale::setDefault(locale); }
  UseLocale(const UseLocale&) = delete;
  UseLocale& operator=(const UseLocale&) = delete;
  ~UseLocale() { QLocale::setDefault(QLocale::c()); }
};

// The longest beginning that is a number with a point, blanks, tabs and line breaks left out.
double NumberAhead(const std::string& text) {
  std::string plain;
  for (const char c : text) {
    if (c != ' ' && c != '\t' && c != '\r' && c != '\n') plain += c;
  }
  plain.erase(std::min(plain.find_first_not_of("0123456789.eE+-"), plain.size()));
  double value = 0;
  for (std::size_t length = 1; length <= plain.size(); ++length) {
    const std::string beginning = plain.substr(0, length);
    char* end = nullptr;
    const double number = std::strtod(beginning.c_str(), &end);
    if (*end == '\0') value = std::isfinite(number) ? number : 0;
  }
  return value;
}

template <class Integer>
std::optional<Integer> HalfToEven(double number) {
  if (!(std::fabs(number) < 1e15)) return std::nullopt;
  auto whole = static_cast<std::int64_t>(std::floor(number));
  const double rest = number - std::floor(number);
  if (rest > 0.5 || (rest == 0.5 && whole % 2 != 0)) ++whole;
  if (whole < std::numeric_limits<Integer>::min() || whole > std::numeric_limits<Integer>::max()) {
    return std::nullopt;
  }
  return static_cast<Integer>(whole);
}

void ReadText(std::string_view bytes, const Separators& separators) {
  const auto text = QString::fromUtf8(bytes);
  const std::string shown = Readable(text);

  const std::optional<double> number = Number(text, separators);
  const bool fits = number && std::fabs(*number) <= double{std::numeric_limits<float>::max()};
  AgreeOn("number of " + shown, SingleFromText(text),
          fits ? std::optional(static_cast<float>(*number)) : std::nullopt);
  if (!number || std::fabs(*number) < 1e15) {
    AgreeOn("grouped " + shown, FormatGroupedText(text), GroupedText(text, separators));
  }
  AgreeOn("seconds of " + shown, SecondsFromTimeText(text), Seconds(text));
  AgreeOn("trimmed " + shown, Trim(text).toStdString(), TrimBlanks(text.toStdString()));
  const bool plain = std::all_of(bytes.begin(), bytes.end(), [](char c) { return c > 0; });
  if (plain) {
    AgreeOn("leading number of " + shown, LeadingNumber(text), NumberAhead(std::string(bytes)));
  }
  AgreeOn("text through the narrow encoding", FromNarrow(ToNarrow(text)), text);
}

std::string Printed(const char* format, double number) {
  std::array<char, 400> buffer{};
  std::snprintf(buffer.data(), buffer.size(), format, number);
  return buffer.data();
}

// The digits as they stand, for a text that is a number without a power of ten.
double ValueOf(QString text, const Separators& separators) {
  text.remove(separators.group).replace(separators.decimal, QLatin1String("."));
  char* end = nullptr;
  const std::string digits = text.toStdString();
  const double value = std::strtod(digits.c_str(), &end);
  Agree(!digits.empty() && *end == '\0', "no number: " + Readable(digits));
  return value;
}

void FormatTwo(double number, const Separators& separators) {
  const QString text = FormatTwoDecimals(number);
  const std::string what = "two decimals of " + Readable(number) + ": " + Readable(text);
  const qsizetype decimals = text.indexOf(separators.decimal);
  Agree(decimals >= 2 + (text.startsWith(u'-') ? 1 : 0) && text.size() == decimals + 3, what);
  const double value = ValueOf(text, {QString(QChar(0)), separators.decimal});
  Agree(std::fabs(value - number) <= 0.005 + std::fabs(number) * 1e-14, what);
  Agree(text.startsWith(u'-') == (value < 0), what);
  const double eighths = number * 8;
  if (std::fabs(number) < 1e9 && eighths == std::floor(eighths)) {
    const auto hundredths = (2 * std::llabs(std::llround(eighths)) * 100 + 8) / 16;
    AgreeOn(what, value, (number < 0 ? -1.0 : 1.0) * static_cast<double>(hundredths) / 100);
  }
}

void FormatTimes(double number) {
  const double whole = std::floor(std::fabs(number));
  const double up = std::fabs(number) - whole >= 0.5 ? 1 : 0;
  const auto ofDay = static_cast<std::int64_t>(std::fmod(whole, 86400) + up);
  const std::string what = " of " + Readable(number);
  const QString expected = TimeText(ofDay);
  AgreeOn("time text" + what, FormatTimeText(number), expected);
  AgreeOn("time of day" + what, FormatTimeOfDay(number),
          expected.startsWith(u'0') ? expected.mid(1) : expected);
  AgreeOn("seconds of the time text" + what, SecondsFromTimeText(FormatTimeText(number)),
          std::optional(static_cast<int>(ofDay % 86400)));
  if (number < 0) return;
  const QString position = FormatPosition(number);
  const auto passed = static_cast<std::int64_t>(std::min(number, 1e15));
  const QString minutes = TimeText(passed).mid(3);
  AgreeOn("position" + what, position,
          passed < 3600
              ? minutes
              : QString::fromStdString(Printed("%02.0f:", double(passed / 3600))) + minutes);
}

void FormatNumber(double number, const Separators& separators) {
  const std::string shown = Readable(number);
  for (const int digits : {4, 5}) {
    const QString text = FormatGrouped(number, digits);
    if (std::fabs(number) < 1e15) {
      AgreeOn("grouped " + shown, text,
              Grouped(number, static_cast<std::size_t>(digits), separators));
    }
    AgreeOn("value of grouped " + shown, ValueOf(text, separators), std::round(number) + 0.0);
    const auto single = static_cast<float>(std::round(number));
    if (std::fabs(number) <= double{std::numeric_limits<float>::max()}) {
      AgreeOn("grouped and read " + shown, SingleFromText(text), std::optional(single));
    }
  }
  for (const int digits : {2, 3}) {
    const QString text = FormatDigits(number, digits);
    AgreeOn("value of the digits of " + shown, ValueOf(text, {QString(QChar(0)), "."}),
            std::round(number) + 0.0);
    const QString unsignedText = text.startsWith(u'-') ? text.mid(1) : text;
    Agree(unsignedText.size() >= digits, "too few digits of " + shown);
    Agree(unsignedText.size() == digits || !unsignedText.startsWith(u'0'),
          "too many digits of " + shown);
  }
  FormatTwo(number, separators);
  FormatTimes(number);
  AgreeOn("16 bits of " + shown, ToInteger16(number), HalfToEven<std::int16_t>(number));
  AgreeOn("32 bits of " + shown, ToInteger32(number), HalfToEven<std::int32_t>(number));
  const auto single = static_cast<float>(number);
  if (!std::isfinite(single)) return;
  // A little more than it is, so that a half is rounded up.
  const double more = double{single} * (1 + 1e-12);
  const QString expected =
      single == 0 ? QStringLiteral("0") : QString::fromStdString(Printed("%.7G", more));
  AgreeOn("single " + shown, FormatSingle(single),
          QString(expected).replace(u'.', separators.decimal));
}

void Run(std::string_view bytes) {
  Input input(bytes);
  const FuzzedLocale& used = kLocales[input.Byte() % std::size(kLocales)];
  const UseLocale locale(used.locale);
  ReadText(input.Rest(), used.separators);

  const double read = std::strtod(std::string(input.Rest()).c_str(), nullptr);
  if (std::isfinite(read)) FormatNumber(read, used.separators);
  double stored = 0;
  const std::string_view eight = input.Take(sizeof(stored));
  std::memcpy(&stored, eight.data(), eight.size());
  if (std::isfinite(stored)) FormatNumber(stored, used.separators);
}

}  // namespace

const Target kNumbersAndTimes = {"NumbersAndTimes", Run};

}  // namespace kelvane::fuzz
