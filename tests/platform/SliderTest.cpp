#include "platform/Slider.h"

#include <gtest/gtest.h>

#include <QSlider>

#include "platform/TestForm.h"

namespace kelvane::testing {
namespace {

class SliderTest : public ::testing::Test {
 protected:
  SliderTest() { slider.SetRange(-100, 100); }

  const TestForm form{{Design(kSlider, "Slider3", {0, 0, 200, 30})}};
  Slider& slider = form.Find<Slider>("Slider3");
};

TEST_F(SliderTest, TakesAValueInItsRangeAndRefusesAnyOther) {
  for (const int value : {-100, 100, 0, 30}) {
    slider.setValue(value);
    EXPECT_EQ(slider.Value(), value);
  }
  for (const int refused : {101, -101, 32767, -32768}) {
    slider.setValue(refused);
    EXPECT_EQ(slider.Value(), 30) << refused;
  }
}

TEST_F(SliderTest, CutsItsValueToARangeThatShrinksAndRefusesOneThatDescends) {
  slider.setValue(80);
  slider.SetRange(90, 10);
  EXPECT_EQ(slider.Value(), 80);
  slider.SetRange(0, 50);
  EXPECT_EQ(slider.Value(), 50);
  slider.SetRange(60, 70);
  EXPECT_EQ(slider.Value(), 60);
}

TEST_F(SliderTest, IsHorizontalAndMovedByTheUserWithinItsRange) {
  slider.setValue(99);
  auto* inside = slider.findChild<QSlider*>();
  EXPECT_EQ(inside->orientation(), Qt::Horizontal);
  for (int step = 0; step < 5; ++step) inside->triggerAction(QAbstractSlider::SliderSingleStepAdd);
  EXPECT_EQ(slider.Value(), 100);
}

}  // namespace
}  // namespace kelvane::testing
