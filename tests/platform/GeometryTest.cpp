// Where a control stands: what its properties read and what its widget on the screen does.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "platform/Label.h"
#include "platform/PictureBox.h"
#include "platform/Shapes.h"
#include "platform/TestForm.h"

namespace kelvane::testing {
namespace {

constexpr float kNotANumber = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinite = std::numeric_limits<float>::infinity();
constexpr float kGreatest = std::numeric_limits<float>::max();

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

TEST(AControlInPixels, ReadsBackWhatWasAssignedAndStandsAtTheNearestWholePixel) {
  const TestForm form(kOneLabel);
  auto& label = form.Find<Label>("Label1");
  struct Case {
    float assigned;
    int pixels;
  };
  for (const auto& [assigned, pixels] : {Case{7, 7},
                                         {0, 0},
                                         {2.25F, 2},
                                         {2.75F, 3},
                                         {0.125F, 0},
                                         {1919.5F, 1920},
                                         {16777214, 16777214}}) {
    label.setLeft(assigned);
    label.setTop(assigned);
    label.setWidth(assigned);
    label.setHeight(assigned);
    EXPECT_EQ(label.Left(), assigned);
    EXPECT_EQ(label.Top(), assigned);
    EXPECT_EQ(label.Width(), assigned);
    EXPECT_EQ(label.Height(), assigned);
    EXPECT_EQ(label.geometry(), QRect(pixels, pixels, pixels, pixels)) << assigned;
  }
}

TEST(AControlInPixels, MayStandLeftOfAndAboveItsContainer) {
  const TestForm form(kOneLabel);
  auto& label = form.Find<Label>("Label1");
  label.setLeft(-30.75F);
  label.setTop(-0.25F);
  EXPECT_EQ(label.Left(), -30.75F);
  EXPECT_EQ(label.Top(), -0.25F);
  EXPECT_EQ(label.pos(), QPoint(-31, 0));
}

TEST(AControlInPixels, AddsUpFractionsThatAreLostOnTheScreen) {
  const TestForm form(kOneLabel);
  auto& label = form.Find<Label>("Label1");
  label.setLeft(0);
  for (int step = 0; step < 8; ++step) label.setLeft(label.Left() + 0.25F);
  EXPECT_EQ(label.Left(), 2);
  EXPECT_EQ(label.x(), 2);
}

TEST(AControlInPixels, ChangesOneOfItsFourMeasuresAtATime) {
  const TestForm form(kOneLabel);
  auto& label = form.Find<Label>("Label1");
  EXPECT_EQ(label.geometry(), QRect(10, 20, 30, 40));
  label.setLeft(11);
  EXPECT_EQ(label.geometry(), QRect(11, 20, 30, 40));
  label.setTop(21);
  EXPECT_EQ(label.geometry(), QRect(11, 21, 30, 40));
  label.setWidth(31);
  EXPECT_EQ(label.geometry(), QRect(11, 21, 31, 40));
  label.setHeight(41);
  EXPECT_EQ(label.geometry(), QRect(11, 21, 31, 41));
}

TEST(AControlInTwips, ReadsBackWhatWasAssignedAndStandsAtTheNearestWholePixel) {
  const TestForm form(TwipForm(), kOneLabel);
  auto& label = form.Find<Label>("Label1");
  struct Case {
    float assigned;
    int pixels;
  };
  for (const auto& [assigned, pixels] :
       {Case{0, 0}, {15, 1}, {22, 1}, {23, 2}, {440, 29}, {15855, 1057}, {7.25F, 0}}) {
    label.setLeft(assigned);
    label.setTop(assigned);
    label.setWidth(assigned);
    label.setHeight(assigned);
    EXPECT_EQ(label.Left(), assigned);
    EXPECT_EQ(label.Top(), assigned);
    EXPECT_EQ(label.Width(), assigned);
    EXPECT_EQ(label.Height(), assigned);
    EXPECT_EQ(label.geometry(), QRect(pixels, pixels, pixels, pixels)) << assigned;
  }
}

// Whatever multiple of 15 a design gives, its whole number of pixels must come out.
TEST(AControlOfADesign, ReadsItsPlaceInWholeUnits) {
  for (int pixels = 0; pixels <= 2000; ++pixels) {
    const auto twips = static_cast<float>(pixels * 15);
    const Controls controls{
        Design(kLabel, "Label1", {twips / 15, -twips / 15, twips / 15, twips / 15})};
    const TestForm inPixels(kPixelForm, controls);
    const auto& label = inPixels.Find<Label>("Label1");
    const auto whole = static_cast<float>(pixels);
    ASSERT_EQ(label.Left(), whole);
    ASSERT_EQ(label.Top(), -whole);
    ASSERT_EQ(label.Width(), whole);
    ASSERT_EQ(label.Height(), whole);
    const TestForm inTwips(TwipForm(), controls);
    const auto& other = inTwips.Find<Label>("Label1");
    ASSERT_EQ(other.Left(), twips);
    ASSERT_EQ(other.Width(), twips);
    ASSERT_EQ(other.geometry(), QRect(pixels, -pixels, pixels, pixels));
  }
}

TEST(AControl, RefusesANegativeOrUndefinedSizeAndKeepsItsLast) {
  for (const FormDesign& design : {kPixelForm, TwipForm()}) {
    const TestForm form(design, kOneLabel);
    auto& label = form.Find<Label>("Label1");
    const QRect before = label.geometry();
    for (const Setter& size : kSizes) {
      const float last = (label.*size.get)();
      for (const float refused : {-1.0F, -0.001F, -kGreatest, kNotANumber, kInfinite, -kInfinite}) {
        (label.*size.set)(refused);
        EXPECT_EQ((label.*size.get)(), last) << size.name << " = " << refused;
        EXPECT_EQ(label.geometry(), before) << size.name << " = " << refused;
      }
    }
  }
}

TEST(AControl, RefusesAnUndefinedPlaceAndKeepsItsLast) {
  const TestForm form(kOneLabel);
  auto& label = form.Find<Label>("Label1");
  for (const Setter& place : kPlaces) {
    const float last = (label.*place.get)();
    for (const float refused : {kNotANumber, kInfinite, -kInfinite}) {
      (label.*place.set)(refused);
      EXPECT_EQ((label.*place.get)(), last) << place.name << " = " << refused;
    }
  }
  EXPECT_EQ(label.pos(), QPoint(10, 20));
}

TEST(AControl, GoesOnFromItsLastSizeAfterARefusal) {
  const TestForm form(kOneLabel);
  auto& label = form.Find<Label>("Label1");
  label.setWidth(-5);
  label.setLeft(50);
  label.setHeight(8);
  EXPECT_EQ(label.geometry(), QRect(50, 20, 30, 8));
}

TEST(AControl, MayHaveNoWidthAndNoHeight) {
  const TestForm form(kOneLabel);
  auto& label = form.Find<Label>("Label1");
  label.setWidth(0);
  EXPECT_EQ(label.Width(), 0);
  EXPECT_EQ(label.size(), QSize(0, 40));
  label.setHeight(0);
  EXPECT_EQ(label.Height(), 0);
  EXPECT_EQ(label.size(), QSize(0, 0));
  label.setHeight(12);
  EXPECT_EQ(label.size(), QSize(0, 12));
}

TEST(AControl, TakesHugeMeasuresAsFarAsTheScreenCanGo) {
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

TEST(AControlsWidget, HasItsPlaceBeforeTheAssignmentReturnsOnTheScreenToo) {
  TestForm form(kOneLabel);
  form.Open();
  auto& label = form.Find<Label>("Label1");
  label.setLeft(100);
  label.setTop(90);
  label.setWidth(80);
  label.setHeight(70);
  EXPECT_EQ(label.geometry(), QRect(100, 90, 80, 70));
}

TEST(AStockWidget, FillsItsControlAtEverySize) {
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

TEST(ALine, IsOnePixelThickAtAnyHeight) {
  const TestForm form({Design(kLine, "Line1", {10, 20, 30, 0})});
  const auto& line = form.Find<Line>("Line1");
  EXPECT_EQ(line.Height(), 0);
  EXPECT_EQ(line.geometry(), QRect(10, 20, 30, 1));
}

}  // namespace
}  // namespace kelvane::testing
