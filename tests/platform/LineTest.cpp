// Lines by their ends, and where they lie among the other controls.
#include <gtest/gtest.h>

#include <limits>

#include "platform/Label.h"
#include "platform/PictureBox.h"
#include "platform/Pointer.h"
#include "platform/Shapes.h"
#include "platform/TestForm.h"

namespace kelvane::testing {
namespace {

constexpr QRgb kInk = 0x808080;

class ALinesEnds : public ::testing::Test {
 protected:
  ALinesEnds() { form.Open(); }

  QRect Ink() { return InkOf(Picture(form), kInk); }

  TestForm form{{Design(kLine, "Line1", {10, 20, 30, 0}).Color(kInk)}};
  Line& line = form.Find<Line>("Line1");
};

TEST_F(ALinesEnds, RunsFromTheLeftToTheRightOfItsPlaceInTheDesign) {
  EXPECT_EQ(line.X1(), 10);
  EXPECT_EQ(line.Y1(), 20);
  EXPECT_EQ(line.X2(), 40);
  EXPECT_EQ(line.Y2(), 20);
  EXPECT_EQ(line.BorderColor(), kInk);
  EXPECT_EQ(Ink(), QRect(10, 20, 30, 1));
}

TEST_F(ALinesEnds, LeavesOutThePixelAtItsRightOrLowerEnd) {
  line.SetEnds(100, 50, 110, 50);
  EXPECT_EQ(Ink(), QRect(100, 50, 10, 1));
  line.SetEnds(100, 50, 100, 57);
  EXPECT_EQ(Ink(), QRect(100, 50, 1, 7));
}

TEST_F(ALinesEnds, MayRunBackwards) {
  line.SetEnds(110, 50, 100, 50);
  EXPECT_EQ(line.X1(), 110);
  EXPECT_EQ(line.X2(), 100);
  EXPECT_EQ(Ink(), QRect(100, 50, 10, 1));
  line.SetEnds(100, 57, 100, 50);
  EXPECT_EQ(Ink(), QRect(100, 50, 1, 7));
}

TEST_F(ALinesEnds, TakesItsEndsOneByOne) {
  line.setX1(5);
  line.setX2(6);
  line.setY1(30);
  line.setY2(33);
  EXPECT_EQ(Ink(), QRect()) << "it slants";
  line.setX2(5);
  EXPECT_EQ(Ink(), QRect(5, 30, 1, 3));
}

TEST_F(ALinesEnds, OfNoLengthDoesNotShow) {
  line.SetEnds(10, 20, 10, 20);
  EXPECT_EQ(Ink(), QRect());
}

TEST_F(ALinesEnds, KeepsFractionsOfAUnit) {
  line.SetEnds(10, 30.5, 20, 30.5);
  EXPECT_EQ(line.Y1(), 30.5);
  EXPECT_EQ(Ink(), QRect(10, 31, 10, 1));
}

TEST_F(ALinesEnds, KeepsItsEndsWhereANewOneIsNoNumber) {
  for (const float none :
       {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity()}) {
    line.setX1(none);
    line.setY1(none);
    line.setX2(none);
    line.setY2(none);
    EXPECT_EQ(Ink(), QRect(10, 20, 30, 1));
  }
}

TEST_F(ALinesEnds, TakesAnotherColour) {
  line.setBorderColor(0xFF0000);
  EXPECT_EQ(CountOf(Picture(form), 0xFF0000), 30);
}

TEST_F(ALinesEnds, NeverTakesTheMouse) {
  Events events;
  form.OnMouseMove = [&](const MouseEvent& event) { events.push_back(Describe("Move", event)); };
  Pointer(form).MoveTo(form, {15, 20});
  EXPECT_EQ(events, Events{"Move -1: button 0 shift 0 at 15,20"});
}

TEST(LinesInTwips, AreRoundedToPixelsOnTheScreen) {
  TestForm form({Design(kPictureBox, "Box", {0, 0, 200, 200}).Twips(),
                 Design(kLine, "Line1", {10, 20, 0, 30}).In("Box").Color(kInk)});
  form.Open();
  EXPECT_EQ(form.Find<Line>("Line1").Y2(), 750);
  EXPECT_EQ(form.Find<Line>("Line1").geometry(), QRect(10, 20, 1, 30));
}

// Front to back: a box, a line, a label.
class LinesAmongOthers : public ::testing::Test {
 protected:
  LinesAmongOthers() { form.Open(); }
  QRgb At(int x) { return ColorAt(Picture(form), x, 50); }

  TestForm form{{Design(kPictureBox, "Needle", {10, 0, 10, 100}).Color(0x00FF00),
                 Design(kShape, "Shape1", {20, 0, 10, 100}).Color(0xFF0000).Fill(0xFF0000),
                 Design(kLabel, "Label1", {30, 0, 10, 100}).Color(0x0000FF),
                 Design(kLine, "Line1", {0, 50, 300, 0}).Color(kInk)}};
};

TEST_F(LinesAmongOthers, LieWhereTheDesignPutsThem) {
  EXPECT_EQ(At(15), 0x00FF00U);
  EXPECT_EQ(At(25), 0xFF0000U);
  EXPECT_EQ(At(35), 0x0000FFU);
  EXPECT_EQ(At(45), kInk);
}

TEST_F(LinesAmongOthers, BroughtToTheFrontStayBehindTheControlsThatHaveAWindow) {
  form.Find<Line>("Line1").BringToFront();
  EXPECT_EQ(At(15), 0x00FF00U);
  EXPECT_EQ(At(25), kInk);
  EXPECT_EQ(At(35), kInk);
}

TEST(ALineAlone, BroughtToTheFrontLiesOverEverythingElse) {
  TestForm form({Design(kLabel, "Label1", {0, 0, 300, 100}).Color(0x0000FF),
                 Design(kLine, "Line1", {0, 50, 300, 0}).Color(kInk)});
  form.Open();
  EXPECT_EQ(CountOf(Picture(form), kInk), 0);
  form.Find<Line>("Line1").BringToFront();
  EXPECT_EQ(CountOf(Picture(form), kInk), 300);
}

TEST(AShape, IsFilledWhereItHasAColourInside) {
  TestForm form({Design(kShape, "Shape1", {10, 20, 30, 40}).Color(kInk).Fill(0xFF0000)});
  form.Open();
  auto& shape = form.Find<Shape>("Shape1");
  EXPECT_EQ(shape.FillColor(), 0xFF0000U);
  EXPECT_EQ(CountOf(Picture(form), 0xFF0000), 28 * 38);
  EXPECT_EQ(CountOf(Picture(form), kInk), 30 * 40 - 28 * 38);
  shape.setFillColor(0x00FF00);
  EXPECT_EQ(CountOf(Picture(form), 0x00FF00), 28 * 38);
}

}  // namespace
}  // namespace kelvane::testing
