// The needles under the pointer: places, read-outs, hairlines and the span.
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

TEST_F(Needles, FollowThePointerFromWhereTheyWerePressed) {
  PictureBox& needle = NeedleBox(StartNeedle);
  needle.MouseDown(At(needle, kLeftButton, 3));
  needle.MouseMove(At(needle, kLeftButton, 103));
  EXPECT_EQ(needle.Left(), 108);
  needle.MouseMove(At(needle, kLeftButton, 3));
  EXPECT_EQ(needle.Left(), 108);
  needle.MouseMove(At(needle, kLeftButton, -7));
  EXPECT_EQ(needle.Left(), 98);
  EXPECT_EQ(NeedleBox(EndNeedle).Left(), 136) << "the other one stays";
}

TEST_F(Needles, RestUnderAPointerThatRestsBetweenTwoPixels) {
  PictureBox& needle = NeedleBox(StartNeedle);
  const QPointF start = needle.mapToGlobal(QPointF(2.4, 5.7));
  const QPointF there = start + QPointF(50.5, 0);
  DragThrough(needle, {start, start, start, there, there, there});
  EXPECT_EQ(needle.Left(), 58);
  EXPECT_EQ(Time(SectionStart), "00:01:00");
}

TEST_F(Needles, ThePlaceOfThePressIsRoundedHalfToEven) {
  struct Row {
    float pressedAt;
    float left;
  };
  PictureBox& needle = NeedleBox(EndNeedle);
  for (const auto& [pressedAt, left] :
       std::vector<Row>{{0.5F, 110}, {1.5F, 108}, {2.5F, 108}, {2.6F, 107}}) {
    needle.setLeft(100);
    needle.MouseDown(At(needle, kLeftButton, pressedAt));
    needle.MouseMove(At(needle, kLeftButton, 10));
    EXPECT_EQ(needle.Left(), left) << pressedAt;
  }
}

TEST_F(Needles, ArePressedByAnyButtonAndMoveByTheLeftOneAlone) {
  PictureBox& needle = NeedleBox(StartNeedle);
  needle.MouseDown(At(needle, kRightButton, 4));
  for (const int buttons : {0, 2, 4, 3, 5}) needle.MouseMove(At(needle, buttons, 50));
  EXPECT_EQ(needle.Left(), 8);
  EXPECT_EQ(needle.ToolTipText().toStdString(), "");
  EXPECT_EQ(Time(SectionStart), "00:00:00");
  needle.MouseMove(At(needle, kLeftButton, 50));
  EXPECT_EQ(needle.Left(), 8 + 50 - 4);
}

TEST_F(Needles, HaveNoToolTipBeforeTheFirstDragAndTheirOwnFromThenOn) {
  EXPECT_EQ(NeedleBox(StartNeedle).ToolTipText().toStdString(), "");
  Drag(NeedleBox(StartNeedle), 0);
  EXPECT_EQ(NeedleBox(StartNeedle).ToolTipText().toStdString(),
            " Move slider to the start of the section to be extracted ");
  EXPECT_EQ(NeedleBox(EndNeedle).ToolTipText().toStdString(), "");
  Drag(NeedleBox(EndNeedle), 0);
  EXPECT_EQ(NeedleBox(EndNeedle).ToolTipText().toStdString(),
            " Move slider to the end of the section to be extracted ");
}

struct Dragged {
  const char* name;
  float start;
  float end;
  const char* startTime;
  const char* endTime;
  const char* span;
};
void PrintTo(const Dragged& row, std::ostream* out) { *out << row.name; }

class NeedlesDragged : public Needles, public ::testing::WithParamInterface<Dragged> {};

TEST_P(NeedlesDragged, ReadThese) {
  const Dragged& row = GetParam();
  DragTo(NeedleBox(StartNeedle), row.start);
  Span().SetEnds(1, 2, 3, 4);
  DragTo(NeedleBox(EndNeedle), row.end);
  EXPECT_EQ(Time(SectionStart), row.startTime);
  EXPECT_EQ(Time(SectionEnd), row.endTime);
  EXPECT_EQ(Time(SectionSpan), row.span);
  EXPECT_EQ(Span().X1(), row.start);
  EXPECT_EQ(Span().X2(), row.end);
  EXPECT_EQ(Span().Y1(), 30.5);
  EXPECT_EQ(Span().Y2(), 30.5);
}

// A negative number of seconds shows as its absolute value.
INSTANTIATE_TEST_SUITE_P(
    Sections, NeedlesDragged,
    ::testing::Values(
        Dragged{"InTheWindow", 98, 358, "00:01:40", "00:06:00", "00:04:20"},
        Dragged{"BeyondAnHour", 0, 3700, "00:00:02", "01:01:42", "01:01:40"},
        Dragged{"OnTheSamePlace", 200, 200, "00:03:22", "00:03:22", "00:00:00"},
        Dragged{"EndBeforeStart", 400, 100, "00:06:42", "00:01:42", "00:05:00"},
        Dragged{"StartBeyondTheLeftEdge", -62, 136, "00:01:00", "00:02:18", "00:01:18"},
        Dragged{"BothBeyondTheRightEdge", 1900, 2000, "00:31:42", "00:33:22", "00:01:40"},
        Dragged{"BeyondMidnight", 100, 86408, "00:01:42", "00:00:10", "00:01:32"}),
    [](const auto& test) { return test.param.name; });

TEST_F(Needles, TheSpanIsCountedFromTheTextOfAReadOutThatIsStillAtNought) {
  DragTo(NeedleBox(EndNeedle), 358);
  EXPECT_EQ(Time(SectionStart), "00:00:00") << "though the needle stands at 8";
  EXPECT_EQ(Time(SectionSpan), "00:06:00");
}

TEST_F(Needles, TheHairlineGoesThroughTheMiddleOfItsNeedle) {
  for (const Needle needle : {StartNeedle, EndNeedle}) {
    DragTo(NeedleBox(needle), 300);
    EXPECT_EQ(Hairline(needle).X1(), 302);
    EXPECT_EQ(Hairline(needle).X2(), 302);
    EXPECT_EQ(Hairline(needle).Y1(), 0);
    EXPECT_EQ(Hairline(needle).Y2(), 40);
  }
}

TEST_F(Needles, OnlyTheHairlineOfTheDraggedNeedleMoves) {
  const float before = Hairline(EndNeedle).X1();
  DragTo(NeedleBox(StartNeedle), 300);
  EXPECT_EQ(Hairline(EndNeedle).X1(), before);
}

TEST_F(Needles, TheSpanComesToTheFrontOfTheLinesAndStaysBehindTheNeedles) {
  Get<Line>("Line7").raise();
  for (const Needle needle : {StartNeedle, EndNeedle}) NeedleBox(needle).raise();
  DragTo(NeedleBox(StartNeedle), 100);
  const QObjectList& stack = Strip().children();
  const auto place = [&](const QObject& control) { return stack.indexOf(&control); };
  EXPECT_GT(place(Span()), place(Get<Line>("Line7")));
  EXPECT_GT(place(Span()), place(Hairline(StartNeedle)));
  EXPECT_GT(place(Span()), place(Hairline(EndNeedle)));
  EXPECT_LT(place(Span()), place(NeedleBox(StartNeedle)));
  EXPECT_LT(place(Span()), place(NeedleBox(EndNeedle)));
}

TEST_F(Needles, AreSeenOnTheStripWithTheirLines) {
  DragTo(NeedleBox(StartNeedle), 100);
  DragTo(NeedleBox(EndNeedle), 300);
  const QImage strip = Picture(Strip());
  EXPECT_EQ(Hex(strip.pixel(100, 25)), "0x00c000");
  EXPECT_EQ(Hex(strip.pixel(304, 30)), "0xc00000");
  EXPECT_EQ(Hex(strip.pixel(200, 31)), "0xe0e0e0");
  EXPECT_EQ(Hex(strip.pixel(50, 31)), "0xc04000");
  EXPECT_EQ(Hex(strip.pixel(400, 31)), "0xc04000");
  EXPECT_EQ(Hex(strip.pixel(102, 37)), "0x808080");
  EXPECT_EQ(Hex(strip.pixel(302, 37)), "0x808080");
}

TEST_F(Needles, TheSpanRunsBackwardsWhereTheEndLiesBeforeTheStart) {
  DragTo(NeedleBox(StartNeedle), 300);
  DragTo(NeedleBox(EndNeedle), 100);
  EXPECT_EQ(Span().X1(), 300);
  EXPECT_EQ(Span().X2(), 100);
  EXPECT_EQ(Hex(Picture(Strip()).pixel(200, 31)), "0xe0e0e0");
}

TEST_F(Needles, TakeTheKeyboardWhereTheScreensPointerIsTheSizingArrowAndNotElse) {
  ASSERT_TRUE(WaitFor([this] { return form_->isActiveWindow(); }));
  MoveOver(NeedleBox(StartNeedle));
  EXPECT_NE(QApplication::focusWidget(), &NeedleBox(StartNeedle));
  Screen::setMousePointer(MousePointer::kSizeWestEast);
  for (const Needle needle : {StartNeedle, EndNeedle}) {
    MoveOver(NeedleBox(needle));
    EXPECT_EQ(QApplication::focusWidget(), &NeedleBox(needle)) << "without a button";
  }
  EXPECT_EQ(NeedleBox(StartNeedle).Left(), 8);
  Screen::setMousePointer(MousePointer::kDefault);
  MoveOver(NeedleBox(StartNeedle));
  EXPECT_EQ(QApplication::focusWidget(), &NeedleBox(EndNeedle));
}

TEST_F(Needles, StayAsTheyAreWithTheirReadOutsWhenTheTimeLineScrolls) {
  DragTo(NeedleBox(StartNeedle), 98);
  Click(Get<Label>("Label7", TowardsEnd));
  EXPECT_EQ(NeedleBox(StartNeedle).Left(), 98);
  EXPECT_EQ(Time(SectionStart), "00:01:40");
  DragTo(NeedleBox(StartNeedle), 99);
  EXPECT_EQ(Time(SectionStart), "00:01:41");
}

}  // namespace
}  // namespace kelvane::testing
