// The marker bars follow the pointer, and a tool tip shows the pointer's position.
#include <QGuiApplication>
#include <array>

#include "shared/SharedValues.h"
#include "workspace/MainWindowTest.h"

namespace kelvane::testing {
namespace {

struct Box {
  float left, top, width, height;
  bool operator==(const Box&) const = default;
};

void PrintTo(const Box& box, std::ostream* out) {
  *out << '(' << box.left << ", " << box.top << ", " << box.width << " x " << box.height << ')';
}

// The bars are in the order of MarkerBar.
using Boxes = std::array<Box, 4>;
constexpr std::array kBars{LeftBar, TopBar, RightBar, BaseBar};

class Markers : public MainWindowTest {
 protected:
  Boxes Bars() const {
    Boxes boxes{};
    for (const MarkerBar index : kBars) {
      const PictureBox& bar = Bar(index);
      boxes.at(index) = {bar.Left(), bar.Top(), bar.Width(), bar.Height()};
    }
    return boxes;
  }
  void PressAt(MarkerBar bar, float x, float y, int button = kLeftButton) const {
    Bar(bar).MouseDown(At(bar, button, x, y));
  }
  void MoveTo(MarkerBar bar, float x, float y, int buttons = kLeftButton) const {
    Bar(bar).MouseMove(At(bar, buttons, x, y));
  }
  // Presses at (2, 3) of the bar, moves the pointer by `right` and `down`, and releases the button.
  void Drag(MarkerBar bar, float right, float down) const {
    PressAt(bar, 2, 3);
    MoveTo(bar, 2 + right, 3 + down);
    Bar(bar).MouseUp(At(bar, kLeftButton, 2, 3));
  }
  static MouseEvent At(int index, int button, float x, float y) {
    return {.Index = index, .Button = button, .Shift = 0, .X = x, .Y = y};
  }
};

struct Move {
  MarkerBar bar;
  float right, down;
};

struct MovesAndBars {
  const char* name;
  std::vector<Move> moves;
  Boxes bars;
};

void PrintTo(const MovesAndBars& tested, std::ostream* out) { *out << tested.name; }

class MarkersAfterDrags : public Markers, public ::testing::WithParamInterface<MovesAndBars> {};

TEST_P(MarkersAfterDrags, AreAtThesePlaces) {
  LoadVideoOf(640, 360);
  for (const Move& move : GetParam().moves) Drag(move.bar, move.right, move.down);
  EXPECT_EQ(Bars(), GetParam().bars);
}

const MovesAndBars kCases[] = {
    {"None", {}, {{{0, 0, 5, 360}, {0, 0, 640, 5}, {635, 0, 5, 360}, {0, 355, 640, 5}}}},
    // The top and base bars end at the left edge of the right bar.
    {"LeftBarInwards",
     {{LeftBar, 100, 40}},
     {{{100, 0, 5, 360}, {100, 0, 535, 5}, {635, 0, 5, 360}, {100, 355, 535, 5}}}},
    // The right bar reaches down over its corner with the base bar, the left bar doesn't.
    {"TopBarDown",
     {{TopBar, 40, 50}},
     {{{0, 50, 5, 305}, {0, 50, 640, 5}, {635, 50, 5, 310}, {0, 355, 640, 5}}}},
    {"RightBarInwards",
     {{RightBar, -135, 9}},
     {{{0, 0, 5, 360}, {0, 0, 500, 5}, {500, 0, 5, 360}, {0, 355, 500, 5}}}},
    {"BaseBarUp",
     {{BaseBar, 9, -55}},
     {{{0, 0, 5, 300}, {0, 0, 640, 5}, {635, 0, 5, 305}, {0, 300, 640, 5}}}},
    {"AllFour",
     {{LeftBar, 100, 0}, {TopBar, 0, 50}, {RightBar, -100, 0}, {BaseBar, 0, -50}},
     {{{100, 50, 5, 255}, {100, 50, 435, 5}, {535, 50, 5, 260}, {100, 305, 435, 5}}}},
    // The top and base bars keep their last width, and follow the left bar.
    {"LeftBarPastTheRightOne",
     {{LeftBar, 600, 0}, {LeftBar, 55, 0}},
     {{{655, 0, 5, 360}, {655, 0, 35, 5}, {635, 0, 5, 360}, {655, 355, 35, 5}}}},
    {"RightBarPastTheLeftOne",
     {{RightBar, -625, 0}, {RightBar, -30, 0}},
     {{{0, 0, 5, 360}, {0, 0, 10, 5}, {-20, 0, 5, 360}, {0, 355, 10, 5}}}},
    // A height of -3 for the left bar is refused; the right bar's height becomes 2.
    {"TopBarJustPastTheBaseOne",
     {{TopBar, 0, 350}, {TopBar, 0, 8}},
     {{{0, 358, 5, 5}, {0, 358, 640, 5}, {635, 358, 5, 2}, {0, 355, 640, 5}}}},
    {"BaseBarFarPastTheTopOne",
     {{BaseBar, 0, -345}, {BaseBar, 0, -110}},
     {{{0, 0, 5, 10}, {0, 0, 640, 5}, {635, 0, 5, 15}, {0, -100, 640, 5}}}},
    {"LeftBarOntoTheRightOne",
     {{LeftBar, 635, 0}},
     {{{635, 0, 5, 360}, {635, 0, 0, 5}, {635, 0, 5, 360}, {635, 355, 0, 5}}}},
    {"OffTheCanvas",
     {{LeftBar, -30, 0}, {RightBar, 1000, 0}},
     {{{-30, 0, 5, 360}, {-30, 0, 1665, 5}, {1635, 0, 5, 360}, {-30, 355, 1665, 5}}}},
};

INSTANTIATE_TEST_SUITE_P(Markers, MarkersAfterDrags, ::testing::ValuesIn(kCases),
                         [](const auto& tested) { return std::string(tested.param.name); });

TEST_F(Markers, StartTheirTimerAtTheReleaseOfAnyButtonAndNotAtAPress) {
  LoadVideoOf(640, 360);
  const Boxes before = Bars();
  auto& timer = Get<Timer>("Timer1");
  for (const MarkerBar bar : kBars) {
    for (const int button : {kLeftButton, kRightButton, kMiddleButton}) {
      timer.setEnabled(false);
      PressAt(bar, 2, 3, button);
      EXPECT_FALSE(timer.Enabled()) << "bar " << bar << ", button " << button;
      Bar(bar).MouseUp(At(bar, button, 2, 3));
      EXPECT_TRUE(timer.Enabled()) << "bar " << bar << ", button " << button;
    }
  }
  EXPECT_EQ(Bars(), before);
}

TEST_F(Markers, FollowThePointerOnlyWhileTheLeftButtonAloneIsHeld) {
  LoadVideoOf(640, 360);
  const Boxes before = Bars();
  for (const int held :
       {int{kNoButton}, int{kRightButton}, int{kMiddleButton}, kLeftButton + kRightButton,
        kLeftButton + kMiddleButton, kLeftButton + kRightButton + kMiddleButton}) {
    for (const MarkerBar bar : kBars) {
      PressAt(bar, 1, 1, kRightButton);
      MoveTo(bar, 50, 60, held);
    }
    EXPECT_EQ(Bars(), before) << "buttons " << held;
  }
}

TEST_F(Markers, AreDraggedFromThePlaceOfTheLastPressOfAnyButtonOnAnyBar) {
  LoadVideoOf(640, 360);
  PressAt(LeftBar, 2, 3);
  PressAt(BaseBar, 4, 1, kRightButton);
  MoveTo(LeftBar, 10, 0);
  EXPECT_EQ(Bar(LeftBar).Left(), 6);
}

TEST_F(Markers, DoNotMoveUnderAPointerThatRestsBetweenTwoPixels) {
  LoadVideoOf(640, 360);
  ServePendingEvents();
  PictureBox& bar = Bar(LeftBar);
  const QPointF start = bar.mapToGlobal(QPointF(2.4, 100.7));
  DragThrough(bar, {start, start, start});
  EXPECT_EQ(bar.Left(), 0);
  const QPointF there = start + QPointF(50.5, 0);
  DragThrough(bar, {start, there, there, there});
  EXPECT_EQ(bar.Left(), 50);
  EXPECT_EQ(Bar(TopBar).Left(), 50);
  EXPECT_EQ(Bar(TopBar).Width(), 585);
}

TEST_F(Markers, ChangeTheNumbersOnlyAtTheNextTickWhenTheyAreDraggedOrReset) {
  LoadVideoOf(640, 360);
  MeasureRegion();
  Drag(LeftBar, 655, 0);
  EXPECT_EQ(Number(RegionWidth), "0,635");
  EXPECT_EQ(CropWidth, 635);
  MeasureRegion();
  EXPECT_EQ(Number(RegionWidth), "-0,020");
  EXPECT_EQ(CropWidth, -20);
  Give(ResetMarkers);
  EXPECT_EQ(Number(RegionWidth), "-0,020");
  EXPECT_EQ(CropWidth, -20);
  MeasureRegion();
  EXPECT_EQ(Number(RegionWidth), "0,635");
}

TEST_F(Markers, PutThePointersShapeBackASecondAfterARelease) {
  LoadVideoOf(640, 360);
  QGuiApplication::setOverrideCursor(Qt::SizeHorCursor);
  Drag(LeftBar, 3, 0);
  Timer& timer = Get<Timer>("Timer1");
  EXPECT_EQ(timer.Interval(), 1000);
  Tick(timer);
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
  EXPECT_FALSE(timer.Enabled());
}

class PositionTip : public Markers {
 protected:
  PositionTip() { LoadVideoOf(640, 360); }
  void ScrollDown(std::int16_t value) const { Get<VScrollBar>("VScroll1").setValue(value); }
  // Moves the pointer over the box and returns the box's tip.
  QString TipAfterMove(WorkspaceBox box, float x, float y, int buttons = kNoButton) const {
    auto& moved = Get<PictureBox>("Picture1", box);
    moved.MouseMove(At(box, buttons, x, y));
    return moved.ToolTipText();
  }
};

TEST_F(PositionTip, AddsTheVerticalScrollingToThePositionButNotTheHorizontal) {
  ScrollDown(3);
  Get<HScrollBar>("HScroll1").setValue(5);
  EXPECT_EQ(TipAfterMove(CanvasBox, 120, 10),
            "Horizontal Position: 120 pixels Vertical Position: 40 pixels");
  EXPECT_EQ(TipAfterMove(ViewportBox, 7, 0, kLeftButton + kRightButton),
            "Horizontal Position: 7 pixels Vertical Position: 30 pixels");
}

TEST_F(PositionTip, RoundsThePlaceOfAPointerBetweenTwoPixelsDown) {
  ScrollDown(3);
  ServePendingEvents();
  auto& viewport = Get<PictureBox>("Picture1", ViewportBox);
  DragThrough(viewport, {viewport.mapToGlobal(QPointF(700.9, 100.6))});
  EXPECT_EQ(viewport.ToolTipText(),
            "Horizontal Position: 700 pixels Vertical Position: 130 pixels");
}

TEST_F(PositionTip, IsSetForTheViewportAndTheCanvasAlone) {
  ScrollDown(3);
  for (const WorkspaceBox box : {FrameBox, HolderBox}) EXPECT_EQ(TipAfterMove(box, 120, 10), "");
}

TEST_F(PositionTip, IsNotSetWhileTheCanvasIsNotScrolledDown) {
  for (const WorkspaceBox box : {ViewportBox, CanvasBox}) {
    EXPECT_EQ(TipAfterMove(box, 120, 10), "");
  }
  ScrollDown(3);
  const QString tip = TipAfterMove(CanvasBox, 1, 2);
  ScrollDown(0);
  EXPECT_EQ(TipAfterMove(CanvasBox, 50, 60), tip);
}

TEST_F(PositionTip, AddsOnlyTheFirstFourDigitsOfTheVerticalScrolling) {
  Canvas().setTop(-12345);
  EXPECT_EQ(TipAfterMove(CanvasBox, 0, 1),
            "Horizontal Position: 0 pixels Vertical Position: 1235 pixels");
}

}  // namespace
}  // namespace kelvane::testing
