// Numbers and times as texts and back, in locales with different separators.
#include <QLocale>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QStringList>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <limits>

#include "Input.h"
#include "Target.h"
#include "shared/TextHelpers.h"

namespace kelvane::fuzz {
namespace {

struct Separators {
  QString group;
  QString decimal;
};

struct FuzzedLocale {
  QLocale locale;
  Separators separators;
};

// The separators are written out here, since the program asks Qt for them.
const FuzzedLocale kLocales[] = {
    {QLocale::c(), {",", "."}},
    {QLocale(QLocale::German, QLocale::Germany), {".", ","}},
    {QLocale(QLocale::French, QLocale::France), {QString(QChar(0x202F)), ","}},
    {QLocale(QLocale::German, QLocale::Switzerland), {QString(QChar(0x2019)), "."}},
    {QLocale(QLocale::Polish, QLocale::Poland), {QString(QChar(0x00A0)), ","}},
};

// Returns whether the whole text matches.
bool Matches(const QString& text, const char* pattern) {
  return QRegularExpression("\\A(?:" + QLatin1String(pattern) + ")\\z").match(text).hasMatch();
}

// Removes the commas that group digits: those after a digit and before exactly three digits.
QString WithoutGroupingCommas(const QString& text) {
  const QStringList parts = text.split(u',');
  QString left = parts.first();
  for (qsizetype i = 1; i < parts.size(); ++i) {
    const bool groups =
        Matches(parts[i - 1], "(?s).*[0-9]") && Matches(parts[i], "[0-9]{3}([^0-9].*)?");
    if (!groups) left += u',';
    left += parts[i];
  }
  return left;
}

// The whole text as a number; none if the text is no number or a double can't hold it.
std::optional<double> Number(const QString& text, const Separators& separators) {
  QString plain = text.trimmed().remove(separators.group);
  if (separators.decimal != u',') plain = WithoutGroupingCommas(plain);
  plain = plain.replace(separators.decimal, QStringLiteral(".")).trimmed();
  if (!Matches(plain, "[+-]?([0-9]+\\.?[0-9]*|\\.[0-9]+)([eE][+-]?[0-9]+)?")) return std::nullopt;
  const double number = std::strtod(plain.toStdString().c_str(), nullptr);
  const bool tooSmall = number == 0 && !Matches(plain, "[+-]?[0.]+([eE].*)?");
  return std::isfinite(number) && !tooSmall ? std::optional(number) : std::nullopt;
}

// The time "h:m" or "h:m:s" in seconds from midnight; none for any other text.
std::optional<int> Seconds(const QString& text) {
  const QString time = text.trimmed();
  if (!Matches(time, "[0-9]{1,2}:[0-9]{1,2}(:[0-9]{1,2})?")) return std::nullopt;
  const QStringList parts = time.split(u':');
  const int hours = parts[0].toInt();
  const int minutes = parts[1].toInt();
  const int seconds = parts.value(2).toInt();
  if (hours > 23 || minutes > 59 || seconds > 59) return std::nullopt;
  return hours * 3600 + minutes * 60 + seconds;
}

// The seconds as a time of day, "hh:mm:ss", which wraps after 24 hours.
QString TimeText(std::int64_t seconds) {
  return QString::asprintf("%02d:%02d:%02d", static_cast<int>(seconds % 86400 / 3600),
                           static_cast<int>(seconds % 3600 / 60), static_cast<int>(seconds % 60));
}

QString Grouped(double number, int leastDigits, const Separators& separators) {
  QString text = QString::asprintf("%0*.0f", leastDigits, std::round(std::fabs(number)));
  const bool negative = std::round(number) < 0;
  for (qsizetype place = text.size() - 3; place > 0; place -= 3) {
    text.insert(place, separators.group);
  }
  return negative ? u'-' + text : text;
}

// Leaves out blanks, tabs and line breaks, and returns the longest beginning of the rest that is a
// number, with a point as decimal separator; 0 if there is none or a double can't hold it.
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
    AgreeOn("grouped " + shown, FormatGroupedText(text),
            number ? Grouped(*number, 4, separators) : text);
  }
  AgreeOn("seconds of " + shown, SecondsFromTimeText(text), Seconds(text));
  QString trimmed = text;
  while (trimmed.startsWith(u' ')) trimmed.remove(0, 1);
  while (trimmed.endsWith(u' ')) trimmed.chop(1);
  AgreeOn("trimmed " + shown, Trim(text), trimmed);
  const bool plain = std::all_of(bytes.begin(), bytes.end(), [](char c) { return c > 0; });
  if (plain) {
    AgreeOn("leading number of " + shown, LeadingNumber(text), NumberAhead(std::string(bytes)));
  }
  AgreeOn("text through the narrow encoding", FromNarrow(ToNarrow(text)), text);
}

// The value of a text that must be a number.
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
          passed < 3600 ? minutes
                        : QString::number(passed / 3600).rightJustified(2, u'0') + ':' + minutes);
}

void FormatNumber(double number, const Separators& separators) {
  const std::string shown = Readable(number);
  for (const int digits : {4, 5}) {
    const QString text = FormatGrouped(number, digits);
    if (std::fabs(number) < 1e15) {
      AgreeOn("grouped " + shown, text, Grouped(number, digits, separators));
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
  // Slightly further from zero, so that a half is rounded away from zero.
  const double more = double{single} * (1 + 1e-12);
  QString expected = single == 0 ? "0" : QString::asprintf("%.7G", more);
  AgreeOn("single " + shown, FormatSingle(single), expected.replace(u'.', separators.decimal));
}

void Run(std::string_view bytes) {
  Input input(bytes);
  const FuzzedLocale& used = kLocales[input.Byte() % std::size(kLocales)];
  QLocale::setDefault(used.locale);
  const auto restore = qScopeGuard([] { QLocale::setDefault(QLocale::c()); });
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
