// Borders of boxes, labels and text boxes.
#include <gtest/gtest.h>

#include "platform/Label.h"
#include "platform/PictureBox.h"
#include "platform/Pointer.h"
#include "platform/TestForm.h"
#include "platform/TextBox.h"

namespace kelvane::testing {
namespace {

constexpr QRgb kBorderGrey = 0x808080;
constexpr QRgb kBack = 0x404040;
constexpr QRgb kGreen = 0x00FF00;

// The number of pixels of a line along the edges.
int Outline(int width, int height) { return 2 * width + 2 * (height - 2); }

// A box of 100 by 40 pixels at 10, 20, with a strip of 20 pixels' height that is much longer.
class BoxBorder : public ::testing::Test {
 protected:
  BoxBorder() { form.Open(); }

  TestForm form{{Design(kPictureBox, "Box", {10, 20, 100, 40}).Color(kBack).Bordered(),
                 Design(kPictureBox, "Strip", {0, 0, 2000, 20}).In("Box").Color(kGreen)}};
  PictureBox& box = form.Find<PictureBox>("Box");
};

TEST_F(BoxBorder, IsALineAndAGapOverWhatReachesBeyondTheInside) {
  for (const float left : {0.0F, -500.0F}) {
    form.Find<PictureBox>("Strip").setLeft(left);
    const QImage shown = Picture(form).copy(10, 20, 100, 40);
    EXPECT_EQ(CountOf(shown, kBorderGrey), Outline(100, 40));
    EXPECT_EQ(CountOf(shown.copy(1, 1, 98, 38), kBorderGrey), 0);
    EXPECT_EQ(CountOf(shown, kGreen), 96 * 20);
    EXPECT_EQ(CountOf(shown.copy(2, 2, 96, 20), kGreen), 96 * 20);
    EXPECT_EQ(CountOf(shown, kBack), Outline(98, 38) + 96 * 16);
  }
}

TEST_F(BoxBorder, FollowsTheBoxesSize) {
  box.setWidth(120);
  const QImage shown = Picture(form).copy(10, 20, 120, 40);
  EXPECT_EQ(CountOf(shown, kBorderGrey), Outline(120, 40));
  EXPECT_EQ(CountOf(shown, kGreen), 116 * 20);
}

TEST_F(BoxBorder, LiesOutsideThePlacesOfTheMouseAndOfControls) {
  auto& strip = form.Find<PictureBox>("Strip");
  EXPECT_EQ(box.geometry(), QRect(10, 20, 100, 40));
  EXPECT_EQ(strip.Left(), 0);
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

TEST(LabelBorder, IsALineOfOnePixelOutsideTheCaptionWhereTheDesignHasIt) {
  TestForm form({Design(kLabel, "Label1", {10, 10, 50, 17}).Caption("HHHHHHHHHHHHHHHHH").Bordered(),
                 Design(kLabel, "Label2", {10, 40, 50, 17})});
  form.Open();
  EXPECT_TRUE(form.Find<Label>("Label1").Bordered());
  EXPECT_FALSE(form.Find<Label>("Label2").Bordered());
  EXPECT_EQ(CountOf(Picture(form), kBorderGrey), Outline(50, 17));
  const QImage inside = Picture(form).copy(11, 11, 48, 15);
  EXPECT_EQ(CountOf(inside, kBorderGrey), 0);
  EXPECT_LT(CountOf(inside, kPixelForm.backColor), 48 * 15) << "the text";
}

TEST(TextBoxBorder, IsALineAroundTheText) {
  TestForm form({Design(kTextBox, "Text1", {10, 10, 100, 21}).Color(0x232323).Bordered()});
  form.Open();
  const auto shown = [&form](int width) { return Picture(form).copy(10, 10, width, 21); };
  EXPECT_EQ(CountOf(shown(100), kBorderGrey), Outline(100, 21));
  EXPECT_EQ(CountOf(shown(100), 0x232323), 98 * 19);
  form.Find<TextBox>("Text1").setText("video.mp4");
  EXPECT_EQ(CountOf(shown(3), kPixelForm.labelColor), 0);
  EXPECT_GT(CountOf(shown(100), kPixelForm.labelColor), 0);
}

}  // namespace
}  // namespace kelvane::testing
