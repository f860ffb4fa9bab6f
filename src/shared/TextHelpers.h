#pragma once

#include <QString>
#include <cstdint>
#include <optional>
#include <string>

// Numbers and times as text, and text as numbers and times. Separators are those of the default
// locale. What doesn't convert is no value, so that a caller reads "if it converts, then".
namespace kelvane {

// Text in the system's narrow encoding, which the media tools speak, and text as the windows have
// it. What can't be told in the other is replaced.
std::string ToNarrow(const QString& text);
QString FromNarrow(const std::string& bytes);

// So many digits at least, with the group separator before each three from the right: with four, 0
// is "0,000", 640 "0,640", 12345 "12,345", -7 "-0,007". A fraction is rounded, half away from zero.
QString FormatGrouped(double number, int leastDigits = 4);

// The same for a text that converts to a number; any other text as it stands.
QString FormatGroupedText(const QString& text);

// Two digits at least before the decimal separator, and two behind it: 4.5 is "04.50". Rounded,
// half away from zero.
QString FormatTwoDecimals(double number);

// A number of seconds as a time of day, "h:mm:ss": wraps after 24 hours, rounds fractions of a
// second to nearest, and shows a negative number as its absolute value.
QString FormatTimeOfDay(double seconds);

// The same with two digits of hours at least, "hh:mm:ss".
QString FormatTimeText(double seconds);

// A place in a recording as a player shows it: "mm:ss", and "hh:mm:ss" from an hour on, of the
// whole seconds that have passed. A negative number is shown as 0, one beyond 1e15 as 1e15.
QString FormatPosition(double seconds);

// So many digits at least and no decimals: 4 with two is "04". Rounded, half away from zero.
QString FormatDigits(double number, int leastDigits);

// A single's default text: seven significant digits without noughts at their end, so that 120 is
// "120". With a power of ten, as in "1.5E+07", from ten millions on and below 0.0001.
QString FormatSingle(float number);

// The text without the blanks, and nothing but blanks, round it.
QString Trim(const QString& text);

// The number that a text begins with; blanks, tabs and line feeds in it don't matter, and its
// decimal separator is the point. 0 if the text begins with none, or with one too large to hold.
double LeadingNumber(const QString& text);

// The number that a text stands for. Blanks, tabs and line breaks round it and group separators in
// it don't matter, and a comma before three digits groups wherever it isn't the decimal separator.
std::optional<float> SingleFromText(const QString& text);

// The seconds from midnight to a time text of the form "h:m" or "h:m:s", the parts of one or two
// digits: 0 to 86399. Blanks round it don't matter.
std::optional<int> SecondsFromTimeText(const QString& text);

// Whole numbers, rounded to nearest, half to even; no value where the type can't hold it.
std::optional<std::int16_t> ToInteger16(double number);
std::optional<std::int32_t> ToInteger32(double number);

}  // namespace kelvane
