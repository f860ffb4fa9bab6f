// The canvas takes the size of the video from two captions, and scrolls in the viewport.
#include <QScrollBar>

#include "shared/SharedValues.h"
#include "workspace/MainWindowTest.h"

namespace kelvane::testing {
namespace {

class Viewport : public MainWindowTest {
 protected:
  // Expects this size of the canvas, the holder and the player.
  void ExpectSizes(float width, float height) const {
    for (const char* name : {"Picture1(2)", "Picture1(3)", "wmp"}) {
      EXPECT_EQ(Get<Control>(name).Width(), width) << name;
      EXPECT_EQ(Get<Control>(name).Height(), height) << name;
    }
  }
  void SetCaptions(const char* caption) const {
    Get<Label>("Label1", SourceWidth).setCaption(caption);
    Get<Label>("Label1", SourceHeight).setCaption(caption);
  }
  using Place = std::vector<float>;
  Place PlaceOf(MarkerBar bar) const {
    return {Bar(bar).Left(), Bar(bar).Top(), Bar(bar).Width(), Bar(bar).Height()};
  }
  void ExpectBarsAtTheEdgesOf(float width, float height) const {
    EXPECT_EQ(PlaceOf(LeftBar), (Place{0, 0, 5, height}));
    EXPECT_EQ(PlaceOf(TopBar), (Place{0, 0, width, 5}));
    EXPECT_EQ(PlaceOf(RightBar), (Place{width - 5, 0, 5, height}));
    EXPECT_EQ(PlaceOf(BaseBar), (Place{0, height - 5, width, 5}));
  }
  void ExpectCanvasAt(float left, float top) const {
    EXPECT_EQ(Canvas().Left(), left);
    EXPECT_EQ(Canvas().Top(), top);
  }

  HScrollBar& across_ = Get<HScrollBar>("HScroll1");
  VScrollBar& down_ = Get<VScrollBar>("VScroll1");
};

TEST_F(Viewport, GivesCanvasHolderAndPlayerTheSizeOfTheVideoInPixels) {
  for (const auto& [width, height] : {std::pair(640, 360), {1920, 1080}, {101, 75}}) {
    LoadVideoOf(width, height);
    ExpectSizes(static_cast<float>(width), static_cast<float>(height));
    EXPECT_EQ(Canvas().size(), QSize(width, height));
    ExpectBarsAtTheEdgesOf(static_cast<float>(width), static_cast<float>(height));
  }
}

TEST_F(Viewport, HasScrollRangesOfAFifteenthOfTheCanvas) {
  struct Case {
    int width, height, across, down;
  };
  for (const auto& [width, height, across, down] :
       {Case{1920, 1080, 128, 72}, {720, 576, 48, 38}, {640, 360, 43, 24}}) {
    LoadVideoOf(width, height);
    EXPECT_EQ(across_.Max(), across) << width;
    EXPECT_EQ(down_.Max(), down) << height;
  }
  Canvas().setWidth(600000);
  EXPECT_EQ(across_.Max(), 43) << "a range beyond 16 bits was taken";
}

TEST_F(Viewport, ReachesTheFarEdgeOfALargeVideoOnlyIfTheViewportIsWideEnough) {
  LoadVideoOf(1920, 1080);
  across_.setValue(across_.Max());
  const auto& viewport = Get<PictureBox>("Picture1", ViewportBox);
  const auto columnsOutOfReach = [&] {
    return Canvas().Left() + Canvas().Width() - viewport.Width();
  };
  constexpr float kBesideTheViewport = 61;
  form_->setWidth((1152 + kBesideTheViewport) * kTwipsPerPixel);
  EXPECT_EQ(viewport.Width(), 1152);
  EXPECT_EQ(columnsOutOfReach(), 0);
  form_->setWidth(16665);
  EXPECT_EQ(columnsOutOfReach(), 102) << "in the narrowest window";
}

TEST_F(Viewport, ScrollsTheCanvasBySixPixelsHorizontallyAndTenVertically) {
  LoadVideoOf(1920, 1080);
  for (const auto& [across, down] : {std::pair(1, 7), {64, 36}, {128, 72}, {0, 0}}) {
    across_.setValue(static_cast<std::int16_t>(across));
    down_.setValue(static_cast<std::int16_t>(down));
    ExpectCanvasAt(static_cast<float>(-6 * across), static_cast<float>(-10 * down));
  }
}

TEST_F(Viewport, ScrollsASmallVideoOutOfSightAsWell) {
  LoadVideoOf(640, 360);
  across_.setValue(across_.Max());
  down_.setValue(down_.Max());
  ExpectCanvasAt(-258, -240);
}

TEST_F(Viewport, ScrollsWhileAThumbIsDragged) {
  LoadVideoOf(1920, 1080);
  for (ScrollBar* bar : {static_cast<ScrollBar*>(&across_), static_cast<ScrollBar*>(&down_)}) {
    auto* thumb = bar->findChild<QScrollBar*>();
    thumb->setSliderDown(true);
    thumb->setSliderPosition(9);
    bar == &across_ ? ExpectCanvasAt(-54, 0) : ExpectCanvasAt(-54, -90);
    thumb->setSliderDown(false);
  }
  ExpectCanvasAt(-54, -90);
}

TEST_F(Viewport, ScrollsTheCanvasAloneAndChangesNoNumber) {
  LoadVideoOf(1920, 1080);
  Bar(LeftBar).setLeft(30);
  Bar(BaseBar).setTop(700);
  MeasureRegion();
  bool changed = false;
  for (int index = 0; index < 16; ++index) {
    Before(Get<Label>("Label1", index).Change, [&](int) { changed = true; });
  }
  across_.setValue(100);
  down_.setValue(50);
  MeasureRegion();
  EXPECT_FALSE(changed);
  EXPECT_EQ((std::vector<int>{CropLeft, CropTop, CropWidth, CropHeight}),
            (std::vector<int>{30, 0, 1885, 700}));
  EXPECT_EQ(PlaceOf(LeftBar), (Place{30, 0, 5, 1080}));
  EXPECT_EQ(PlaceOf(BaseBar), (Place{0, 700, 1920, 5}));
  EXPECT_EQ(Get<Control>("Picture1(3)").Left(), 0);
  EXPECT_EQ(Get<Control>("Picture1(1)").Left(), 0);
}

TEST_F(Viewport, DoesNotScrollToAPlaceBeyond16Bits) {
  across_.setMax(32767);
  down_.setMax(32767);
  across_.setValue(5461);
  down_.setValue(3276);
  ExpectCanvasAt(-32766, -32760);
  across_.setValue(5462);
  down_.setValue(3277);
  ExpectCanvasAt(-32766, -32760);
}

TEST_F(Viewport, KeepsItsScrollValuesInALoadUnlessTheRangeIsSmaller) {
  LoadVideoOf(1920, 1080);
  across_.setValue(40);
  down_.setValue(60);
  LoadVideoOf(1280, 1081);
  ExpectCanvasAt(-240, -600);
  LoadVideoOf(320, 240);
  EXPECT_EQ(across_.Value(), 21);
  EXPECT_EQ(down_.Value(), 16);
  ExpectCanvasAt(-126, -160);
}

TEST_F(Viewport, KeepsBarsAndScrollingForASecondVideoOfTheSameSize) {
  LoadVideoOf(640, 360);
  across_.setValue(3);
  Bar(LeftBar).setLeft(44);
  Bar(BaseBar).setTop(222);
  Pick(tools_.MakeFile("other.mp4"), SizeText(640, 360), DurationText("00:00:01.00"));
  EXPECT_EQ(Path().Text(), tools_.Path() + "/other.mp4");
  EXPECT_EQ(Bar(LeftBar).Left(), 44);
  EXPECT_EQ(Bar(BaseBar).Top(), 222);
  ExpectCanvasAt(-18, 0);
}

TEST_F(Viewport, ResetsTheBarsForASecondVideoOfAnotherSize) {
  LoadVideoOf(640, 360);
  Bar(LeftBar).setLeft(44);
  Bar(LeftBar).setTop(10);
  Bar(RightBar).setHeight(20);
  LoadVideoOf(640, 361);
  ExpectBarsAtTheEdgesOf(640, 361);
}

TEST_F(Viewport, ResetsTheBarsOnlyWhenTheCanvasChangesSize) {
  Bar(LeftBar).setLeft(77);
  for (const WorkspaceBox box : {FrameBox, ViewportBox, HolderBox}) {
    Get<PictureBox>("Picture1", box).setWidth(500);
    EXPECT_EQ(Bar(LeftBar).Left(), 77) << "Picture1(" << box << ")";
  }
  Canvas().setHeight(400);
  EXPECT_EQ(Bar(LeftBar).Left(), 0);
}

TEST_F(Viewport, SizesCanvasHolderAndPlayerByTheCaptionsOfTheSourceSizeAlone) {
  for (const auto& [caption, size] :
       {std::pair("1,920", 1920.0F), {"12,345", 12345}, {" 0,031 ", 31}, {"0,000", 0}}) {
    SetCaptions(caption);
    ExpectSizes(size, size);
  }
  EXPECT_EQ(across_.Max(), 0);
  EXPECT_EQ(down_.Max(), 0);
  for (int index = 0; index < 16; ++index) {
    if (index == SourceWidth || index == SourceHeight) continue;
    Get<Label>("Label1", index).setCaption("1,234");
  }
  ExpectSizes(0, 0);
}

TEST_F(Viewport, GivesTheCanvasItsWidthBeforeTheHeightIsKnown) {
  Get<Label>("Label1", SourceWidth).setCaption("0,640");
  EXPECT_EQ(Canvas().size(), QSize(640, 249));
  EXPECT_EQ(Get<Control>("Picture1(3)").size(), QSize(640, 209));
  EXPECT_EQ(Get<Control>("wmp").size(), QSize(640, 201));
  ExpectBarsAtTheEdgesOf(640, 249);
}

TEST_F(Viewport, GivesCanvasAndPlayerTheHoldersSizeForACaptionThatIsNoSize) {
  SetCaptions("no number");
  ExpectSizes(385, 209);
  for (const char* caption : {"t=4320", "", "N/A", "-0,007", "1920\r\nfoo"}) {
    SetCaptions("0,640");
    SetCaptions(caption);
    ExpectSizes(640, 640);
  }
}

}  // namespace
}  // namespace kelvane::testing
