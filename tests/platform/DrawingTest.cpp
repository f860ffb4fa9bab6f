// The colours of forms, boxes and shapes, and when controls are painted.
#include <gtest/gtest.h>

#include <functional>

#include "platform/App.h"
#include "platform/Label.h"
#include "platform/PictureBox.h"
#include "platform/Shapes.h"
#include "platform/TestForm.h"
#include "support/PaintsOf.h"

namespace kelvane::testing {
namespace {

constexpr QRgb kBack = kPixelForm.backColor;

TEST(BackColour, FillsFormsAndBoxes) {
  TestForm form({Design(kPictureBox, "Box", {10, 20, 30, 40}).Color(0x404040)});
  form.Open();
  auto& box = form.Find<PictureBox>("Box");
  EXPECT_EQ(box.BackColor(), 0x404040U);
  EXPECT_EQ(InkOf(Picture(form), 0x404040), QRect(10, 20, 30, 40));
  EXPECT_EQ(CountOf(Picture(form), kBack), 300 * 200 - 30 * 40);
  box.setBackColor(0x00FF00);
  EXPECT_EQ(box.BackColor(), 0x00FF00U);
  EXPECT_EQ(InkOf(Picture(form), 0x00FF00), QRect(10, 20, 30, 40));
}

TEST(Shape, IsAnOutlineInsideItsPlaceAndFilledWhereItHasAColour) {
  constexpr QRgb kInk = 0xA0A0A0;
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
    expectInside(width, kBack);
  }
  for (const QRgb color : {0xFF0000U, 0x00FF00U}) {
    shape.setFillColor(color);
    EXPECT_EQ(shape.FillColor(), color);
    expectInside(5, color);
  }
  shape.SetBorder(0x808080, 5);
  EXPECT_EQ(CountOf(Picture(form), kInk), 0);
}

TEST(Change, IsPaintedAtTheNextDoEventsAndOnlyIfItChangesSomething) {
  TestForm form(
      {Design(kLabel, "Label1", {0, 0, 50, 20}), Design(kPictureBox, "Box", {0, 20, 50, 20}),
       Design(kShape, "Shape1", {0, 40, 50, 20}), Design(kLine, "Line1", {0, 60, 50, 0})});
  form.Open();
  for (int round = 0; round < 5; ++round) DoEvents();
  auto& label = form.Find<Label>("Label1");
  struct Case {
    const char* control;
    const char* what;
    std::function<void()> change;
  };
  for (const Case& given : {
           Case{"Label1", "caption", [&] { label.setCaption("Progress"); }},
           Case{"Label1", "back colour", [&] { label.setBackColor(0x808080); }},
           Case{"Label1", "colour", [&] { label.setForeColor(0x00FF00); }},
           Case{"Label1", "alignment", [&] { label.setAlignment(Qt::AlignHCenter); }},
           Case{"Box", "back colour", [&] { form.Find<PictureBox>("Box").setBackColor(0x404040); }},
           Case{"Shape1", "border", [&] { form.Find<Shape>("Shape1").SetBorder(0, 2); }},
           Case{"Line1", "colour", [&] { form.Find<Line>("Line1").setBorderColor(0x808080); }},
       }) {
    SCOPED_TRACE(std::string(given.control) + ", " + given.what);
    const PaintsOf paints(given.control);
    given.change();
    EXPECT_EQ(paints.Count(), 0);
    DoEvents();
    EXPECT_EQ(paints.Count(), 1);
    given.change();
    DoEvents();
    EXPECT_EQ(paints.Count(), 1);
  }
}

}  // namespace
}  // namespace kelvane::testing
