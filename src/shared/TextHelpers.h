#pragma once

#include <QString>
#include <cstdint>
#include <optional>
#include <string>

// Conversions between text, numbers and times. Separators are those of the default locale. Numbers
// must be finite unless a function says otherwise. An optional result is std::nullopt if the text
// doesn't convert. Thread-safe.
namespace kelvane {

// Convert between QString and UTF-8, the encoding of the media tools' texts in every locale. What
// can't be converted is replaced.
std::string ToNarrow(const QString& text);
QString FromNarrow(const std::string& bytes);

// At least `leastDigits` digits with the group separator between groups of three: with four digits,
// 0 is "0,000", 640 "0,640", 12345 "12,345", -7 "-0,007". Rounded to a whole number, half away from
// zero.
QString FormatGrouped(double number, int leastDigits = 4);

// The same for a text that converts to a number; any other text is returned unchanged.
QString FormatGroupedText(const QString& text);

// At least two digits before the decimal separator and two after it: 4.5 is "04.50". Rounded, half
// away from zero.
QString FormatTwoDecimals(double number);

// A number of seconds as a time of day, "h:mm:ss": wraps after 24 hours, rounds fractions of a
// second to nearest, and shows a negative number as its absolute value.
QString FormatTimeOfDay(double seconds);

// The same with two digits for the hours, "hh:mm:ss".
QString FormatTimeText(double seconds);

// A position in a video in whole seconds, rounded down: "mm:ss", and "hh:mm:ss" from an hour
// on. A negative number is shown as 0, one beyond 1e15 as 1e15.
QString FormatPosition(double seconds);

// At least `leastDigits` digits and no decimals: 4 with two is "04". Rounded, half away from zero.
QString FormatDigits(double number, int leastDigits);

// At most seven significant digits, and no needless decimals: 120 is "120". With an exponent, as in
// "1.5E+07", from ten million on and below 0.0001.
QString FormatSingle(float number);

// The text without leading and trailing blanks; tabs and line breaks stay.
QString Trim(const QString& text);

// The number at the beginning of a text, with a point before its decimals. Blanks, tabs and line
// breaks in the text are ignored. 0 if the text begins with no number, or with one that is too
// large for a double.
double LeadingNumber(const QString& text);

// The number that a text stands for. White space around it and group separators in it are ignored,
// and so is a comma before three digits unless the comma is the decimal separator.
std::optional<float> SingleFromText(const QString& text);

// The seconds from midnight to a time of the form "h:m" or "h:m:s", whose parts have one or two
// digits: 0 to 86399. White space around it is ignored.
std::optional<int> SecondsFromTimeText(const QString& text);

// The nearest whole number, half to even, or std::nullopt if the type can't hold it. `number`
// needn't be finite.
std::optional<std::int16_t> ToInteger16(double number);
std::optional<std::int32_t> ToInteger32(double number);

}  // namespace kelvane
