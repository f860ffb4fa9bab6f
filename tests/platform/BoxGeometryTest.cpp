// Boxes: the unit and the origin that they give to what is in them, and their own change of size.
#include <gtest/gtest.h>

#include "platform/Label.h"
#include "platform/PictureBox.h"
#include "platform/TestForm.h"

namespace kelvane::testing {
namespace {

// Every mix of units, each box with one label at 10, 20 pixels.
const Controls kNestedBoxes{Design(kPictureBox, "Pixels", {20, 30, 200, 100}),
                            Design(kLabel, "InPixels", {10, 20, 1, 2}).In("Pixels"),
                            Design(kPictureBox, "Twips", {20, 30, 200, 100}).In("Pixels").Twips(),
                            Design(kLabel, "InTwips", {10, 20, 1, 2}).In("Twips"),
                            Design(kPictureBox, "PixelsAgain", {2, 3, 4, 5}).In("Twips"),
                            Design(kLabel, "InPixelsAgain", {10, 20, 1, 2}).In("PixelsAgain")};

TEST(ABox, GivesItsUnitToWhatIsInItAndTakesItsOwnFromWhatItIsIn) {
  const TestForm form(TwipForm(), kNestedBoxes);
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

TEST(ABox, TakesWhatIsInItAlongWhenItMoves) {
  const TestForm form(TwipForm(), kNestedBoxes);
  auto& box = form.Find<PictureBox>("Pixels");
  const auto& label = form.Find<Label>("InPixels");
  const QPoint before = label.mapTo(&form, QPoint(0, 0));
  box.setLeft(box.Left() - 15 * 7);
  EXPECT_EQ(label.mapTo(&form, QPoint(0, 0)), before - QPoint(7, 0));
  EXPECT_EQ(label.Left(), 10);
}

TEST(ABorderedBox, BeginsItsPlacesInsideItsBorderOfTwoPixels) {
  const TestForm form({Design(kPictureBox, "Bordered", {20, 30, 200, 100}).Bordered(),
                       Design(kLabel, "Label1", {0, 0, 10, 20}).In("Bordered")});
  const auto& box = form.Find<PictureBox>("Bordered");
  auto& label = form.Find<Label>("Label1");
  EXPECT_EQ(box.geometry(), QRect(20, 30, 200, 100));
  EXPECT_EQ(label.Left(), 0);
  EXPECT_EQ(label.geometry(), QRect(2, 2, 10, 20));
  label.setLeft(-2);
  label.setTop(7);
  EXPECT_EQ(label.pos(), QPoint(0, 9));
}

class Resize : public ::testing::Test {
 protected:
  Resize() {
    for (PictureBox* box : {&first, &second}) {
      box->Resize = [this, box](int index) {
        events.push_back(u"%1: %2 %3x%4"_s.arg(index)
                             .arg(box->objectName())
                             .arg(box->width())
                             .arg(box->height())
                             .toStdString());
      };
    }
  }

  TestForm form{{Design(kPictureBox, "Picture1(0)", {0, 0, 100, 50}),
                 Design(kPictureBox, "Picture1(1)", {0, 0, 100, 50}).In("Picture1(0)")}};
  PictureBox& first = form.Find<PictureBox>("Picture1(0)");
  PictureBox& second = form.Find<PictureBox>("Picture1(1)");
  Events events;
};

TEST_F(Resize, IsRaisedOnceForEachChangeBeforeTheAssignmentReturns) {
  second.setWidth(120);
  EXPECT_EQ(events, (Events{"1: Picture1(1) 120x50"}));
  second.setHeight(60);
  EXPECT_EQ(events, (Events{"1: Picture1(1) 120x50", "1: Picture1(1) 120x60"}));
}

TEST_F(Resize, IsRaisedForAnyBoxOnTheScreenTooAndNotAgainWhenItComesUp) {
  second.setWidth(110);
  form.Open();
  second.setWidth(120);
  first.setHeight(80);
  EXPECT_EQ(events,
            (Events{"1: Picture1(1) 110x50", "1: Picture1(1) 120x50", "0: Picture1(0) 100x80"}));
}

TEST_F(Resize, IsRaisedForAHiddenBox) {
  second.setVisible(false);
  form.Open();
  second.setWidth(120);
  EXPECT_EQ(events, (Events{"1: Picture1(1) 120x50"}));
}

TEST_F(Resize, IsNotRaisedWhereNothingChangesOnTheScreen) {
  second.setWidth(100);
  second.setWidth(100.25F);
  second.setWidth(-1);
  second.setLeft(5);
  second.setTop(5);
  first.setLeft(3);
  EXPECT_EQ(events, Events{});
}

TEST_F(Resize, IsRaisedWhenTheBoxShrinksToNothing) {
  second.setWidth(0);
  second.setHeight(0);
  second.setWidth(0);
  EXPECT_EQ(events, (Events{"1: Picture1(1) 0x50", "1: Picture1(1) 0x0"}));
}

TEST_F(Resize, MayItselfChangeTheSizeOfTheBox) {
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
