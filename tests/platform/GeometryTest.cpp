// Where a control stands: what its properties read and what its widget on the screen does.
#include <gtest/gtest.h>

#include <string>

#include "platform/Label.h"
#include "platform/TestForm.h"

namespace kelvane::testing {
namespace {

const Controls kOneLabel{Design(kLabel, "Label1", {10, 20, 30, 40})};

struct Setter {
  const char* name;
  void (Control::*set)(float);
  float (Control::*get)() const;
};

constexpr Setter kPlaces[]{{"Left", &Control::setLeft, &Control::Left},
                           {"Top", &Control::setTop, &Control::Top}};
constexpr Setter kSizes[]{{"Width", &Control::setWidth, &Control::Width},
                          {"Height", &Control::setHeight, &Control::Height}};

void ExpectRefusal(const FormDesign& design, const Setter& property, float refused) {
  const TestForm form(design, kOneLabel);
  auto& label = form.Find<Label>("Label1");
  const float last = (label.*property.get)();
  (label.*property.set)(refused);
  EXPECT_EQ((label.*property.get)(), last) << property.name << " = " << refused;
  EXPECT_EQ(label.geometry(), QRect(10, 20, 30, 40)) << property.name << " = " << refused;
}

TEST(ControlPlace, ReadsBackAsAssignedAndIsTheNearestWholePixelOnTheScreen) {
  struct Case {
    FormDesign design;
    float assigned;
    int pixels;
  };
  for (const auto& [design, assigned, pixels] : {Case{kPixelForm, 7, 7},
                                                 {kPixelForm, 0, 0},
                                                 {kPixelForm, 2.25F, 2},
                                                 {kPixelForm, 2.75F, 3},
                                                 {kPixelForm, 0.125F, 0},
                                                 {kPixelForm, 1919.5F, 1920},
                                                 {kPixelForm, 16777214, 16777214},
                                                 {TwipForm(), 0, 0},
                                                 {TwipForm(), 15, 1},
                                                 {TwipForm(), 22, 1},
                                                 {TwipForm(), 23, 2},
                                                 {TwipForm(), 440, 29},
                                                 {TwipForm(), 15855, 1057},
                                                 {TwipForm(), 7.25F, 0}}) {
    const TestForm form(design, kOneLabel);
    auto& label = form.Find<Label>("Label1");
    for (const Setter& property : kPlaces) {
      (label.*property.set)(-assigned);
      EXPECT_EQ((label.*property.get)(), -assigned) << property.name;
    }
    for (const Setter& property : kSizes) {
      (label.*property.set)(assigned);
      EXPECT_EQ((label.*property.get)(), assigned) << property.name;
    }
    EXPECT_EQ(label.geometry(), QRect(-pixels, -pixels, pixels, pixels)) << assigned;
  }
}

TEST(ControlPlace, ChangesBeforeEachAssignmentReturnsShownOrNot) {
  TestForm form(kOneLabel);
  auto& label = form.Find<Label>("Label1");
  EXPECT_EQ(label.geometry(), QRect(10, 20, 30, 40));
  for (const int more : {1, 2}) {
    const auto units = static_cast<float>(more);
    label.setLeft(10 + units);
    EXPECT_EQ(label.geometry(), QRect(10 + more, 19 + more, 29 + more, 39 + more));
    label.setTop(20 + units);
    EXPECT_EQ(label.geometry(), QRect(10 + more, 20 + more, 29 + more, 39 + more));
    label.setWidth(30 + units);
    EXPECT_EQ(label.geometry(), QRect(10 + more, 20 + more, 30 + more, 39 + more));
    label.setHeight(40 + units);
    EXPECT_EQ(label.geometry(), QRect(10 + more, 20 + more, 30 + more, 40 + more));
    form.Open();
  }
}

TEST(ControlPlace, OfADesignInWholePixelsIsWholeInBothUnits) {
  for (int pixels = 0; pixels <= 2000; ++pixels) {
    const auto whole = static_cast<float>(pixels);
    const Controls controls{Design(kLabel, "Label1", {whole, -whole, whole, whole})};
    const TestForm inPixels(kPixelForm, controls);
    const auto& label = inPixels.Find<Label>("Label1");
    ASSERT_EQ(label.Left(), whole);
    ASSERT_EQ(label.Top(), -whole);
    ASSERT_EQ(label.Width(), whole);
    ASSERT_EQ(label.Height(), whole);
    const TestForm inTwips(TwipForm(), controls);
    const auto& other = inTwips.Find<Label>("Label1");
    ASSERT_EQ(other.Left(), whole * 15);
    ASSERT_EQ(other.Width(), whole * 15);
    ASSERT_EQ(other.geometry(), QRect(pixels, -pixels, pixels, pixels));
  }
}

TEST(ControlPlace, RefusesANegativeOrUndefinedSizeAndKeepsItsLast) {
  for (const FormDesign& design : {kPixelForm, TwipForm()}) {
    for (const Setter& size : kSizes) {
      for (const float refused : {-1.0F, -0.001F, -kGreatest, kNotANumber, kInfinite, -kInfinite}) {
        ExpectRefusal(design, size, refused);
      }
    }
  }
}

TEST(ControlPlace, RefusesAnUndefinedPlaceAndKeepsItsLast) {
  for (const Setter& place : kPlaces) {
    for (const float refused : {kNotANumber, kInfinite, -kInfinite}) {
      ExpectRefusal(kPixelForm, place, refused);
    }
  }
}

TEST(ControlPlace, MayBeHuge) {
  for (const FormDesign& design : {kPixelForm, TwipForm()}) {
    TestForm form(design, kOneLabel);
    form.Open();
    auto& label = form.Find<Label>("Label1");
    for (const float huge : {1e7F, 1e12F, kGreatest}) {
      label.setLeft(huge);
      label.setTop(-huge);
      label.setWidth(huge);
      label.setHeight(huge);
      EXPECT_EQ(label.Left(), huge);
      EXPECT_EQ(label.Top(), -huge);
      EXPECT_EQ(label.Width(), huge);
      EXPECT_EQ(label.Height(), huge);
      EXPECT_GT(label.x(), 600000);
      EXPECT_LT(label.y(), -600000);
      EXPECT_GT(label.width(), 600000);
      EXPECT_LE(label.width(), QWIDGETSIZE_MAX);
      EXPECT_GT(label.height(), 600000);
    }
    label.setLeft(0);
    label.setTop(0);
    EXPECT_FALSE(Picture(form).isNull());
  }
}

TEST(StockWidget, FillsItsControlAtEverySize) {
  TestForm form({Design(kCommandButton, "Command1", {0, 0, 100, 20}),
                 Design(kVScrollBar, "VScroll1"), Design(kProgressBar, "pbar"),
                 Design(kTextBox, "Text1"), Design(kSlider, "Slider1")});
  form.Open();
  for (const char* name : {"Command1", "VScroll1", "pbar", "Text1", "Slider1"}) {
    auto& control = form.Find<Control>(name);
    for (const QSize size : {QSize(100, 20), QSize(31, 57), QSize(0, 0), QSize(3, 200)}) {
      control.setWidth(static_cast<float>(size.width()));
      control.setHeight(static_cast<float>(size.height()));
      auto* inside = control.findChild<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
      ASSERT_NE(inside, nullptr) << name;
      EXPECT_EQ(inside->geometry(), QRect(QPoint(0, 0), size)) << name;
    }
  }
}

}  // namespace
}  // namespace kelvane::testing
