// One road through the section window with a real pointer: time line, sliders, and the choice of a
// video.
#include "desktop/DesktopTest.h"
#include "desktop/driver/SectionWindow.h"

namespace kelvane::desktop {
namespace {

constexpr QRgb kStart = SectionWindow::kStartNeedle;
constexpr QRgb kEnd = SectionWindow::kEndNeedle;
constexpr QRgb kWhite = 0xffffffff;

// The program of the section window, opened.
class Sections : public DesktopTest {
 protected:
  Sections() : DesktopTest(QStringLiteral("kelvane-sections")) {}

  void SetUp() override {
    for (const char* tool : {"ffmpeg", "ffprobe", "ffplay"}) {
      program.ReplaceTool(QLatin1String(tool), QStringLiteral("exit 1"));
    }
    program.Start();
    ASSERT_TRUE(sections.Await()) << "the section window doesn't come";
  }
  // The window starts no tool, whatever the user does.
  void TearDown() override {
    for (const char* tool : {"ffmpeg", "ffprobe", "ffplay"}) {
      EXPECT_TRUE(program.RunsOf(QLatin1String(tool)).isEmpty()) << tool;
    }
    DesktopTest::TearDown();
  }

  SectionWindow sections{screen};

  bool AwaitNeedle(QRgb needle, int left) const {
    return WaitFor([&] { return sections.OnTimeLine(needle) == QRect(left, 20, 5, 15); }, 5s);
  }
  bool AwaitThumbOutline(int slider, int left) const {
    return WaitFor([&] { return sections.ThumbOutline(slider) == QRect(left, 0, 9, 25); }, 5s);
  }
};

TEST_F(Sections, ScrollTheirTimeLineByClicksOnItsArrows) {
  EXPECT_EQ(screen.Windows(), QList<WindowId>{sections.Id()});
  ASSERT_TRUE(AwaitNeedle(kEnd, 136));
  sections.ClickArrow(TimeLineArrow::kTowardsEnd);
  EXPECT_TRUE(AwaitNeedle(kEnd, 96));
  sections.ClickArrow(TimeLineArrow::kTowardsStart);
  EXPECT_TRUE(AwaitNeedle(kEnd, 136));

  const QRect arrow(sections.ArrowCentre(TimeLineArrow::kTowardsStart) - QPoint(7, 7),
                    QSize(15, 15));
  EXPECT_TRUE(WaitFor([&] { return CountOf(screen.Picture(), arrow, kWhite) > 0; }, 5s)) << "lit";
  screen.MovePointer(sections.BareGround());
  EXPECT_TRUE(WaitFor([&] { return CountOf(screen.Picture(), arrow, kWhite) == 0; }, 5s));
}

// Press, release, double-click and release: four steps within the system's time for a double one.
TEST_F(Sections, ScrollTheirTimeLineFourStepsByADoubleClick) {
  sections.ClickArrow(TimeLineArrow::kTowardsEnd);
  sections.ClickArrow(TimeLineArrow::kTowardsEnd);
  EXPECT_TRUE(AwaitNeedle(kEnd, 56));
}

TEST_F(Sections, AreMarkedByDraggedNeedlesAndByTheMenu) {
  sections.DragNeedle(kStart, 90);
  EXPECT_TRUE(AwaitNeedle(kStart, 98));
  EXPECT_TRUE(sections.AwaitTime(TimeReadOut::kStart, "00:01:40"));
  sections.DragNeedle(kEnd, 222);
  EXPECT_TRUE(AwaitNeedle(kEnd, 358));
  EXPECT_TRUE(sections.AwaitTime(TimeReadOut::kEnd, "00:06:00"));
  EXPECT_TRUE(sections.AwaitTime(TimeReadOut::kSpan, "00:04:20"));
  EXPECT_EQ(sections.OnTimeLine(SectionWindow::kSpan), QRect(103, 31, 358 - 103, 1))
      << "the line between the needles";

  sections.ChooseAt({500, 10}, 1);
  EXPECT_TRUE(AwaitNeedle(kEnd, 500));
  const QImage before = sections.TimeLinePicture();
  ASSERT_FALSE(sections.OpenMenuAt({400, 10}, 0).isNull());
  screen.Strike(kEscape);
  EXPECT_TRUE(WaitFor([&] { return sections.TimeLinePicture() == before; }, 5s));
}

TEST_F(Sections, TellTheTimeUnderThePointer) {
  const QPoint place = sections.TimeLine().topLeft() + QPoint(754, 12);
  screen.MovePointer(place - QPoint(1, 0));
  screen.MovePointer(place);
  const QRect below(place + QPoint(0, 10), QSize(120, 60));
  EXPECT_TRUE(WaitFor([&] { return ShowsTip(screen.Picture(below), "00:12:34"); }, 5s));
}

// 75 pixels are 1125 twips: from 720 to 1845.
TEST_F(Sections, HaveTheirOptionsSetByDraggedThumbs) {
  const QList<QString> values = {"07", "07", "07", "023", "07", "07", "07"};
  for (int slider = 0; slider < SectionWindow::kSliders; ++slider) {
    ASSERT_TRUE(AwaitThumbOutline(slider, 48)) << slider;
    sections.DragThumb(slider, 75);
    EXPECT_TRUE(AwaitThumbOutline(slider, 123)) << slider;
    EXPECT_TRUE(sections.AwaitOption(slider, values[slider])) << slider;
  }
  const QPoint thumb = sections.ThumbCentre(6);
  EXPECT_TRUE(WaitFor([&] { return screen.Pixel(thumb) == kWhite; }, 5s)) << "lit";
  screen.MovePointer(sections.BareGround());
  EXPECT_TRUE(WaitFor([&] { return screen.Pixel(thumb) != kWhite; }, 5s));
}

TEST_F(Sections, TakeTheFileThatIsTypedIntoTheDialog) {
  video = program.PathOf("video.mp4");
  ASSERT_NO_FATAL_FAILURE(WriteFile(video, "no video, and nobody looks"));
  const QList<WindowId> known = screen.Windows();
  screen.Click(sections.FileButton());
  const WindowId dialog = screen.AwaitNew(known);
  ASSERT_NE(dialog, 0U);
  EXPECT_EQ(screen.Title(dialog).toStdString(), "Extract Section From Video");
  ASSERT_TRUE(TypeFileName(screen, dialog, video));
  EXPECT_TRUE(WaitFor([&] { return sections.ShowsFile(video); }, 5s));
  screen.Close(sections.Id());
  EXPECT_EQ(program.AwaitExit(), 0);
}

}  // namespace
}  // namespace kelvane::desktop
