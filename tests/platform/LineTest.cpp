// Lines by their ends, and where they lie among the other controls.
#include <gtest/gtest.h>

#include "platform/Label.h"
#include "platform/PictureBox.h"
#include "platform/Shapes.h"
#include "platform/TestForm.h"

namespace kelvane::testing {
namespace {

constexpr QRgb kInk = 0x808080;

class LineEnds : public ::testing::Test {
 protected:
  LineEnds() { form.Open(); }

  QRect Ink() { return InkOf(Picture(form), kInk); }

  TestForm form{{Design(kLine, "Line1", {10, 20, 30, 0}).Color(kInk)}};
  Line& line = form.Find<Line>("Line1");
};

TEST_F(LineEnds, AreTheLeftAndTheRightOfThePlaceInTheDesign) {
  EXPECT_EQ(line.X1(), 10);
  EXPECT_EQ(line.Y1(), 20);
  EXPECT_EQ(line.X2(), 40);
  EXPECT_EQ(line.Y2(), 20);
  EXPECT_EQ(line.Height(), 0);
  EXPECT_EQ(line.geometry(), QRect(10, 20, 30, 1));
  EXPECT_EQ(Ink(), QRect(10, 20, 30, 1));
}

TEST_F(LineEnds, LeaveOutThePixelOnTheRightOrAtTheBottom) {
  struct Case {
    float x1, y1, x2, y2;
    QRect ink;
  };
  for (const Case& given : {Case{100, 50, 110, 50, {100, 50, 10, 1}},
                            {110, 50, 100, 50, {100, 50, 10, 1}},
                            {100, 50, 100, 57, {100, 50, 1, 7}},
                            {100, 57, 100, 50, {100, 50, 1, 7}},
                            {10, 30.5, 20, 30.5, {10, 31, 10, 1}},  // on whole pixels
                            {10, 20, 10, 20, {}},                   // no length
                            {5, 30, 6, 33, {}}}) {                  // slanting
    line.SetEnds(given.x1, given.y1, given.x2, given.y2);
    EXPECT_EQ(Ink(), given.ink) << given.x1 << ',' << given.y1;
    EXPECT_EQ(line.X1(), given.x1);
    EXPECT_EQ(line.Y1(), given.y1);
  }
}

TEST_F(LineEnds, AreSetOneByOne) {
  line.setX1(5);
  line.setX2(5);
  line.setY1(30);
  line.setY2(33);
  EXPECT_EQ(Ink(), QRect(5, 30, 1, 3));
}

TEST_F(LineEnds, StayWhereANewOneIsNoNumber) {
  for (const float none : {kNotANumber, kInfinite}) {
    line.setX1(none);
    line.setY1(none);
    line.setX2(none);
    line.setY2(none);
    EXPECT_EQ(Ink(), QRect(10, 20, 30, 1));
  }
}

TEST_F(LineEnds, InTwipsAreRoundedToPixelsOnTheScreen) {
  TestForm twips({Design(kPictureBox, "Box", {0, 0, 200, 200}).Twips(),
                  Design(kLine, "Line1", {10, 20, 0, 30}).In("Box").Color(kInk)});
  EXPECT_EQ(twips.Find<Line>("Line1").Y2(), 750);
  EXPECT_EQ(twips.Find<Line>("Line1").geometry(), QRect(10, 20, 1, 30));
}

TEST_F(LineEnds, HaveTheColourOfTheLine) {
  line.setBorderColor(0xFF0000);
  EXPECT_EQ(InkOf(Picture(form), 0xFF0000), QRect(10, 20, 30, 1));
}

// Front to back: a box, a shape, a label, a line across all of them.
TEST(LineStacking, FollowsTheDesignUntilTheLineIsBroughtInFrontOfShapesAndLabels) {
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

TEST(LineStacking, MayBringALineInFrontOfAllWhereNoControlHasAWindow) {
  TestForm form({Design(kLabel, "Label1", {0, 0, 300, 100}).Color(0x0000FF),
                 Design(kLine, "Line1", {0, 50, 300, 0}).Color(kInk)});
  form.Open();
  EXPECT_EQ(CountOf(Picture(form), kInk), 0);
  form.Find<Line>("Line1").BringToFront();
  EXPECT_EQ(CountOf(Picture(form), kInk), 300);
}

}  // namespace
}  // namespace kelvane::testing
