// Progress bars, scroll bars and sliders.
#include <gtest/gtest.h>

#include <QScrollBar>
#include <QSlider>
#include <QStyleOptionSlider>
#include <cstdint>
#include <utility>

#include "platform/Pointer.h"
#include "platform/ProgressBar.h"
#include "platform/ScrollBars.h"
#include "platform/Slider.h"
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

  // Returns the width of the filled part, which must begin at the left edge. The rest must have the
  // back colour.
  int FilledWidth() {
    const QImage picture = Picture(bar);
    const QRect filled = InkOf(picture, kBar);
    EXPECT_EQ(filled.left(), 0);
    EXPECT_EQ(CountOf(picture, kBack), (200 - filled.width()) * 10);
    return filled.width();
  }

  TestForm form{{Design(kProgressBar, "pbar", {0, 0, 200, 10})}};
  ProgressBar& bar = form.Find<ProgressBar>("pbar");
};

TEST_F(ProgressBarTest, KeepsItsValueAndRangeInSinglePrecision) {
  EXPECT_EQ(State(), "0 of 0 to 100");
  bar.setMax(10.5F);
  bar.setMin(0.25F);
  bar.setValue(3.125F);
  EXPECT_EQ(State(), "3.125 of 0.25 to 10.5");
}

TEST_F(ProgressBarTest, RefusesAValueOutsideItsRange) {
  bar.setMin(10);
  for (const float value : {10.0F, 100.0F, 50.0F}) {
    bar.setValue(value);
    EXPECT_EQ(bar.Value(), value);
  }
  for (const float refused : {9.99F, 100.01F, -1.0F, 1e30F, kNotANumber, kInfinite, -kInfinite}) {
    bar.setValue(refused);
    EXPECT_EQ(State(), "50 of 10 to 100") << refused;
  }
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

TEST_F(ProgressBarTest, LimitsItsValueToARangeThatShrinks) {
  bar.setValue(80);
  bar.setMax(60);
  EXPECT_EQ(State(), "60 of 0 to 60");
  bar.setMax(100);
  EXPECT_EQ(State(), "60 of 0 to 100");
  bar.setMin(70);
  EXPECT_EQ(State(), "70 of 70 to 100");
}

TEST_F(ProgressBarTest, IsFilledInProportionToItsValueInItsRange) {
  struct Case {
    float min;
    float max;
    float value;
    int width;
  };
  for (const Case& given : {Case{0, 100, 0, 0},
                            {0, 100, 100, 200},
                            {0, 100, 25, 50},
                            {0, 10, 9, 180},
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
    EXPECT_NEAR(FilledWidth(), given.width, kNear) << State();
  }
}

using Values = std::initializer_list<std::int16_t>;

struct ScrollBarParts : QScrollBar {
  // Returns the middle of the place where the style draws that part of the bar.
  static QPoint MiddleOf(const QScrollBar& bar, QStyle::SubControl part) {
    QStyleOptionSlider option;
    (bar.*&ScrollBarParts::initStyleOption)(&option);
    return bar.style()->subControlRect(QStyle::CC_ScrollBar, &option, part, &bar).center();
  }
};

class ScrollBarTest : public ::testing::Test {
 protected:
  ScrollBarTest() {
    form.Open();
    bar.setMax(128);
    bar.Change = [this] { events.push_back("Change " + std::to_string(bar.Value())); };
    bar.Scroll = [this] { events.push_back("Scroll " + std::to_string(bar.Value())); };
  }

  void PressOn(QStyle::SubControl part) {
    place = ScrollBarParts::MiddleOf(inside, part);
    pointer.MoveTo(inside, place);
    pointer.Press();
  }
  void ClickOn(QStyle::SubControl part) {
    PressOn(part);
    pointer.Release();
  }
  void DragBy(int pixels) {
    place.rx() += pixels;
    pointer.MoveTo(inside, place);
  }
  Events TakeEvents() { return std::exchange(events, {}); }

  TestForm form{
      {Design(kHScrollBar, "HScroll1", {0, 0, 300, 20}), Design(kVScrollBar, "VScroll1")}};
  ScrollBar& bar = form.Find<ScrollBar>("HScroll1");
  QScrollBar& inside = *bar.findChild<QScrollBar*>();
  Pointer pointer{form};
  QPoint place;
  Events events;
};

TEST_F(ScrollBarTest, HasTheOrientationOfItsClass) {
  EXPECT_EQ(inside.orientation(), Qt::Horizontal);
  EXPECT_EQ(form.Find<ScrollBar>("VScroll1").findChild<QScrollBar*>()->orientation(), Qt::Vertical);
}

TEST_F(ScrollBarTest, RaisesChangeOnceForEachNewValueAndRefusesOneOutsideItsRange) {
  for (const std::int16_t value : Values{5, 5, 128, 0, 129, -1, 32767, -32768}) {
    bar.setValue(value);
  }
  EXPECT_EQ(bar.Value(), 0);
  EXPECT_EQ(events, (Events{"Change 5", "Change 128", "Change 0"}));
}

TEST_F(ScrollBarTest, RefusesARangeThatDescends) {
  bar.setMin(10);
  EXPECT_EQ(TakeEvents(), Events{"Change 10"});
  bar.setMin(129);
  for (const std::int16_t refused : Values{9, -1, -32768}) {
    bar.setMax(refused);
    EXPECT_EQ(bar.Max(), 128);
  }
  bar.setMin(0);
  bar.setValue(0);
  EXPECT_EQ(events, Events{"Change 0"});
}

TEST_F(ScrollBarTest, LimitsItsValueToASmallerMaxAndRaisesChangeOnce) {
  bar.setValue(100);
  events.clear();
  bar.setMax(100);
  EXPECT_EQ(events, Events{});
  bar.setMax(43);
  EXPECT_EQ(events, Events{"Change 43"});
  bar.setMax(128);
  EXPECT_EQ(bar.Value(), 43);
  bar.setMax(0);
  bar.setValue(1);
  EXPECT_EQ(events, (Events{"Change 43", "Change 0"}));
}

TEST_F(ScrollBarTest, ChangesByOneAtAnArrowAndByTenBesideTheThumbUnlessOtherStepsAreSet) {
  ClickOn(QStyle::SC_ScrollBarAddLine);
  ClickOn(QStyle::SC_ScrollBarAddPage);
  EXPECT_EQ(TakeEvents(), (Events{"Change 1", "Change 11"}));
  bar.setSmallChange(2);
  bar.setLargeChange(12);
  ClickOn(QStyle::SC_ScrollBarAddLine);
  ClickOn(QStyle::SC_ScrollBarAddPage);
  ClickOn(QStyle::SC_ScrollBarSubPage);
  ClickOn(QStyle::SC_ScrollBarSubLine);
  EXPECT_EQ(events, (Events{"Change 13", "Change 25", "Change 13", "Change 11"}));
}

TEST_F(ScrollBarTest, TakesTheTabKeysFocusOnlyIfItIsATabStop) {
  bar.setTabStop(true);
  EXPECT_NE(inside.focusPolicy() & Qt::TabFocus, 0);
  bar.setTabStop(false);
  EXPECT_EQ(inside.focusPolicy() & Qt::TabFocus, 0);
}

TEST_F(ScrollBarTest, RaisesScrollForEachStepOfTheThumbAndChangeWhenItIsReleased) {
  PressOn(QStyle::SC_ScrollBarSlider);
  EXPECT_EQ(events, Events{});
  Events expected;
  for (int step = 0; step < 5; ++step) {
    DragBy(20);
    expected.push_back("Scroll " + std::to_string(bar.Value()));
    EXPECT_EQ(events, expected);
  }
  ASSERT_GT(bar.Value(), 0);
  pointer.Release();
  expected.push_back("Change " + std::to_string(bar.Value()));
  EXPECT_EQ(events, expected);
}

TEST_F(ScrollBarTest, RaisesNothingForADragOfLessThanAStep) {
  bar.setMax(3);
  PressOn(QStyle::SC_ScrollBarSlider);
  DragBy(1);
  pointer.Release();
  EXPECT_EQ(events, Events{});
}

TEST_F(ScrollBarTest, RaisesNoChangeForADragThatEndsWhereItBegan) {
  PressOn(QStyle::SC_ScrollBarSlider);
  DragBy(30);
  DragBy(-30);
  pointer.Release();
  ASSERT_EQ(events.size(), 2U);
  EXPECT_EQ(events.front().substr(0, 6), "Scroll");
  EXPECT_EQ(events.back(), "Scroll 0");
}

TEST_F(ScrollBarTest, RaisesChangeForAnAssignmentWhileTheThumbIsHeld) {
  PressOn(QStyle::SC_ScrollBarSlider);
  DragBy(60);
  ASSERT_GT(bar.Value(), 3);
  events.clear();
  bar.setMax(3);
  bar.setValue(2);
  EXPECT_EQ(events, (Events{"Change 3", "Change 2"}));
  pointer.Release();
  EXPECT_EQ(events.size(), 2U);
}

TEST(Slider, IsHorizontalAndStaysInItsRangeHoweverItIsMoved) {
  const TestForm form({Design(kSlider, "Slider3", {0, 0, 200, 30})});
  auto& slider = form.Find<Slider>("Slider3");
  slider.SetRange(-100, 100);
  for (const int value : {-100, 99, 101, -101}) slider.setValue(value);
  EXPECT_EQ(slider.Value(), 99);
  auto* inside = slider.findChild<QSlider*>();
  EXPECT_EQ(inside->orientation(), Qt::Horizontal);
  for (int step = 0; step < 5; ++step) inside->triggerAction(QAbstractSlider::SliderSingleStepAdd);
  EXPECT_EQ(slider.Value(), 100);
  slider.SetRange(110, 120);
  EXPECT_EQ(slider.Value(), 110);
}

}  // namespace
}  // namespace kelvane::testing
