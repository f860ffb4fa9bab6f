// The canvas takes its size from two captions, and is slid about behind the viewport.
#include <QScrollBar>

#include "shared/SharedValues.h"
#include "workspace/MainWindowTest.h"

namespace kelvane::testing {
namespace {

class Viewport : public MainWindowTest {
 protected:
  using Size = std::pair<float, float>;
  static Size SizeOf(const Control& control) { return {control.Width(), control.Height()}; }
  void ExpectSizes(const Size& size) const {
    EXPECT_EQ(SizeOf(Canvas()), size);
    EXPECT_EQ(SizeOf(Get<Control>("Picture1(3)")), size);
    EXPECT_EQ(SizeOf(Get<Control>("wmp")), size);
  }
  HScrollBar& Across() const { return Get<HScrollBar>("HScroll1"); }
  VScrollBar& Down() const { return Get<VScrollBar>("VScroll1"); }
  void SetCaption(ReadOut number, const char* caption) const {
    Get<Label>("Label1", number).setCaption(QLatin1String(caption));
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
};

TEST_F(Viewport, ALoadedVideoGivesCanvasHolderAndPlayerItsSizeInPixels) {
  for (const auto& [width, height] :
       std::vector<std::pair<int, int>>{{640, 360}, {1920, 1080}, {3840, 2160}, {101, 75}}) {
    LoadVideoOf(width, height);
    ExpectSizes({static_cast<float>(width), static_cast<float>(height)});
    EXPECT_EQ(Canvas().size(), QSize(width, height));
    ExpectBarsAtTheEdgesOf(static_cast<float>(width), static_cast<float>(height));
    EXPECT_TRUE(Canvas().isVisible());
  }
}

struct SizeAndRange {
  int width, height, across, down;
};

TEST_F(Viewport, TheScrollBarsReachAFifteenthOfTheCanvas) {
  for (const auto& [width, height, across, down] : std::vector<SizeAndRange>{{1920, 1080, 128, 72},
                                                                             {640, 360, 43, 24},
                                                                             {720, 576, 48, 38},
                                                                             {1280, 720, 85, 48},
                                                                             {100, 50, 7, 3}}) {
    LoadVideoOf(width, height);
    EXPECT_EQ(Across().Max(), across) << width;
    EXPECT_EQ(Down().Max(), down) << height;
  }
}

TEST_F(Viewport, HalvesOfTheRangeGoToTheEvenNumber) {
  for (const auto& [size, max] :
       std::vector<std::pair<float, int>>{{97.5F, 6}, {112.5F, 8}, {127.5F, 8}, {142.5F, 10}}) {
    Canvas().setWidth(size);
    Canvas().setHeight(size);
    EXPECT_EQ(Across().Max(), max) << size;
    EXPECT_EQ(Down().Max(), max) << size;
  }
}

TEST_F(Viewport, ACanvasTooLargeForTheRangeLeavesTheRange) {
  LoadVideoOf(640, 360);
  Canvas().setWidth(600000);  // a fifteenth of it is more than 16 bits hold
  EXPECT_EQ(Across().Max(), 43);
}

TEST_F(Viewport, ScrollingSlidesTheCanvasBySixAcrossAndTenDown) {
  LoadVideoOf(1920, 1080);
  for (const int value : {1, 7, 64, 128}) {
    Across().setValue(static_cast<std::int16_t>(value));
    EXPECT_EQ(Canvas().Left(), static_cast<float>(-value * 6));
  }
  for (const int value : {1, 7, 36, 72}) {
    Down().setValue(static_cast<std::int16_t>(value));
    EXPECT_EQ(Canvas().Top(), static_cast<float>(-value * 10));
  }
  EXPECT_EQ(Canvas().Left(), -768);
  EXPECT_EQ(Canvas().Top(), -720);
  Across().setValue(0);
  Down().setValue(0);
  EXPECT_EQ(Canvas().pos(), QPoint(0, 0));
}

TEST_F(Viewport, ASmallVideoSlidesOutOfTheViewportAsWell) {
  LoadVideoOf(640, 360);
  Across().setValue(43);
  Down().setValue(24);
  EXPECT_EQ(Canvas().Left(), -258);
  EXPECT_EQ(Canvas().Top(), -240);
}

TEST_F(Viewport, TheFarEdgeOfALargeVideoIsReachedWhereTheViewportHasRoomForTheRestAlone) {
  LoadVideoOf(1920, 1080);
  Across().setValue(Across().Max());
  const auto& viewport = Get<PictureBox>("Picture1", ViewportBox);
  const auto columnsOutOfReach = [&] {
    return Canvas().Left() + Canvas().Width() - viewport.Width();
  };
  form_->setWidth((1152 + 61) * 15);
  EXPECT_EQ(viewport.Width(), 1152);
  EXPECT_EQ(columnsOutOfReach(), 0);
  form_->setWidth(16665);
  EXPECT_EQ(columnsOutOfReach(), 102) << "in the narrowest window";
}

TEST_F(Viewport, TheCanvasFollowsTheThumbWhileItIsDragged) {
  LoadVideoOf(1920, 1080);
  auto* bar = Across().findChild<QScrollBar*>();
  bar->setSliderDown(true);
  bar->setSliderPosition(5);
  EXPECT_EQ(Canvas().Left(), -30);
  bar->setSliderPosition(9);
  EXPECT_EQ(Canvas().Left(), -54);
  bar->setSliderDown(false);
  EXPECT_EQ(Canvas().Left(), -54);
}

TEST_F(Viewport, TheCanvasFollowsTheThumbDownAsWell) {
  LoadVideoOf(1920, 1080);
  auto* bar = Down().findChild<QScrollBar*>();
  bar->setSliderDown(true);
  bar->setSliderPosition(5);
  EXPECT_EQ(Canvas().Top(), -50);
  bar->setSliderPosition(9);
  EXPECT_EQ(Canvas().Top(), -90);
  bar->setSliderDown(false);
  EXPECT_EQ(Canvas().Top(), -90);
  EXPECT_EQ(Canvas().Left(), 0);
}

TEST_F(Viewport, ScrollingMovesTheCanvasAloneAndChangesNoNumber) {
  LoadVideoOf(1920, 1080);
  Bar(LeftBar).setLeft(30);
  Bar(TopBar).setTop(20);
  Bar(RightBar).setLeft(1000);
  Bar(BaseBar).setTop(700);
  ASSERT_TRUE(WaitForTicks(Get<Timer>("Timer2"), 1));
  std::vector<std::string> changes;
  for (int index = 0; index < 16; ++index) {
    Before(Get<Label>("Label1", index).Change,
           [&](int which) { changes.push_back(std::to_string(which)); });
  }
  Across().setValue(100);
  Down().setValue(50);
  ASSERT_TRUE(WaitForTicks(Get<Timer>("Timer2"), 1));
  EXPECT_EQ(changes, std::vector<std::string>{});
  EXPECT_EQ((std::vector<int>{CropLeft, CropTop, CropWidth, CropHeight}),
            (std::vector<int>{30, 20, 970, 680}));
  EXPECT_EQ(PlaceOf(LeftBar), (Place{30, 0, 5, 1080}));
  EXPECT_EQ(PlaceOf(TopBar), (Place{0, 20, 1920, 5}));
  EXPECT_EQ(PlaceOf(RightBar), (Place{1000, 0, 5, 1080}));
  EXPECT_EQ(PlaceOf(BaseBar), (Place{0, 700, 1920, 5}));
  EXPECT_EQ(Canvas().Left(), -600);
  EXPECT_EQ(Canvas().Top(), -500);
  EXPECT_EQ(Get<Control>("Picture1(3)").Left(), 0);
  EXPECT_EQ(Get<Control>("Picture1(1)").Left(), 0);
}

TEST_F(Viewport, AScrollBeyondSixteenBitsLeavesTheCanvas) {
  Across().setMax(32767);
  Down().setMax(32767);
  Across().setValue(5461);
  EXPECT_EQ(Canvas().Left(), -32766);
  Across().setValue(5462);
  EXPECT_EQ(Canvas().Left(), -32766);
  Across().setValue(32767);
  EXPECT_EQ(Canvas().Left(), -32766);
  Down().setValue(3276);
  EXPECT_EQ(Canvas().Top(), -32760);
  Down().setValue(3277);
  EXPECT_EQ(Canvas().Top(), -32760);
}

TEST_F(Viewport, TheScrollValueIsKeptByALoadUntilASmallerRangeCutsIt) {
  LoadVideoOf(1920, 1080);
  Across().setValue(40);
  Down().setValue(60);
  LoadVideoOf(1280, 1081);
  EXPECT_EQ(Across().Value(), 40);
  EXPECT_EQ(Down().Value(), 60);
  EXPECT_EQ(Canvas().Left(), -240);
  EXPECT_EQ(Canvas().Top(), -600);
  LoadVideoOf(320, 240);
  EXPECT_EQ(Across().Max(), 21);
  EXPECT_EQ(Across().Value(), 21);
  EXPECT_EQ(Down().Value(), 16);
  EXPECT_EQ(Canvas().Left(), -126);
  EXPECT_EQ(Canvas().Top(), -160);
}

TEST_F(Viewport, ASecondVideoOfTheSameSizeKeepsTheBarsAndTheScrolling) {
  LoadVideoOf(640, 360);
  Across().setValue(3);
  Bar(LeftBar).setLeft(44);
  Bar(BaseBar).setTop(222);
  Pick(tools_.File(QStringLiteral("other.mp4")), SizeText(640, 360), DurationText("00:00:01.00"));
  EXPECT_EQ(Path().Text(), tools_.Path() + QLatin1String("/other.mp4"));
  EXPECT_EQ(Bar(LeftBar).Left(), 44);
  EXPECT_EQ(Bar(BaseBar).Top(), 222);
  EXPECT_EQ(Across().Value(), 3);
}

TEST_F(Viewport, AnyOtherSizeDiscardsTheRegion) {
  LoadVideoOf(640, 360);
  Bar(LeftBar).setLeft(44);
  Bar(LeftBar).setTop(10);
  Bar(RightBar).setHeight(20);
  LoadVideoOf(640, 361);
  ExpectBarsAtTheEdgesOf(640, 361);
}

TEST_F(Viewport, ResettingDoesNotTouchTheThicknessAndGoesByTheBarsOwn) {
  Bar(LeftBar).setWidth(9);
  Bar(TopBar).setHeight(8);
  Bar(RightBar).setWidth(11);
  Bar(BaseBar).setHeight(7);
  Canvas().setWidth(300);
  EXPECT_EQ(PlaceOf(LeftBar), (Place{0, 0, 9, 249}));
  EXPECT_EQ(PlaceOf(TopBar), (Place{0, 0, 300, 8}));
  EXPECT_EQ(PlaceOf(RightBar), (Place{300 - 11, 0, 11, 249}));
  EXPECT_EQ(PlaceOf(BaseBar), (Place{0, 249 - 7, 300, 7}));
}

TEST_F(Viewport, TheBarsAreResetBeforeTheScrollRangesAreSet) {
  LoadVideoOf(1920, 1080);
  Across().setValue(128);
  Down().setValue(72);
  Bar(LeftBar).setLeft(44);
  Bar(BaseBar).setTop(55);
  // A smaller range cuts the value, and that is to be seen.
  std::vector<std::string> seen;
  const auto see = [&](const char* name) {
    seen.push_back(name + std::string(" with bars at ") + std::to_string(Bar(LeftBar).x()) +
                   " and " + std::to_string(Bar(BaseBar).y()));
  };
  Before(Across().Change, [&] { see("across"); });
  Before(Down().Change, [&] { see("down"); });
  Canvas().setWidth(640);
  Bar(LeftBar).setLeft(44);
  Bar(BaseBar).setTop(55);
  Canvas().setHeight(360);
  EXPECT_EQ(seen, (std::vector<std::string>{"across with bars at 0 and 1075",
                                            "down with bars at 0 and 355"}));
}

TEST_F(Viewport, CaptionsAreReadAsNumbersInTheLocalesWay) {
  struct Row {
    const char* caption;
    float size;
  };
  for (const auto& [caption, size] : std::vector<Row>{{"1,920", 1920},
                                                      {"0,640", 640},
                                                      {"12,345", 12345},
                                                      {"75", 75},
                                                      {" 0,031 ", 31},
                                                      {"0,000", 0}}) {
    SetCaption(SourceWidth, caption);
    SetCaption(SourceHeight, caption);
    ExpectSizes({size, size});
  }
}

TEST_F(Viewport, CaptionsAtNoughtGiveACanvasOfNoSizeAndNoRange) {
  LoadVideoOf(640, 360);
  SetCaption(SourceWidth, "0,000");
  SetCaption(SourceHeight, "0,000");
  ExpectSizes({0, 0});
  EXPECT_EQ(Across().Max(), 0);
  EXPECT_EQ(Down().Max(), 0);
}

TEST_F(Viewport, ACaptionThatIsNoNumberOrANegativeOneKeepsTheSize) {
  for (const char* caption : {"t=4320", "", "N/A", "-0,007", "1920\r\nfoo"}) {
    SetCaption(SourceWidth, "0,640");
    SetCaption(SourceHeight, "0,360");
    SetCaption(SourceWidth, caption);
    SetCaption(SourceHeight, caption);
    ExpectSizes({640, 360});
  }
}

TEST_F(Viewport, AfterACaptionThatIsNoNumberPlayerAndCanvasStillTakeTheHoldersSize) {
  SetCaption(SourceWidth, "0,640");
  SetCaption(SourceHeight, "0,360");
  Get<Control>("wmp").setWidth(1);
  Get<Control>("wmp").setHeight(2);
  Canvas().setWidth(100);
  Canvas().setHeight(200);
  SetCaption(SourceWidth, "no number");
  SetCaption(SourceHeight, "no number");
  ExpectSizes({640, 360});
}

TEST_F(Viewport, WidthAndHeightArriveOneAfterTheOther) {
  SetCaption(SourceWidth, "0,640");
  EXPECT_EQ(SizeOf(Canvas()), Size(640, 249));
  EXPECT_EQ(SizeOf(Get<Control>("Picture1(3)")), Size(640, 209));
  EXPECT_EQ(SizeOf(Get<Control>("wmp")), Size(640, 201));
  ExpectBarsAtTheEdgesOf(640, 249);
}

TEST_F(Viewport, TheHolderTakesASizeFirstThenThePlayerThenTheCanvas) {
  std::vector<std::string> seen;
  const auto see = [&](int index) {
    std::string sizes = "Picture1(" + std::to_string(index) + "):";
    for (const char* name : {"Picture1(3)", "wmp", "Picture1(2)"}) {
      const QSize size = Get<Control>(name).size();
      sizes += " " + std::to_string(size.width()) + "x" + std::to_string(size.height());
    }
    seen.push_back(sizes);
  };
  for (const WorkspaceBox box : {HolderBox, CanvasBox}) {
    Before(Get<PictureBox>("Picture1", box).Resize, see);
  }
  SetCaption(SourceWidth, "0,640");
  SetCaption(SourceHeight, "0,360");
  EXPECT_EQ(seen,
            (std::vector<std::string>{
                "Picture1(3): 640x209 201x201 417x249", "Picture1(2): 640x209 640x201 640x249",
                "Picture1(3): 640x360 640x201 640x249", "Picture1(2): 640x360 640x360 640x360"}));
}

TEST_F(Viewport, OnlyTheCanvasResetsTheBarsWhenItChangesSize) {
  Bar(LeftBar).setLeft(77);
  for (const WorkspaceBox box : {FrameBox, ViewportBox, HolderBox}) {
    Get<PictureBox>("Picture1", box).setWidth(500);
    EXPECT_EQ(Bar(LeftBar).Left(), 77) << "Picture1(" << box << ")";
  }
  Canvas().setHeight(400);
  EXPECT_EQ(Bar(LeftBar).Left(), 0);
}

TEST_F(Viewport, OtherCaptionsPassThroughWithoutEffect) {
  LoadVideoOf(640, 360);
  for (int index = 0; index < 16; ++index) {
    if (index == SourceWidth || index == SourceHeight) continue;
    Get<Label>("Label1", index).setCaption(QStringLiteral("1,234"));
  }
  ExpectSizes({640, 360});
  ExpectBarsAtTheEdgesOf(640, 360);
}

}  // namespace
}  // namespace kelvane::testing
