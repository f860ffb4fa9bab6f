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

class WebPages : public DesktopTest {};

TEST_F(WebPages, AreHandedToTheDesktop) {
  const QString opened = program.PathOf("opened");
  program.AddCommand("xdg-open", "echo \"$@\" >> '" + opened + "'");
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  window.ChooseMenuItem(1, 0);
  EXPECT_TRUE(WaitFor([&] { return ContentOf(opened) == "https://kelvane.example/updates\n"; }))
      << ContentOf(opened).toStdString();
  window.ChooseMenuItem(2, 0);
  EXPECT_TRUE(WaitFor([&] { return ContentOf(opened).endsWith("/donate\n"); }))
      << ContentOf(opened).toStdString();
}

}  // namespace
}  // namespace kelvane::desktop
