// The section window's sliders with a real pointer, the choice of a video, and what has no action.
#include <stdexcept>

#include "desktop/SectionsTest.h"

namespace kelvane::desktop {
namespace {

class SectionsOptions : public SectionsTest {
 protected:
  bool AwaitThumbOutline(int slider, int left) const {
    return WaitFor([&] { return sections.ThumbOutline(slider) == QRect(left, 0, 9, 25); }, 5s);
  }
};

// 75 pixels are 1125 twips: from 720 to 1845.
TEST_F(SectionsOptions, AllSevenThumbsFollowThePointerAndReadTheirPlace) {
  const QList<QString> values = {"07", "07", "07", "023", "07", "07", "07"};
  for (int slider = 0; slider < SectionWindow::kSliders; ++slider) {
    ASSERT_TRUE(AwaitThumbOutline(slider, 48)) << slider;
    sections.DragThumb(slider, 75);
    EXPECT_TRUE(AwaitThumbOutline(slider, 123)) << slider;
    EXPECT_TRUE(sections.AwaitOption(slider, values[slider])) << slider;
  }
}

TEST_F(SectionsOptions, TheStartValuesStayUntilAThumbIsDragged) {
  const QList<QString> values = {"04", "03", "05", "010", "025", "06", "06"};
  for (int slider = 0; slider < SectionWindow::kSliders; ++slider) {
    screen.Click(sections.ThumbCentre(slider));
    EXPECT_TRUE(sections.ShowsOption(slider, values[slider])) << slider;
  }
}

// The outline is left behind out of sight, until the pointer is on the track.
TEST_F(SectionsOptions, StepSizeIsHeldInsideItsTrack) {
  sections.DragThumb(0, 600);
  EXPECT_TRUE(sections.AwaitOption(0, "30"));
  EXPECT_TRUE(WaitFor([&] { return sections.ThumbOutline(0).isEmpty(); }, 5s));
  screen.MovePointer(sections.Track(0).center());
  EXPECT_TRUE(AwaitThumbOutline(0, 528));
  sections.DragThumb(0, -700);
  EXPECT_TRUE(sections.AwaitOption(0, "1"));
  EXPECT_TRUE(WaitFor([&] { return sections.ThumbOutline(0).isEmpty(); }, 5s));
  screen.MovePointer(sections.Track(0).center());
  EXPECT_TRUE(AwaitThumbOutline(0, 9));
}

TEST_F(SectionsOptions, ZoomIsHeldByItsReadOut) {
  sections.DragThumb(3, 479);
  EXPECT_TRUE(sections.AwaitOption(3, "100"));
  EXPECT_TRUE(AwaitThumbOutline(3, 527));
  sections.DragThumb(3, -527);
  EXPECT_TRUE(sections.AwaitOption(3, "001"));
  EXPECT_TRUE(AwaitThumbOutline(3, 0));
}

TEST_F(SectionsOptions, TheOthersMayLeaveTheirTracks) {
  sections.DragThumb(4, -108);
  EXPECT_TRUE(WaitFor([&] { return sections.ThumbOutline(4).isEmpty(); }, 5s));
  EXPECT_TRUE(sections.AwaitOption(4, "-04"));
  EXPECT_THROW(sections.DragThumb(4, 10), std::runtime_error) << "nobody could take it";
}

TEST_F(SectionsOptions, LightUpUnderThePointerAndGoOutOnTheGround) {
  const auto white = [&](int slider) {
    return screen.Pixel(sections.ThumbCentre(slider)) == 0xffffffff;
  };
  screen.MovePointer(sections.ThumbCentre(2));
  EXPECT_TRUE(WaitFor([&] { return white(2); }, 5s));
  screen.MovePointer(sections.ThumbCentre(5));
  EXPECT_TRUE(WaitFor([&] { return white(5) && !white(2); }, 5s));
  screen.MovePointer(sections.BareGround());
  EXPECT_TRUE(WaitFor([&] { return !white(5); }, 5s));
}

TEST_F(SectionsOptions, ATrackUnderThePointerIsFramed) {
  constexpr QRgb kFrameColour = 0xff404040;
  const QRect frame = sections.Track(1).adjusted(-1, -1, 1, 1);
  const auto framed = [&] {
    const QImage picture = screen.Picture(frame);
    return AllOf(picture, QRect(0, 0, frame.width(), 1), kFrameColour) &&
           AllOf(picture, QRect(0, 0, 1, frame.height()), kFrameColour);
  };
  EXPECT_FALSE(framed());
  screen.MovePointer(sections.Track(1).center());
  EXPECT_TRUE(WaitFor(framed, 5s));
  screen.MovePointer(sections.BareGround());
  EXPECT_TRUE(WaitFor([&] { return !framed(); }, 5s));
}

TEST_F(SectionsOptions, ResizingMovesNothingButTheFrame) {
  const QImage before = screen.Still(sections.OnScreen({10, 10, 950, 770}));
  screen.Resize(sections.Id(), QSize(1100, 850));
  const QRect left(2, 4, 1, 850 - 8);
  EXPECT_TRUE(WaitFor(
      [&] {
        const QImage line = screen.Picture(sections.OnScreen(left));
        return AllOf(line, line.rect(), kLit);
      },
      5s));
  EXPECT_EQ(screen.Picture(sections.OnScreen({10, 10, 950, 770})), before);
}

class SectionsFile : public SectionsTest {
 protected:
  bool Choose(const QString& path) {
    const QList<WindowId> known = screen.Windows();
    screen.Click(sections.FileButton());
    const WindowId dialog = screen.AwaitNew(known);
    return dialog != 0 && TypeFileName(screen, dialog, path);
  }
};

TEST_F(SectionsFile, IsChosenAndShown) {
  video = program.PathOf("video.mp4");
  ASSERT_NO_FATAL_FAILURE(WriteFile(video, "no video, and nobody looks"));
  ASSERT_TRUE(Choose(video));
  EXPECT_TRUE(WaitFor([&] { return sections.ShowsFile(video); }, 5s));
}

TEST_F(SectionsFile, OfACancelledDialogIsNone) {
  const QList<WindowId> known = screen.Windows();
  screen.Click(sections.FileButton());
  const WindowId dialog = screen.AwaitNew(known);
  ASSERT_NE(dialog, 0U);
  EXPECT_EQ(screen.Title(dialog).toStdString(), "Extract Section From Video");
  ASSERT_TRUE(WaitFor([&] { return screen.Active(dialog); }));
  screen.Strike(kEscape);
  EXPECT_TRUE(WaitFor([&] { return !screen.Exists(dialog); }, 5s));
  EXPECT_TRUE(AllOf(screen.Picture(),
                    sections.Place(QStringLiteral("Text1")).adjusted(2, 2, -2, -2), kDark));
}

TEST_F(SectionsFile, IsNotAskedForByTheRimOfTheButton) {
  screen.Click(sections.OnScreen({40, 16, 233, 4}).center());
  EXPECT_TRUE(HoldsFor([&] { return screen.Windows().size() == 1; }, 500ms));
}

// Everything on the window that looks like a button or a field and has no action.
TEST_F(SectionsFile, NothingFollowsFromWhatHasNoAction) {
  const QList<QRect> idle = {{50, 186, 161, 17},  {234, 186, 161, 17}, {50, 714, 73, 17},
                             {130, 714, 73, 17},  {210, 714, 73, 17},  {322, 714, 57, 17},
                             {404, 532, 89, 17},  {404, 612, 113, 17}, {572, 612, 209, 17},
                             {788, 612, 113, 17}, {418, 194, 489, 12}, {404, 676, 497, 12},
                             {60, 508, 313, 185}, {54, 245, 100, 17}};
  screen.MovePointer(sections.BareGround());
  const QRect whole(0, 0, 974, 797);
  const QImage before = screen.Still(sections.OnScreen(whole));
  for (const QRect& place : idle) {
    for (const PointerButton button : {kLeftButton, kRightButton, kMiddleButton}) {
      screen.Click(sections.OnScreen(place).center(), button);
    }
    EXPECT_EQ(screen.Windows().size(), 1) << place.left() << ", " << place.top();
    EXPECT_EQ(screen.Picture(sections.OnScreen(whole)), before)
        << place.left() << ", " << place.top();
  }
  CloseSectionsAndExpectEnd();
}

}  // namespace
}  // namespace kelvane::desktop
