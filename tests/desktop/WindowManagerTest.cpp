// The main window under a window manager that keeps it at a size of its own.
#include "desktop/DesktopTest.h"
#include "desktop/driver/HoldingManager.h"
#include "desktop/driver/PrivateDisplay.h"

namespace kelvane::desktop {
namespace {

constexpr QSize kTooNarrow(900, 600);
constexpr QSize kTooNarrowAsWell(1000, 650);

class HeldDisplay {
 protected:
  QTemporaryDir home_;
  PrivateDisplay display_{home_.path().toStdString(), WindowManager::kNone};
  Screen heldScreen_{display_.Name()};
  HoldingManager manager{display_.Name(), kTooNarrow};
};

class AHeldWindow : protected HeldDisplay, public DesktopTest {
 protected:
  AHeldWindow() : DesktopTest(heldScreen_, QString::fromStdString(display_.Name())) {}

  // Opens the window and waits for it to have asked for its least size.
  void OpenAndAsk() {
    ASSERT_NO_FATAL_FAILURE(OpenWindow());
    ASSERT_TRUE(WaitFor([&] { return manager.Requests() > 0; }));
  }

  bool AwaitLaidOutIn(QSize size) const {
    return WaitFor([&] {
      if (screen.Place(window.Id()).size() != size) return false;
      const QImage picture = screen.Picture();
      const QRect frame = window.Place(QStringLiteral("Picture1(0)"));
      return AllOf(picture, QRect(frame.bottomLeft(), QSize(frame.width(), 1)), kLit) &&
             AllOf(picture, QRect(frame.topRight(), QSize(1, frame.height())), kLit);
    });
  }

  // That the window asks for no size any more.
  bool Rests() const {
    const int requests = manager.Requests();
    return HoldsFor([&] { return manager.Requests() == requests; }, 1s);
  }
};

TEST_F(AHeldWindow, IsLaidOutInTheSizeThatItIsGivenAndAsksForNoOther) {
  ASSERT_NO_FATAL_FAILURE(OpenAndAsk());
  EXPECT_TRUE(AwaitLaidOutIn(kTooNarrow));
  EXPECT_TRUE(Rests());

  const int requests = manager.Requests();
  manager.Give(window.Id(), kTooNarrowAsWell);
  ASSERT_TRUE(WaitFor([&] { return manager.Requests() > requests; }));
  EXPECT_TRUE(AwaitLaidOutIn(kTooNarrowAsWell));
  EXPECT_TRUE(Rests());
}

// Some managers grant no size while the user drags an edge.
TEST_F(AHeldWindow, AsksOnceMoreWhenTheUserLetsGoOfItsEdge) {
  ASSERT_NO_FATAL_FAILURE(OpenAndAsk());
  ASSERT_TRUE(AwaitLaidOutIn(kTooNarrow));
  screen.MovePointer(QPoint(kTooNarrowAsWell.width() + 20, 100));
  screen.Press(kLeftButton);
  int requests = manager.Requests();
  manager.Give(window.Id(), kTooNarrowAsWell);
  ASSERT_TRUE(WaitFor([&] { return manager.Requests() > requests; }));
  EXPECT_TRUE(Rests());

  requests = manager.Requests();
  screen.Release(kLeftButton);
  EXPECT_TRUE(WaitFor([&] { return manager.Requests() > requests; }));
  EXPECT_TRUE(AwaitLaidOutIn(kTooNarrowAsWell));
  EXPECT_TRUE(Rests());
  EXPECT_EQ(manager.Requests(), requests + 1);
}

TEST_F(AHeldWindow, AsksOnceMoreWhenTheUserLetsGoOfItsEdgeAtOnce) {
  ASSERT_NO_FATAL_FAILURE(OpenAndAsk());
  ASSERT_TRUE(AwaitLaidOutIn(kTooNarrow));
  screen.MovePointer(QPoint(kTooNarrowAsWell.width() + 20, 100));
  screen.Press(kLeftButton);
  const int requests = manager.Requests();
  manager.Give(window.Id(), kTooNarrowAsWell);
  ASSERT_TRUE(WaitFor([&] { return manager.Requests() > requests; }));
  screen.Release(kLeftButton);
  EXPECT_TRUE(WaitFor([&] { return manager.Requests() > requests + 1; }));
  EXPECT_TRUE(AwaitLaidOutIn(kTooNarrowAsWell));
}

}  // namespace
}  // namespace kelvane::desktop
