#include "platform/WaylandOutputs.h"

#include <gtest/gtest.h>

namespace kelvane {
namespace {

TEST(ScaleOfOutput, IsTheNumberOfPixelsToAUnit) {
  EXPECT_EQ(ScaleOfOutput({1500, 900}, {1000, 600}, 2), 1.5);
  EXPECT_EQ(ScaleOfOutput({3840, 2160}, {3072, 1728}, 2), 1.25);
  EXPECT_EQ(ScaleOfOutput({1600, 2560}, {640, 1024}, 3), 2.5);
  EXPECT_EQ(ScaleOfOutput({3000, 1800}, {1500, 900}, 2), 2);
}

TEST(ScaleOfOutput, IsTheSameForUnitsThatWereRoundedToWholeOnes) {
  EXPECT_EQ(ScaleOfOutput({1366, 768}, {910, 512}, 2), 1.5);
  EXPECT_EQ(ScaleOfOutput({1366, 768}, {911, 512}, 2), 1.5);
}

TEST(ScaleOfOutput, IsTheGivenWholeScaleWhereTheSizesDisagreeWithIt) {
  EXPECT_EQ(ScaleOfOutput({}, {1000, 600}, 2), 2);
  EXPECT_EQ(ScaleOfOutput({1500, 900}, {}, 2), 2);
  EXPECT_EQ(ScaleOfOutput({1500, 900}, {1500, 900}, 2), 2);
  EXPECT_EQ(ScaleOfOutput({1500, 900}, {500, 300}, 2), 2);
}

TEST(WaylandOutputs, AreNoneWithoutACompositor) {
  const QByteArray display = qgetenv("WAYLAND_DISPLAY");
  qputenv("WAYLAND_DISPLAY", "/no/such/socket");
  EXPECT_TRUE(PixelsOfWaylandOutputs().isEmpty());
  display.isNull() ? qunsetenv("WAYLAND_DISPLAY") : qputenv("WAYLAND_DISPLAY", display);
}

}  // namespace
}  // namespace kelvane
