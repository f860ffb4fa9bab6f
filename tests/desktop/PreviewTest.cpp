// The preview in the player tool, and the pages of the menus.
#include "desktop/DesktopTest.h"

namespace kelvane::desktop {
namespace {

class Preview : public DesktopTest {};

TEST_F(Preview, ShowsTheRegionInThePlayer) {
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithVideo(QSize(640, 360), 20));
  window.Click(kPreviewCroppedVideo);
  const WindowId player = screen.AwaitNew({window.Id()});
  ASSERT_NE(player, 0U);
  // The filter rounds 635 by 355 down to whole colour samples.
  EXPECT_TRUE(WaitFor([&] { return screen.Place(player).size() == QSize(634, 354); }));
  constexpr int kManyColours = 100;
  EXPECT_TRUE(
      WaitFor([&] { return Colours(screen.Picture(screen.Place(player))) > kManyColours; }));

  // The main window lives while the player prints.
  window.PointAt(kRunVideo);
  EXPECT_TRUE(WaitFor([&] { return window.Shows("Label14(1)", "Run Video", kLit); }));

  screen.Activate(player);
  ASSERT_TRUE(WaitFor([&] { return screen.Active(player); }));
  screen.Strike('q');
  EXPECT_TRUE(WaitFor([&] { return !screen.Exists(player); }));
  EXPECT_TRUE(WaitFor([&] { return program.Children("RSDTZ").isEmpty(); }));
  EXPECT_TRUE(window.AwaitBarsAround(QSize(640, 360)));
  CloseAndExpectEnd();
}

TEST_F(Preview, HandsTheRegionToThePlayer) {
  ReplaceProbe("00:00:10.00");
  program.ReplaceTool("ffplay", "");
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithPretendedVideo());
  window.Click(kPreviewCroppedVideo);
  ASSERT_TRUE(WaitFor([&] { return !program.RunsOf("ffplay").isEmpty(); }));
  EXPECT_EQ(program.RunsOf("ffplay"),
            (QList<QStringList>{{"-i", video, "-vf", "crop=635:355:0:0"}}));
}

TEST_F(Preview, RunsWithoutAVideoAllTheSame) {
  program.ReplaceTool("ffplay", "");
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  window.Click(kPreviewCroppedVideo);
  ASSERT_TRUE(WaitFor([&] { return !program.RunsOf("ffplay").isEmpty(); }));
  EXPECT_EQ(program.RunsOf("ffplay"), (QList<QStringList>{{"-i", "-vf", "crop=0:0:0:0"}}));
}

TEST_F(Preview, SaysNothingWithoutAPlayer) {
  ReplaceProbe("00:00:10.00");
  program.RemoveTool("ffplay");
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithPretendedVideo());
  window.Click(kPreviewCroppedVideo);
  EXPECT_TRUE(HoldsFor([&] { return screen.Windows().size() == 1; }, 500ms));
  window.PointAtGround();
  EXPECT_TRUE(WaitFor([&] { return window.Shows("Label14(4)", "Preview Cropped Video"); }));
}

class WebPages : public DesktopTest {
 protected:
  // What was handed over to the desktop.
  QByteArray Opened() const { return ContentOf(program.PathOf("opened")); }

  void OpenWindowWithRecordingDesktop() {
    program.AddCommand("xdg-open", "echo \"$@\" >> '" + program.PathOf("opened") + "'");
    OpenWindow();
  }
};

TEST_F(WebPages, HandsTheUpdatesPageToTheDesktop) {
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithRecordingDesktop());
  window.ChooseMenuItem(1, 0);
  EXPECT_TRUE(WaitFor([&] { return Opened() == "https://kelvane.example/updates\n"; }))
      << Opened().toStdString();
}

TEST_F(WebPages, HandsTheDonationPageToTheDesktop) {
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithRecordingDesktop());
  window.ChooseMenuItem(2, 0);
  EXPECT_TRUE(WaitFor([&] { return Opened() == "https://kelvane.example/donate\n"; }))
      << Opened().toStdString();
}

}  // namespace
}  // namespace kelvane::desktop
