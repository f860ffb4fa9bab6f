#include "shared/TextHelpers.h"

#include <QLocale>
#include <QRegularExpression>
#include <QTime>
#include <algorithm>
#include <cmath>
#include <limits>

namespace kelvane {

using namespace Qt::StringLiterals;

namespace {

// Removes the commas before groups of three digits, so that the designed caption "0,000" converts.
// Not to be called in a locale whose decimal separator is a comma: there the caption converts as it
// is.
void RemoveGroupingCommas(QString& text) {
  static const QRegularExpression comma(u"(?<=[0-9]),(?=[0-9]{3}(?![0-9]))"_s);
  text.remove(comma);
}

std::optional<double> NumberFromText(const QString& text) {
  const QLocale locale;
  QString plain = text.trimmed();
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
  using Limits = std::numeric_limits<Integer>;
  const double rounded = std::nearbyint(number);
  const bool fits = rounded >= Limits::min() && rounded <= Limits::max();
  return fits ? std::optional(static_cast<Integer>(rounded)) : std::nullopt;
}

// Returns the time that many seconds after midnight, rounded and unsigned; wraps after 24 hours.
QTime TimeOfDay(double seconds) {
  constexpr double kDay = 86400;
  return QTime(0, 0).addSecs(static_cast<int>(std::lround(std::fmod(std::abs(seconds), kDay))));
}

}  // namespace

// On Linux, the local encoding of Qt 6 is UTF-8 in every locale.
std::string ToNarrow(const QString& text) { return text.toLocal8Bit().toStdString(); }

QString FromNarrow(const std::string& bytes) { return QString::fromLocal8Bit(bytes); }

QString FormatGrouped(double number, int leastDigits) {
  constexpr int kGroupDigits = 3;
  QString digits = FormatDigits(number, leastDigits);
  const qsizetype first = digits.startsWith(u'-') ? 1 : 0;
  for (qsizetype position = digits.size() - kGroupDigits; position > first;
       position -= kGroupDigits) {
    digits.insert(position, QLocale().groupSeparator());
  }
  return digits;
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
  constexpr double kReliableBelow = 1e13;  // where two of the reliable digits are decimals
  // 0.285 is rounded up, although the stored value is slightly smaller.
  const double size = std::abs(number);
  const double hundredths = QString::number(size * kHundredths, 'g', kReliableDigits).toDouble();
  const double rounded = size < kReliableBelow ? std::round(hundredths) / kHundredths : size;
  QString digits = QString::number(rounded, 'f', kDecimals);
  digits = digits.rightJustified(kLeastLength, u'0');
  digits.replace(u'.', QLocale().decimalPoint());
  return number < 0 && rounded > 0 ? u'-' + digits : digits;
}

QString FormatTimeOfDay(double seconds) { return TimeOfDay(seconds).toString(u"h:mm:ss"_s); }

QString FormatTimeText(double seconds) { return TimeOfDay(seconds).toString(u"hh:mm:ss"_s); }

QString FormatPosition(double seconds) {
  constexpr double kLongest = 1e15;  // exact as a double
  constexpr int kHour = 3600;        // seconds
  const double whole = std::floor(std::clamp(seconds, 0.0, kLongest));
  const QString rest = TimeOfDay(whole).toString(u"mm:ss"_s);
  return whole < kHour ? rest : FormatDigits(std::floor(whole / kHour), 2) + u':' + rest;
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
  static const QRegularExpression outerBlanks(u"^ +| +\\z"_s);
  return QString(text).remove(outerBlanks);
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
  QTime time = QTime::fromString(text.trimmed(), u"h:m:s"_s);
  if (!time.isValid()) time = QTime::fromString(text.trimmed(), u"h:m"_s);
  return time.isValid() ? std::optional(QTime(0, 0).secsTo(time)) : std::nullopt;
}

std::optional<std::int16_t> ToInteger16(double number) { return ToInteger<std::int16_t>(number); }

std::optional<std::int32_t> ToInteger32(double number) { return ToInteger<std::int32_t>(number); }

}  // namespace kelvane
