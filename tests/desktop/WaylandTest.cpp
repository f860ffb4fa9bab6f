// The windows under a Wayland compositor without an X server, whatever its scales, on outputs of
// any size.
#include <memory>

#include "desktop/DesktopTest.h"
#include "desktop/driver/Compositor.h"
#include "desktop/driver/JoinerWindow.h"
#include "desktop/driver/Places.h"
#include "desktop/driver/SectionWindow.h"

namespace kelvane::desktop {
namespace {

constexpr QSize kClip(320, 180);

struct Situation {
  const char* name;
  QList<Output> outputs;  // the last of them shows the window
};

void PrintTo(const Situation& situation, std::ostream* out) { *out << situation.name; }

class OnACompositor : public DesktopTest, public ::testing::WithParamInterface<Situation> {
 protected:
  explicit OnACompositor(const QString& programName) : DesktopTest(programName) {}

  void SetUp() override {
    compositor_ = std::make_unique<Compositor>(screen, TheDisplay(), GetParam().outputs);
    compositor_->Show(program);
    program.Start();
  }

  // The program first, as at a user's hands.
  void TearDown() override {
    EXPECT_TRUE(program.Running());
    DesktopTest::TearDown();
    program.Kill();
    compositor_.reset();
  }

  WindowId OutputWindow() const { return compositor_->Id(); }

  // The compositor adds up the pointer's ways, and may have missed the first ones: the edges of its
  // outputs set it right.
  void PointFromTheCorners(QPoint place) {
    const QRect output = screen.Place(OutputWindow());
    screen.MovePointer(output.topLeft());
    screen.MovePointer(output.bottomRight());
    screen.MovePointer(place);
  }

  // Clicks there and types the name into the file dialog that comes, which has no window of its own
  // on the display; it covers `ground`, a place of this colour.
  void ChooseFile(QPoint button, QPoint ground, QRgb color, const QString& path) {
    screen.Click(button);
    ASSERT_TRUE(WaitFor([&] { return screen.Pixel(ground) != color; })) << "no dialog comes";
    QImage last;
    ASSERT_TRUE(WaitFor([&] {
      last = screen.Picture();
      return HoldsFor([&] { return Like(screen.Picture(), last); }, 300ms);
    })) << "the dialog doesn't settle";
    screen.Type(path);
    screen.Strike(kReturn);
    ASSERT_TRUE(WaitFor([&] { return screen.Pixel(ground) == color; })) << "the dialog stays";
  }

 private:
  // But for a caret that blinks.
  static bool Like(const QImage& one, const QImage& other) {
    const QRect difference = Difference(one, other);
    return difference.width() <= 2 * GetParam().outputs.last().scale;
  }

  std::unique_ptr<Compositor> compositor_;
};

class UnderACompositor : public OnACompositor {
 protected:
  UnderACompositor() : OnACompositor(QStringLiteral("kelvane")) {}

  void SetUp() override {
    OnACompositor::SetUp();
    ASSERT_TRUE(window.AwaitFilling(OutputWindow())) << "the main window doesn't come";
    const QPoint corner = window.Place(MainWindow::NameOf(kLoadVideo)).topLeft() + QPoint(1, 1);
    ASSERT_TRUE(WaitFor([&] {
      PointFromTheCorners(window.Place(MainWindow::NameOf(kLoadVideo)).center());
      return WaitFor([&] { return screen.Pixel(corner) == kLit; }, 500ms);
    })) << "no command is lit";
  }

  void Load(const QString& path) {
    ChooseFile(window.Place(MainWindow::NameOf(kLoadVideo)).center(), window.Area().center(), kDark,
               path);
  }
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
  EXPECT_TRUE(WaitFor([&] { return ShowsChequers(window.Inside(kClip)); }));
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

class UnderACompositorOfAnyFraction : public OnACompositor {
 protected:
  UnderACompositorOfAnyFraction() : OnACompositor(QStringLiteral("kelvane")) {}
};

// But for a pixel at the edges, which the compositor may draw from two.
TEST_P(UnderACompositorOfAnyFraction, IsAsLargeInPixelsOfTheScreenAsAtScaleOne) {
  EXPECT_TRUE(WaitFor([&] {
    const QRect area = AreaUnderMenus(screen, OutputWindow(), kDark);
    if (area.isEmpty()) return false;
    const QRect bar = PlaceIn(QStringLiteral("Form1"), area.size(), QStringLiteral("pbar"))
                          .translated(area.topLeft());
    const QImage picture = screen.Picture();
    return AllOf(picture, bar.adjusted(1, 1, -1, -1), kProgressBack) &&
           AllOf(picture, QRect(bar.left(), bar.top() - 2, bar.width(), 1), kDark) &&
           AllOf(picture, QRect(bar.left(), bar.bottom() + 2, bar.width(), 1), kDark) &&
           AllOf(picture, QRect(bar.left() - 2, bar.top(), 1, bar.height()), kDark) &&
           AllOf(picture, QRect(bar.right() + 2, bar.top(), 1, bar.height()), kDark);
  }));
}

class JoinerUnderACompositor : public OnACompositor {
 protected:
  JoinerUnderACompositor() : OnACompositor(QStringLiteral("kelvane-joiner")) {}

  JoinerWindow joiner{screen};
};

TEST_P(JoinerUnderACompositor, LiesInPixelsOfTheScreenAndShowsTenSecondsAsOneOfThem) {
  program.ReplaceTool(QStringLiteral("ffprobe"),
                      QStringLiteral("echo '  Duration: 00:10:10.90, start: 0.0' >&2"));
  const QString section = program.PathOf(QStringLiteral("section.mp4"));
  WriteFile(section, "no video");
  // A compositor may show a first picture in another scale, where the menus have another height.
  ASSERT_TRUE(WaitFor([&] {
    if (!joiner.AwaitFilling(OutputWindow())) return false;
    const QRect frame = joiner.Place(QStringLiteral("Shape2"));
    const QImage picture = screen.Picture();
    return AllOf(picture, QRect(frame.topLeft(), QSize(frame.width(), 1)), kLit) &&
           AllOf(picture, QRect(frame.bottomLeft(), QSize(frame.width(), 1)), kLit) &&
           AllOf(picture, QRect(frame.topLeft(), QSize(1, frame.height())), kLit);
  })) << "the joiner window doesn't come";

  PointFromTheCorners(joiner.BareChart());
  ASSERT_NO_FATAL_FAILURE(ChooseFile(joiner.ButtonCentre(JoinerButton::kAddSection),
                                     joiner.Chart().center(), JoinerWindow::kGround, section));
  EXPECT_TRUE(WaitFor([&] { return joiner.Strip(0) == QRect(1, 1, 61, 17); }))
      << joiner.Strip(0).width();
}

class SectionsUnderACompositor : public OnACompositor {
 protected:
  SectionsUnderACompositor() : OnACompositor(QStringLiteral("kelvane-sections")) {}

  SectionWindow sections{screen};
};

TEST_P(SectionsUnderACompositor, MovesNeedlesAndThumbsByPixelsOfTheScreen) {
  constexpr int kAccuracy = 2;
  ASSERT_TRUE(sections.AwaitFilling(OutputWindow())) << "the section window doesn't come";
  // The compositor draws the pointer into its picture.
  const QPoint aside = sections.OnScreen({10, 300, 2, 2}).center();
  PointFromTheCorners(aside);
  const QRect needle(136, 20, 5, 15);
  ASSERT_TRUE(WaitFor([&] { return sections.OnTimeLine(SectionWindow::kEndNeedle) == needle; }));
  screen.Still(screen.Place(OutputWindow()));
  const QRect thumb = sections.ThumbOutline(kAccuracy);
  sections.DragNeedle(SectionWindow::kEndNeedle, 51);
  screen.MovePointer(aside);
  EXPECT_TRUE(WaitFor(
      [&] { return sections.OnTimeLine(SectionWindow::kEndNeedle) == needle.translated(51, 0); }));
  sections.DragThumb(kAccuracy, 101);
  screen.MovePointer(aside);
  EXPECT_TRUE(
      WaitFor([&] { return sections.ThumbOutline(kAccuracy) == thumb.translated(101, 0); }));
}

const auto kOnOneOutput = ::testing::Values(
    Situation{"Scale1", {{{1500, 900}, 1}}}, Situation{"Scale2", {{{1500, 900}, 2}}},
    Situation{"SmallerThanTheWindow", {{{1100, 600}, 1}}},
    Situation{"SmallerThanTheWindowAndDense", {{{1100, 700}, 2}}});
const auto kAtAFraction = ::testing::Values(Situation{"ScaleOneAndAHalf", {{{1500, 900}, 1.5}}});
const auto kOnOneOfTwo =
    ::testing::Values(Situation{"TheDenseOneOfTwo", {{{500, 900}, 1}, {{1300, 800}, 2}}},
                      Situation{"ThePlainOneOfTwo", {{{500, 900}, 2}, {{1300, 800}, 1}}});

std::string NameOf(const ::testing::TestParamInfo<Situation>& situation) {
  return situation.param.name;
}

INSTANTIATE_TEST_SUITE_P(OneOutput, UnderACompositor, kOnOneOutput, NameOf);
INSTANTIATE_TEST_SUITE_P(OneOutput, UnderACompositorOfAnyFraction, kAtAFraction, NameOf);
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)  // 6.4 paints at whole scales alone
INSTANTIATE_TEST_SUITE_P(AtAFraction, UnderACompositor, kAtAFraction, NameOf);
INSTANTIATE_TEST_SUITE_P(AtAFraction, JoinerUnderACompositor, kAtAFraction, NameOf);
INSTANTIATE_TEST_SUITE_P(AtAFraction, SectionsUnderACompositor, kAtAFraction, NameOf);
#endif
INSTANTIATE_TEST_SUITE_P(TwoOutputs, UnderACompositor, kOnOneOfTwo, NameOf);
INSTANTIATE_TEST_SUITE_P(OneOutput, JoinerUnderACompositor, kOnOneOutput, NameOf);
INSTANTIATE_TEST_SUITE_P(OneOutput, SectionsUnderACompositor, kOnOneOutput, NameOf);
INSTANTIATE_TEST_SUITE_P(TwoOutputs, JoinerUnderACompositor, kOnOneOfTwo, NameOf);
INSTANTIATE_TEST_SUITE_P(TwoOutputs, SectionsUnderACompositor, kOnOneOfTwo, NameOf);

}  // namespace
}  // namespace kelvane::desktop
