#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "shared/TextHelpers.h"

namespace kelvane {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();

struct NumberAndWhole {
  double number;
  int whole;
};

TEST(WholeNumber, AHalfGoesToTheEvenNeighbour) {
  const std::vector<NumberAndWhole> cases = {
      {0.5, 0}, {1.5, 2}, {2.5, 2}, {3.5, 4}, {-0.5, 0}, {-1.5, -2}, {-2.5, -2}, {100.5, 100},
  };
  for (const auto& [number, whole] : cases) {
    EXPECT_EQ(ToInteger16(number), whole) << number;
    EXPECT_EQ(ToInteger32(number), whole) << number;
  }
}

TEST(WholeNumber, AnyOtherFractionGoesToTheNearest) {
  const std::vector<NumberAndWhole> cases = {
      {0, 0}, {0.49, 0}, {0.51, 1}, {2.4999, 2}, {2.5001, 3}, {-0.51, -1}, {-7, -7}, {635.2, 635},
  };
  for (const auto& [number, whole] : cases) {
    EXPECT_EQ(ToInteger16(number), whole) << number;
    EXPECT_EQ(ToInteger32(number), whole) << number;
  }
}

TEST(WholeNumber, SixteenBitsHoldTheirLimitsAndNoMore) {
  EXPECT_EQ(ToInteger16(32767), 32767);
  EXPECT_EQ(ToInteger16(32767.49), 32767);
  EXPECT_EQ(ToInteger16(32767.5), std::nullopt);
  EXPECT_EQ(ToInteger16(32768), std::nullopt);
  EXPECT_EQ(ToInteger16(-32768), -32768);
  EXPECT_EQ(ToInteger16(-32768.5), -32768);
  EXPECT_EQ(ToInteger16(-32768.51), std::nullopt);
  EXPECT_EQ(ToInteger16(-32769), std::nullopt);
}

TEST(WholeNumber, ThirtyTwoBitsHoldTheirLimitsAndNoMore) {
  EXPECT_EQ(ToInteger32(2147483647.0), 2147483647);
  EXPECT_EQ(ToInteger32(2147483647.49), 2147483647);
  EXPECT_EQ(ToInteger32(2147483647.5), std::nullopt);
  EXPECT_EQ(ToInteger32(-2147483648.0), std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(ToInteger32(-2147483648.5), std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(ToInteger32(-2147483649.0), std::nullopt);
}

TEST(WholeNumber, WhatIsNoFiniteNumberHasNoValue) {
  for (const double number : {kInfinity, -kInfinity, kNoNumber, 1e300}) {
    EXPECT_EQ(ToInteger16(number), std::nullopt) << number;
    EXPECT_EQ(ToInteger32(number), std::nullopt) << number;
  }
}

}  // namespace
}  // namespace kelvane
