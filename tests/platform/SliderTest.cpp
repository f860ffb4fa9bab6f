#include "platform/Slider.h"

#include <gtest/gtest.h>

#include <QSlider>

#include "platform/TestForm.h"

namespace kelvane::testing {
namespace {

class ASlider : public ::testing::Test {
 protected:
  ASlider() { slider.SetRange(-100, 100); }

  TestForm form{{Design(kSlider, "Slider3", {0, 0, 200, 30})}};
  Slider& slider = form.Find<Slider>("Slider3");
};

TEST_F(ASlider, KeepsAValueInItsRange) {
  for (const int value : {30, -100, 100, 0}) {
    slider.setValue(value);
    EXPECT_EQ(slider.Value(), value);
  }
}

TEST_F(ASlider, RefusesAValueOutsideItsRange) {
  slider.setValue(30);
  for (const int refused : {101, -101, 32767, -32768}) {
    slider.setValue(refused);
    EXPECT_EQ(slider.Value(), 30) << refused;
  }
}

TEST_F(ASlider, OfARangeThatShrinksTakesTheValueAlong) {
  slider.setValue(80);
  slider.SetRange(0, 50);
  EXPECT_EQ(slider.Value(), 50);
  slider.SetRange(60, 70);
  EXPECT_EQ(slider.Value(), 60);
}

TEST_F(ASlider, RefusesARangeThatRunsDownwards) {
  slider.setValue(80);
  slider.SetRange(90, 10);
  EXPECT_EQ(slider.Value(), 80);
  slider.setValue(-100);
  EXPECT_EQ(slider.Value(), -100);
}

TEST_F(ASlider, IsMovedByTheUserWithinItsRange) {
  form.Open();
  slider.setValue(99);
  auto* inside = slider.findChild<QSlider*>();
  EXPECT_EQ(inside->orientation(), Qt::Horizontal);
  for (int step = 0; step < 5; ++step) inside->triggerAction(QAbstractSlider::SliderSingleStepAdd);
  EXPECT_EQ(slider.Value(), 100);
}

}  // namespace
}  // namespace kelvane::testing
