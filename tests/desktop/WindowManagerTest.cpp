// The main window under a window manager that chooses the size of every window.
#include "desktop/DesktopTest.h"
#include "desktop/driver/PrivateDisplay.h"
#include "desktop/driver/TilingManager.h"

namespace kelvane::desktop {
namespace {

// All are narrower than the window's least width.
constexpr QSize kFirstSize(900, 600);
constexpr QSize kSecondSize(1000, 650);
constexpr QSize kThirdSize(950, 620);

class TiledDisplay {
 protected:
  QTemporaryDir home_;
  PrivateDisplay display_{home_.path().toStdString(), WindowManager::kNone};
  Screen tiledScreen_{display_.Name()};
  TilingManager manager{display_.Name(), kFirstSize};
};

class UnderATilingManager : protected TiledDisplay, public DesktopTest {
 protected:
  UnderATilingManager() : DesktopTest(tiledScreen_, QString::fromStdString(display_.Name())) {}

  // Opens the window, which asks for its least size and isn't given it.
  void SetUp() override {
    ASSERT_NO_FATAL_FAILURE(OpenWindow());
    ASSERT_TRUE(AwaitRequestAfter(0));
    ASSERT_TRUE(AwaitLaidOut(kFirstSize));
  }

  void TearDown() override {
    CloseAndExpectEnd();
    DesktopTest::TearDown();
  }

  bool AwaitRequestAfter(int requests) const {
    return WaitFor([&] { return manager.Requests() > requests; });
  }
  bool AwaitLaidOut(QSize size) const {
    return WaitFor([&] {
      return screen.Place(window.Id()).size() == size &&
             window.FrameLiesInPlace("Picture1(0)", kGrey);
    });
  }
  // Whether the window asks for no other size.
  bool StopsAsking() const {
    const int requests = manager.Requests();
    return HoldsFor([&] { return manager.Requests() == requests; }, 1s);
  }
};

TEST_F(UnderATilingManager, TheWindowAsksOnceForItsLeastSizeAndThenAcceptsTheSizeThatIsRepeated) {
  EXPECT_TRUE(StopsAsking());
  const int requests = manager.Requests();
  manager.Resize(window.Id(), kSecondSize);
  ASSERT_TRUE(AwaitRequestAfter(requests));
  EXPECT_TRUE(AwaitLaidOut(kSecondSize));
  EXPECT_TRUE(StopsAsking());
  EXPECT_EQ(manager.Requests(), requests + 1);
}

// Some managers grant less than a window asks for, to keep it on the screen.
TEST_F(UnderATilingManager, TheWindowAsksAtMostOnceMoreAfterAThirdSizeAndThenAcceptsIt) {
  manager.GrantNext(kThirdSize);
  const int requests = manager.Requests();
  manager.Resize(window.Id(), kSecondSize);
  ASSERT_TRUE(AwaitRequestAfter(requests));
  EXPECT_TRUE(AwaitLaidOut(kThirdSize));
  EXPECT_TRUE(StopsAsking());
  EXPECT_LE(manager.Requests(), requests + 2);
}

// Some managers grant no request while the user drags an edge.
TEST_F(UnderATilingManager, TheWindowAsksOnceMoreWhenTheUserReleasesItsEdge) {
  screen.MovePointer(QPoint(kSecondSize.width() + 20, 100));
  screen.Press(kLeftButton);
  int requests = manager.Requests();
  manager.Resize(window.Id(), kSecondSize);
  ASSERT_TRUE(AwaitRequestAfter(requests));
  EXPECT_TRUE(StopsAsking());
  requests = manager.Requests();
  screen.Release(kLeftButton);
  EXPECT_TRUE(AwaitRequestAfter(requests));
  EXPECT_TRUE(AwaitLaidOut(kSecondSize));
  EXPECT_TRUE(StopsAsking());
  EXPECT_EQ(manager.Requests(), requests + 1);

  // The same if the button is released right after the first request.
  screen.Press(kLeftButton);
  requests = manager.Requests();
  manager.Resize(window.Id(), kThirdSize);
  ASSERT_TRUE(AwaitRequestAfter(requests));
  screen.Release(kLeftButton);
  EXPECT_TRUE(AwaitRequestAfter(requests + 1));
  EXPECT_TRUE(AwaitLaidOut(kThirdSize));
}

}  // namespace
}  // namespace kelvane::desktop
