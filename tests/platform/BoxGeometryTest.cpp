// Boxes: the unit that they give to what is in them, and their own change of size.
#include <gtest/gtest.h>

#include "platform/Label.h"
#include "platform/PictureBox.h"
#include "platform/TestForm.h"

namespace kelvane::testing {
namespace {

TEST(BoxUnit, HoldsForTheControlsInTheBoxAndNotForItsOwnPlace) {
  const TestForm form(TwipForm(),
                      {Design(kPictureBox, "Pixels", {20, 30, 200, 100}),
                       Design(kLabel, "InPixels", {10, 20, 1, 2}).In("Pixels"),
                       Design(kPictureBox, "Twips", {20, 30, 200, 100}).In("Pixels").Twips(),
                       Design(kLabel, "InTwips", {10, 20, 1, 2}).In("Twips"),
                       Design(kPictureBox, "PixelsAgain", {2, 3, 4, 5}).In("Twips"),
                       Design(kLabel, "InPixelsAgain", {10, 20, 1, 2}).In("PixelsAgain")});
  struct Case {
    const char* name;
    float left;  // as read
    float width;
    QPoint pixels;
  };
  for (const Case& expected : {Case{"Pixels", 300, 3000, {20, 30}},
                               {"InPixels", 10, 1, {10, 20}},
                               {"Twips", 20, 200, {20, 30}},
                               {"InTwips", 150, 15, {10, 20}},
                               {"PixelsAgain", 30, 60, {2, 3}},
                               {"InPixelsAgain", 10, 1, {10, 20}}}) {
    const auto& control = form.Find<Control>(expected.name);
    EXPECT_EQ(control.Left(), expected.left) << expected.name;
    EXPECT_EQ(control.Width(), expected.width) << expected.name;
    EXPECT_EQ(control.pos(), expected.pixels) << expected.name;
  }
}

class BoxResize : public ::testing::Test {
 protected:
  BoxResize() {
    for (PictureBox* box : {&first, &second}) {
      box->Resize = [this, box](int index) {
        events.push_back(std::to_string(index) + ": " + std::to_string(box->width()) + "x" +
                         std::to_string(box->height()));
      };
    }
  }

  TestForm form{{Design(kPictureBox, "Picture1(0)", {0, 0, 100, 50}),
                 Design(kPictureBox, "Picture1(1)", {0, 0, 100, 50}).In("Picture1(0)")}};
  PictureBox& first = form.Find<PictureBox>("Picture1(0)");
  PictureBox& second = form.Find<PictureBox>("Picture1(1)");
  Events events;
};

TEST_F(BoxResize, IsRaisedOnceForEachChangeBeforeTheAssignmentReturnsHiddenOrNot) {
  second.setWidth(110);
  EXPECT_EQ(events, Events{"1: 110x50"});
  second.setVisible(false);
  second.setHeight(60);
  EXPECT_EQ(events, (Events{"1: 110x50", "1: 110x60"}));
  form.Open();
  second.setWidth(120);
  first.setHeight(80);
  EXPECT_EQ(events, (Events{"1: 110x50", "1: 110x60", "1: 120x60", "0: 100x80"}));
}

TEST_F(BoxResize, IsNotRaisedWhereNoPixelOfTheSizeChanges) {
  second.setWidth(100);
  second.setWidth(100.25F);
  second.setWidth(-1);
  second.setLeft(5);
  second.setTop(5);
  EXPECT_EQ(events, Events{});
}

TEST_F(BoxResize, IsRaisedWhenTheBoxShrinksToNothing) {
  second.setWidth(0);
  second.setHeight(0);
  second.setWidth(0);
  EXPECT_EQ(events, (Events{"1: 0x50", "1: 0x0"}));
}

TEST_F(BoxResize, MayItselfChangeTheSizeOfTheBox) {
  second.Resize = [this](int) {
    events.push_back(std::to_string(second.width()));
    if (second.width() > 90) second.setWidth(second.Width() - 10);
  };
  second.setWidth(110);
  EXPECT_EQ(events, (Events{"110", "100", "90"}));
  EXPECT_EQ(second.Width(), 90);
}

}  // namespace
}  // namespace kelvane::testing
