#include "shared/TextHelpers.h"

#include <QLocale>
#include <QRegularExpression>
#include <QStringList>
#include <algorithm>
#include <cmath>
#include <limits>

namespace kelvane {

using namespace Qt::StringLiterals;

namespace {

constexpr int kGroupDigits = 3;
constexpr int kSixty = 60;
constexpr int kHour = 3600;  // seconds

// Blanks, tabs and line breaks, the characters that may stand round a number.
QString WithoutSpaceRound(const QString& text) { return text.trimmed(); }

// The captions' own zero, "0,000", is a number in every locale: a comma that divides nothing there
// groups where three digits stand behind it.
void RemoveGroupingCommas(QString& text) {
  static const QRegularExpression comma(u"(?<=[0-9]),(?=[0-9]{3}(?![0-9]))"_s);
  text.remove(comma);
}

std::optional<double> NumberFromText(const QString& text) {
  const QLocale locale;
  QString plain = WithoutSpaceRound(text);
  plain.remove(locale.groupSeparator());
  if (locale.decimalPoint() != ","_L1) RemoveGroupingCommas(plain);
  plain.replace(locale.decimalPoint(), u"."_s);
  bool converts = false;
  const double number = plain.toDouble(&converts);
  if (!converts || !std::isfinite(number)) return std::nullopt;
  return number;
}

template <typename Integer>
std::optional<Integer> ToInteger(double number) {
  const double rounded = std::nearbyint(number);
  if (!(rounded >= std::numeric_limits<Integer>::min() &&
        rounded <= std::numeric_limits<Integer>::max())) {
    return std::nullopt;
  }
  return static_cast<Integer>(rounded);
}

std::optional<int> TimePart(const QString& text, int limit) {
  constexpr int kMostDigits = 2;
  if (text.isEmpty() || text.size() > kMostDigits) return std::nullopt;
  int value = 0;
  for (const QChar c : text) {
    if (c < u'0' || c > u'9') return std::nullopt;
    value = value * 10 + c.digitValue();
  }
  return value < limit ? std::optional(value) : std::nullopt;
}

QString TwoDigits(std::int64_t number) { return QString::number(number).rightJustified(2, u'0'); }

// Without the hours.
QString MinutesAndSeconds(std::int64_t seconds) {
  return TwoDigits(seconds / kSixty % kSixty) + u':' + TwoDigits(seconds % kSixty);
}

}  // namespace

std::string ToNarrow(const QString& text) { return text.toLocal8Bit().toStdString(); }

QString FromNarrow(const std::string& bytes) { return QString::fromLocal8Bit(bytes); }

QString FormatGrouped(double number, int leastDigits) {
  QString digits = QString::number(std::abs(std::round(number)), 'f', 0);
  digits = digits.rightJustified(leastDigits, u'0');
  for (qsizetype place = digits.size() - kGroupDigits; place > 0; place -= kGroupDigits) {
    digits.insert(place, QLocale().groupSeparator());
  }
  return std::round(number) < 0 ? u'-' + digits : digits;
}

QString FormatGroupedText(const QString& text) {
  const std::optional<double> number = NumberFromText(text);
  return number ? FormatGrouped(*number) : text;
}

QString FormatTwoDecimals(double number) {
  constexpr int kDecimals = 2;
  constexpr int kLeastLength = 5;
  constexpr double kHundredths = 100;
  constexpr int kReliableDigits = 15;
  constexpr double kLargestFraction = 1e13;
  // 0.285 is a half-way case to the reader, though what is stored lies a little below it.
  const double size = std::abs(number);
  const double hundredths = QString::number(size * kHundredths, 'g', kReliableDigits).toDouble();
  // What has no room for decimals is whole.
  const double rounded = size < kLargestFraction ? std::round(hundredths) / kHundredths : size;
  QString digits = QString::number(rounded, 'f', kDecimals);
  digits = digits.rightJustified(kLeastLength, u'0');
  digits.replace(u'.', QLocale().decimalPoint());
  return number < 0 && rounded > 0 ? u'-' + digits : digits;
}

QString FormatTimeOfDay(double seconds) {
  constexpr double kDay = 86400;
  constexpr std::int64_t kHours = 24;
  const std::int64_t whole = std::llround(std::fmod(std::abs(seconds), kDay));
  return QString::number(whole / kHour % kHours) + u':' + MinutesAndSeconds(whole);
}

QString FormatPosition(double seconds) {
  constexpr double kLongest = 1e15;  // is whole and fits
  const auto whole = static_cast<std::int64_t>(std::clamp(seconds, 0.0, kLongest));
  return whole < kHour ? MinutesAndSeconds(whole)
                       : TwoDigits(whole / kHour) + u':' + MinutesAndSeconds(whole);
}

QString FormatTimeText(double seconds) {
  constexpr int kLength = 8;
  return FormatTimeOfDay(seconds).rightJustified(kLength, u'0');
}

QString FormatDigits(double number, int leastDigits) {
  const double rounded = std::round(number);
  const QString digits =
      QString::number(std::abs(rounded), 'f', 0).rightJustified(leastDigits, u'0');
  return rounded < 0 ? u'-' + digits : digits;
}

QString FormatSingle(float number) {
  constexpr int kSignificantDigits = 7;
  return QString::number(static_cast<double>(number), 'G', kSignificantDigits)
      .replace(u'.', QLocale().decimalPoint());
}

QString Trim(const QString& text) {
  static const QRegularExpression blanksRound(u"^ +| +\\z"_s);
  return QString(text).remove(blanksRound);
}

double LeadingNumber(const QString& text) {
  static const QRegularExpression space(u"[ \\t\\r\\n]"_s);
  static const QRegularExpression number(u"^[+-]?([0-9]+\\.?[0-9]*|\\.[0-9]+)(e[+-]?[0-9]+)?"_s,
                                         QRegularExpression::CaseInsensitiveOption);
  const double value = number.match(QString(text).remove(space)).captured().toDouble();
  return std::isfinite(value) ? value : 0;
}

std::optional<float> SingleFromText(const QString& text) {
  const std::optional<double> number = NumberFromText(text);
  if (!number || std::abs(*number) > std::numeric_limits<float>::max()) return std::nullopt;
  return static_cast<float>(*number);
}

std::optional<int> SecondsFromTimeText(const QString& text) {
  constexpr int kHours = 24;
  const QStringList parts = WithoutSpaceRound(text).split(u':');
  if (parts.size() < 2 || parts.size() > 3) return std::nullopt;
  const std::optional<int> hours = TimePart(parts[0], kHours);
  const std::optional<int> minutes = TimePart(parts[1], kSixty);
  const std::optional<int> seconds = parts.size() == 3 ? TimePart(parts[2], kSixty) : 0;
  if (!hours || !minutes || !seconds) return std::nullopt;
  return (*hours * kSixty + *minutes) * kSixty + *seconds;
}

std::optional<std::int16_t> ToInteger16(double number) { return ToInteger<std::int16_t>(number); }

std::optional<std::int32_t> ToInteger32(double number) { return ToInteger<std::int32_t>(number); }

}  // namespace kelvane
