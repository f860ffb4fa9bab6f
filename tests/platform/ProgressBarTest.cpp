#include "platform/ProgressBar.h"

#include <gtest/gtest.h>

#include "platform/TestForm.h"

namespace kelvane::testing {
namespace {

constexpr QRgb kBar = 0x808080;
constexpr QRgb kBack = 0x3D464C;

class ProgressBarTest : public ::testing::Test {
 protected:
  ProgressBarTest() {
    form.Open();
    bar.SetColours(kBar, kBack);
  }

  std::string State() const {
    return u"%1 of %2 to %3"_s.arg(static_cast<double>(bar.Value()))
        .arg(static_cast<double>(bar.Min()))
        .arg(static_cast<double>(bar.Max()))
        .toStdString();
  }

  // How many of its 200 columns are of the bar's colour, from the left without a gap; the others
  // are of the back colour.
  int Filled() {
    const QImage picture = Picture(bar);
    const QRect filled = InkOf(picture, kBar);
    EXPECT_TRUE(filled.isEmpty() || filled.topLeft() == QPoint(0, 0));
    EXPECT_TRUE(filled.isEmpty() || filled.height() == picture.height());
    EXPECT_EQ(CountOf(picture, kBack), (picture.width() - filled.width()) * picture.height());
    return filled.width();
  }

  TestForm form{{Design(kProgressBar, "pbar", {0, 0, 200, 10})}};
  ProgressBar& bar = form.Find<ProgressBar>("pbar");
};

TEST_F(ProgressBarTest, RunsFromZeroToAHundredAtFirst) { EXPECT_EQ(State(), "0 of 0 to 100"); }

TEST_F(ProgressBarTest, KeepsItsValueAndRangeInSinglePrecision) {
  bar.setMax(10.5F);
  bar.setMin(0.25F);
  bar.setValue(3.125F);
  EXPECT_EQ(State(), "3.125 of 0.25 to 10.5");
}

TEST_F(ProgressBarTest, RefusesAValueOutsideItsRange) {
  bar.setMin(10);
  bar.setValue(50);
  for (const float refused : {9.99F, 100.01F, -1.0F, 1e30F, kNotANumber, kInfinite, -kInfinite}) {
    bar.setValue(refused);
    EXPECT_EQ(State(), "50 of 10 to 100") << refused;
  }
  bar.setValue(10);
  EXPECT_EQ(State(), "10 of 10 to 100");
  bar.setValue(100);
  EXPECT_EQ(State(), "100 of 10 to 100");
}

TEST_F(ProgressBarTest, RefusesARangeThatDoesNotAscend) {
  bar.setMin(10);
  bar.setValue(50);
  for (const float refused : {10.0F, 9.0F, 0.0F, -5.0F, kNotANumber, kInfinite, -kInfinite}) {
    bar.setMax(refused);
    EXPECT_EQ(State(), "50 of 10 to 100") << "Max = " << refused;
  }
  for (const float refused : {100.0F, 101.0F, kNotANumber, kInfinite, -kInfinite}) {
    bar.setMin(refused);
    EXPECT_EQ(State(), "50 of 10 to 100") << "Min = " << refused;
  }
}

TEST_F(ProgressBarTest, CutsItsValueToARangeThatShrinks) {
  bar.setValue(80);
  bar.setMax(60);
  EXPECT_EQ(State(), "60 of 0 to 60");
  bar.setMax(100);
  EXPECT_EQ(State(), "60 of 0 to 100");
  bar.setMin(70);
  EXPECT_EQ(State(), "70 of 70 to 100");
}

TEST_F(ProgressBarTest, IsFilledAsFarAsItsValueIsInItsRange) {
  EXPECT_EQ(Filled(), 0);
  bar.setValue(100);
  EXPECT_EQ(Filled(), 200);
  struct Case {
    float min;
    float max;
    float value;
    int filled;  // columns
  };
  for (const Case& given : {Case{0, 100, 50, 100},
                            {0, 100, 25, 50},
                            {0, 10, 9, 180},
                            {0, 3600, 1800, 100},
                            {-100, 100, 0, 100},
                            {0, 0.25F, 0.125F, 100},
                            {0, 1e12F, 5e11F, 100},
                            {-kGreatest, kGreatest, 0, 100}}) {
    bar.setMin(-kGreatest);
    bar.setMax(kGreatest);
    bar.setMin(given.min);
    bar.setMax(given.max);
    bar.setValue(given.value);
    ASSERT_EQ(bar.Value(), given.value);
    constexpr int kNear = 2;
    EXPECT_NEAR(Filled(), given.filled, kNear) << State();
  }
}

TEST_F(ProgressBarTest, TakesOtherColours) {
  bar.SetColours(0x123456, 0x654321);
  EXPECT_EQ(CountOf(Picture(bar), 0x654321), 200 * 10);
  bar.setValue(100);
  EXPECT_EQ(CountOf(Picture(bar), 0x123456), 200 * 10);
}

}  // namespace
}  // namespace kelvane::testing
