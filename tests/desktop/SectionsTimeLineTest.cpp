// The section window's time line with a real pointer: arrows, needles and context menu.
#include "desktop/SectionsTest.h"

namespace kelvane::desktop {
namespace {

constexpr QRgb kStart = SectionWindow::kStartNeedle;
constexpr QRgb kEnd = SectionWindow::kEndNeedle;

class SectionsTimeLine : public SectionsTest {
 protected:
  bool AwaitNeedle(QRgb needle, int left) const {
    return WaitFor([&] { return sections.OnTimeLine(needle) == QRect(left, 20, 5, 15); }, 5s);
  }
};

TEST_F(SectionsTimeLine, OpensAsTheOnlyWindowWithTheNeedlesAtTheirPlaces) {
  EXPECT_EQ(screen.Windows(), QList<WindowId>{sections.Id()});
  EXPECT_EQ(screen.Place(sections.Id()).size(), QSize(974, 797));
  EXPECT_TRUE(AwaitNeedle(kStart, 8));
  EXPECT_TRUE(AwaitNeedle(kEnd, 136));
  for (const TimeReadOut readOut : {TimeReadOut::kStart, TimeReadOut::kEnd, TimeReadOut::kSpan}) {
    EXPECT_TRUE(sections.ShowsTime(readOut, "00:00:00"));
  }
  CloseSectionsAndExpectEnd();
}

TEST_F(SectionsTimeLine, AClickOnTheRightArrowScrollsForty) {
  sections.ClickArrow(TimeLineArrow::kTowardsEnd);
  EXPECT_TRUE(AwaitNeedle(kEnd, 96));
  sections.ClickArrow(TimeLineArrow::kTowardsEnd, kRightButton);
  EXPECT_TRUE(AwaitNeedle(kEnd, 56));
}

TEST_F(SectionsTimeLine, AClickOnTheLeftArrowComesBackToTheStart) {
  sections.ClickArrow(TimeLineArrow::kTowardsEnd);
  ASSERT_TRUE(AwaitNeedle(kEnd, 96));
  sections.ClickArrow(TimeLineArrow::kTowardsStart);
  EXPECT_TRUE(AwaitNeedle(kEnd, 136));
  sections.ClickArrow(TimeLineArrow::kTowardsStart);
  EXPECT_TRUE(HoldsFor([&] { return sections.OnTimeLine(kEnd).left() == 136; }, 300ms));
}

// Press, release, double-click and release: four steps within the system's time for a double one.
TEST_F(SectionsTimeLine, ADoubleClickIsFourSteps) {
  sections.ClickArrow(TimeLineArrow::kTowardsEnd);
  sections.ClickArrow(TimeLineArrow::kTowardsEnd);
  EXPECT_TRUE(AwaitNeedle(kEnd, 56));
}

TEST_F(SectionsTimeLine, StopsWithItsEndAtMostTwentyPixelsInside) {
  const QRect whole = sections.OnTimeLine(0xffc04000);
  ASSERT_EQ(whole.right(), 876) << "the line of the whole length reaches beyond the frame";
  for (int click = 0; click < 26; ++click) sections.ClickArrow(TimeLineArrow::kTowardsEnd);
  // 1825 - 960 pixels are left in sight.
  EXPECT_TRUE(WaitFor([&] { return sections.OnTimeLine(0xffc04000).right() == 864; }, 5s))
      << sections.OnTimeLine(0xffc04000).right();
}

TEST_F(SectionsTimeLine, TheArrowUnderThePointerLightsUp) {
  const QRgb kWhite = 0xffffffff;
  const auto whiteOn = [&](TimeLineArrow arrow) {
    const QRect place = QRect(0, 0, 15, 15).translated(sections.ArrowCentre(arrow) - QPoint(7, 7));
    const QImage picture = screen.Picture(place);
    return CountOf(picture, picture.rect(), kWhite) > 0;
  };
  screen.MovePointer(sections.ArrowCentre(TimeLineArrow::kTowardsEnd));
  EXPECT_TRUE(WaitFor([&] { return whiteOn(TimeLineArrow::kTowardsEnd); }, 5s));
  EXPECT_FALSE(whiteOn(TimeLineArrow::kTowardsStart));
  screen.MovePointer(sections.BareGround());
  EXPECT_TRUE(WaitFor([&] { return !whiteOn(TimeLineArrow::kTowardsEnd); }, 5s));
}

TEST_F(SectionsTimeLine, BothNeedlesFollowThePointerAndReadTheirMiddle) {
  sections.DragNeedle(kStart, 90);
  EXPECT_TRUE(AwaitNeedle(kStart, 98));
  EXPECT_TRUE(sections.AwaitTime(TimeReadOut::kStart, "00:01:40"));
  sections.DragNeedle(kEnd, 222);
  EXPECT_TRUE(AwaitNeedle(kEnd, 358));
  EXPECT_TRUE(sections.AwaitTime(TimeReadOut::kEnd, "00:06:00"));
  EXPECT_TRUE(sections.AwaitTime(TimeReadOut::kSpan, "00:04:20"));
  const QRect span = sections.OnTimeLine(SectionWindow::kSpan);
  EXPECT_EQ(span, QRect(103, 31, 358 - 103, 1)) << "between the needles";
}

TEST_F(SectionsTimeLine, ANeedleMayPassTheOther) {
  sections.DragNeedle(kEnd, 200);
  ASSERT_TRUE(AwaitNeedle(kEnd, 336));
  sections.DragNeedle(kStart, 500);
  EXPECT_TRUE(AwaitNeedle(kStart, 508));
  EXPECT_TRUE(sections.AwaitTime(TimeReadOut::kSpan, "00:02:52"));
  EXPECT_EQ(sections.OnTimeLine(SectionWindow::kSpan), QRect(341, 31, 508 - 341, 1));
}

TEST_F(SectionsTimeLine, ANeedleMayLeaveTheTimeLine) {
  sections.DragNeedle(kStart, -50);
  EXPECT_TRUE(WaitFor([&] { return sections.OnTimeLine(kStart).isEmpty(); }, 5s));
  EXPECT_TRUE(sections.AwaitTime(TimeReadOut::kStart, "00:00:40"));
}

TEST_F(SectionsTimeLine, ANeedleIsNotDraggedByTheRightButton) {
  screen.Drag(sections.TimeLine().topLeft() + sections.OnTimeLine(kStart).center(), {90, 0},
              kRightButton);
  EXPECT_TRUE(HoldsFor([&] { return sections.OnTimeLine(kStart).left() == 8; }, 300ms));
  EXPECT_TRUE(sections.ShowsTime(TimeReadOut::kStart, "00:00:00"));
}

TEST_F(SectionsTimeLine, NeedlesGoWithTheScrolledTimeLineAndKeepTheirReadOuts) {
  sections.DragNeedle(kStart, 90);
  ASSERT_TRUE(sections.AwaitTime(TimeReadOut::kStart, "00:01:40"));
  sections.ClickArrow(TimeLineArrow::kTowardsEnd);
  EXPECT_TRUE(AwaitNeedle(kStart, 58));
  EXPECT_TRUE(sections.ShowsTime(TimeReadOut::kStart, "00:01:40"));
  sections.DragNeedle(kStart, 1);
  EXPECT_TRUE(sections.AwaitTime(TimeReadOut::kStart, "00:01:41"));
}

TEST_F(SectionsTimeLine, TheMenuPutsTheNeedlesWhereThePointerIs) {
  sections.ChooseAt({754, 10}, 0);
  EXPECT_TRUE(AwaitNeedle(kStart, 754));
  EXPECT_TRUE(sections.AwaitTime(TimeReadOut::kStart, "00:12:34"));
  sections.ChooseAt({500, 10}, 1);
  EXPECT_TRUE(AwaitNeedle(kEnd, 500));
  EXPECT_TRUE(sections.ShowsTime(TimeReadOut::kEnd, "00:00:00"));
  EXPECT_TRUE(sections.ShowsTime(TimeReadOut::kSpan, "00:00:00"));
  sections.ChooseAt({100, 10}, 0);
  EXPECT_TRUE(AwaitNeedle(kStart, 100));
  EXPECT_TRUE(sections.ShowsTime(TimeReadOut::kStart, "00:12:34")) << "the first one alone";
}

TEST_F(SectionsTimeLine, TheMenuGoesByTheStripWhereItWasScrolled) {
  sections.ClickArrow(TimeLineArrow::kTowardsEnd);
  ASSERT_TRUE(AwaitNeedle(kEnd, 96));
  sections.ChooseAt({560, 10}, 0);
  EXPECT_TRUE(AwaitNeedle(kStart, 560));
  EXPECT_TRUE(sections.AwaitTime(TimeReadOut::kStart, "00:10:00"));
}

TEST_F(SectionsTimeLine, TheMenuIsLeftWithoutATraceByEscape) {
  const QImage before = sections.TimeLinePicture();
  ASSERT_FALSE(sections.OpenMenuAt({400, 10}, 0).isNull());
  screen.Strike(kEscape);
  EXPECT_TRUE(WaitFor([&] { return sections.TimeLinePicture() == before; }, 5s));
}

TEST_F(SectionsTimeLine, TheTipOfTheTimeLineIsTheTimeUnderThePointer) {
  const QPoint place = sections.TimeLine().topLeft() + QPoint(754, 12);
  screen.MovePointer(place - QPoint(1, 0));
  screen.MovePointer(place);
  const QRect below(place + QPoint(0, 10), QSize(120, 60));
  EXPECT_TRUE(WaitFor([&] { return ShowsTip(screen.Picture(below), "00:12:34"); }, 5s));
}

}  // namespace
}  // namespace kelvane::desktop
