// The main window under a Wayland compositor without an X server, whatever the compositor's scale.
#include <memory>

#include "desktop/DesktopTest.h"
#include "desktop/driver/Compositor.h"

namespace kelvane::desktop {
namespace {

constexpr QSize kClip(320, 180);

class UnderACompositor : public DesktopTest, public testing::WithParamInterface<int> {
 protected:
  void SetUp() override {
    compositor_ = std::make_unique<Compositor>(screen, TheDisplay(), GetParam());
    compositor_->Show(program);
    program.Start();
    ASSERT_TRUE(window.AwaitFilling(compositor_->Id())) << "the main window doesn't come";
    // The compositor adds up the pointer's ways, and may have missed the first ones: its edges set
    // it right.
    const QPoint corner = window.Place(MainWindow::NameOf(kLoadVideo)).topLeft() + QPoint(1, 1);
    ASSERT_TRUE(WaitFor([&] {
      screen.MovePointer({0, 0});
      screen.MovePointer(screen.Place(window.Id()).bottomRight());
      window.PointAt(kLoadVideo);
      return WaitFor([&] { return screen.Pixel(corner) == kLit; }, 500ms);
    })) << "no command is lit";
  }

  // The program first, as at a user's hands.
  void TearDown() override {
    DesktopTest::TearDown();
    program.Kill();
    compositor_.reset();
  }

  // Types the name into the open dialog, which has no window of its own on the display.
  void Load(const QString& path) {
    window.Click(kLoadVideo);
    const QPoint middle = window.Area().center();
    ASSERT_TRUE(WaitFor([&] { return screen.Pixel(middle) != kDark; })) << "no dialog comes";
    QImage last;
    ASSERT_TRUE(WaitFor([&] {
      last = screen.Picture();
      return HoldsFor([&] { return Like(screen.Picture(), last); }, 300ms);
    })) << "the dialog doesn't settle";
    screen.Type(path);
    screen.Strike(kReturn);
  }

 private:
  // But for a caret that blinks.
  static bool Like(const QImage& one, const QImage& other) {
    const QRect difference = Difference(one, other);
    return difference.width() <= 2 * GetParam();
  }

  std::unique_ptr<Compositor> compositor_;
};

TEST_P(UnderACompositor, LiesInPixelsOfTheScreen) {
  const QImage picture = screen.Picture();
  for (const char* shape : {"Shape1", "Shape2", "Shape3", "Shape4"}) {
    const QRect place = window.Place(shape);
    EXPECT_TRUE(AllOf(picture, QRect(place.bottomLeft(), QSize(place.width(), 1)), kFrame))
        << shape;
    EXPECT_TRUE(AllOf(picture, QRect(place.topRight(), QSize(1, place.height())), kFrame)) << shape;
    const QRect above(place.bottomLeft() - QPoint(-1, 1), QSize(10, 1));
    EXPECT_TRUE(AllOf(picture, above, kDark)) << shape << " has a line of one pixel";
  }
}

TEST_P(UnderACompositor, ShowsOnePixelOfTheVideoOnOneOfTheScreenAndMovesBarsByPixels) {
  video = program.PathOf(QStringLiteral("chequers.mkv"));
  ASSERT_TRUE(MakeChequers(video, kClip, 60));
  ASSERT_NO_FATAL_FAILURE(Load(video));
  EXPECT_TRUE(window.AwaitBarsAround(kClip));
  window.Click(kRunVideo);
  EXPECT_TRUE(WaitFor([&] { return ShowsChequers(window.Inside(kClip)); }, 5s));
  window.Click(kStopVideo);

  screen.Drag(window.OnCanvas({2, 90}), {51, 0});
  const MarkerBars dragged{{51, 0, 5, 180}, {51, 0, 264, 5}, {315, 0, 5, 180}, {51, 175, 264, 5}};
  // The compositor draws the pointer into its picture.
  window.PointAtGround();
  EXPECT_TRUE(window.AwaitBars(dragged, QRect({}, kClip)));
  // No seam is left on the bare canvas.
  EXPECT_TRUE(WaitFor([&] {
    const QImage canvas = screen.Picture(QRect(window.OnCanvas({}), kClip));
    return AllOf(canvas, QRect(0, 0, 51, 180), kBlack) &&
           AllOf(canvas, QRect(56, 5, 259, 170), kBlack);
  }));
}

INSTANTIATE_TEST_SUITE_P(OfScale, UnderACompositor, testing::Values(1, 2));

}  // namespace
}  // namespace kelvane::desktop
