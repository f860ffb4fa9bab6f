// Scroll bars: refusals, and which of the two events a change raises.
#include <gtest/gtest.h>

#include <QMenu>
#include <QScrollBar>
#include <QStyleOptionSlider>
#include <cstdint>
#include <utility>
#include <vector>

#include "platform/Pointer.h"
#include "platform/ScrollBars.h"
#include "platform/TestForm.h"

namespace kelvane::testing {
namespace {

using Values = std::vector<std::int16_t>;

// Where Qt draws the bar's parts, and with that, takes the mouse.
struct Parts : QScrollBar {
  static QPoint MiddleOf(const QScrollBar& bar, QStyle::SubControl part) {
    QStyleOptionSlider option;
    (bar.*&Parts::initStyleOption)(&option);
    return bar.style()->subControlRect(QStyle::CC_ScrollBar, &option, part, &bar).center();
  }
};

// A bar of 300 pixels.
class ScrollBarTest : public ::testing::Test {
 protected:
  ScrollBarTest() {
    form.Open();
    bar.setMax(128);
    bar.Change = [this] { events.push_back("Change " + std::to_string(bar.Value())); };
    bar.Scroll = [this] { events.push_back("Scroll " + std::to_string(bar.Value())); };
  }

  void PressOn(QStyle::SubControl part) {
    place = Parts::MiddleOf(inside, part);
    pointer.MoveTo(inside, place);
    pointer.Press();
  }
  void ClickOn(QStyle::SubControl part) {
    PressOn(part);
    pointer.Release();
  }
  // Presses the thumb and moves it.
  void Drag(int pixels) {
    PressOn(QStyle::SC_ScrollBarSlider);
    DragOn(pixels);
  }
  void DragOn(int pixels) {
    place.rx() += pixels;
    pointer.MoveTo(inside, place);
  }
  Events Raised() { return std::exchange(events, {}); }

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

TEST_F(ScrollBarTest, RunsFromZeroToTheGreatestSixteenBitNumberAtFirst) {
  auto& fresh = form.Find<ScrollBar>("VScroll1");
  EXPECT_EQ(fresh.Value(), 0);
  EXPECT_EQ(fresh.Max(), 32767);
  fresh.setMax(128);
  fresh.setMax(32767);
  fresh.setValue(32767);
  EXPECT_EQ(fresh.Value(), 32767);
}

TEST_F(ScrollBarTest, RaisesChangeOnceForEachNewValue) {
  for (const std::int16_t value : Values{5, 5, 128, 0}) bar.setValue(value);
  EXPECT_EQ(events, (Events{"Change 5", "Change 128", "Change 0"}));
}

TEST_F(ScrollBarTest, RefusesAValueOutsideItsRange) {
  bar.setValue(7);
  for (const std::int16_t refused : Values{129, -1, 32767, -32768}) {
    bar.setValue(refused);
    EXPECT_EQ(bar.Value(), 7) << refused;
  }
  EXPECT_EQ(events, Events{"Change 7"});
}

TEST_F(ScrollBarTest, RefusesARangeThatDescends) {
  bar.setMin(10);
  EXPECT_EQ(Raised(), Events{"Change 10"});
  bar.setMin(129);
  for (const std::int16_t refused : Values{9, -1, -32768}) {
    bar.setMax(refused);
    EXPECT_EQ(bar.Max(), 128);
  }
  EXPECT_EQ(bar.Value(), 10);
  EXPECT_EQ(events, Events{});
  bar.setMin(0);
  bar.setValue(0);
  EXPECT_EQ(events, Events{"Change 0"});
}

TEST_F(ScrollBarTest, CutsTheValueToASmallerMaxAndRaisesChangeOnce) {
  bar.setValue(100);
  events.clear();
  bar.setMax(100);
  EXPECT_EQ(events, Events{});
  bar.setMax(43);
  EXPECT_EQ(bar.Value(), 43);
  EXPECT_EQ(events, Events{"Change 43"});
  bar.setMax(128);
  EXPECT_EQ(bar.Value(), 43);
  bar.setMax(0);
  bar.setValue(1);
  EXPECT_EQ(events, (Events{"Change 43", "Change 0"}));
}

TEST_F(ScrollBarTest, ChangesByOneOnItsArrowsAndByTenBesideTheThumbUnlessToldOtherwise) {
  ClickOn(QStyle::SC_ScrollBarAddLine);
  ClickOn(QStyle::SC_ScrollBarAddPage);
  EXPECT_EQ(Raised(), (Events{"Change 1", "Change 11"}));
  bar.setSmallChange(2);
  bar.setLargeChange(12);
  ClickOn(QStyle::SC_ScrollBarAddLine);
  ClickOn(QStyle::SC_ScrollBarAddPage);
  ClickOn(QStyle::SC_ScrollBarSubPage);
  ClickOn(QStyle::SC_ScrollBarSubLine);
  EXPECT_EQ(events, (Events{"Change 13", "Change 25", "Change 13", "Change 11"}));
}

TEST_F(ScrollBarTest, IsReachedByTheTabKeyOnlyIfItIsATabStop) {
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
    DragOn(20);
    expected.push_back("Scroll " + std::to_string(bar.Value()));
    EXPECT_EQ(events, expected);
  }
  ASSERT_GT(bar.Value(), 0);
  pointer.Release();
  expected.push_back("Change " + std::to_string(bar.Value()));
  EXPECT_EQ(events, expected);
  bar.setValue(1);
  EXPECT_EQ(events.back(), "Change 1");
}

TEST_F(ScrollBarTest, RaisesNothingForADragOfLessThanAStep) {
  bar.setMax(3);
  Drag(1);
  pointer.Release();
  EXPECT_EQ(events, Events{});
}

TEST_F(ScrollBarTest, RaisesNoChangeForADragThatEndsWhereItBegan) {
  Drag(30);
  DragOn(-30);
  pointer.Release();
  ASSERT_EQ(events.size(), 2U);
  EXPECT_EQ(events.front().substr(0, 6), "Scroll");
  EXPECT_EQ(events.back(), "Scroll 0");
}

TEST_F(ScrollBarTest, RaisesChangeForAnAssignmentWhileTheThumbIsHeld) {
  Drag(60);
  ASSERT_GT(bar.Value(), 3);
  events.clear();
  bar.setMax(3);
  bar.setValue(2);
  EXPECT_EQ(events, (Events{"Change 3", "Change 2"}));
  pointer.Release();
  EXPECT_EQ(events.size(), 2U);
}

// Its event loop would hold up a tool that runs.
TEST_F(ScrollBarTest, HasNoContextMenu) {
  pointer.MoveTo(inside, {10, 10});
  pointer.Click(Qt::RightButton);
  EXPECT_EQ(inside.findChild<QMenu*>(), nullptr);
  EXPECT_EQ(events, Events{});
}

}  // namespace
}  // namespace kelvane::testing
