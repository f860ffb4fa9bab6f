#pragma once

#include <QByteArray>
#include <QString>
#include <concepts>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "shared/TextHelpers.h"

// The targets of the fuzzers. Each passes arbitrary bytes to the program's code and compares the
// outcome with a plain model, or with what must always hold. The application object must exist.
namespace kelvane::fuzz {

// Thrown if the program and the model differ.
class Disagreement : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

struct Target {
  const char* name;
  void (*run)(std::string_view input);  // throws Disagreement
};

extern const Target kMainWindow;
extern const Target kJoiner;
extern const Target kNumbersAndTimes;
extern const Target kShortPaths;

// A value in a message. In a text, all bytes but printable ASCII are percent-encoded, and so are a
// few printable ones, such as the percent sign and the double quote.
inline std::string Readable(std::string_view bytes) {
  const QByteArray copy(bytes.data(), static_cast<qsizetype>(bytes.size()));
  return '"' + copy.toPercentEncoding(" !#$&'()*+,/:;<=>?@[]").toStdString() + '"';
}
inline std::string Readable(const QString& text) { return Readable(text.toStdString()); }
std::string Readable(std::floating_point auto number) {
  return QString::number(double{number}, 'g', 17).toStdString();
}
std::string Readable(std::integral auto number) { return std::to_string(number); }
template <class Value>
std::string Readable(const std::optional<Value>& value) {
  return value ? Readable(*value) : "none";
}

// These throw a Disagreement about `what` unless the condition holds, or the values are equal.
inline void Agree(bool holds, const std::string& what) {
  if (!holds) throw Disagreement(what);
}
template <class Actual, class Expected>
void AgreeOn(const std::string& what, const Actual& actual, const Expected& expected) {
  if (actual == expected) return;
  throw Disagreement(what + ": got " + Readable(actual) + ", expected " + Readable(expected));
}

// The model of a duration: the nine bytes after the first "duration:" in letters of any case, or as
// many as there are, trimmed.
inline std::optional<QString> DurationIn(std::string_view text) {
  const auto bytes = QString::fromLatin1(text);
  const qsizetype word = bytes.indexOf(QLatin1String("duration:"), 0, Qt::CaseInsensitive);
  if (word < 0) return std::nullopt;
  return QString::fromUtf8(Trim(bytes.mid(word + 9, 9)).toLatin1());
}

}  // namespace kelvane::fuzz
