// The way of a playing picture to the screen, in a window of this process: for what the program's
// windows don't have or don't tell.
#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <memory>
#include <vector>

#include "desktop/DesktopTest.h"
#include "platform/Colours.h"
#include "platform/Form.h"
#include "platform/Label.h"
#include "platform/PictureBox.h"
#include "platform/WindowsMediaPlayer.h"
#include "support/PaintsOf.h"

namespace kelvane::desktop {
namespace {

class APlayerInAWindow : public ::testing::Test {
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

// Red and blue by turns, with 25 pictures to each.
TEST_F(APlayerInAWindow, IsNotPaintedAnewForEveryPicture) {
  const QString clip = files.filePath("colours.mp4");
  QList<QRgb> colours;
  for (int turn = 0; turn < 10; ++turn) colours << 0xffff0000 << 0xff0000ff;
  ASSERT_TRUE(MakeColours(clip, QSize(320, 180), colours));
  Open({kPlayer});
  form->Find<WindowsMediaPlayer>("wmp").setURL(clip);
  ASSERT_TRUE(WaitFor([&] { return qRed(PixelOf("wmp")) > kFull; }));
  const kelvane::testing::PaintsOf paints("wmp");
  for (int turn = 0; turn < 2; ++turn) {
    ASSERT_TRUE(WaitFor([&] { return qBlue(PixelOf("wmp")) > kFull; }));
    ASSERT_TRUE(WaitFor([&] { return qRed(PixelOf("wmp")) > kFull; }));
  }
  EXPECT_LT(paints.Count(), 25);
}

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
