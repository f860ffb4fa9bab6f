// The layout at any size of the window, and the scroll bars.
#include "desktop/DesktopTest.h"

namespace kelvane::desktop {
namespace {

class Layout : public DesktopTest {
 protected:
  // The first place where the screen isn't as laid out for the window's present size; empty if
  // none. The player's read-outs are those of an empty player, half a second after the start.
  QString Flaw() const {
    const QImage picture = screen.Picture();
    for (const char* shape : {"Shape1", "Shape2", "Shape3", "Shape4"}) {
      if (!FrameStands(picture, window.Place(shape), kFrame)) return shape;
    }
    for (const char* shape : {"Shape5", "Shape6", "Picture1(0)"}) {
      if (!FrameStands(picture, window.Place(shape), kLit)) return shape;
    }
    for (const char* control :
         {"Label14(0)", "Label14(4)", "Label14(6)", "Label10", "Label11", "Label1(14)"}) {
      if (!window.ShowsAsDrawn(control)) return control;
    }
    if (!window.Shows("Label12", "0:00:00") || !window.Shows("Label13", "00:00")) return "times";
    if (!AllOf(picture, window.Place("pbar"), kProgressBack)) return "pbar";
    const QRect viewport = window.Place("Picture1(1)").adjusted(0, 0, 0, -4);
    if (!AllOf(picture, viewport, kDark)) return "Picture1(1)";
    if (!ScrollBarStands(picture, window.Place("VScroll1"))) return "VScroll1";
    if (!ScrollBarStands(picture, window.Place("HScroll1"))) return "HScroll1";
    return {};
  }

  void ExpectLaidOut(QSize size) {
    EXPECT_TRUE(WaitFor([&] { return screen.Place(window.Id()).size() == size; }))
        << screen.Place(window.Id()).width() << " by " << screen.Place(window.Id()).height();
    EXPECT_TRUE(WaitFor([&] { return Flaw().isEmpty(); }, 5s)) << Flaw().toStdString();
  }

 private:
  static bool FrameStands(const QImage& picture, const QRect& place, QRgb color) {
    return AllOf(picture, QRect(place.bottomLeft(), QSize(place.width(), 1)), color) &&
           AllOf(picture, QRect(place.topRight(), QSize(1, place.height())), color) &&
           picture.pixel(place.topLeft()) == color;
  }

  // Qt draws a scroll bar as it likes, but in none of the window's dark colours.
  static bool ScrollBarStands(const QImage& picture, const QRect& place) {
    const QRect inside = place.adjusted(1, 1, -1, -1);
    return CountOf(picture, inside, kDark) == 0 && CountOf(picture, inside, kMarker) == 0;
  }
};

TEST_F(Layout, IsThatOfTheDrawingAsTheWindowOpens) {
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  EXPECT_EQ(screen.Windows(), QList<WindowId>{window.Id()});
  for (const char* control :
       {"Label1(0)", "Label1(2)", "Label1(4)", "Label1(6)", "Label1(8)", "Label1(10)", "Label1(12)",
        "Label1(14)", "Label10", "Label11", "Label14(0)", "Label14(1)", "Label14(2)", "Label14(3)",
        "Label14(4)", "Label14(5)", "Label14(6)"}) {
    EXPECT_TRUE(window.ShowsAsDrawn(control)) << control;
  }
  window.PointAt(kRunVideo);
  EXPECT_TRUE(WaitFor([&] { return window.ShowsAsDrawn("Label14(1)", kLit); }));
  window.PointAt(kStopVideo);
  EXPECT_TRUE(WaitFor([&] { return window.ShowsAsDrawn("Label14(3)", kLit); }));
  EXPECT_TRUE(window.ShowsAsDrawn("Label14(1)")) << "one light at a time";
}

TEST_F(Layout, HoldsAtEverySize) {
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  ExpectLaidOut(QSize(1289, 751));
  for (const QSize size : {QSize(1400, 900), QSize(1111, 433), QSize(1753, 1000), QSize(1200, 601),
                           QSize(1289, 751)}) {
    SCOPED_TRACE(size.width());
    screen.Resize(window.Id(), size);
    ExpectLaidOut(size);
  }
}

TEST_F(Layout, SnapsBackToItsLeastSize) {
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  screen.Resize(window.Id(), QSize(900, 300));
  ExpectLaidOut(QSize(1111, 433));
  screen.Resize(window.Id(), QSize(1000, 600));
  ExpectLaidOut(QSize(1111, 600));
  screen.Resize(window.Id(), QSize(1300, 200));
  ExpectLaidOut(QSize(1300, 433));
}

TEST_F(Layout, HoldsAfterMinimising) {
  ASSERT_NO_FATAL_FAILURE(OpenWindow());
  screen.Resize(window.Id(), QSize(1400, 900));
  ExpectLaidOut(QSize(1400, 900));
  screen.Minimise(window.Id());
  ASSERT_TRUE(WaitFor([&] { return screen.Minimised(window.Id()); }));
  screen.Activate(window.Id());
  ASSERT_TRUE(WaitFor([&] { return !screen.Minimised(window.Id()); }));
  ExpectLaidOut(QSize(1400, 900));
}

class Scrolling : public DesktopTest {
 protected:
  enum class End { kStart, kFinish };

  // The arrow button at an end of a scroll bar.
  QPoint Arrow(const QString& bar, End end) const {
    const QRect place = window.Place(bar);
    const bool across = place.width() > place.height();
    const int half = (across ? place.height() : place.width()) / 2;
    return end == End::kStart ? place.topLeft() + QPoint(half, half)
                              : place.bottomRight() - QPoint(half, half);
  }

  bool AwaitBars(const QRect& bars) const {
    return WaitFor([&] { return window.Bars() == bars; }, 5s);
  }
};

TEST_F(Scrolling, MovesTheCanvasSixPixelsAcrossAndTenDown) {
  ReplaceProbe("00:00:10.00");
  ASSERT_NO_FATAL_FAILURE(OpenWindowWithPretendedVideo());
  ASSERT_TRUE(AwaitBars(QRect(0, 0, 640, 360)));
  screen.Click(Arrow("HScroll1", End::kFinish));
  EXPECT_TRUE(AwaitBars(QRect(0, 0, 634, 360)));
  screen.Click(Arrow("HScroll1", End::kFinish));
  EXPECT_TRUE(AwaitBars(QRect(0, 0, 628, 360)));
  screen.Click(Arrow("VScroll1", End::kFinish));
  EXPECT_TRUE(AwaitBars(QRect(0, 0, 628, 350)));
  screen.Click(Arrow("HScroll1", End::kStart));
  screen.Click(Arrow("HScroll1", End::kStart));
  screen.Click(Arrow("VScroll1", End::kStart));
  EXPECT_TRUE(AwaitBars(QRect(0, 0, 640, 360)));
}

}  // namespace
}  // namespace kelvane::desktop
