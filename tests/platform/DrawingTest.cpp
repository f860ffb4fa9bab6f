// Boxes, frames and lines by their pixels, and when the windows are painted.
#include <gtest/gtest.h>

#include <functional>
#include <ostream>

#include "platform/App.h"
#include "platform/Label.h"
#include "platform/PictureBox.h"
#include "platform/Shapes.h"
#include "platform/TestForm.h"

namespace kelvane::testing {
namespace {

constexpr QRgb kBack = 0x102030;
constexpr QRgb kBorderGrey = 0x808080;

TEST(AForm, IsOfItsBackColour) {
  TestForm form;
  form.Open();
  EXPECT_EQ(CountOf(Picture(form), kBack), 300 * 200);
}

TEST(ABox, IsOfItsBackColour) {
  TestForm form({Design(kPictureBox, "Box", {10, 20, 30, 40}).Color(0x404040)});
  form.Open();
  auto& box = form.Find<PictureBox>("Box");
  EXPECT_EQ(box.BackColor(), 0x404040U);
  EXPECT_EQ(CountOf(Picture(form).copy(10, 20, 30, 40), 0x404040), 30 * 40);
  EXPECT_EQ(CountOf(Picture(form), kBack), 300 * 200 - 30 * 40);
  box.setBackColor(0x00FF00);
  EXPECT_EQ(box.BackColor(), 0x00FF00U);
  EXPECT_EQ(CountOf(Picture(form), 0x00FF00), 30 * 40);
}

TEST(ABox, ClipsWhatIsInIt) {
  TestForm form({Design(kPictureBox, "Box", {10, 20, 30, 40}).Color(0x404040),
                 Design(kPictureBox, "Bar", {20, -100, 200, 1000}).In("Box").Color(0x00FF00)});
  form.Open();
  const QImage picture = Picture(form);
  EXPECT_EQ(CountOf(picture, 0x00FF00), 10 * 40);
  EXPECT_EQ(CountOf(picture.copy(30, 20, 10, 40), 0x00FF00), 10 * 40);
}

TEST(ABorderedBox, HasALineRoundItAndAGapInsideTheLine) {
  TestForm form({Design(kPictureBox, "Box", {10, 20, 30, 40}).Color(0x404040).Bordered(),
                 Design(kPictureBox, "Inside", {0, 0, 26, 36}).In("Box").Color(0x00FF00)});
  form.Open();
  const QImage box = Picture(form).copy(10, 20, 30, 40);
  EXPECT_EQ(CountOf(box, kBorderGrey), 2 * 30 + 2 * 38);
  EXPECT_EQ(CountOf(box.copy(1, 1, 28, 38), kBorderGrey), 0);
  EXPECT_EQ(CountOf(box, 0x404040), 2 * 28 + 2 * 36);
  EXPECT_EQ(CountOf(box.copy(2, 2, 26, 36), 0x00FF00), 26 * 36);
}

TEST(AShape, IsAnOutlineOfItsWidthInsideItsPlace) {
  TestForm form({Design(kShape, "Shape1", {10, 20, 30, 40}).Color(0xA0A0A0)});
  form.Open();
  auto& shape = form.Find<Shape>("Shape1");
  EXPECT_EQ(shape.BorderColor(), 0xA0A0A0U);
  for (const int width : {1, 2, 5}) {
    shape.SetBorder(0xA0A0A0, width);
    EXPECT_EQ(shape.BorderWidth(), width);
    const QImage picture = Picture(form);
    EXPECT_EQ(CountOf(picture, 0xA0A0A0), 30 * 40 - (30 - 2 * width) * (40 - 2 * width));
    EXPECT_EQ(CountOf(picture.copy(10, 20, 30, 40), 0xA0A0A0), CountOf(picture, 0xA0A0A0));
    EXPECT_EQ(CountOf(picture.copy(10 + width, 20 + width, 30 - 2 * width, 40 - 2 * width), kBack),
              (30 - 2 * width) * (40 - 2 * width));
  }
  shape.SetBorder(0x808080, 2);
  EXPECT_EQ(shape.BorderColor(), 0x808080U);
  EXPECT_EQ(CountOf(Picture(form), 0xA0A0A0), 0);
}

// Watches the paint events of a widget.
class Paintings : public QObject {
 public:
  explicit Paintings(QObject& watched) { watched.installEventFilter(this); }
  int Count() const { return count_; }
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    if (event->type() == QEvent::Paint) ++count_;
    return false;
  }

 private:
  int count_ = 0;
};

struct ChangeCase {
  const char* what;
  const char* control;
  std::function<void(const TestForm&)> change;
};

void PrintTo(const ChangeCase& value, std::ostream* out) { *out << value.what; }

class AChange : public ::testing::TestWithParam<ChangeCase> {};

TEST_P(AChange, IsPaintedAtTheNextDoEventsAndPaintsNothingWhereItChangesNothing) {
  TestForm form(
      {Design(kLabel, "Label1", {0, 0, 50, 20}), Design(kPictureBox, "Box", {0, 20, 50, 20}),
       Design(kShape, "Shape1", {0, 40, 50, 20}), Design(kLine, "Line1", {0, 60, 50, 0})});
  form.Open();
  for (int round = 0; round < 5; ++round) DoEvents();
  const Paintings paintings(form.Find<Control>(GetParam().control));
  GetParam().change(form);
  EXPECT_EQ(paintings.Count(), 0);
  DoEvents();
  EXPECT_EQ(paintings.Count(), 1);
  GetParam().change(form);
  DoEvents();
  EXPECT_EQ(paintings.Count(), 1);
}

INSTANTIATE_TEST_SUITE_P(
    Platform, AChange,
    ::testing::Values(
        ChangeCase{
            "OfALabelsCaption", "Label1",
            [](const TestForm& form) { form.Find<Label>("Label1").setCaption(u"Progress"_s); }},
        ChangeCase{"OfALabelsBackColour", "Label1",
                   [](const TestForm& form) { form.Find<Label>("Label1").setBackColor(0x808080); }},
        ChangeCase{"OfALabelsColour", "Label1",
                   [](const TestForm& form) { form.Find<Label>("Label1").setForeColor(0x00FF00); }},
        ChangeCase{"OfALabelsAlignment", "Label1",
                   [](const TestForm& form) {
                     form.Find<Label>("Label1").setAlignment(Qt::AlignHCenter);
                   }},
        ChangeCase{
            "OfABoxsBackColour", "Box",
            [](const TestForm& form) { form.Find<PictureBox>("Box").setBackColor(0x404040); }},
        ChangeCase{"OfAShapesBorder", "Shape1",
                   [](const TestForm& form) { form.Find<Shape>("Shape1").SetBorder(0, 2); }},
        ChangeCase{
            "OfALinesColour", "Line1",
            [](const TestForm& form) { form.Find<Line>("Line1").setBorderColor(0x808080); }}),
    [](const auto& test) { return test.param.what; });

}  // namespace
}  // namespace kelvane::testing
