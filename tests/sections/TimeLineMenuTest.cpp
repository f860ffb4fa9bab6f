// The place of the mouse over the time line: the tool tip, and the context menu, which puts a
// needle there.
#include <QMenu>
#include <QMenuBar>
#include <QTest>
#include <QWindow>

#include "sections/SectionWindowTest.h"

namespace kelvane::testing {
namespace {

class TimeLineMenu : public SectionWindowTest {
 protected:
  ~TimeLineMenu() override { Items().close(); }

  QMenu& Items() const { return *form_->findChild<QMenuBar*>()->actions().at(0)->menu(); }
  void ChooseStart() const { Get<Menu>("mnu_Start").Click(); }
  void ChooseEnd() const { Get<Menu>("mnu_End").Click(); }
  void RightClick(float x) const {
    Strip().MouseUp(At(Strip(), kRightButton, x));
    Items().close();
  }
  void SetStartAt(float x) const {
    RightClick(x);
    ChooseStart();
  }
  void SetEndAt(float x) const {
    RightClick(x);
    ChooseEnd();
  }
};

TEST_F(TimeLineMenu, OpensAtTheReleaseOfTheRightButtonOverTimeLineAndFrameAlone) {
  for (PictureBox* box : {&Strip(), &Frame()}) {
    Press(*box, Qt::RightButton);
    EXPECT_FALSE(Items().isVisible());
    Release(*box, Qt::RightButton);
    EXPECT_TRUE(Items().isVisible());
    Items().close();
    Click(*box, Qt::LeftButton);
    Click(*box, Qt::MiddleButton);
    EXPECT_FALSE(Items().isVisible());
  }
  for (const char* name :
       {"Picture4(0)", "Picture4(1)", "Label7(0)", "Label7(1)", "Picture5", "Label16(2)"}) {
    Click(Get<Control>(name), Qt::RightButton);
    EXPECT_FALSE(Items().isVisible()) << name;
  }
}

// The frame itself is visible only below the bar of the arrows. Its border is two pixels wide.
TEST_F(TimeLineMenu, OpensByARightClickOnTheFrameOutsideTheTimeLine) {
  const QPoint place = Frame().mapTo(form_.get(), QPoint(300, Frame().height() - 4));
  ASSERT_EQ(form_->childAt(place), &Frame());
  QTest::mouseClick(form_->windowHandle(), Qt::RightButton, {}, place);
  EXPECT_TRUE(Items().isVisible());
  ChooseEnd();
  EXPECT_EQ(NeedleBox(EndNeedle).Left(), 298);
}

TEST_F(TimeLineMenu, SetsTheStartButShowsItOnlyIfTheReadOutIsZero) {
  SetStartAt(0);
  EXPECT_EQ(Time(SectionStart), "00:00:00");
  SetStartAt(754);
  EXPECT_EQ(NeedleBox(StartNeedle).Left(), 754);
  EXPECT_EQ(Time(SectionStart), "00:12:34");
  SetStartAt(100);
  EXPECT_EQ(NeedleBox(StartNeedle).Left(), 100);
  EXPECT_EQ(Time(SectionStart), "00:12:34");
  EXPECT_EQ(Time(SectionSpan), "00:00:00");
}

TEST_F(TimeLineMenu, SetsTheEndButNeitherShowsItNorCountsItInTheSpan) {
  DragTo(NeedleBox(EndNeedle), 358);
  SetEndAt(754);
  EXPECT_EQ(NeedleBox(EndNeedle).Left(), 754);
  EXPECT_EQ(Time(SectionEnd), "00:06:00");
  DragTo(NeedleBox(StartNeedle), 58);
  EXPECT_EQ(Time(SectionSpan), "00:05:00");
}

TEST_F(TimeLineMenu, ReadsAPlaceTwoSecondsEarlierThanADragDoes) {
  SetStartAt(100);
  EXPECT_EQ(Time(SectionStart), "00:01:40");
  Drag(NeedleBox(StartNeedle), 2, 2);
  EXPECT_EQ(NeedleBox(StartNeedle).Left(), 100);
  EXPECT_EQ(Time(SectionStart), "00:01:42");
}

TEST_F(TimeLineMenu, LeavesTheLinesInTheirPlacesUntilTheNextDrag) {
  const auto& span = Get<Line>("Line8");
  SetStartAt(400);
  SetEndAt(754);
  EXPECT_EQ(span.X1(), 8);
  EXPECT_EQ(span.X2(), 136);
  EXPECT_EQ(Get<Line>("Line3", StartNeedle).X1(), 10);
  Drag(NeedleBox(StartNeedle), 2, 2);
  EXPECT_EQ(span.X1(), 400);
  EXPECT_EQ(span.X2(), 754);
  EXPECT_EQ(Get<Line>("Line3", StartNeedle).X1(), 402);
  EXPECT_EQ(Get<Line>("Line3", EndNeedle).X1(), 138)
      << "the hairline of the other needle has moved";
}

TEST_F(TimeLineMenu, PutsTheNeedleAtTheMousesLastPlaceRelativeToTheBoxUnderTheMouse) {
  ChooseEnd();
  EXPECT_EQ(NeedleBox(EndNeedle).Left(), 0) << "before any move the place must be 0";
  MoveOver(Strip(), 110.5);
  ChooseEnd();
  EXPECT_EQ(NeedleBox(EndNeedle).Left(), 110) << "half isn't rounded to even";
  MoveOver(Strip(), 2.5);
  ChooseStart();
  EXPECT_EQ(NeedleBox(StartNeedle).Left(), 2);
  EXPECT_EQ(Time(SectionStart), "00:00:02");
  Strip().MouseUp(At(Strip(), kLeftButton, 221.5));
  ChooseEnd();
  EXPECT_EQ(NeedleBox(EndNeedle).Left(), 222);
  Click(ArrowButton(TowardsEnd));
  ASSERT_EQ(Strip().Left(), -40);
  MoveOver(Frame(), 333);
  ChooseEnd();
  EXPECT_EQ(NeedleBox(EndNeedle).Left(), 333) << "the scrolling of the time line counts";
}

using TimeLineToolTip = TimeLineMenu;

TEST_F(TimeLineToolTip, IsTheTimeUnderTheMouseAfterAMoveOverTimeLineOrFrame) {
  Strip().MouseUp(At(Strip(), kLeftButton, 222));
  EXPECT_EQ(Strip().ToolTipText(), QString());
  MoveOver(Strip(), 754);
  EXPECT_EQ(Strip().ToolTipText(), QString("00:12:34"));
  MoveOver(Frame(), 61);
  EXPECT_EQ(Strip().ToolTipText(), QString("00:01:01"));
  EXPECT_EQ(Frame().ToolTipText(), QString());
}

}  // namespace
}  // namespace kelvane::testing
