// Borders of boxes, labels and text boxes.
#include <gtest/gtest.h>

#include <QLineEdit>

#include "platform/Label.h"
#include "platform/PictureBox.h"
#include "platform/Pointer.h"
#include "platform/TestForm.h"
#include "platform/TextBox.h"

namespace kelvane::testing {
namespace {

constexpr QRgb kBorderGrey = 0x808080;

// A box of 100 by 40 pixels at 10, 20, with a strip in it that is much longer.
class ABoxWithABorder : public ::testing::Test {
 protected:
  ABoxWithABorder() { form.Open(); }
  QImage Shown() { return Picture(form).copy(10, 20, 100, 40); }

  TestForm form{{Design(kPictureBox, "Box", {10, 20, 100, 40}).Color(0x404040).Bordered(),
                 Design(kPictureBox, "Strip", {0, 0, 2000, 20}).In("Box").Color(0x00FF00)}};
  PictureBox& box = form.Find<PictureBox>("Box");
};

TEST_F(ABoxWithABorder, HasItsBorderOverWhatReachesBeyondTheInside) {
  for (const float left : {0.0F, -500.0F}) {
    form.Find<PictureBox>("Strip").setLeft(left);
    EXPECT_EQ(CountOf(Shown(), kBorderGrey), 2 * 100 + 2 * 38);
    EXPECT_EQ(CountOf(Shown(), 0x00FF00), 96 * 20);
    EXPECT_EQ(CountOf(Shown().copy(2, 2, 96, 20), 0x00FF00), 96 * 20);
  }
}

TEST_F(ABoxWithABorder, KeepsItsBorderAtItsEdgesWhenItGrows) {
  box.setWidth(120);
  const QImage picture = Picture(form).copy(10, 20, 120, 40);
  EXPECT_EQ(CountOf(picture, kBorderGrey), 2 * 120 + 2 * 38);
  EXPECT_EQ(CountOf(picture, 0x00FF00), 116 * 20);
}

TEST_F(ABoxWithABorder, CountsTheMouseFromItsInside) {
  Events events;
  Record(box, events);
  Pointer pointer(form);
  pointer.MoveTo(box, {2, 30});
  pointer.MoveTo(box, {50, 31});
  EXPECT_EQ(events,
            (Events{"Move -1: button 0 shift 0 at 0,28", "Move -1: button 0 shift 0 at 48,29"}));
}

TEST(ABorderedLabel, HasALineOfOnePixelAndItsCaptionInside) {
  TestForm form(
      {Design(kLabel, "Label1", {10, 10, 50, 17}).Caption("HHHHHHHHHHHHHHHHH").Bordered()});
  form.Open();
  EXPECT_TRUE(form.Find<Label>("Label1").Bordered());
  const QImage picture = Picture(form).copy(10, 10, 50, 17);
  EXPECT_EQ(CountOf(picture, kBorderGrey), 2 * 50 + 2 * 15);
  EXPECT_EQ(CountOf(picture.copy(1, 1, 48, 15), kBorderGrey), 0);
  EXPECT_LT(CountOf(picture.copy(1, 1, 48, 15), kPixelForm.backColor), 48 * 15) << "the text";
}

TEST(ALabelsBorder, IsNotThereUnlessTheDesignSaysSo) {
  TestForm form({Design(kLabel, "Label1", {10, 10, 50, 17})});
  form.Open();
  EXPECT_FALSE(form.Find<Label>("Label1").Bordered());
  EXPECT_EQ(CountOf(Picture(form), kBorderGrey), 0);
}

TEST(ABorderedTextBox, HasALineRoundItsText) {
  TestForm form({Design(kTextBox, "Text1", {10, 10, 100, 21}).Bordered()});
  form.Open();
  const QImage picture = Picture(form).copy(10, 10, 100, 21);
  EXPECT_EQ(CountOf(picture, kBorderGrey), 2 * 100 + 2 * 19);
  EXPECT_EQ(CountOf(picture, 0x232323), 98 * 19);
  form.Find<TextBox>("Text1").setText(u"video.mp4"_s);
  EXPECT_EQ(CountOf(Picture(form).copy(10, 10, 3, 21), 0xC0C0C0), 0);
  EXPECT_GT(CountOf(Picture(form).copy(10, 10, 100, 21), 0xC0C0C0), 0);
}

}  // namespace
}  // namespace kelvane::testing
