// Scroll bars: refusals, and which of the two events tells of a change.
#include <gtest/gtest.h>

#include <QMenu>
#include <QScrollBar>
#include <QStyleOptionSlider>

#include "platform/Pointer.h"
#include "platform/ScrollBars.h"
#include "platform/TestForm.h"

namespace kelvane::testing {
namespace {

// Where Qt draws the bar's parts, and with that, takes the mouse.
struct Parts : QScrollBar {
  static QPoint MiddleOf(const QScrollBar& bar, QStyle::SubControl part) {
    QStyleOptionSlider option;
    (bar.*&Parts::initStyleOption)(&option);
    return bar.style()->subControlRect(QStyle::CC_ScrollBar, &option, part, &bar).center();
  }
};

// Both bars, each 20 by 300 pixels or the other way round.
class AScrollBar : public ::testing::TestWithParam<const char*> {
 protected:
  AScrollBar() {
    form.setHeight(6000);
    form.setWidth(6000);
    form.Open();
    bar.Change = [this] { events.push_back("Change " + std::to_string(bar.Value())); };
    bar.Scroll = [this] { events.push_back("Scroll " + std::to_string(bar.Value())); };
  }

  bool Level() const { return inside.orientation() == Qt::Horizontal; }
  QPoint Along(int pixels) const { return Level() ? QPoint(pixels, 0) : QPoint(0, pixels); }

  void PressOn(QStyle::SubControl part) {
    place = Parts::MiddleOf(inside, part);
    pointer.MoveTo(inside, place);
    pointer.Press();
  }
  void DragBy(int pixels) {
    place += Along(pixels);
    pointer.MoveTo(inside, place);
  }

  TestForm form{{Design(kHScrollBar, "HScroll1", {0, 0, 300, 20}),
                 Design(kVScrollBar, "VScroll1", {320, 20, 20, 300})}};
  ScrollBar& bar = form.Find<ScrollBar>(QLatin1String(GetParam()));
  QScrollBar& inside = *bar.findChild<QScrollBar*>();
  Pointer pointer{form};
  QPoint place;
  Events events;
};

INSTANTIATE_TEST_SUITE_P(Platform, AScrollBar, ::testing::Values("HScroll1", "VScroll1"),
                         [](const auto& test) { return test.param; });

TEST_P(AScrollBar, LiesAsItsNameSays) { EXPECT_EQ(Level(), GetParam()[0] == 'H'); }

TEST_P(AScrollBar, GoesAsFarAsSixteenBitsGoByDesign) {
  EXPECT_EQ(bar.Value(), 0);
  EXPECT_EQ(bar.Max(), 32767);
  bar.setValue(32767);
  EXPECT_EQ(bar.Value(), 32767);
  EXPECT_EQ(events, Events{"Change 32767"});
}

TEST_P(AScrollBar, CannotBeMovedWithAMaxOfNought) {
  bar.setMax(0);
  EXPECT_EQ(bar.Max(), 0);
  bar.setValue(1);
  EXPECT_EQ(bar.Value(), 0);
  EXPECT_EQ(events, Events{});
}

TEST_P(AScrollBar, RaisesChangeOnceForEachAssignmentThatChangesTheValue) {
  bar.setMax(128);
  bar.setValue(5);
  EXPECT_EQ(events, Events{"Change 5"});
  bar.setValue(5);
  EXPECT_EQ(events, Events{"Change 5"});
  bar.setValue(128);
  bar.setValue(0);
  EXPECT_EQ(events, (Events{"Change 5", "Change 128", "Change 0"}));
}

TEST_P(AScrollBar, RefusesAValueOutsideItsRange) {
  bar.setMax(128);
  bar.setValue(7);
  events.clear();
  for (const std::int16_t refused :
       {std::int16_t{129}, std::int16_t{-1}, std::int16_t{32767}, std::int16_t{-32768}}) {
    bar.setValue(refused);
    EXPECT_EQ(bar.Value(), 7) << refused;
  }
  EXPECT_EQ(events, Events{});
}

TEST_P(AScrollBar, RefusesANegativeMax) {
  bar.setMax(128);
  bar.setValue(7);
  events.clear();
  bar.setMax(-1);
  bar.setMax(-32768);
  EXPECT_EQ(bar.Max(), 128);
  EXPECT_EQ(bar.Value(), 7);
  EXPECT_EQ(events, Events{});
}

TEST_P(AScrollBar, GoesAsFarAsSixteenBitsGoAfterASmallerMax) {
  bar.setMax(128);
  bar.setMax(32767);
  bar.setValue(32767);
  EXPECT_EQ(bar.Max(), 32767);
  EXPECT_EQ(bar.Value(), 32767);
}

TEST_P(AScrollBar, WithASmallerMaxCutsTheValueAndRaisesChangeOnce) {
  bar.setMax(128);
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
  EXPECT_EQ(events, (Events{"Change 43", "Change 0"}));
}

TEST_P(AScrollBar, ChangesByOneOnItsArrowsAndByItsLargeChangeBesideTheThumb) {
  bar.setMax(128);
  bar.setLargeChange(12);
  const auto click = [this](QStyle::SubControl part) {
    PressOn(part);
    pointer.Release();
  };
  click(QStyle::SC_ScrollBarAddLine);
  click(QStyle::SC_ScrollBarAddPage);
  click(QStyle::SC_ScrollBarAddPage);
  click(QStyle::SC_ScrollBarSubPage);
  click(QStyle::SC_ScrollBarSubLine);
  EXPECT_EQ(events, (Events{"Change 1", "Change 13", "Change 25", "Change 13", "Change 12"}));
}

TEST_P(AScrollBar, ChangesByItsSmallChangeOnItsArrows) {
  bar.setMax(128);
  bar.setSmallChange(2);
  PressOn(QStyle::SC_ScrollBarAddLine);
  pointer.Release();
  EXPECT_EQ(events, Events{"Change 2"});
}

TEST_P(AScrollBar, BeginsAtItsMinAndRefusesOneAboveItsMax) {
  bar.setMax(128);
  bar.setMin(10);
  EXPECT_EQ(events, Events{"Change 10"});
  bar.setMin(129);
  bar.setValue(9);
  EXPECT_EQ(bar.Value(), 10);
  bar.setMax(9);
  EXPECT_EQ(bar.Max(), 128);
  bar.setMin(0);
  bar.setValue(0);
  EXPECT_EQ(events, (Events{"Change 10", "Change 0"}));
}

TEST_P(AScrollBar, IsComeToByTheTabKeyOrNot) {
  bar.setTabStop(true);
  EXPECT_NE(inside.focusPolicy() & Qt::TabFocus, 0);
  bar.setTabStop(false);
  EXPECT_EQ(inside.focusPolicy() & Qt::TabFocus, 0);
}

TEST_P(AScrollBar, HasALargeChangeOfTenByDesign) {
  bar.setMax(128);
  PressOn(QStyle::SC_ScrollBarAddPage);
  pointer.Release();
  EXPECT_EQ(events, Events{"Change 10"});
}

TEST_P(AScrollBar, RaisesScrollForEachStepOfTheThumbAndChangeWhenItIsLetGo) {
  bar.setMax(43);
  PressOn(QStyle::SC_ScrollBarSlider);
  EXPECT_EQ(events, Events{});
  std::int16_t last = 0;
  Events expected;
  for (int step = 0; step < 5; ++step) {
    DragBy(20);
    ASSERT_GT(bar.Value(), last);
    last = bar.Value();
    expected.push_back("Scroll " + std::to_string(last));
    EXPECT_EQ(events, expected);
  }
  pointer.Release();
  expected.push_back("Change " + std::to_string(last));
  EXPECT_EQ(events, expected);
}

TEST_P(AScrollBar, RaisesNothingForADragThatMovesTheThumbByLessThanAStep) {
  bar.setMax(3);
  PressOn(QStyle::SC_ScrollBarSlider);
  DragBy(1);
  pointer.Release();
  EXPECT_EQ(events, Events{});
}

TEST_P(AScrollBar, RaisesNoChangeForADragThatEndsWhereItBegan) {
  bar.setMax(43);
  PressOn(QStyle::SC_ScrollBarSlider);
  DragBy(30);
  DragBy(-30);
  pointer.Release();
  ASSERT_EQ(events.size(), 2U);
  EXPECT_EQ(events.front().substr(0, 6), "Scroll");
  EXPECT_EQ(events.back(), "Scroll 0");
}

TEST_P(AScrollBar, RaisesScrollNoMoreOnceTheThumbIsLetGo) {
  bar.setMax(43);
  PressOn(QStyle::SC_ScrollBarSlider);
  DragBy(30);
  pointer.Release();
  events.clear();
  bar.setValue(1);
  EXPECT_EQ(events, Events{"Change 1"});
}

TEST_P(AScrollBar, RaisesChangeForAMaxThatCutsTheValueUnderADraggedThumb) {
  bar.setMax(43);
  PressOn(QStyle::SC_ScrollBarSlider);
  DragBy(60);
  ASSERT_GT(bar.Value(), 3);
  events.clear();
  bar.setMax(3);
  EXPECT_EQ(events, Events{"Change 3"});
  pointer.Release();
  EXPECT_EQ(events, Events{"Change 3"});
}

TEST_P(AScrollBar, RaisesChangeForAValueThatIsAssignedUnderADraggedThumb) {
  bar.setMax(43);
  PressOn(QStyle::SC_ScrollBarSlider);
  DragBy(60);
  events.clear();
  bar.setValue(2);
  EXPECT_EQ(events, Events{"Change 2"});
}

// It would serve the queue on its own and hold up a tool that runs.
TEST_P(AScrollBar, HasNoMenuOfItsOwn) {
  bar.setMax(43);
  pointer.MoveTo(inside, {10, 10});
  pointer.Click(Qt::RightButton);
  EXPECT_EQ(inside.findChild<QMenu*>(), nullptr);
  EXPECT_EQ(events, Events{});
}

}  // namespace
}  // namespace kelvane::testing
