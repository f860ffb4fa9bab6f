// Where the mouse is on the time line, and what the context menu does with it.
#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QTest>

#include "sections/SectionWindowTest.h"

namespace kelvane::testing {
namespace {

class ContextMenu : public SectionWindowTest {
 protected:
  ~ContextMenu() override { Items().close(); }

  QMenu& Items() const { return *form_->findChild<QMenuBar*>()->actions().at(0)->menu(); }
  bool Open() const { return Items().isVisible(); }
  void Choose(const char* entry) const { Get<Menu>(entry).Click(); }
  void RightClick(PictureBox& box, float x) const {
    box.MouseUp(At(box, kRightButton, x));
    Items().close();
  }
};

TEST_F(ContextMenu, OpensOnTheReleaseOfTheRightButtonOverStripAndFrame) {
  for (PictureBox* box : {&Strip(), &Frame()}) {
    Press(*box, Qt::RightButton);
    EXPECT_FALSE(Open());
    Release(*box, Qt::RightButton);
    EXPECT_TRUE(Open());
    Items().close();
  }
}

TEST_F(ContextMenu, StaysShutForTheOtherButtons) {
  for (const Qt::MouseButton button : {Qt::LeftButton, Qt::MiddleButton}) {
    Click(Strip(), button);
    Click(Frame(), button);
    EXPECT_FALSE(Open());
  }
}

TEST_F(ContextMenu, StaysShutOverNeedlesArrowsAndTheBar) {
  for (const char* name :
       {"Picture4(0)", "Picture4(1)", "Label7(0)", "Label7(1)", "Picture5", "Label16(2)"}) {
    Click(Get<Control>(name), Qt::RightButton);
    EXPECT_FALSE(Open()) << name;
  }
}

TEST_F(ContextMenu, SetsTheStartWhereTheMouseWasAndShowsIt) {
  RightClick(Strip(), 754);
  Choose("mnu_Start");
  EXPECT_EQ(NeedleBox(StartNeedle).Left(), 754) << "the left edge";
  EXPECT_EQ(Time(SectionStart), "00:12:34");
  EXPECT_EQ(Time(SectionEnd), "00:00:00");
  EXPECT_EQ(Time(SectionSpan), "00:00:00");
}

TEST_F(ContextMenu, ShowsTheFirstStartAlone) {
  RightClick(Strip(), 754);
  Choose("mnu_Start");
  RightClick(Strip(), 100);
  Choose("mnu_Start");
  EXPECT_EQ(NeedleBox(StartNeedle).Left(), 100);
  EXPECT_EQ(Time(SectionStart), "00:12:34");
}

TEST_F(ContextMenu, ShowsTheStartAgainWhereItReadsNought) {
  RightClick(Strip(), 0);
  Choose("mnu_Start");
  EXPECT_EQ(Time(SectionStart), "00:00:00");
  RightClick(Strip(), 61);
  Choose("mnu_Start");
  EXPECT_EQ(Time(SectionStart), "00:01:01");
}

TEST_F(ContextMenu, LeavesAStartThatWasDragged) {
  DragTo(NeedleBox(StartNeedle), 98);
  RightClick(Strip(), 500);
  Choose("mnu_Start");
  EXPECT_EQ(NeedleBox(StartNeedle).Left(), 500);
  EXPECT_EQ(Time(SectionStart), "00:01:40");
}

TEST_F(ContextMenu, SetsTheEndAndShowsNothing) {
  RightClick(Strip(), 754);
  Choose("mnu_End");
  EXPECT_EQ(NeedleBox(EndNeedle).Left(), 754);
  EXPECT_EQ(Time(SectionEnd), "00:00:00");
  EXPECT_EQ(Time(SectionSpan), "00:00:00");
}

TEST_F(ContextMenu, LeavesTheLinesUntilTheNextDrag) {
  const auto& span = Get<Line>("Line8");
  const float start = Get<Line>("Line3", StartNeedle).X1();
  const float end = Get<Line>("Line3", EndNeedle).X1();
  RightClick(Strip(), 400);
  Choose("mnu_Start");
  RightClick(Strip(), 754);
  Choose("mnu_End");
  EXPECT_EQ(span.X1(), 8);
  EXPECT_EQ(span.X2(), 136);
  EXPECT_EQ(Get<Line>("Line3", StartNeedle).X1(), start);
  EXPECT_EQ(Get<Line>("Line3", EndNeedle).X1(), end);
  Drag(NeedleBox(StartNeedle), 0);
  EXPECT_EQ(span.X1(), 400);
  EXPECT_EQ(span.X2(), 754);
  EXPECT_EQ(Get<Line>("Line3", EndNeedle).X1(), end) << "that of the other needle stays";
}

TEST_F(ContextMenu, TheNextDragCountsTheSpanFromTheStaleEnd) {
  DragTo(NeedleBox(EndNeedle), 358);
  RightClick(Strip(), 754);
  Choose("mnu_End");
  DragTo(NeedleBox(StartNeedle), 58);
  EXPECT_EQ(Time(SectionEnd), "00:06:00") << "though the needle stands at 754";
  EXPECT_EQ(Time(SectionSpan), "00:05:00");
}

TEST_F(ContextMenu, ADragAndTheMenuReadOnePlaceTwoSecondsApart) {
  RightClick(Strip(), 100);
  Choose("mnu_Start");
  EXPECT_EQ(Time(SectionStart), "00:01:40");
  Drag(NeedleBox(StartNeedle), 0);
  EXPECT_EQ(Time(SectionStart), "00:01:42");
}

struct Seen {
  float x;
  float left;
};

TEST_F(ContextMenu, RoundsThePlaceOfTheMouseHalfToEven) {
  for (const auto& [x, left] : std::vector<Seen>{{99.4F, 99}, {99.5F, 100}, {100.5F, 100}}) {
    RightClick(Strip(), x);
    Choose("mnu_End");
    EXPECT_EQ(NeedleBox(EndNeedle).Left(), left) << x << " released";
    MoveOver(Strip(), 0);
    MoveOver(Strip(), x);
    Choose("mnu_End");
    EXPECT_EQ(NeedleBox(EndNeedle).Left(), left) << x << " seen";
  }
}

TEST_F(ContextMenu, SetsAndShowsTheStartByTheRoundedPlace) {
  MoveOver(Strip(), 2.5);
  Choose("mnu_Start");
  EXPECT_EQ(NeedleBox(StartNeedle).Left(), 2);
  EXPECT_EQ(Time(SectionStart), "00:00:02");
}

// Below the arrows' bar there is a strip of the frame itself.
TEST_F(ContextMenu, OpensByARightClickOnTheFrameBesideTheStrip) {
  const QPoint below(300, Frame().height() - 4);
  const QPoint place = Frame().mapTo(form_.get(), below);
  ASSERT_EQ(form_->childAt(place), &Frame());
  QTest::mouseClick(form_->windowHandle(), Qt::RightButton, {}, place);
  EXPECT_TRUE(Open());
  Choose("mnu_End");
  EXPECT_EQ(NeedleBox(EndNeedle).Left(), 298) << "within the frame's border of two pixels";
}

TEST_F(ContextMenu, GoesByTheFramesPlaceWhereTheFrameWasClicked) {
  Click(Get<Label>("Label7", TowardsEnd));
  ASSERT_EQ(Strip().Left(), -40);
  RightClick(Frame(), 300);
  Choose("mnu_Start");
  EXPECT_EQ(NeedleBox(StartNeedle).Left(), 300) << "340 lies under the mouse";
}

TEST_F(ContextMenu, GoesByTheLastPlaceSeenWithOrWithoutAButton) {
  MoveOver(Strip(), 111);
  Choose("mnu_End");
  EXPECT_EQ(NeedleBox(EndNeedle).Left(), 111);
  Strip().MouseUp(At(Strip(), kLeftButton, 222));
  Choose("mnu_End");
  EXPECT_EQ(NeedleBox(EndNeedle).Left(), 222);
  MoveOver(Frame(), 333);
  Choose("mnu_End");
  EXPECT_EQ(NeedleBox(EndNeedle).Left(), 333);
}

TEST_F(ContextMenu, BeforeAnyMoveGoesByNought) {
  Choose("mnu_End");
  EXPECT_EQ(NeedleBox(EndNeedle).Left(), 0);
}

TEST_F(ContextMenu, TheTipOfTheStripIsTheTimeUnderTheMouseWhicheverBoxItIsOn) {
  MoveOver(Strip(), 754);
  EXPECT_EQ(Strip().ToolTipText().toStdString(), "00:12:34");
  MoveOver(Frame(), 61);
  EXPECT_EQ(Strip().ToolTipText().toStdString(), "00:01:01");
  EXPECT_EQ(Frame().ToolTipText().toStdString(), "");
  MoveOver(Strip(), 64.25);
  EXPECT_EQ(Strip().ToolTipText().toStdString(), "00:01:04");
  MoveOver(Strip(), 100.5);
  EXPECT_EQ(Strip().ToolTipText().toStdString(), "00:01:41") << "a needle would go to 100";
}

TEST_F(ContextMenu, AReleaseWritesNoTip) {
  Strip().MouseUp(At(Strip(), kLeftButton, 222));
  EXPECT_EQ(Strip().ToolTipText().toStdString(), "");
}

TEST_F(ContextMenu, EntriesChosenWithTheMouseDoTheSame) {
  MoveOver(Strip(), 500);
  Strip().MouseUp(At(Strip(), kRightButton, 500));
  ASSERT_TRUE(Open());
  Items().actions().at(1)->trigger();
  EXPECT_EQ(NeedleBox(EndNeedle).Left(), 500);
  Items().actions().at(0)->trigger();
  EXPECT_EQ(NeedleBox(StartNeedle).Left(), 500);
}

}  // namespace
}  // namespace kelvane::testing
