#include "shared/TextHelpers.h"

#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <utility>
#include <vector>

namespace kelvane {
namespace {

TEST(NarrowText, ConvertsEveryLetterAndLineBreakBothWays) {
  for (const char* text : {"", "plain.mp4", "\u00D6land.mp4", "\u0444\u0438\u043B\u044C\u043C",
                           "\u6620\u753B \u20AC", "\U0001F3AC.mp4", "one\r\ntwo\n"}) {
    const QString wide = QString::fromUtf8(text);
    EXPECT_EQ(ToNarrow(wide), text);
    EXPECT_EQ(FromNarrow(text), wide) << text;
  }
}

TEST(NarrowText, ReplacesALetterCutInTwo) {
  const QString replaced(QChar::ReplacementCharacter);
  EXPECT_EQ(FromNarrow("before \xC3"), QStringLiteral("before ") + replaced);
  EXPECT_EQ(FromNarrow("\x84 behind"), replaced + QStringLiteral(" behind"));
}

TEST(Trim, RemovesTheBlanksAtTheEndsAlone) {
  const std::vector<std::pair<const char*, const char*>> cases = {
      {"  a b  ", "a b"}, {"a", "a"}, {"   ", ""}, {"", ""}, {" \ta\n ", "\ta\n"}, {"a \n", "a \n"},
  };
  for (const auto& [text, trimmed] : cases) EXPECT_EQ(Trim(text).toStdString(), trimmed) << text;
}

struct NumberAndWhole {
  double number;
  std::optional<int> whole;
};

TEST(WholeNumber, IsRoundedToNearestHalfToEven) {
  const std::vector<NumberAndWhole> cases = {
      {0.5, 0},    {1.5, 2}, {2.5, 2},     {3.5, 4},     {-0.5, 0},   {-1.5, -2},
      {-2.5, -2},  {0, 0},   {0.49, 0},    {0.51, 1},    {2.4999, 2}, {2.5001, 3},
      {-0.51, -1}, {-7, -7}, {635.2, 635}, {100.5, 100},
  };
  for (const auto& [number, whole] : cases) {
    EXPECT_EQ(ToInteger16(number), whole) << number;
    EXPECT_EQ(ToInteger32(number), whole) << number;
  }
}

TEST(WholeNumber, HasNoValueBeyondTheRangeOfItsType) {
  const std::vector<NumberAndWhole> of16 = {
      {32767, 32767},   {32767.49, 32767},  {32767.5, {}},   {32768, {}},
      {-32768, -32768}, {-32768.5, -32768}, {-32768.51, {}}, {-32769, {}},
  };
  for (const auto& [number, whole] : of16) EXPECT_EQ(ToInteger16(number), whole) << number;
  constexpr int kLeast = std::numeric_limits<int>::min();
  const std::vector<NumberAndWhole> of32 = {
      {2147483647.0, 2147483647}, {2147483647.49, 2147483647}, {2147483647.5, {}},
      {-2147483648.0, kLeast},    {-2147483648.5, kLeast},     {-2147483649.0, {}},
  };
  for (const auto& [number, whole] : of32) EXPECT_EQ(ToInteger32(number), whole) << number;
}

TEST(WholeNumber, HasNoValueIfTheNumberIsInfiniteHugeOrNaN) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  for (const double number :
       {kInfinity, -kInfinity, std::numeric_limits<double>::quiet_NaN(), 1e300}) {
    EXPECT_EQ(ToInteger16(number), std::nullopt) << number;
    EXPECT_EQ(ToInteger32(number), std::nullopt) << number;
  }
}

}  // namespace
}  // namespace kelvane
