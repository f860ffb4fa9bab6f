// The marker bars under the pointer: what follows, what stays, and what is refused.
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QMouseEvent>
#include <array>
#include <cmath>
#include <random>

#include "shared/SharedValues.h"
#include "workspace/MainWindowTest.h"

namespace kelvane::testing {
namespace {

struct Box {
  float left, top, width, height;
  bool operator==(const Box&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Box& box) {
  return out << '(' << box.left << ", " << box.top << ", " << box.width << " x " << box.height
             << ')';
}

// Left, top, right, base.
using Boxes = std::array<Box, 4>;

class Markers : public MainWindowTest {
 protected:
  Boxes Bars() const {
    Boxes boxes{};
    for (const MarkerBar index : {LeftBar, TopBar, RightBar, BaseBar}) {
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
  // Presses at (2, 3) of the bar and moves the pointer by that much.
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

void PrintTo(const MovesAndBars& row, std::ostream* out) { *out << row.name; }

class MarkersAfter : public Markers, public ::testing::WithParamInterface<MovesAndBars> {};

TEST_P(MarkersAfter, TheseMovesStandThere) {
  LoadVideoOf(640, 360);
  for (const Move& move : GetParam().moves) Drag(move.bar, move.right, move.down);
  const Boxes bars = Bars();
  for (const MarkerBar index : {LeftBar, TopBar, RightBar, BaseBar}) {
    EXPECT_EQ(bars.at(index), GetParam().bars.at(index)) << "bar " << index;
  }
}

INSTANTIATE_TEST_SUITE_P(
    Markers, MarkersAfter,
    ::testing::Values(
        MovesAndBars{
            "None", {}, {{{0, 0, 5, 360}, {0, 0, 640, 5}, {635, 0, 5, 360}, {0, 355, 640, 5}}}},
        // The partners end at the left edge of the right bar; the right bar itself stays.
        MovesAndBars{"LeftBarInwards",
                     {{LeftBar, 100, 40}},
                     {{{100, 0, 5, 360}, {100, 0, 535, 5}, {635, 0, 5, 360}, {100, 355, 535, 5}}}},
        // The right bar reaches down over its corner, the left bar doesn't.
        MovesAndBars{"TopBarDown",
                     {{TopBar, 40, 50}},
                     {{{0, 50, 5, 305}, {0, 50, 640, 5}, {635, 50, 5, 310}, {0, 355, 640, 5}}}},
        MovesAndBars{"RightBarInwards",
                     {{RightBar, -135, 9}},
                     {{{0, 0, 5, 360}, {0, 0, 500, 5}, {500, 0, 5, 360}, {0, 355, 500, 5}}}},
        MovesAndBars{"BaseBarUp",
                     {{BaseBar, 9, -55}},
                     {{{0, 0, 5, 300}, {0, 0, 640, 5}, {635, 0, 5, 305}, {0, 300, 640, 5}}}},
        MovesAndBars{
            "AllFour",
            {{LeftBar, 100, 0}, {TopBar, 0, 50}, {RightBar, -100, 0}, {BaseBar, 0, -50}},
            {{{100, 50, 5, 255}, {100, 50, 435, 5}, {535, 50, 5, 260}, {100, 305, 435, 5}}}},
        // The partners keep their last width, and follow the left bar's place.
        MovesAndBars{"LeftBarPastTheRightOne",
                     {{LeftBar, 600, 0}, {LeftBar, 55, 0}},
                     {{{655, 0, 5, 360}, {655, 0, 35, 5}, {635, 0, 5, 360}, {655, 355, 35, 5}}}},
        MovesAndBars{"RightBarPastTheLeftOne",
                     {{RightBar, -625, 0}, {RightBar, -30, 0}},
                     {{{0, 0, 5, 360}, {0, 0, 10, 5}, {-20, 0, 5, 360}, {0, 355, 10, 5}}}},
        // Three pixels past: the left bar's height would be -3 and is refused, the right one's
        // is 2.
        MovesAndBars{"TopBarJustPastTheBaseOne",
                     {{TopBar, 0, 350}, {TopBar, 0, 8}},
                     {{{0, 358, 5, 5}, {0, 358, 640, 5}, {635, 358, 5, 2}, {0, 355, 640, 5}}}},
        MovesAndBars{"BaseBarFarPastTheTopOne",
                     {{BaseBar, 0, -345}, {BaseBar, 0, -110}},
                     {{{0, 0, 5, 10}, {0, 0, 640, 5}, {635, 0, 5, 15}, {0, -100, 640, 5}}}},
        MovesAndBars{"LeftBarOntoTheRightOne",
                     {{LeftBar, 635, 0}},
                     {{{635, 0, 5, 360}, {635, 0, 0, 5}, {635, 0, 5, 360}, {635, 355, 0, 5}}}},
        MovesAndBars{
            "OffTheCanvas",
            {{LeftBar, -30, 0}, {RightBar, 1000, 0}},
            {{{-30, 0, 5, 360}, {-30, 0, 1665, 5}, {1635, 0, 5, 360}, {-30, 355, 1665, 5}}}}),
    [](const auto& row) { return std::string(row.param.name); });

// The rules once more, in plain numbers.
class PlainMarkers {
 public:
  void Drag(MarkerBar bar, float by) {
    auto& [left, top, right, base] = bars;
    if (bar == LeftBar) {
      left.left += by;
      top.left = base.left = left.left;
      Keep(top.width, right.left - left.left);
      Keep(base.width, right.left - left.left);
    } else if (bar == TopBar) {
      top.top += by;
      left.top = right.top = top.top;
    } else if (bar == RightBar) {
      right.left += by;
      Keep(top.width, right.left - left.left);
      Keep(base.width, right.left - left.left);
    } else {
      base.top += by;
    }
    if (bar == TopBar || bar == BaseBar) {
      Keep(left.height, base.top - top.top);
      Keep(right.height, base.top - top.top + 5);
    }
  }
  Boxes bars{{{0, 0, 5, 360}, {0, 0, 640, 5}, {635, 0, 5, 360}, {0, 355, 640, 5}}};

 private:
  static void Keep(float& size, float wanted) {
    if (wanted >= 0) size = wanted;
  }
};

TEST_F(Markers, AWalkOf100000MovesStaysWithThePlainRules) {
  LoadVideoOf(640, 360);
  constexpr int kMoves = 100000;
  constexpr unsigned kSeed = 20;
  std::mt19937 random(kSeed);
  std::uniform_int_distribution<int> anyBar(LeftBar, BaseBar);
  std::uniform_int_distribution<int> anyDistance(-40, 40);
  PlainMarkers plain;
  for (int count = 0; count < kMoves; ++count) {
    const auto bar = static_cast<MarkerBar>(anyBar(random));
    const auto by = static_cast<float>(anyDistance(random));
    Drag(bar, by, by);
    plain.Drag(bar, by);
    ASSERT_EQ(Bars(), plain.bars) << "after move " << count;
  }
}

TEST_F(Markers, APressAndAReleaseWithoutAMoveOnlyStartTheTimer) {
  LoadVideoOf(640, 360);
  const Boxes before = Bars();
  EXPECT_FALSE(Get<Timer>("Timer1").Enabled());
  PressAt(LeftBar, 2, 3);
  EXPECT_FALSE(Get<Timer>("Timer1").Enabled());
  Bar(LeftBar).MouseUp(At(LeftBar, kLeftButton, 2, 3));
  EXPECT_EQ(Bars(), before);
  EXPECT_TRUE(Get<Timer>("Timer1").Enabled());
}

TEST_F(Markers, AReleaseOfAnyButtonOverAnyBarStartsTheTimer) {
  LoadVideoOf(640, 360);
  auto& recovery = Get<Timer>("Timer1");
  for (const MarkerBar bar : {LeftBar, TopBar, RightBar, BaseBar}) {
    for (const int button : {kLeftButton, kRightButton, kMiddleButton}) {
      recovery.setEnabled(false);
      Bar(bar).MouseUp(At(bar, button, 2, 3));
      EXPECT_TRUE(recovery.Enabled()) << "bar " << bar << ", button " << button;
    }
  }
}

class MarkersIgnore : public Markers, public ::testing::WithParamInterface<int> {};

TEST_P(MarkersIgnore, AMoveWithTheseButtons) {
  LoadVideoOf(640, 360);
  const Boxes before = Bars();
  for (const MarkerBar bar : {LeftBar, TopBar, RightBar, BaseBar}) {
    PressAt(bar, 1, 1, kRightButton);
    MoveTo(bar, 50, 60, GetParam());
  }
  EXPECT_EQ(Bars(), before);
}

INSTANTIATE_TEST_SUITE_P(Markers, MarkersIgnore,
                         ::testing::Values(kNoButton, kRightButton, kMiddleButton,
                                           kLeftButton + kRightButton, kLeftButton + kMiddleButton,
                                           kLeftButton + kRightButton + kMiddleButton));

TEST_F(Markers, APressWithAnyButtonAndOnAnyBarSaysWhereADragStarts) {
  LoadVideoOf(640, 360);
  PressAt(LeftBar, 2, 3);
  PressAt(BaseBar, 4, 1, kRightButton);
  MoveTo(LeftBar, 10, 0);
  EXPECT_EQ(Bar(LeftBar).Left(), 6);
}

TEST_F(Markers, ThePlaceOfAPressIsRoundedHalfToEven) {
  LoadVideoOf(640, 360);
  PressAt(LeftBar, 2.5F, 0);
  MoveTo(LeftBar, 2.5F, 0);
  EXPECT_EQ(Bar(LeftBar).Left(), 0.5F);
  PressAt(TopBar, 0, 3.5F);
  MoveTo(TopBar, 0, 3.5F);
  EXPECT_EQ(Bar(TopBar).Top(), -0.5F);
}

TEST_F(Markers, APressBeyond16BitsKeepsTheOneBefore) {
  LoadVideoOf(640, 360);
  PressAt(TopBar, 7, 2);
  PressAt(TopBar, 40000, 1);
  MoveTo(TopBar, 0, 11);
  EXPECT_EQ(Bar(TopBar).Top(), 10);
  MoveTo(LeftBar, 17, 0);
  EXPECT_EQ(Bar(LeftBar).Left(), 10);
}

TEST_F(Markers, ARealPointerMovesTheBarByAsMuchAsItself) {
  LoadVideoOf(640, 360);
  PumpOnce();
  PictureBox& bar = Bar(LeftBar);
  const QPoint start = bar.mapToGlobal(QPoint(2, 100));
  const auto send = [&](QEvent::Type type, QPoint place, Qt::MouseButton button) {
    QMouseEvent event(type, bar.mapFromGlobal(place), place, button,
                      type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, {});
    QApplication::sendEvent(&bar, &event);
  };
  send(QEvent::MouseButtonPress, start, Qt::LeftButton);
  for (const int x : {1, 7, 20, 90, 85}) {
    send(QEvent::MouseMove, start + QPoint(x, x / 2), Qt::NoButton);
    EXPECT_EQ(bar.Left(), static_cast<float>(x));
  }
  send(QEvent::MouseButtonRelease, start + QPoint(85, 0), Qt::LeftButton);
  EXPECT_EQ(bar.Left(), 85);
}

TEST_F(Markers, ABarRestsUnderAPointerThatRestsBetweenTwoPixels) {
  LoadVideoOf(640, 360);
  PumpOnce();
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

TEST_F(Markers, TheNumbersFollowAtTheNextTickNotDuringTheMove) {
  LoadVideoOf(640, 360);
  ASSERT_TRUE(WaitForTicks(Get<Timer>("Timer2"), 1));
  Drag(LeftBar, 655, 0);
  EXPECT_EQ(Number(RegionWidth), "0,635");
  EXPECT_EQ(CropWidth, 635);
  ASSERT_TRUE(WaitForTicks(Get<Timer>("Timer2"), 1));
  EXPECT_EQ(Number(RegionWidth), "-0,020");
  EXPECT_EQ(CropWidth, -20);
}

TEST_F(Markers, ASecondAfterAReleaseThePointersShapeIsPutBackOnce) {
  LoadVideoOf(640, 360);
  QGuiApplication::setOverrideCursor(Qt::SizeHorCursor);
  Drag(LeftBar, 3, 0);
  Timer& recovery = Get<Timer>("Timer1");
  EXPECT_EQ(recovery.Interval(), 1000);
  ASSERT_TRUE(WaitForTicks(recovery, 1));
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
  EXPECT_FALSE(recovery.Enabled());
}

TEST_F(Markers, AReleaseWithinThatSecondDoesNotPutItOff) {
  LoadVideoOf(640, 360);
  Drag(LeftBar, 3, 0);
  Timer& recovery = Get<Timer>("Timer1");
  QElapsedTimer sinceTheFirst;
  sinceTheFirst.start();
  ASSERT_TRUE(HoldsFor([&] { return recovery.Enabled(); }, 600ms));
  Drag(TopBar, 0, 3);
  ASSERT_TRUE(WaitForTicks(recovery, 1));
  EXPECT_LT(sinceTheFirst.elapsed(), 1500);
}

class PositionTip : public Markers {
 protected:
  void MoveOver(WorkspaceBox box, float x, float y, int buttons = kNoButton) const {
    Get<PictureBox>("Picture1", box).MouseMove(At(box, buttons, x, y));
  }
  std::string Tip(WorkspaceBox box) const {
    return Get<PictureBox>("Picture1", box).ToolTipText().toStdString();
  }
};

TEST_F(PositionTip, OfAnUnscrolledCanvasIsNone) {
  LoadVideoOf(640, 360);
  for (const WorkspaceBox box : {FrameBox, ViewportBox, CanvasBox, HolderBox}) {
    MoveOver(box, 120, 10);
    EXPECT_EQ(Tip(box), "");
  }
}

TEST_F(PositionTip, UndoesTheScrollingDownwardsAndNotTheScrollingAcross) {
  LoadVideoOf(640, 360);
  Get<VScrollBar>("VScroll1").setValue(3);
  Get<HScrollBar>("HScroll1").setValue(5);
  MoveOver(CanvasBox, 120, 10);
  EXPECT_EQ(Tip(CanvasBox), "Horizontal Position: 120 pixels Vertical Position: 40 pixels");
  MoveOver(ViewportBox, 7, 0);
  EXPECT_EQ(Tip(ViewportBox), "Horizontal Position: 7 pixels Vertical Position: 30 pixels");
}

TEST_F(PositionTip, IsToldWhateverButtonsAreHeld) {
  LoadVideoOf(640, 360);
  Get<VScrollBar>("VScroll1").setValue(3);
  for (const int buttons : {1, 2, 1 + 2}) {
    MoveOver(CanvasBox, 0, 0);
    MoveOver(CanvasBox, 120, 10, buttons);
    EXPECT_EQ(Tip(CanvasBox), "Horizontal Position: 120 pixels Vertical Position: 40 pixels")
        << buttons;
  }
}

TEST_F(PositionTip, IsShownByTheViewportAndTheCanvasAlone) {
  LoadVideoOf(640, 360);
  Get<VScrollBar>("VScroll1").setValue(3);
  for (const WorkspaceBox box : {FrameBox, HolderBox}) {
    MoveOver(box, 120, 10);
    EXPECT_EQ(Tip(box), "");
  }
}

TEST_F(PositionTip, StaysWhatItWasWhenTheCanvasIsScrolledBack) {
  LoadVideoOf(640, 360);
  Get<VScrollBar>("VScroll1").setValue(3);
  MoveOver(CanvasBox, 1, 2);
  Get<VScrollBar>("VScroll1").setValue(0);
  MoveOver(CanvasBox, 50, 60);
  EXPECT_EQ(Tip(CanvasBox), "Horizontal Position: 1 pixels Vertical Position: 32 pixels");
}

TEST_F(PositionTip, TellsTheWholePixelUnderAPointerBetweenTwo) {
  LoadVideoOf(640, 360);
  Get<VScrollBar>("VScroll1").setValue(3);
  PumpOnce();
  auto& viewport = Get<PictureBox>("Picture1(1)");
  DragThrough(viewport, {viewport.mapToGlobal(QPointF(700.9, 100.6))});
  EXPECT_EQ(Tip(ViewportBox), "Horizontal Position: 700 pixels Vertical Position: 130 pixels");
}

TEST_F(PositionTip, TellsSevenSignificantDigits) {
  LoadVideoOf(640, 360);
  Get<VScrollBar>("VScroll1").setValue(3);
  MoveOver(CanvasBox, 1234.567F, 1234537);
  EXPECT_EQ(Tip(CanvasBox),
            "Horizontal Position: 1234.567 pixels Vertical Position: 1234567 pixels");
}

TEST_F(PositionTip, TakesFourCharactersOfTheCanvassPlace) {
  LoadVideoOf(640, 360);
  Canvas().setTop(-12345);
  MoveOver(CanvasBox, 0, 1);
  EXPECT_EQ(Tip(CanvasBox), "Horizontal Position: 0 pixels Vertical Position: 1235 pixels");
}

}  // namespace
}  // namespace kelvane::testing
