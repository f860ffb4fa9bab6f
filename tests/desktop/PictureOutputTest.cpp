// The way of a playing picture to the screen, past the window's own painting: whatever comes over
// it, and goes again, the screen shows what the window would paint.
#include <QFile>
#include <cerrno>
#include <memory>
#include <vector>

#include "desktop/PlayingTest.h"
#include "desktop/faults/Faults.h"
#include "platform/Colours.h"
#include "platform/Form.h"
#include "platform/Label.h"
#include "platform/PictureBox.h"
#include "platform/WindowsMediaPlayer.h"

namespace kelvane::desktop {
namespace {

constexpr QSize kVideo(640, 360);

class APlayedPicture : public Playing {
 protected:
  void Play() {
    const QString clip = program.PathOf("clip.mp4");
    ASSERT_TRUE(MakeVideo(clip, kVideo, 60));
    ASSERT_NO_FATAL_FAILURE(OpenWindow());
    ASSERT_NO_FATAL_FAILURE(LoadAndRun(clip, kVideo));
    ASSERT_TRUE(AwaitMoving(kVideo));
  }

  // Whether the program's memory has pictures that the display server reads as well.
  bool IsShared() const {
    QFile memory(QStringLiteral("/proc/%1/maps").arg(program.Id()));
    return memory.open(QIODevice::ReadOnly) && memory.readAll().contains("memfd:picture");
  }

  // Another program's window over the whole canvas, which then goes.
  void CoverForAMoment() {
    QWidget cover(nullptr, Qt::X11BypassWindowManagerHint);
    cover.setStyleSheet(QStringLiteral("background: #123456"));
    cover.setGeometry(QRect(window.OnCanvas({}), kVideo));
    cover.show();
    ASSERT_TRUE(WaitFor([&] {
      return screen.Pixel(window.OnCanvas({320, 180})) == 0xff123456 &&
             screen.Pixel(window.OnCanvas({2, 180})) == 0xff123456;
    }));
  }
};

TEST_F(APlayedPicture, IsReadByTheServerFromTheProgramsMemory) {
  ASSERT_NO_FATAL_FAILURE(Play());
  EXPECT_TRUE(IsShared());
  EXPECT_TRUE(BarsLieOver(kVideo));
}

TEST_F(APlayedPicture, IsPaintedByTheWindowWhereNoMemoryCanBeShared) {
  Faults faults(program);
  faults.FailAll(Attempt::kSharePicture, ENOSYS);
  ASSERT_NO_FATAL_FAILURE(Play());
  EXPECT_GT(faults.Failed(Attempt::kSharePicture), 0);
  EXPECT_FALSE(IsShared());
  EXPECT_TRUE(BarsLieOver(kVideo));
  window.Click(kStopVideo);
  EXPECT_TRUE(AwaitBlack(kVideo));
  CloseAndExpectEnd();
  EXPECT_EQ(program.Printed(), "");
}

TEST_F(APlayedPicture, GoesOnOnceWhatCoveredItIsGone) {
  ASSERT_NO_FATAL_FAILURE(Play());
  ASSERT_NO_FATAL_FAILURE(CoverForAMoment());
  EXPECT_TRUE(AwaitMoving(kVideo));
  EXPECT_TRUE(BarsLieOver(kVideo));
}

TEST_F(APlayedPicture, IsThereAgainOnceWhatCoveredItIsGoneThoughThePlayerIsPaused) {
  ASSERT_NO_FATAL_FAILURE(Play());
  window.Click(kPauseVideo);
  ASSERT_TRUE(AwaitStill(kVideo));
  const QImage paused = window.Inside(kVideo);
  ASSERT_NO_FATAL_FAILURE(CoverForAMoment());
  EXPECT_TRUE(WaitFor([&] { return window.Inside(kVideo) == paused; }));
  EXPECT_TRUE(BarsLieOver(kVideo));
}

TEST_F(APlayedPicture, IsThereAgainInAWindowThatWasMinimised) {
  ASSERT_NO_FATAL_FAILURE(Play());
  window.Click(kPauseVideo);
  ASSERT_TRUE(AwaitStill(kVideo));
  const QImage paused = window.Inside(kVideo);
  screen.Minimise(window.Id());
  ASSERT_TRUE(WaitFor([&] { return screen.Minimised(window.Id()); }));
  ASSERT_FALSE(window.Inside(kVideo) == paused);
  screen.Activate(window.Id());
  EXPECT_TRUE(WaitFor([&] { return window.Inside(kVideo) == paused; }));
  EXPECT_TRUE(BarsLieOver(kVideo));
}

TEST_F(APlayedPicture, StaysInItsPlaceHoweverTheWindowIsResized) {
  ASSERT_NO_FATAL_FAILURE(Play());
  const QSize whole = screen.Place(window.Id()).size();
  const QRect across = window.Place("HScroll1");
  const QRect down = window.Place("VScroll1");
  const QImage acrossBefore = screen.Picture(across);
  const QImage downBefore = screen.Picture(down);
  for (int round = 0; round < 6; ++round) {
    for (const int less : {60, 30, 90, 0}) {
      screen.Resize(window.Id(), whole - QSize(less, less));
      ASSERT_TRUE(
          WaitFor([&] { return screen.Place(window.Id()).size() == whole - QSize(less, less); }));
    }
    const auto isAsBefore = [&] {
      return screen.Picture(across) == acrossBefore && screen.Picture(down) == downBefore &&
             window.Shows("Label14(5)", "Crop Video");
    };
    ASSERT_TRUE(WaitFor(isAsBefore, 5s));
    EXPECT_TRUE(HoldsFor(isAsBefore, 200ms));
  }
  EXPECT_TRUE(BarsLieOver(kVideo));
  EXPECT_TRUE(AwaitMoving(kVideo));
}

TEST_F(APlayedPicture, LeavesNoDescriptorOpen) {
  ASSERT_NO_FATAL_FAILURE(Play());
  const int before = program.OpenDescriptors();
  for (int run = 0; run < 3; ++run) {
    window.Click(kStopVideo);
    ASSERT_TRUE(AwaitBlack(kVideo));
    window.Click(kRunVideo);
    ASSERT_TRUE(AwaitMoving(kVideo));
  }
  EXPECT_LE(program.OpenDescriptors(), before);
}

// In this process, for what the program's windows don't have.
class APlayerInAWindow : public testing::Test {
 protected:
  // The player among them, and before it what is to lie over it.
  void Open(const std::vector<ControlDesign>& controls) {
    const FormDesign design = {.name = "Form",
                               .caption = "A form",
                               .clientWidth = 7500,
                               .clientHeight = 4500,
                               .backColor = kLight,
                               .labelColor = kDark,
                               .scale = ScaleMode::kPixels};
    form = std::make_unique<Form>(design, controls, std::vector<MenuDesign>{});
    form->Load();
    form->Show();
  }

  // Red, and then for as long as a test takes blue.
  void PlayUntilBlue() {
    const QString clip = files.filePath("colours.mp4");
    QList<QRgb> colours(30, 0xff0000ff);
    colours[0] = 0xffff0000;
    ASSERT_TRUE(MakeColours(clip, QSize(320, 180), colours));
    form->Find<WindowsMediaPlayer>("wmp").setURL(clip);
    ASSERT_TRUE(WaitFor([&] { return qRed(PixelOf("wmp")) > kFull; }));
    ASSERT_TRUE(WaitFor([&] { return qBlue(PixelOf("wmp")) > kFull; }));
  }

  // Of the control's lower left corner on the screen.
  QRgb PixelOf(const char* name) const {
    const auto& control = form->Find<Control>(name);
    return TheScreen().Pixel(control.mapToGlobal(QPoint(5, control.height() - 5)));
  }

  static constexpr int kFull = 200;
  static constexpr ControlDesign kPlayer{.name = "wmp",
                                         .controlClass = ControlClass::kWindowsMediaPlayer,
                                         .place = {0, 0, 4800, 2700}};
  const QTemporaryDir files;
  std::unique_ptr<Form> form;
};

TEST_F(APlayerInAWindow, DoesNotDrawOverALabelThatLetsThePictureThrough) {
  Open({{.name = "Label1",
         .controlClass = ControlClass::kLabel,
         .place = {600, 600, 1500, 600},
         .caption = "Over it"},
        kPlayer});
  form->Find<Label>("Label1").setBackColor(0x123456);
  ASSERT_NO_FATAL_FAILURE(PlayUntilBlue());
  EXPECT_EQ(PixelOf("Label1"), 0xff123456);
}

// What the window painted last, and moves, is red.
TEST_F(APlayerInAWindow, ShowsNothingOlderWhereItIsMovedWhilePaused) {
  ControlDesign player = kPlayer;
  player.container = "Picture1";
  Open(
      {{.name = "Picture1", .controlClass = ControlClass::kPictureBox, .place = {0, 0, 4800, 2700}},
       player});
  ASSERT_NO_FATAL_FAILURE(PlayUntilBlue());
  form->Find<WindowsMediaPlayer>("wmp").controls.pause();
  ASSERT_TRUE(HoldsFor([&] { return qBlue(PixelOf("wmp")) > kFull; }, 300ms));
  for (const float left : {40.F, 80.F, 120.F}) {
    form->Find<PictureBox>("Picture1").setLeft(left);
    EXPECT_TRUE(HoldsFor([&] { return qRed(PixelOf("wmp")) < kFull; }, 200ms)) << left;
    EXPECT_GT(qBlue(PixelOf("wmp")), kFull) << left;
  }
  // There and back before the window paints.
  form->Find<PictureBox>("Picture1").setLeft(0);
  form->Find<PictureBox>("Picture1").setLeft(120);
  EXPECT_TRUE(HoldsFor([&] { return qBlue(PixelOf("wmp")) > kFull; }, 200ms));
}

TEST_F(APlayerInAWindow, IsBlackAroundAPictureThatHasBecomeSmaller) {
  const QString large = files.filePath("large.ts");
  const QString small = files.filePath("small.ts");
  ASSERT_TRUE(MakeColours(large, QSize(320, 180), {0xffff0000, 0xffff0000}));
  ASSERT_TRUE(MakeColours(small, QSize(160, 90), QList<QRgb>(20, 0xff0000ff)));
  const QString both = files.filePath("both.ts");
  ASSERT_TRUE(RunTool("ffmpeg",
                      {"-v", "error", "-i", "concat:" + large + "|" + small, "-c", "copy", both}));
  Open({kPlayer});
  const auto& player = form->Find<WindowsMediaPlayer>("wmp");
  form->Find<WindowsMediaPlayer>("wmp").setURL(both);
  ASSERT_TRUE(WaitFor([&] { return qRed(PixelOf("wmp")) > kFull; }));
  ASSERT_TRUE(WaitFor(
      [&] { return qBlue(TheScreen().Pixel(player.mapToGlobal(QPoint(80, 45)))) > kFull; }));
  for (const QPoint outside : {QPoint(165, 45), QPoint(80, 95), QPoint(315, 175)}) {
    EXPECT_TRUE(WaitFor([&] {
      return TheScreen().Pixel(player.mapToGlobal(outside)) == 0xff000000;
    })) << outside.x();
  }
}

}  // namespace
}  // namespace kelvane::desktop
