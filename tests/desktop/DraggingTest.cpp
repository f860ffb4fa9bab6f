// The marker bars under a real pointer.
#include "desktop/DesktopTest.h"

namespace kelvane::desktop {
namespace {

constexpr QSize kVideo(640, 360);
constexpr QRect kCanvas({}, kVideo);

// In the middle of each bar at the edges of the canvas.
constexpr QPoint kOnLeftBar(2, 180);
constexpr QPoint kOnTopBar(320, 2);
constexpr QPoint kOnRightBar(637, 180);
constexpr QPoint kOnBaseBar(320, 357);

class Dragging : public DesktopTest {
 protected:
  void OpenWindowWithBars() {
    ReplaceProbe("00:00:10.00");
    ASSERT_NO_FATAL_FAILURE(OpenWindowWithPretendedVideo());
    ASSERT_TRUE(window.AwaitBarsAround(kVideo));
  }

  // Lays the pointer on the place of the canvas and presses.
  void Grab(QPoint place, PointerButton button = kLeftButton) {
    grabbed_ = window.OnCanvas(place);
    screen.MovePointer(grabbed_);
    screen.Press(button);
  }

  // Takes the grabbed bar this far from where it was grabbed, as a hand does.
  void PullBy(QPoint way) {
    screen.MovePointer(grabbed_ + way / 3);
    screen.MovePointer(grabbed_ + way);
  }

  void Drag(QPoint place, QPoint way, PointerButton button = kLeftButton) {
    screen.Drag(window.OnCanvas(place), way, button);
  }

  void ExpectBars(const MarkerBars& bars, const QRect& canvas = kCanvas) const {
    EXPECT_TRUE(window.AwaitBars(bars, canvas));
    EXPECT_TRUE(window.AwaitRegion(RegionOf(bars)));
  }

  void ResetMarkers() {
    window.Click(kResetMarkers);
    ASSERT_TRUE(window.AwaitBarsAround(kVideo));
    ASSERT_TRUE(window.AwaitVideo(kVideo));
  }

 private:
  QPoint grabbed_;
};

struct OneDrag {
  const char* description;
  QPoint place;
  QPoint way;
  MarkerBars expected;
};

TEST_F(Dragging, MovesTheBarAlongItsOwnAxisAndKeepsTheOthersJoined) {
  const QList<OneDrag> drags = {
      {"left bar inwards",
       kOnLeftBar,
       {100, 40},
       {{100, 0, 5, 360}, {100, 0, 535, 5}, {635, 0, 5, 360}, {100, 355, 535, 5}}},
      {"top bar inwards",
       kOnTopBar,
       {40, 50},
       {{0, 50, 5, 305}, {0, 50, 640, 5}, {635, 50, 5, 310}, {0, 355, 640, 5}}},
      {"right bar inwards",
       kOnRightBar,
       {-200, 40},
       {{0, 0, 5, 360}, {0, 0, 435, 5}, {435, 0, 5, 360}, {0, 355, 435, 5}}},
      {"base bar inwards",
       kOnBaseBar,
       {40, -100},
       {{0, 0, 5, 255}, {0, 0, 640, 5}, {635, 0, 5, 260}, {0, 255, 640, 5}}},
      {"base bar half off the canvas",
       kOnBaseBar,
       {0, 3},
       {{0, 0, 5, 358}, {0, 0, 640, 5}, {635, 0, 5, 363}, {0, 358, 640, 5}}},
  };
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithBars());
  for (const OneDrag& drag : drags) {
    SCOPED_TRACE(drag.description);
    Drag(drag.place, drag.way);
    ExpectBars(drag.expected);
    ASSERT_NO_FATAL_FAILURE(ResetMarkers());
  }
}

TEST_F(Dragging, TakesTheLeftBarPastTheRightOne) {
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithBars());
  Drag(kOnRightBar, QPoint(-335, 0));
  ExpectBars({{0, 0, 5, 360}, {0, 0, 300, 5}, {300, 0, 5, 360}, {0, 355, 300, 5}});
  Grab(kOnLeftBar);
  PullBy(QPoint(250, 0));
  ExpectBars({{250, 0, 5, 360}, {250, 0, 50, 5}, {300, 0, 5, 360}, {250, 355, 50, 5}});
  PullBy(QPoint(250, 0));
  screen.MovePointer(window.OnCanvas(kOnLeftBar + QPoint(320, 0)));
  // The read-out says "-0,020"; the partners follow with the last width that they could have.
  ExpectBars({{320, 0, 5, 360}, {320, 0, 50, 5}, {300, 0, 5, 360}, {320, 355, 50, 5}});
  screen.MovePointer(window.OnCanvas(kOnLeftBar + QPoint(300, 0)));
  ExpectBars({{300, 0, 5, 360}, {300, 0, 0, 5}, {300, 0, 5, 360}, {300, 355, 0, 5}});
  screen.Release(kLeftButton);
  ASSERT_NO_FATAL_FAILURE(ResetMarkers());
}

TEST_F(Dragging, RestsWhileASecondButtonIsHeld) {
  const MarkerBars at50 = {{50, 0, 5, 360}, {50, 0, 585, 5}, {635, 0, 5, 360}, {50, 355, 585, 5}};
  const MarkerBars at80 = {{80, 0, 5, 360}, {80, 0, 555, 5}, {635, 0, 5, 360}, {80, 355, 555, 5}};
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithBars());
  Grab(kOnLeftBar);
  PullBy(QPoint(50, 0));
  ExpectBars(at50);
  screen.Press(kRightButton);
  PullBy(QPoint(79, 0));
  screen.Release(kRightButton);
  EXPECT_TRUE(HoldsFor([&] { return window.ShowsBars(at50, kCanvas); }, 300ms));
  screen.MovePointer(window.OnCanvas(kOnLeftBar + QPoint(80, 0)));
  ExpectBars(at80);
  screen.Release(kLeftButton);
  screen.MovePointer(window.OnCanvas(kOnLeftBar + QPoint(200, 0)));
  ExpectBars(at80);
}

// The window starts with a viewport far smaller than this canvas.
TEST_F(Dragging, ReachesTheBarsBeyondTheViewportOnceTheyAreScrolledIntoIt) {
  const QSize large(1920, 1080);
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(large, 1));
  ASSERT_TRUE(window.AwaitBarsAround(large));
  EXPECT_LT(window.Bars().right(), 1915) << "the right bar is out of sight";
  EXPECT_LT(window.Bars().bottom(), 1075) << "the base bar is out of sight";
  window.ScrollToTheFarCorner();
  const QRect canvas(QPoint(-768, -720), large);
  ASSERT_TRUE(window.AwaitBars(BarsAround(large), canvas));
  Drag(QPoint(1917, 900) + canvas.topLeft(), QPoint(-300, 40));
  ExpectBars({{0, 0, 5, 1080}, {0, 0, 1615, 5}, {1615, 0, 5, 1080}, {0, 1075, 1615, 5}}, canvas);
  Drag(QPoint(1200, 1077) + canvas.topLeft(), QPoint(40, -200));
  const MarkerBars bars = {{0, 0, 5, 875}, {0, 0, 1615, 5}, {1615, 0, 5, 880}, {0, 875, 1615, 5}};
  ExpectBars(bars, canvas);
  // And back out of sight: the region stays.
  const QRect across = window.Place("HScroll1");
  const QRect down = window.Place("VScroll1");
  screen.Drag(across.topRight() + QPoint(-across.height() - 20, across.height() / 2),
              QPoint(-across.width(), 0));
  screen.Drag(down.bottomLeft() + QPoint(down.width() / 2, -down.width() - 20),
              QPoint(0, -down.height()));
  ExpectBars(bars, QRect({}, large));
}

TEST_F(Dragging, ShowsAPointerThatPointsBothWaysOverABar) {
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithBars());
  window.PointAtGround();
  const QSize arrow = screen.PointerShape();
  for (const QPoint place : {kOnLeftBar, kOnRightBar}) {
    screen.MovePointer(window.OnCanvas(place));
    EXPECT_TRUE(WaitFor([&] {
      const QSize shape = screen.PointerShape();
      return shape != arrow && shape.width() > shape.height();
    }));
  }
  for (const QPoint place : {kOnTopBar, kOnBaseBar}) {
    screen.MovePointer(window.OnCanvas(place));
    EXPECT_TRUE(WaitFor([&] {
      const QSize shape = screen.PointerShape();
      return shape != arrow && shape.height() > shape.width();
    }));
  }
}

class PositionTip : public Dragging {
 protected:
  // Lays the pointer on the viewport's ground beside the canvas and leaves it there.
  void RestBesideCanvas() {
    screen.MovePointer(window.OnCanvas(kBesideCanvas - QPoint(1, 0)));
    screen.MovePointer(window.OnCanvas(kBesideCanvas));
  }

  static constexpr QPoint kBesideCanvas{800, 100};
};

TEST_F(PositionTip, ComesOnceTheCanvasHasBeenScrolledDown) {
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithBars());
  ASSERT_TRUE(window.AwaitTimesOfNothing());
  RestBesideCanvas();
  const QRect down = window.Place("VScroll1");
  const QPoint arrow = down.bottomRight() - QPoint(down.width() / 2, down.width() / 2);
  for (int step = 0; step < 3; ++step) screen.Click(arrow);
  ASSERT_TRUE(window.AwaitBars(BarsAround(kVideo), QRect(QPoint(0, -30), kVideo)));
  RestBesideCanvas();
  // 100 pixels down in the viewport are 130 down in the video; across, scrolling is left alone.
  EXPECT_TRUE(WaitFor([&] {
    return ShowsTip(screen.Picture(),
                    "Horizontal Position: 800 pixels Vertical Position: 130 pixels");
  }));
}

}  // namespace
}  // namespace kelvane::desktop
