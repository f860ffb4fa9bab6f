// Picture boxes with their borders and drawings; shapes; lines.
#include <gtest/gtest.h>

#include <QPainter>
#include <utility>

#include "platform/Label.h"
#include "platform/PictureBox.h"
#include "platform/Pointer.h"
#include "platform/Shapes.h"
#include "platform/TestForm.h"
#include "support/Events.h"
#include "support/PaintsOf.h"

namespace kelvane::testing {
namespace {

constexpr QRgb kBack = 0x404040;
constexpr QRgb kInk = 0x808000;
constexpr QRgb kText = 0xC0C0C0;
constexpr QRgb kGreen = 0x00FF00;
constexpr QRgb kBorderGrey = 0x808080;

// A box of 100 by 40 pixels that holds a much longer green strip, 20 pixels high.
class PictureBoxBorder : public ::testing::Test {
 protected:
  PictureBoxBorder() { form.Open(); }

  TestForm form{{Design(kPictureBox, "Box", {10, 20, 100, 40}).Color(kBack).Bordered(),
                 Design(kPictureBox, "Strip", {0, 0, 2000, 20}).In("Box").Color(kGreen)}};
  PictureBox& box = form.Find<PictureBox>("Box");
  PictureBox& strip = form.Find<PictureBox>("Strip");
};

TEST_F(PictureBoxBorder, IsALineAndAGapInFrontOfControlsThatReachBeyondTheInside) {
  for (const auto& [stripLeft, width] : {std::pair{0.0F, 100}, {-500.0F, 100}, {0.0F, 120}}) {
    strip.setLeft(stripLeft);
    box.setWidth(static_cast<float>(width));
    QImage expected(width, 40, QImage::Format_RGB32);
    expected.fill(QColor(kBorderGrey));
    QPainter painter(&expected);
    painter.fillRect(1, 1, width - 2, 38, QColor(kBack));
    painter.fillRect(2, 2, width - 4, 20, QColor(kGreen));
    painter.end();
    EXPECT_EQ(Picture(form).copy(10, 20, width, 40), expected) << stripLeft << ", " << width;
  }
}

TEST_F(PictureBoxBorder, IsNotCountedInPlacesOfTheMouseAndOfControls) {
  EXPECT_EQ(box.geometry(), QRect(10, 20, 100, 40));
  EXPECT_EQ(strip.geometry(), QRect(2, 2, 2000, 20));
  strip.setLeft(-2);
  strip.setTop(7);
  EXPECT_EQ(strip.pos(), QPoint(0, 9));
  Events events;
  Record(box, events);
  Pointer pointer(form);
  pointer.MoveTo(box, {2, 32});
  pointer.MoveTo(box, {50, 33});
  EXPECT_EQ(events, (Events{"Move at 0,30", "Move at 48,31"}));
}

class PictureBoxResize : public ::testing::Test {
 protected:
  PictureBoxResize() {
    box.Resize = [this](int index) {
      events.push_back(std::to_string(index) + ": " + std::to_string(box.width()) + "x" +
                       std::to_string(box.height()));
    };
  }

  TestForm form{{Design(kPictureBox, "Outer", {0, 0, 100, 50}),
                 Design(kPictureBox, "Picture1(1)", {0, 0, 100, 50}).In("Outer")}};
  PictureBox& box = form.Find<PictureBox>("Picture1(1)");
  Events events;
};

TEST_F(PictureBoxResize, IsRaisedOnceForEachChangeBeforeTheAssignmentReturnsEvenWhileHidden) {
  box.setWidth(110);
  EXPECT_EQ(events, Events{"1: 110x50"});
  box.setVisible(false);
  box.setHeight(60);
  EXPECT_EQ(events, (Events{"1: 110x50", "1: 110x60"}));
  form.Open();
  box.setWidth(0);
  box.setWidth(0);
  EXPECT_EQ(events, (Events{"1: 110x50", "1: 110x60", "1: 0x60"}));
}

TEST_F(PictureBoxResize, IsNotRaisedIfTheSizeInPixelsStaysTheSame) {
  box.setWidth(100);
  box.setWidth(100.25F);
  box.setWidth(-1);
  box.setLeft(5);
  box.setTop(5);
  EXPECT_EQ(events, Events{});
}

TEST_F(PictureBoxResize, MayItselfChangeTheSizeOfTheBox) {
  box.Resize = [this](int) {
    events.push_back(std::to_string(box.width()));
    if (box.width() > 90) box.setWidth(box.Width() - 10);
  };
  box.setWidth(110);
  EXPECT_EQ(events, (Events{"110", "100", "90"}));
  EXPECT_EQ(box.Width(), 90);
}

class PictureBoxDrawing : public ::testing::Test {
 protected:
  PictureBoxDrawing() {
    form.Open();
    box.SetPrintFont("Arial", 8);
    box.setForeColor(kText);
  }

  QImage Shown() { return Picture(box); }
  QRect Ink() { return InkOf(Shown(), kInk); }

  TestForm form{{Design(kPictureBox, "Box", {10, 10, 100, 41}).Color(kBack),
                 Design(kPictureBox, "Twips", {10, 100, 200, 25}).Color(kBack).Twips(),
                 Design(kPictureBox, "Bordered", {150, 10, 100, 41}).Color(kBack).Bordered(),
                 Design(kLabel, "Label1", {10, 0, 10, 37}).In("Bordered").Color(0xFF0000)}};
  PictureBox& box = form.Find<PictureBox>("Box");
};

TEST_F(PictureBoxDrawing, LeavesOutTheLastPixelOfALine) {
  struct Case {
    float x1, y1, x2, y2;
    QRect ink;
  };
  for (const Case& given : {Case{10, 26, 20, 26, {10, 26, 10, 1}},
                            {10, 0, 10, 6, {10, 0, 1, 6}},
                            {20, 26, 10, 26, {11, 26, 10, 1}},
                            {10, 6, 10, 0, {10, 1, 1, 6}},
                            {10, 10, 10, 10, {}},
                            {-50, 10, 500, 10, {0, 10, 100, 1}}}) {
    box.DrawLine(given.x1, given.y1, given.x2, given.y2, kInk);
    EXPECT_EQ(Ink(), given.ink) << given.x1 << ',' << given.y1;
    box.Cls();
    EXPECT_EQ(CountOf(Shown(), kBack), 100 * 41);
  }
}

TEST_F(PictureBoxDrawing, RoundsToTheNearestPixelHalfToEven) {
  for (const auto& [x, pixel] :
       {std::pair{10.4F, 10}, {10.5F, 10}, {10.6F, 11}, {11.5F, 12}, {96.5F, 96}}) {
    box.Cls();
    box.DrawLine(x, 0, x, 2, kInk);
    EXPECT_EQ(Ink(), QRect(pixel, 0, 1, 2)) << x;
  }
}

TEST_F(PictureBoxDrawing, IsInTheUnitOfTheBox) {
  EXPECT_EQ(box.ScaleWidth(), 100);
  EXPECT_EQ(box.ScaleHeight(), 41);
  auto& twips = form.Find<PictureBox>("Twips");
  EXPECT_EQ(twips.ScaleWidth(), 3000);
  EXPECT_EQ(twips.ScaleHeight(), 375);
  // From 13.3 to 66.7 pixels, 12.5 below the top.
  twips.DrawLine(200, 187.5, 1000, 187.5, kInk);
  EXPECT_EQ(InkOf(Picture(twips), kInk), QRect(13, 12, 67 - 13, 1));
}

TEST_F(PictureBoxDrawing, LeavesNoMarkIfItLiesOutsideTheBoxOrACoordinateIsNotANumber) {
  const QImage empty = Shown();
  for (const float beyond : {100.0F, 5000.0F, -1.0F, -5000.0F, kGreatest, kInfinite, kNotANumber}) {
    box.DrawLine(beyond, 0, beyond, 41, kInk);
    box.DrawLine(0, beyond, 100, beyond, kInk);
  }
  box.DrawLine(0, 10, kNotANumber, 10, kInk);
  for (const auto& [x, y] : {std::pair{kNotANumber, 7.0F},
                             {0.0F, kNotANumber},
                             {100.0F, 7.0F},
                             {-500.0F, 7.0F},
                             {0.0F, 41.0F}}) {
    box.PrintAt(x, y, "00:00:00");
  }
  EXPECT_EQ(Shown(), empty);
}

TEST_F(PictureBoxDrawing, PrintsATextFromItsTopLeftCornerInFrontOfWhatWasDrawn) {
  QImage expected(100, 41, QImage::Format_RGB32);
  expected.fill(QColor(kBack));
  QPainter painter(&expected);
  painter.fillRect(0, 0, 100, 20, QColor(kInk));
  for (float y = 0; y < 20; ++y) box.DrawLine(0, y, 100, y, kInk);
  box.PrintAt(20, 7, "00:01:04");
  QFont font("Arial");
  font.setPixelSize(11);  // eight points
  painter.setFont(font);
  painter.setPen(QColor(kText));
  painter.drawText(QRect(20, 7, 80, 34), Qt::AlignLeft | Qt::AlignTop, "00:01:04");
  painter.end();
  EXPECT_EQ(Shown(), expected);
  EXPECT_GT(CountOf(expected, kText), 0);
}

TEST_F(PictureBoxDrawing, StaysWhileTheBoxIsHiddenOrMovesOrChangesItsSize) {
  box.DrawLine(0, 10, 100, 10, kInk);
  box.setVisible(false);
  box.setVisible(true);
  box.setLeft(-5000);
  box.setLeft(10);
  EXPECT_EQ(Ink(), QRect(0, 10, 100, 1));
  box.setWidth(50);
  EXPECT_EQ(Ink(), QRect(0, 10, 50, 1));
  box.DrawLine(0, 11, 100, 11, kInk);
  box.setWidth(200);
  EXPECT_EQ(CountOf(Shown(), QRect(0, 10, 200, 1), kInk), 100);
  EXPECT_EQ(CountOf(Shown(), QRect(0, 11, 200, 1), kInk), 50) << "the line grew with the box";
  box.DrawLine(150, 20, 200, 20, kInk);
  EXPECT_EQ(CountOf(Shown(), QRect(150, 20, 50, 1), kInk), 50);
  EXPECT_EQ(CountOf(Shown(), kBack), 200 * 41 - 100 - 50 - 50);
}

TEST_F(PictureBoxDrawing, ShowsInAFormThatIsShownLater) {
  TestForm other({Design(kPictureBox, "Box", {0, 0, 100, 41}).Color(kBack)});
  other.OnLoad = [&] { other.Find<PictureBox>("Box").DrawLine(0, 0, 100, 0, kInk); };
  other.Open();
  EXPECT_EQ(CountOf(Picture(other), kInk), 100);
}

TEST_F(PictureBoxDrawing, LiesInsideTheBorderAndBehindTheControlsInTheBox) {
  auto& bordered = form.Find<PictureBox>("Bordered");
  EXPECT_EQ(bordered.ScaleWidth(), 96);
  EXPECT_EQ(bordered.ScaleHeight(), 37);
  bordered.DrawLine(0, 5, 100, 5, kInk);
  EXPECT_EQ(CountOf(Picture(bordered), kInk), 86);
  EXPECT_EQ(CountOf(Picture(bordered), QRect(2, 7, 96, 1), kInk), 86);
  EXPECT_EQ(CountOf(Picture(bordered), 0xFF0000), 10 * 37);
}

TEST_F(PictureBoxDrawing, IsClearedBySettingABackColourEvenTheSameOne) {
  for (const QRgb color : {0x808080U, 0x808080U}) {
    box.DrawLine(0, 5, 30, 5, kInk);
    ASSERT_EQ(CountOf(Shown(), kInk), 30);
    box.setBackColor(color);
    EXPECT_EQ(CountOf(Shown(), color), 100 * 41);
  }
}

TEST_F(PictureBoxDrawing, IsPaintedAtOnceByRefresh) {
  ServePendingEvents();
  const PaintsOf paints("Box");
  box.DrawLine(0, 5, 30, 5, kInk);
  EXPECT_EQ(paints.Count(), 0);
  box.Refresh();
  EXPECT_EQ(paints.Count(), 1);
}

TEST(Shape, IsAnOutlineInsideItsPlaceAndFilledIfItHasAFillColour) {
  TestForm form({Design(kShape, "Shape1", {10, 20, 30, 40}).Color(kInk)});
  form.Open();
  auto& shape = form.Find<Shape>("Shape1");
  const auto expectInside = [&form](int width, QRgb inside) {
    const QImage shown = Picture(form).copy(10, 20, 30, 40);
    const QRect place = shown.rect().adjusted(width, width, -width, -width);
    EXPECT_EQ(CountOf(shown, kInk), 30 * 40 - place.width() * place.height());
    EXPECT_EQ(InkOf(shown, inside), place);
    EXPECT_EQ(CountOf(Picture(form), kInk), CountOf(shown, kInk));
  };
  for (const int width : {1, 2, 5}) {
    shape.SetBorder(kInk, width);
    expectInside(width, kPixelForm.backColor);
  }
  for (const QRgb color : {0xFF0000U, 0x00FF00U}) {
    shape.setFillColor(color);
    expectInside(5, color);
  }
  shape.SetBorder(0x808080, 5);
  EXPECT_EQ(CountOf(Picture(form), kInk), 0);
}

class LineTest : public ::testing::Test {
 protected:
  LineTest() { form.Open(); }

  QRect Ink() { return InkOf(Picture(form), kInk); }

  TestForm form{{Design(kLine, "Line1", {10, 20, 30, 0}).Color(kInk)}};
  Line& line = form.Find<Line>("Line1");
};

TEST_F(LineTest, LeavesOutThePixelAtItsRightOrLowerEnd) {
  struct Case {
    const char* name;
    float x1, y1, x2, y2;
    QRect ink;
  };
  EXPECT_EQ(Ink(), QRect(10, 20, 30, 1)) << "not the place in the design";
  for (const Case& given : {Case{"horizontal", 100, 50, 110, 50, {100, 50, 10, 1}},
                            {"from right to left", 110, 50, 100, 50, {100, 50, 10, 1}},
                            {"vertical", 100, 50, 100, 57, {100, 50, 1, 7}},
                            {"upwards", 100, 57, 100, 50, {100, 50, 1, 7}},
                            {"between pixels", 10, 30.5, 20, 30.5, {10, 31, 10, 1}},
                            {"no length", 10, 20, 10, 20, {}},
                            {"slanting", 5, 30, 6, 33, {}}}) {
    line.SetEnds(given.x1, given.y1, given.x2, given.y2);
    EXPECT_EQ(Ink(), given.ink) << given.name;
    EXPECT_EQ(line.X1(), given.x1) << given.name;
  }
}

TEST_F(LineTest, HasEndsAndAColourThatAreSetOneByOne) {
  line.setX1(5);
  line.setX2(5);
  line.setY1(30);
  line.setY2(33);
  EXPECT_EQ(Ink(), QRect(5, 30, 1, 3));
  line.setBorderColor(0xFF0000);
  EXPECT_EQ(InkOf(Picture(form), 0xFF0000), QRect(5, 30, 1, 3));
}

TEST_F(LineTest, RefusesAnEndThatIsNotFinite) {
  for (const float refused : {kNotANumber, kInfinite}) {
    line.setX1(refused);
    line.setY1(refused);
    line.setX2(refused);
    line.setY2(refused);
    EXPECT_EQ(Ink(), QRect(10, 20, 30, 1));
  }
}

// From front to back lie a box, a shape, a label, and a line that crosses the three.
TEST(Stacking, FollowsTheDesignUntilALineIsBroughtInFrontOfShapesAndLabels) {
  TestForm form({Design(kPictureBox, "Needle", {10, 0, 10, 100}).Color(0x00FF00),
                 Design(kShape, "Shape1", {20, 0, 10, 100}).Color(0xFF0000).Fill(0xFF0000),
                 Design(kLabel, "Label1", {30, 0, 10, 100}).Color(0x0000FF),
                 Design(kLine, "Line1", {0, 50, 300, 0}).Color(kInk)});
  form.Open();
  const auto at = [&form](int x) { return ColorAt(Picture(form), x, 50); };
  EXPECT_EQ(at(15), 0x00FF00U);
  EXPECT_EQ(at(25), 0xFF0000U);
  EXPECT_EQ(at(35), 0x0000FFU);
  EXPECT_EQ(at(45), kInk);
  form.Find<Line>("Line1").BringToFront();
  EXPECT_EQ(at(15), 0x00FF00U);
  EXPECT_EQ(at(25), kInk);
  EXPECT_EQ(at(35), kInk);
}

TEST(Stacking, PutsALineThatIsBroughtToFrontInFrontOfAllIfTheOthersAreLabels) {
  TestForm form({Design(kLabel, "Label1", {0, 0, 300, 100}).Color(0x0000FF),
                 Design(kLine, "Line1", {0, 50, 300, 0}).Color(kInk)});
  form.Open();
  EXPECT_EQ(CountOf(Picture(form), kInk), 0);
  form.Find<Line>("Line1").BringToFront();
  EXPECT_EQ(CountOf(Picture(form), kInk), 300);
}

}  // namespace
}  // namespace kelvane::testing
