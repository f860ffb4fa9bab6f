// The scrolling of the time line by its arrows, and by the thumb that is never shown.
#include "sections/SectionWindowTest.h"

namespace kelvane::testing {
namespace {

class TimeLineScrolling : public SectionWindowTest {
 protected:
  void ClickArrow(Arrow arrow, int times = 1, Qt::MouseButton button = Qt::LeftButton) const {
    for (int click = 0; click < times; ++click) Click(ArrowButton(arrow), button);
  }
  void PressAndExpect(Arrow arrow, float left) const {
    Press(ArrowButton(arrow));
    EXPECT_EQ(Strip().Left(), left);
  }
  void ReleaseAndExpect(Arrow arrow, float left) const {
    Release(ArrowButton(arrow));
    EXPECT_EQ(Strip().Left(), left);
  }
};

TEST_F(TimeLineScrolling, AClickTowardsTheEndIsTwoStepsOf20Pixels) {
  PressAndExpect(TowardsEnd, -20);
  ReleaseAndExpect(TowardsEnd, -40);
}

TEST_F(TimeLineScrolling, AClickTowardsTheStartIsTwoStepsOf200PixelsUpToTheStart) {
  ClickArrow(TowardsEnd, 15);
  ASSERT_EQ(Strip().Left(), -600);
  PressAndExpect(TowardsStart, -400);
  ReleaseAndExpect(TowardsStart, -200);
  PressAndExpect(TowardsStart, 0);
  ReleaseAndExpect(TowardsStart, 0);
}

// The system reports press, release, double click and release.
TEST_F(TimeLineScrolling, ADoubleClickIsFourSteps) {
  ClickArrow(TowardsEnd);
  ArrowButton(TowardsEnd).DblClick(At(ArrowButton(TowardsEnd), kLeftButton, 1));
  EXPECT_EQ(Strip().Left(), -60);
  ReleaseAndExpect(TowardsEnd, -80);
}

TEST_F(TimeLineScrolling, IsDoneByEveryButton) {
  ClickArrow(TowardsEnd, 1, Qt::RightButton);
  EXPECT_EQ(Strip().Left(), -40);
  ClickArrow(TowardsEnd, 1, Qt::MiddleButton);
  EXPECT_EQ(Strip().Left(), -80);
  ClickArrow(TowardsStart, 1, Qt::RightButton);
  EXPECT_EQ(Strip().Left(), 0);
}

// The frame is 881 pixels wide and the time line 1825. A step checks whether the end is inside the
// frame before it moves the time line.
TEST_F(TimeLineScrolling, StopsOnceTheEndOfTheTimeLineIsInsideTheFrame) {
  ClickArrow(TowardsEnd, 23);
  PressAndExpect(TowardsEnd, -940);
  ReleaseAndExpect(TowardsEnd, -960);
  ClickArrow(TowardsEnd, 5);
  EXPECT_EQ(Strip().Left(), -960);
  Strip().setLeft(881 - 1825);
  PressAndExpect(TowardsEnd, 881 - 1825 - 20);
  Strip().setLeft(0);
  Strip().setWidth(880);
  PressAndExpect(TowardsEnd, 0);
}

TEST_F(TimeLineScrolling, SetsTheRangeOfTheHiddenBarToTheWidthIfThatFitsInto16Bits) {
  const auto& bar = Get<HScrollBar>("HScroll1");
  for (const auto& [width, range] :
       {std::pair(2000.5F, 2000), {300.F, 300}, {32767.F, 32767}, {32768.F, 32767}}) {
    Strip().setWidth(width);
    Press(ArrowButton(TowardsEnd));
    EXPECT_EQ(bar.Max(), range) << width;
  }
  Strip().setWidth(1825);
  Press(ArrowButton(TowardsStart));
  EXPECT_EQ(bar.Max(), 1825);
}

TEST_F(TimeLineScrolling, LeavesTheNeedlesOnTheirSeconds) {
  DragTo(NeedleBox(StartNeedle), 98);
  ClickArrow(TowardsEnd);
  EXPECT_EQ(NeedleBox(StartNeedle).Left(), 98);
  EXPECT_EQ(Time(SectionStart), "00:01:40");
  DragTo(NeedleBox(StartNeedle), 99);
  EXPECT_EQ(Time(SectionStart), "00:01:41");
}

class HiddenThumb : public SectionWindowTest {
 protected:
  PictureBox& Box() const { return Get<PictureBox>("Picture6"); }
};

// A quarter of the bar on which the thumb moves is 220.25 pixels, and a half is 440.5 pixels.
TEST_F(HiddenThumb, ScrollsTheTimeLineToOneOfThreePlaces) {
  for (const auto& [thumb, strip] : {std::pair(0.F, 0.F),
                                     {220.25F, 0.F},
                                     {220.5F, -220.25F},
                                     {440.F, -220.25F},
                                     {440.5F, -440.5F},
                                     {5000.F, -440.5F},
                                     {-300.F, 0.F}}) {
    DragTo(Box(), thumb);
    EXPECT_EQ(Box().Left(), thumb);
    EXPECT_EQ(Strip().Left(), strip) << thumb;
  }
  EXPECT_FALSE(Box().Visible());
}

// A press halfway between two pixels counts as one at the even pixel: at 4.5 as at 4.
TEST_F(HiddenThumb, MovesByTheDistanceFromTheLastPressOfAnyButtonIfTheLeftButtonAloneIsHeld) {
  const float before = Box().Left();
  Box().MouseDown(At(Box(), kRightButton, 4.5));
  for (const int buttons : {0, 2, 4, 3}) Box().MouseMove(At(Box(), buttons, 50));
  EXPECT_EQ(Box().Left(), before);
  EXPECT_EQ(Strip().Left(), 0);
  Box().MouseMove(At(Box(), kLeftButton, 10));
  EXPECT_EQ(Box().Left(), before + 6);
}

}  // namespace
}  // namespace kelvane::testing
