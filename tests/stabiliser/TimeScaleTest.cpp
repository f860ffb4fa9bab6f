// How the time line of a chosen video shows its times.
#include "stabiliser/TimeScale.h"

#include <gtest/gtest.h>

namespace kelvane {
namespace {

constexpr int kFrame = 879;  // pixels

TEST(TimeScaleOfAVideo, HasTheWholeNumberOfPixelsASecondThatFillsTheFrameBest) {
  struct Case {
    double duration;
    int pixelsPerSecond;
    double length;
    int width;
  };
  for (const auto& [duration, pixelsPerSecond, length, width] :
       {Case{36'000.9, 1, 36'000, 36'000}, Case{880, 1, 880, 880}, Case{879, 1, 879, 879},
        Case{440, 1, 440, 440}, Case{439.4, 2, 439, 878}, Case{90.7, 9, 90, 810},
        Case{87.95, 9, 87, 783}, Case{87.9, 10, 87.9, 879}, Case{12.34, 71, 12.3, 873},
        Case{1, 879, 1, 879}, Case{0.4, 879, 1, 879}}) {
    const TimeScale scale(duration, kFrame);
    EXPECT_EQ(scale.PixelsPerSecond(), pixelsPerSecond) << duration;
    EXPECT_EQ(scale.Length(), length) << duration;
    EXPECT_EQ(scale.Width(), width) << duration;
  }
}

TEST(TimeScaleOfAVideo, SnapsToSecondsAndFromTenPixelsASecondOnToTenths) {
  const TimeScale seconds(90, kFrame);
  EXPECT_FALSE(seconds.HasTenths());
  EXPECT_EQ(seconds.TimeAt(9 * 7 + 4), 7);
  EXPECT_EQ(seconds.TimeAt(9 * 7 + 5), 8);
  const TimeScale tenths(12.34, kFrame);
  EXPECT_TRUE(tenths.HasTenths());
  EXPECT_EQ(tenths.TimeAt(71 * 3), 3);
  EXPECT_EQ(tenths.TimeAt(71 * 3 + 3), 3);
  EXPECT_EQ(tenths.TimeAt(71 * 3 + 4), 3.1);
}

TEST(TimeScaleOfAVideo, HasNoTimeBeyondItsEnds) {
  const TimeScale scale(12.34, kFrame);
  EXPECT_EQ(scale.TimeAt(-5), 0);
  EXPECT_EQ(scale.TimeAt(2000), 12.3);
}

TEST(TimeScaleOfAVideo, ShowsHoursThatDoNotWrapAndTenthsOnlyIfItSnapsToTenths) {
  const TimeScale seconds(200'000, kFrame);
  EXPECT_EQ(seconds.Text(0), "00:00:00");
  EXPECT_EQ(seconds.Text(3723), "01:02:03");
  EXPECT_EQ(seconds.Text(90'000), "25:00:00");
  const TimeScale tenths(80, kFrame);
  EXPECT_EQ(tenths.Text(0), "00:00:00.0");
  EXPECT_EQ(tenths.Text(59.9), "00:00:59.9");
  EXPECT_EQ(tenths.Text(0.3), "00:00:00.3");
}

// A label begins at its tick and must not reach the next labelled one.
TEST(TimeScaleOfAVideo, HasTicksAtRoundTimesWithRoomForTheirLabels) {
  struct Case {
    double duration;
    double spacing;
  };
  constexpr int kLabel = 64;
  for (const auto& [duration, spacing] :
       {Case{1, 0.1}, Case{3, 0.5}, Case{12.34, 1}, Case{60, 5}, Case{90, 10}, Case{400, 60},
        Case{879, 120}, Case{100'000, 120}}) {
    const TimeScale scale(duration, kFrame);
    const TimeScale::Ticks ticks = scale.TicksFor(kLabel);
    EXPECT_EQ(ticks.spacing, spacing) << duration;
    EXPECT_GE(scale.PositionOf(ticks.spacing), kLabel) << duration;
    EXPECT_GE(scale.PositionOf(ticks.spacing / ticks.parts), 5) << duration;
  }
}

TEST(TimeScaleWithoutAVideo, HasAPixelToTheSecond) {
  const TimeScale scale(1825);
  EXPECT_EQ(scale.PixelsPerSecond(), 1);
  EXPECT_EQ(scale.Width(), 1825);
  EXPECT_EQ(scale.TimeAt(136), 136);
}

}  // namespace
}  // namespace kelvane
