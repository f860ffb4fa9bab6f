// The window as it opens, and the light on its commands.
#include <QPalette>

#include "desktop/DesktopTest.h"

namespace kelvane::desktop {
namespace {

class StartUp : public DesktopTest {};

TEST_F(StartUp, OpensOneWindowOfTheDrawnSize) {
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  EXPECT_EQ(screen.Windows(), QList<WindowId>{window.Id()});
  EXPECT_EQ(screen.Place(window.Id()).size(), QSize(1289, 751));
  EXPECT_EQ(window.Area().width(), 1289);
  EXPECT_GT(window.Area().height(), 700);
}

TEST_F(StartUp, IsDarkFlatAndEmpty) {
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  const QImage picture = screen.Still();
  const QRect ground = window.Place("Shape6");
  EXPECT_TRUE(
      AllOf(picture, QRect(ground.left() + 2, ground.top() + 2, ground.width() - 4, 20), kDark));
  // The lower scroll bar covers the last rows of the viewport.
  EXPECT_TRUE(AllOf(picture, window.Place("Picture1(1)").adjusted(0, 0, 0, -4), kDark))
      << "the canvas is hidden";
  EXPECT_TRUE(AllOf(picture, window.Place("pbar"), kProgressBack));
  EXPECT_TRUE(AllOf(picture, window.Place("Text1(1)"), kDark)) << "no path";
  for (const int readOut : {1, 3, 5, 7, 9, 11, 13, 15}) {
    const QString name = QStringLiteral("Label1(%1)").arg(readOut);
    EXPECT_TRUE(window.Shows(name, "0,000")) << name.toStdString();
  }
}

TEST_F(StartUp, ShowsEveryCaptionWhereItWasDrawn) {
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  for (const char* control :
       {"Label1(0)", "Label1(2)", "Label1(4)", "Label1(6)", "Label1(8)", "Label1(10)", "Label1(12)",
        "Label1(14)", "Label10", "Label11", "Label14(0)", "Label14(1)", "Label14(2)", "Label14(3)",
        "Label14(4)", "Label14(5)", "Label14(6)"}) {
    EXPECT_TRUE(window.ShowsAsDrawn(control)) << control;
  }
}

TEST_F(StartUp, ChangesThePlayersReadOutsAtItsFirstTick) {
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  // A slow machine may show the window only after the first tick.
  EXPECT_TRUE(window.Shows("Label12", "00:00:00") || window.Shows("Label12", "0:00:00"));
  EXPECT_TRUE(window.Shows("Label13", "00") || window.Shows("Label13", "00:00"));
  EXPECT_TRUE(window.AwaitCaption("Label12", "0:00:00"));
  EXPECT_TRUE(window.AwaitCaption("Label13", "00:00"));
  EXPECT_TRUE(HoldsFor(
      [&] { return window.Shows("Label12", "0:00:00") && window.Shows("Label13", "00:00"); },
      600ms));
}

TEST_F(StartUp, FramesItsGroups) {
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  const QImage picture = screen.Still();
  const QList<std::pair<QString, QRgb>> frames = {{"Shape1", kFrame}, {"Shape2", kFrame},
                                                  {"Shape3", kFrame}, {"Shape4", kFrame},
                                                  {"Shape5", kLit},   {"Shape6", kLit}};
  for (const auto& [control, color] : frames) {
    const QRect place = window.Place(control);
    SCOPED_TRACE(control.toStdString());
    // The upper edge is broken by the group's heading.
    EXPECT_TRUE(AllOf(picture, QRect(place.bottomLeft(), QSize(place.width(), 1)), color));
    EXPECT_TRUE(AllOf(picture, QRect(place.topRight(), QSize(1, place.height())), color));
    EXPECT_EQ(picture.pixel(place.topLeft()), color);
  }
}

TEST_F(StartUp, ShowsThreeMenusAndNoMore) {
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  const QRect menus = window.Menus();
  const QImage picture = screen.Still(menus);
  // Three words; the bar's ground goes on to the right of them.
  constexpr int kEndOfThirdMenu = 180;
  const QRgb ground = picture.pixel(menus.width() - 10, menus.height() / 2);
  int words = 0;
  int gap = 0;
  for (int x = 0; x < menus.width(); ++x) {
    const int middle = menus.height() - 6;
    const bool empty = AllOf(picture, QRect(x, 3, 1, middle), ground);
    constexpr int kWidestGapInWord = 6;
    if (!empty && gap > kWidestGapInWord) ++words;
    EXPECT_TRUE(empty || x < kEndOfThirdMenu) << x;
    gap = empty ? gap + 1 : 0;
  }
  EXPECT_EQ(words, 3);
}

TEST_F(StartUp, LightsTheCommandUnderThePointer) {
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  window.PointAt(kRunVideo);
  EXPECT_TRUE(WaitFor([&] { return window.ShowsAsDrawn("Label14(1)", kLit); }));
  window.PointAt(kStopVideo);
  EXPECT_TRUE(WaitFor([&] { return window.ShowsAsDrawn("Label14(3)", kLit); }));
  EXPECT_TRUE(window.ShowsAsDrawn("Label14(1)")) << "one light at a time";
}

TEST_F(StartUp, PutsTheLightOutOnTheGroundAndOnTheWorkspace) {
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  const QPoint workspace = window.Place("Picture1(1)").center();
  const QPoint corner = window.Place("Picture1(0)").bottomRight() - QPoint(6, 6);
  const QPoint ground = window.Area().topLeft() + QPoint(10, 60);
  for (const QPoint place : {ground, workspace, corner}) {
    window.PointAt(kLoadVideo);
    ASSERT_TRUE(WaitFor([&] { return window.ShowsAsDrawn("Label14(0)", kLit); }));
    screen.MovePointer(place);
    EXPECT_TRUE(WaitFor([&] { return window.ShowsAsDrawn("Label14(0)"); }))
        << place.x() << ", " << place.y();
  }
}

TEST_F(StartUp, LeavesTheLightOnWhereAnotherControlOrTheOutsideIsEntered) {
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  const QPoint heading = window.Place("Label4").center();
  const QPoint readOut = window.Place("Label1(0)").center();
  const QPoint progress = window.Place("pbar").center();
  const QPoint outside(5, 5);
  for (const QPoint place : {heading, readOut, progress, outside}) {
    window.PointAt(kLoadVideo);
    ASSERT_TRUE(WaitFor([&] { return window.ShowsAsDrawn("Label14(0)", kLit); }));
    screen.MovePointer(place);
    EXPECT_TRUE(HoldsFor([&] { return window.ShowsAsDrawn("Label14(0)", kLit); }, 300ms))
        << place.x() << ", " << place.y();
  }
}

}  // namespace
}  // namespace kelvane::desktop
