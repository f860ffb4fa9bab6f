// The section window on a real screen: time line, sliders, and the choice of a video.
#include "desktop/DesktopTest.h"
#include "desktop/driver/SectionWindow.h"

namespace kelvane::desktop {
namespace {

constexpr QRgb kStart = SectionWindow::kStartNeedle;
constexpr QRgb kEnd = SectionWindow::kEndNeedle;
constexpr QRgb kWhite = 0xffffffff;

class SectionWindowOnScreen : public DesktopTest {
 protected:
  SectionWindowOnScreen() : DesktopTest("kelvane-sections") {}

  void SetUp() override {
    for (const char* tool : {"ffmpeg", "ffprobe", "ffplay"}) program.ReplaceTool(tool, "exit 1");
    program.Start();
    ASSERT_TRUE(sections.Await()) << "the section window doesn't come";
  }
  // Whatever the user does, the window runs no tool.
  void TearDown() override {
    for (const char* tool : {"ffmpeg", "ffprobe", "ffplay"}) {
      EXPECT_TRUE(program.RunsOf(tool).isEmpty()) << tool;
    }
    DesktopTest::TearDown();
  }

  bool AwaitNeedle(QRgb needle, int left) const {
    return WaitFor([&] { return sections.OnTimeLine(needle) == QRect(left, 20, 5, 15); }, 5s);
  }
  bool AwaitThumbOutline(int slider, int left) const {
    return WaitFor([&] { return sections.ThumbOutline(slider) == QRect(left, 0, 9, 25); }, 5s);
  }

  SectionWindow sections{screen};
};

TEST_F(SectionWindowOnScreen, ScrollsItsTimeLineByArrowsThatLightUp) {
  ASSERT_TRUE(AwaitNeedle(kEnd, 136));
  sections.ClickArrow(TimeLineArrow::kTowardsEnd);
  EXPECT_TRUE(AwaitNeedle(kEnd, 96));
  sections.ClickArrow(TimeLineArrow::kTowardsStart);
  EXPECT_TRUE(AwaitNeedle(kEnd, 136));

  const QRect arrow(sections.ArrowCentre(TimeLineArrow::kTowardsStart) - QPoint(7, 7),
                    QSize(15, 15));
  EXPECT_TRUE(WaitFor([&] { return CountOf(screen.Picture(), arrow, kWhite) > 0; }, 5s));
  screen.MovePointer(sections.BareGround());
  EXPECT_TRUE(WaitFor([&] { return CountOf(screen.Picture(), arrow, kWhite) == 0; }, 5s));
}

TEST_F(SectionWindowOnScreen, HasNeedlesThatTheUserDragsOrPlacesByTheMenu) {
  sections.DragNeedle(kStart, 90);
  EXPECT_TRUE(AwaitNeedle(kStart, 98));
  EXPECT_TRUE(sections.AwaitTime(TimeReadOut::kStart, "00:01:40"));
  sections.DragNeedle(kEnd, 222);
  EXPECT_TRUE(AwaitNeedle(kEnd, 358));
  EXPECT_TRUE(sections.AwaitTime(TimeReadOut::kEnd, "00:06:00"));
  EXPECT_TRUE(sections.AwaitTime(TimeReadOut::kSpan, "00:04:20"));
  EXPECT_EQ(sections.OnTimeLine(SectionWindow::kSpan), QRect(103, 31, 358 - 103, 1))
      << "the line between the needles is wrong";

  constexpr int kSetEnd = 1;
  const QPoint entry = sections.OpenMenuAt({500, 10}, kSetEnd);
  ASSERT_FALSE(entry.isNull());
  screen.Click(entry);
  EXPECT_TRUE(AwaitNeedle(kEnd, 500));
}

// Each thumb goes from 48 to 123 pixels, which are 720 and 1845 twips.
TEST_F(SectionWindowOnScreen, SetsItsOptionsByDraggedThumbsThatLightUp) {
  const QStringList values = {"07", "07", "07", "023", "07", "07", "07"};
  for (int slider = 0; slider < SectionWindow::kSliders; ++slider) {
    SCOPED_TRACE(slider);
    ASSERT_TRUE(AwaitThumbOutline(slider, 48));
    sections.DragThumb(slider, 75);
    EXPECT_TRUE(AwaitThumbOutline(slider, 123));
    EXPECT_TRUE(sections.AwaitOption(slider, values[slider]));
  }
  const QPoint thumb = sections.ThumbCentre(SectionWindow::kSliders - 1);
  EXPECT_TRUE(WaitFor([&] { return screen.Pixel(thumb) == kWhite; }, 5s));
  screen.MovePointer(sections.BareGround());
  EXPECT_TRUE(WaitFor([&] { return screen.Pixel(thumb) != kWhite; }, 5s));
}

TEST_F(SectionWindowOnScreen, ShowsThePathThatIsTypedIntoItsDialog) {
  video = program.PathOf("video.mp4");
  WriteFile(video, "no video");
  screen.Click(sections.FileButton());
  const WindowId dialog = screen.AwaitNew({sections.Id()});
  ASSERT_NE(dialog, 0U);
  ASSERT_TRUE(TypeFileName(screen, dialog, video));
  EXPECT_TRUE(WaitFor([&] { return sections.ShowsFile(video); }, 5s));
  screen.Close(sections.Id());
  EXPECT_EQ(program.AwaitExit(), 0);
}

}  // namespace
}  // namespace kelvane::desktop
