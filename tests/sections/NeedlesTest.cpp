// Dragged needles: their places, read-outs and hairlines, and the line of the span between them.
#include <QApplication>

#include "platform/Screen.h"
#include "sections/SectionWindowTest.h"

namespace kelvane::testing {
namespace {

class Needles : public SectionWindowTest {
 protected:
  Line& Hairline(Needle needle) const { return Get<Line>("Line3", needle); }
  Line& Span() const { return Get<Line>("Line8"); }
};

// A press halfway between two pixels counts as one at the even pixel: at 4.5 as at 4.
TEST_F(Needles, MoveWithTheLeftButtonAloneByTheDistanceFromTheLastPressOfAnyButton) {
  PictureBox& needle = NeedleBox(StartNeedle);
  needle.MouseDown(At(needle, kRightButton, 4.5));
  for (const int buttons : {0, 2, 4, 3, 5}) needle.MouseMove(At(needle, buttons, 50));
  EXPECT_EQ(needle.Left(), 8);
  EXPECT_EQ(Time(SectionStart), "00:00:00");
  needle.MouseMove(At(needle, kLeftButton, 104));
  EXPECT_EQ(needle.Left(), 108);
  needle.MouseMove(At(needle, kLeftButton, -6));
  EXPECT_EQ(needle.Left(), 98);
  EXPECT_EQ(NeedleBox(EndNeedle).Left(), 136);
}

TEST_F(Needles, DoNotMoveUnderAPointerThatRestsBetweenTwoPixels) {
  DragBetweenPixels(NeedleBox(StartNeedle));
  EXPECT_EQ(NeedleBox(StartNeedle).Left(), 58);
  EXPECT_EQ(Time(SectionStart), "00:01:00");
}

TEST_F(Needles, HaveAToolTipOfTheirOwnFromTheFirstDragOn) {
  for (const auto& [needle, text] :
       {std::pair(StartNeedle, " Move slider to the start of the section to be extracted "),
        {EndNeedle, " Move slider to the end of the section to be extracted "}}) {
    MoveOver(NeedleBox(needle));
    EXPECT_EQ(NeedleBox(needle).ToolTipText(), QString());
    Drag(NeedleBox(needle), 2, 2);
    EXPECT_EQ(NeedleBox(needle).ToolTipText(), QString(text));
  }
}

// Times wrap after 24 hours, and a negative time shows as its absolute value.
TEST_F(Needles, ShowTheTimesOfTheirMiddlesAndTheSpanBetweenThem) {
  struct Case {
    float start;
    float end;
    const char* startTime;
    const char* endTime;
    const char* span;
  };
  for (const auto& [start, end, startTime, endTime, span] :
       {Case{98, 358, "00:01:40", "00:06:00", "00:04:20"},
        Case{0, 3700, "00:00:02", "01:01:42", "01:01:40"},
        Case{400, 100, "00:06:42", "00:01:42", "00:05:00"},
        Case{-62, 136, "00:01:00", "00:02:18", "00:01:18"},
        Case{100, 86408, "00:01:42", "00:00:10", "00:01:32"}}) {
    DragTo(NeedleBox(StartNeedle), start);
    Span().SetEnds(1, 2, 3, 4);
    DragTo(NeedleBox(EndNeedle), end);
    EXPECT_EQ(Time(SectionStart), startTime);
    EXPECT_EQ(Time(SectionEnd), endTime);
    EXPECT_EQ(Time(SectionSpan), span);
    EXPECT_EQ(Span().X1(), start);
    EXPECT_EQ(Span().X2(), end);
    EXPECT_EQ(Span().Y1(), 30.5);
    EXPECT_EQ(Span().Y2(), 30.5);
  }
}

TEST_F(Needles, CountTheSpanFromTheReadOutsAndNotFromTheirPlaces) {
  DragTo(NeedleBox(EndNeedle), 358);
  EXPECT_EQ(Time(SectionStart), "00:00:00") << "although the needle stands at 8";
  EXPECT_EQ(Time(SectionSpan), "00:06:00");
}

TEST_F(Needles, MoveTheirOwnHairlineThroughTheirMiddle) {
  DragTo(NeedleBox(StartNeedle), 300);
  EXPECT_EQ(Hairline(StartNeedle).X1(), 302);
  EXPECT_EQ(Hairline(StartNeedle).X2(), 302);
  EXPECT_EQ(Hairline(EndNeedle).X1(), 138);
  DragTo(NeedleBox(EndNeedle), 200);
  EXPECT_EQ(Hairline(EndNeedle).X1(), 202);
  EXPECT_EQ(Hairline(EndNeedle).X2(), 202);
}

TEST_F(Needles, AreDrawnInFrontOfTheSpanLineWhichIsInFrontOfTheTimeLine) {
  DragTo(NeedleBox(StartNeedle), 100);
  DragTo(NeedleBox(EndNeedle), 300);
  const QImage strip = Picture(Strip());
  EXPECT_EQ(ColorAt(strip, 100, 31), 0x00c000U);
  EXPECT_EQ(ColorAt(strip, 304, 31), 0xc00000U);
  EXPECT_EQ(ColorAt(strip, 200, 31), 0xe0e0e0U);
  EXPECT_EQ(ColorAt(strip, 50, 31), 0xc04000U);
  EXPECT_EQ(ColorAt(strip, 400, 31), 0xc04000U);
  EXPECT_EQ(ColorAt(strip, 102, 37), 0x808080U);
  EXPECT_EQ(ColorAt(strip, 302, 37), 0x808080U);
}

TEST_F(Needles, TakeTheFocusUnderThePointerOnlyIfTheScreensPointerIsTheSizingArrow) {
  ASSERT_TRUE(WaitFor([this] { return form_->isActiveWindow(); }));
  MoveOver(NeedleBox(StartNeedle));
  EXPECT_NE(QApplication::focusWidget(), &NeedleBox(StartNeedle));
  Screen::setMousePointer(MousePointer::kSizeWestEast);
  for (const Needle needle : {StartNeedle, EndNeedle}) {
    MoveOver(NeedleBox(needle));
    EXPECT_EQ(QApplication::focusWidget(), &NeedleBox(needle));
  }
  EXPECT_EQ(NeedleBox(StartNeedle).Left(), 8);
  Screen::setMousePointer(MousePointer::kDefault);
  MoveOver(NeedleBox(StartNeedle));
  EXPECT_EQ(QApplication::focusWidget(), &NeedleBox(EndNeedle));
}

}  // namespace
}  // namespace kelvane::testing
