// The windows under Wayland compositors, on outputs of several scales and sizes.
#include <memory>
#include <vector>

#include "desktop/DesktopTest.h"
#include "desktop/driver/Compositor.h"
#include "desktop/driver/JoinerWindow.h"
#include "desktop/driver/Places.h"
#include "desktop/driver/StabiliserWindow.h"

namespace kelvane::desktop {
namespace {

constexpr QSize kClip(320, 180);

struct Outputs {
  const char* name;
  QList<Output> list;  // the last one shows the window
};

void PrintTo(const Outputs& outputs, std::ostream* out) { *out << outputs.name; }

class OnACompositor : public DesktopTest, public ::testing::WithParamInterface<Outputs> {
 protected:
  explicit OnACompositor(const QString& programName) : DesktopTest(programName) {}

  void SetUp() override {
    compositor_ = std::make_unique<Compositor>(screen, TheDisplay(), GetParam().list);
    compositor_->UseFor(program);
    program.Start();
  }

  // Ends the program before the compositor.
  void TearDown() override {
    if (compositor_) {
      EXPECT_TRUE(program.Running());
      // In a coverage build, what the program has run counts only if the program ends by itself.
      if (compositor_->CloseWindow()) program.AwaitExit(5s);
    }
    DesktopTest::TearDown();
    program.Kill();
    compositor_.reset();
  }

  void EndCompositor() { compositor_.reset(); }

  // The window of the X display that shows the program's window.
  WindowId OutputWindow() const { return compositor_->LastOutput(); }

  // Moves the pointer to `place` by way of the output's corners. The compositor adds up the
  // pointer's moves and may have missed the first ones; it stops the pointer at the edges, which
  // corrects the sum.
  void MovePointerViaCorners(QPoint place) {
    const QRect output = screen.Place(OutputWindow());
    screen.MovePointer(output.topLeft());
    screen.MovePointer(output.bottomRight());
    screen.MovePointer(place);
  }

  // Clicks the button and types the path into the file dialog that this opens. The dialog covers
  // the place `covered`, which has the colour `color` while no dialog is open.
  void ChooseFile(QPoint button, QPoint covered, QRgb color, const QString& path) {
    screen.Click(button);
    ASSERT_TRUE(WaitFor([&] { return screen.Pixel(covered) != color; })) << "no dialog comes";
    QImage last;
    ASSERT_TRUE(WaitFor([&] {
      last = screen.Picture();
      return HoldsFor([&] { return AreSameButForCaret(screen.Picture(), last); }, 300ms);
    })) << "the dialog never stops changing";
    screen.Type(path);
    screen.PressKey(kReturn);
    ASSERT_TRUE(WaitFor([&] { return screen.Pixel(covered) == color; })) << "the dialog stays";
  }

 private:
  static bool AreSameButForCaret(const QImage& one, const QImage& other) {
    const QRect difference = Difference(one, other);
    return difference.width() <= 2 * GetParam().list.last().scale;
  }

  std::unique_ptr<Compositor> compositor_;
};

class MainWindowUnderACompositor : public OnACompositor {
 protected:
  MainWindowUnderACompositor() : OnACompositor("kelvane") {}

  void SetUp() override {
    OnACompositor::SetUp();
    ASSERT_TRUE(window.AwaitInOutput(OutputWindow())) << "the main window doesn't come";
    const QPoint corner = window.Place(MainWindow::NameOf(kLoadVideo)).topLeft() + QPoint(1, 1);
    ASSERT_TRUE(WaitFor([&] {
      MovePointerViaCorners(window.Place(MainWindow::NameOf(kLoadVideo)).center());
      return WaitFor([&] { return screen.Pixel(corner) == kGrey; }, 500ms);
    })) << "no command is lit";
  }

  void Load(const QString& path) {
    ChooseFile(window.Place(MainWindow::NameOf(kLoadVideo)).center(), window.Area().center(), kDark,
               path);
  }
};

TEST_P(MainWindowUnderACompositor, HasFramesOnePixelWide) {
  EXPECT_TRUE(WaitFor([&] { return window.FramesLieInPlace(); }));
}

TEST_P(MainWindowUnderACompositor, ShowsTheVideoUnscaledAndMovesBarsByPixels) {
  video = program.PathOf("chequers.mkv");
  ASSERT_TRUE(MakeChequers(video, kClip, 60));
  ASSERT_NO_FATAL_FAILURE(Load(video));
  EXPECT_TRUE(window.AwaitBarsAround(kClip));
  window.Click(kRunVideo);
  EXPECT_TRUE(WaitFor([&] { return ShowsChequers(window.Inside(kClip)); }));
  window.Click(kStopVideo);

  screen.Drag(window.OnCanvas({2, 90}), {51, 0});
  const MarkerBars dragged{{51, 0, 5, 180}, {51, 0, 264, 5}, {315, 0, 5, 180}, {51, 175, 264, 5}};
  // The pointer is part of the compositor's picture.
  window.PointAtGround();
  EXPECT_TRUE(window.AwaitBars(dragged, QRect({}, kClip)));
  // The bars leave no trace on the canvas.
  EXPECT_TRUE(WaitFor([&] {
    const QImage canvas = screen.Picture(QRect(window.OnCanvas({}), kClip));
    return AllOf(canvas, QRect(0, 0, 51, 180), kBlack) &&
           AllOf(canvas, QRect(56, 5, 259, 170), kBlack);
  }));
}

class MainWindowAtAFractionalScale : public OnACompositor {
 protected:
  MainWindowAtAFractionalScale() : OnACompositor("kelvane") {}
};

// The compositor may blend the pixels at the edges.
TEST_P(MainWindowAtAFractionalScale, IsAsLargeInPixelsOfTheScreenAsAtScale1) {
  EXPECT_TRUE(WaitFor([&] {
    const QRect area = AreaUnderMenus(screen, OutputWindow(), kDark);
    if (area.isEmpty()) return false;
    const QRect bar = PlaceIn("Form1", area.size(), "pbar").translated(area.topLeft());
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
  JoinerUnderACompositor() : OnACompositor("kelvane-joiner") {}

  JoinerWindow joiner{screen};
};

TEST_P(JoinerUnderACompositor, HasFramesOnePixelWideAndShowsTenSecondsAsOnePixel) {
  program.ReplaceTool("ffprobe", "echo '  Duration: 00:10:10.90, start: 0.0' >&2");
  const QString section = program.PathOf("section.mp4");
  WriteFile(section, "no video");
  // The first picture may have another scale, in which the menu bar has another height.
  ASSERT_TRUE(WaitFor([&] {
    if (!joiner.AwaitInOutput(OutputWindow())) return false;
    const QRect frame = joiner.Place("Shape2");
    const QImage picture = screen.Picture();
    return AllOf(picture, QRect(frame.topLeft(), QSize(frame.width(), 1)), kGrey) &&
           AllOf(picture, QRect(frame.bottomLeft(), QSize(frame.width(), 1)), kGrey) &&
           AllOf(picture, QRect(frame.topLeft(), QSize(1, frame.height())), kGrey);
  })) << "the joiner window doesn't come";

  MovePointerViaCorners(joiner.EmptyChartPosition());
  ASSERT_NO_FATAL_FAILURE(ChooseFile(joiner.ButtonCentre(JoinerButton::kAddSection),
                                     joiner.Chart().center(), JoinerWindow::kGround, section));
  EXPECT_TRUE(WaitFor([&] { return joiner.Strip(0) == QRect(1, 1, 61, 17); }))
      << joiner.Strip(0).width();
}

class SectionsUnderACompositor : public OnACompositor {
 protected:
  SectionsUnderACompositor() : OnACompositor("kelvane-sections") {}

  SectionWindow sections{screen};
};

TEST_P(SectionsUnderACompositor, MovesNeedlesAndThumbsByPixelsOfTheScreen) {
  constexpr int kAccuracySlider = 2;
  ASSERT_TRUE(sections.AwaitInOutput(OutputWindow())) << "the section window doesn't come";
  // The pointer is part of the compositor's picture.
  const QPoint aside = sections.BareGround();
  MovePointerViaCorners(aside);
  const QRect needle(136, 20, 5, 15);
  ASSERT_TRUE(WaitFor([&] { return sections.OnTimeLine(SectionWindow::kEndNeedle) == needle; }));
  screen.Still(screen.Place(OutputWindow()));
  const QRect thumb = sections.ThumbOutline(kAccuracySlider);
  sections.DragNeedle(SectionWindow::kEndNeedle, 51);
  screen.MovePointer(aside);
  EXPECT_TRUE(WaitFor(
      [&] { return sections.OnTimeLine(SectionWindow::kEndNeedle) == needle.translated(51, 0); }));
  sections.DragThumb(kAccuracySlider, 101);
  screen.MovePointer(aside);
  EXPECT_TRUE(
      WaitFor([&] { return sections.ThumbOutline(kAccuracySlider) == thumb.translated(101, 0); }));
}

class LostCompositor : public OnACompositor {
 protected:
  LostCompositor() : OnACompositor("kelvane-stabiliser") {}

  StabiliserWindow stabiliser{screen};
};

TEST_P(LostCompositor, EndsTheProgramAndItsTool) {
  program.ReplaceTool("ffprobe", "exec sleep 1000");
  const QString file = program.PathOf("a.mp4");
  WriteFile(file, "no video");
  ASSERT_TRUE(stabiliser.AwaitInOutput(OutputWindow())) << "the window doesn't come";
  MovePointerViaCorners(stabiliser.Place("Text1").center());
  screen.Still(screen.Place(OutputWindow()));
  screen.Click(stabiliser.Place("Text1").center());
  screen.Type(file);
  screen.PressKey(kReturn);
  ASSERT_TRUE(WaitFor([&] { return Tool() != 0; })) << "no tool is started";
  const pid_t tool = Tool();
  EndCompositor();
  EXPECT_EQ(program.AwaitExit(), 1);
  EXPECT_TRUE(WaitFor([&] { return kill(tool, 0) != 0; })) << "the tool runs on";
}

const std::vector<Outputs> kOutputs = {
    {"Scale1", {{{1500, 900}, 1}}},
    {"Scale2", {{{1500, 900}, 2}}},
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)  // Qt 6.4 paints at whole scales only
    {"Scale1AndAHalf", {{{1500, 900}, 1.5}}},
#endif
    {"SmallerThanTheWindow", {{{1100, 600}, 1}}},
    {"SmallerThanTheWindowAtScale2", {{{1100, 700}, 2}}},
    // The first output is there only because two outputs are shown by sway, which tiles windows,
    // unlike weston.
    {"TiledSmallerThanTheWindow", {{{500, 900}, 1}, {{1100, 600}, 1}}},
    {"Scale2BesideScale1", {{{500, 900}, 1}, {{1300, 800}, 2}}},
    {"Scale1BesideScale2", {{{500, 900}, 2}, {{1300, 800}, 1}}}};

std::string NameOf(const ::testing::TestParamInfo<Outputs>& tested) { return tested.param.name; }

INSTANTIATE_TEST_SUITE_P(Outputs, LostCompositor, ::testing::Values(kOutputs.front()), NameOf);
INSTANTIATE_TEST_SUITE_P(Outputs, MainWindowAtAFractionalScale,
                         ::testing::Values(Outputs{"Scale1AndAHalf", {{{1500, 900}, 1.5}}}),
                         NameOf);
INSTANTIATE_TEST_SUITE_P(Outputs, MainWindowUnderACompositor, ::testing::ValuesIn(kOutputs),
                         NameOf);
INSTANTIATE_TEST_SUITE_P(Outputs, JoinerUnderACompositor, ::testing::ValuesIn(kOutputs), NameOf);
INSTANTIATE_TEST_SUITE_P(Outputs, SectionsUnderACompositor, ::testing::ValuesIn(kOutputs), NameOf);

}  // namespace
}  // namespace kelvane::desktop
