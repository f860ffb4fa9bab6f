// What the filters are given for the sliders' read-outs.
#include "stabiliser/Options.h"

#include <gtest/gtest.h>

namespace kelvane {
namespace {

using Values = std::array<int, 7>;

Values Used(const std::array<QString, 7>& readOuts) {
  return StabiliserOptions::FromReadOuts(readOuts).Values();
}

TEST(StabiliserOptions, AreTheValuesOfTheReadOutsWithTheSizesOfUnsharpMadeOdd) {
  EXPECT_EQ(Used({"04", "03", "05", "010", "025", "06", "06"}), (Values{4, 3, 5, 10, 25, 7, 7}));
  EXPECT_EQ(Used({"1", "01", "01", "001", "01", "03", "15"}), (Values{1, 1, 1, 1, 1, 3, 15}));
}

TEST(StabiliserOptions, AreBroughtIntoTheirRanges) {
  EXPECT_EQ(Used({"-3", "00", "-01", "000", "-25", "-06", "00"}), (Values{1, 1, 1, 1, 1, 3, 3}));
  EXPECT_EQ(Used({"32", "31", "32", "101", "300", "03", "32"}),
            (Values{30, 10, 15, 100, 100, 3, 15}));
  EXPECT_EQ(Used({"", "x", "", "", "", "", ""}), (Values{1, 1, 1, 1, 1, 3, 3}));
}

// The halves of the unsharp filter's two sizes, each rounded down, may sum to 12 at most.
TEST(StabiliserOptions, HaveTheLargerSizeReducedUntilTheFilterTakesBoth) {
  struct Case {
    const char* lx;
    const char* ly;
    int usedLx;
    int usedLy;
  };
  for (const auto& [lx, ly, usedLx, usedLy] :
       {Case{"15", "11", 15, 11}, Case{"15", "12", 13, 13}, Case{"13", "13", 13, 13},
        Case{"15", "15", 13, 13}, Case{"12", "15", 13, 13}, Case{"11", "15", 11, 15}}) {
    const Values used = Used({"04", "03", "05", "010", "025", lx, ly});
    EXPECT_EQ(used[5], usedLx) << lx << ' ' << ly;
    EXPECT_EQ(used[6], usedLy) << lx << ' ' << ly;
  }
}

}  // namespace
}  // namespace kelvane
