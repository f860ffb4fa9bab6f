#pragma once

#include <QString>
#include <concepts>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

// What is fuzzed. Each target takes any bytes, does with them what the program would, and compares
// what comes of it with a plain model of its own or with what must hold in any case. An application
// object must stand.
namespace kelvane::fuzz {

// Thrown where the program and the model differ.
class Disagreement : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

struct Target {
  const char* name;
  void (*run)(std::string_view input);  // throws Disagreement
};

extern const Target kMainWindow;
extern const Target kJobWindow;
extern const Target kJoiner;
extern const Target kCommandLine;
extern const Target kNumbersAndTimes;
extern const Target kShortPaths;

// With every byte that isn't a printable character of ASCII as its number, "a\x0A".
std::string Readable(std::string_view bytes);
std::string Readable(const QString& text);
std::string Readable(std::floating_point auto number) {
  return Readable(QString::number(double{number}, 'g', 17));
}
std::string Readable(std::integral auto number) { return std::to_string(number); }
template <class Value>
std::string Readable(const std::optional<Value>& value) {
  return value ? Readable(*value) : "none";
}

// `what` names the value in the failure.
void Agree(bool holds, const std::string& what);

template <class Actual, class Expected>
void AgreeOn(const std::string& what, const Actual& actual, const Expected& expected) {
  if (actual == expected) return;
  throw Disagreement(what + ": got " + Readable(actual) + ", expected " + Readable(expected));
}

}  // namespace kelvane::fuzz
