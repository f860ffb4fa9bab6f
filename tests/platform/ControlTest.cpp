// What all controls have in common: their place, visibility, tool tip and repaints. Control arrays,
// with the controls of the design and those that are loaded at run time.
#include <gtest/gtest.h>

#include <QTextDocument>
#include <QToolTip>
#include <functional>

#include "platform/App.h"
#include "platform/ControlArray.h"
#include "platform/Label.h"
#include "platform/PictureBox.h"
#include "platform/Pointer.h"
#include "platform/Shapes.h"
#include "platform/TestForm.h"
#include "support/Events.h"
#include "support/PaintsOf.h"
#include "support/WindowText.h"

namespace kelvane::testing {
namespace {

const Controls kOneLabel{Design(kLabel, "Label1", {10, 20, 30, 40})};

struct Property {
  const char* name;
  void (Control::*set)(float);
  float (Control::*get)() const;
  int (QWidget::*pixels)() const;
};

constexpr Property kPositions[]{{"Left", &Control::setLeft, &Control::Left, &QWidget::x},
                                {"Top", &Control::setTop, &Control::Top, &QWidget::y}};
constexpr Property kSizes[]{{"Width", &Control::setWidth, &Control::Width, &QWidget::width},
                            {"Height", &Control::setHeight, &Control::Height, &QWidget::height}};

void ExpectRefusal(const FormDesign& design, const Property& property, float refused) {
  const TestForm form(design, kOneLabel);
  auto& label = form.Find<Label>("Label1");
  const float last = (label.*property.get)();
  (label.*property.set)(refused);
  EXPECT_EQ((label.*property.get)(), last) << property.name << " = " << refused;
  EXPECT_EQ(label.geometry(), QRect(10, 20, 30, 40)) << property.name << " = " << refused;
}

TEST(ControlPlace, ReadsBackAsAssignedAndIsRoundedToPixelsAtOnceWhetherShownOrNot) {
  struct Case {
    FormDesign design;
    float assigned;
    int pixels;
  };
  for (const auto& [design, assigned, pixels] : {Case{kPixelForm, 7, 7},
                                                 {kPixelForm, 2.25F, 2},
                                                 {kPixelForm, 2.75F, 3},
                                                 {kPixelForm, 1919.5F, 1920},
                                                 {kPixelForm, 16777214, 16777214},
                                                 {kPixelForm, kGreatest, QWIDGETSIZE_MAX},
                                                 {TwipForm(), 0, 0},
                                                 {TwipForm(), 22, 1},
                                                 {TwipForm(), 23, 2},
                                                 {TwipForm(), 15855, 1057},
                                                 {TwipForm(), 7.25F, 0},
                                                 {TwipForm(), 1e12F, QWIDGETSIZE_MAX},
                                                 {TwipForm(), kGreatest, QWIDGETSIZE_MAX}}) {
    for (const bool shown : {false, true}) {
      TestForm form(design, kOneLabel);
      if (shown) form.Open();
      auto& label = form.Find<Label>("Label1");
      for (const Property& place : kPositions) {
        (label.*place.set)(-assigned);
        EXPECT_EQ((label.*place.get)(), -assigned) << place.name;
        EXPECT_EQ((label.*place.pixels)(), -pixels) << place.name << " = " << -assigned;
      }
      for (const Property& size : kSizes) {
        (label.*size.set)(assigned);
        EXPECT_EQ((label.*size.get)(), assigned) << size.name;
        EXPECT_EQ((label.*size.pixels)(), pixels) << size.name << " = " << assigned;
      }
      label.setLeft(0);
      label.setTop(0);
      EXPECT_FALSE(Picture(form).isNull()) << "a control of this size can't be painted";
    }
  }
}

TEST(ControlPlace, IsWholeInBothUnitsForADesignInWholePixels) {
  for (int pixels = 0; pixels <= 2000; ++pixels) {
    const auto whole = static_cast<float>(pixels);
    for (const FormDesign& design : {kPixelForm, TwipForm()}) {
      const TestForm form(design, {Design(kLabel, "Label1", {whole, whole, whole, whole})});
      const auto& label = form.Find<Label>("Label1");
      const float units = design.scale == ScaleMode::kPixels ? whole : whole * 15;
      ASSERT_EQ(label.Left(), units);
      ASSERT_EQ(label.Top(), units);
      ASSERT_EQ(label.Width(), units);
      ASSERT_EQ(label.Height(), units);
      ASSERT_EQ(label.geometry(), QRect(pixels, pixels, pixels, pixels));
    }
  }
}

TEST(ControlPlace, RefusesANegativeSizeAndWhatIsNotFinite) {
  for (const FormDesign& design : {kPixelForm, TwipForm()}) {
    for (const float refused : {kNotANumber, kInfinite, -kInfinite}) {
      for (const Property& place : kPositions) ExpectRefusal(design, place, refused);
      for (const Property& size : kSizes) ExpectRefusal(design, size, refused);
    }
    for (const float refused : {-1.0F, -0.001F, -kGreatest}) {
      for (const Property& size : kSizes) ExpectRefusal(design, size, refused);
    }
  }
}

TEST(ControlPlace, HasTheUnitOfTheBoxAroundTheControl) {
  const TestForm form(TwipForm(),
                      {Design(kPictureBox, "Pixels", {20, 30, 200, 100}),
                       Design(kLabel, "InPixels", {10, 20, 1, 2}).In("Pixels"),
                       Design(kPictureBox, "Twips", {20, 30, 200, 100}).In("Pixels").Twips(),
                       Design(kLabel, "InTwips", {10, 20, 1, 2}).In("Twips")});
  struct Case {
    const char* name;
    float left;  // like the width, in the container's unit
    float width;
    QPoint pixels;
  };
  for (const Case& expected : {Case{"Pixels", 300, 3000, {20, 30}},
                               {"InPixels", 10, 1, {10, 20}},
                               {"Twips", 20, 200, {20, 30}},
                               {"InTwips", 150, 15, {10, 20}}}) {
    const auto& control = form.Find<Control>(expected.name);
    EXPECT_EQ(control.Left(), expected.left) << expected.name;
    EXPECT_EQ(control.Width(), expected.width) << expected.name;
    EXPECT_EQ(control.pos(), expected.pixels) << expected.name;
  }
}

TEST(StockWidget, FillsItsControlAndWritesInArialOfElevenPixels) {
  TestForm form({Design(kCommandButton, "Command1", {0, 0, 100, 20}),
                 Design(kVScrollBar, "VScroll1"), Design(kProgressBar, "pbar"),
                 Design(kTextBox, "Text1"), Design(kSlider, "Slider1")});
  form.Open();
  for (const char* name : {"Command1", "VScroll1", "pbar", "Text1", "Slider1"}) {
    auto& control = form.Find<Control>(name);
    auto* inside = control.findChild<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    ASSERT_NE(inside, nullptr) << name;
    EXPECT_EQ(inside->font().family(), u"Arial"_s) << name;
    EXPECT_EQ(inside->font().pixelSize(), 11) << name;
    for (const QSize size : {QSize(100, 20), QSize(0, 0), QSize(3, 200)}) {
      control.setWidth(static_cast<float>(size.width()));
      control.setHeight(static_cast<float>(size.height()));
      EXPECT_EQ(inside->geometry(), QRect(QPoint(0, 0), size)) << name;
    }
  }
}

// The event loop of a context menu would delay the handler whose DoEvents has opened the menu.
TEST(StockWidget, HasNoContextMenu) {
  for (const ControlClass controlClass :
       {kCommandButton, kHScrollBar, kListBox, kListView, kOptionButton, kProgressBar, kSlider,
        kTextBox, kVScrollBar}) {
    TestForm form({Design(controlClass, "Control", {0, 0, 100, 100})});
    form.Open();
    const QList<QWidget*> parts = form.Find<Control>("Control").findChildren<QWidget*>();
    EXPECT_FALSE(parts.isEmpty());
    for (const QWidget* part : parts) {
      EXPECT_EQ(part->contextMenuPolicy(), Qt::NoContextMenu) << part->metaObject()->className();
    }
  }
}

TEST(ControlVisible, IsAsAssignedWhetherItsBoxIsVisibleOrNot) {
  TestForm form({Design(kPictureBox, "Box", {0, 0, 50, 50}), Design(kLabel, "Label1").In("Box")});
  auto& box = form.Find<PictureBox>("Box");
  auto& label = form.Find<Label>("Label1");
  EXPECT_TRUE(label.Visible()) << "not visible before the form is shown";
  form.Open();
  box.setVisible(false);
  EXPECT_FALSE(box.Visible());
  EXPECT_TRUE(label.Visible());
  EXPECT_FALSE(label.isVisible());
  label.setVisible(false);
  box.setVisible(true);
  EXPECT_TRUE(box.Visible());
  EXPECT_FALSE(label.Visible());
}

// Returns the tool tip as the user reads it: Qt shows a text that contains markup as rich text.
std::string ShownToolTip() {
  const QString text = QToolTip::text();
  if (!Qt::mightBeRichText(text)) return text.toStdString();
  QTextDocument document;
  document.setHtml(text);
  return document.toPlainText().toStdString();
}

TEST(ToolTip, IsShownLetterForLetterAndNotAtAllIfItIsEmpty) {
  TestForm form({Design(kPictureBox, "Box", {0, 0, 50, 50})});
  form.Open();
  auto& box = form.Find<PictureBox>("Box");
  Pointer pointer(form);
  pointer.MoveTo(box, {5, 6});
  for (const char* text :
       {"", "The box's tip", "a<i>b.mp4", "x&lt;y.mp4", "<b>", "<br/>", "a & b", "two  blanks",
        " a blank at each end ", "one line\nand another", "\"quoted\""}) {
    box.setToolTipText(text);
    pointer.Rest();
    EXPECT_EQ(ShownToolTip(), text);
    EXPECT_EQ(box.ToolTipText().toStdString(), text);
    QToolTip::hideText();
  }
}

TEST(Repaint, FollowsAtTheNextDoEventsIfAnAssignmentChangesSomething) {
  TestForm form(
      {Design(kLabel, "Label1", {0, 0, 50, 20}), Design(kPictureBox, "Box", {0, 20, 50, 20}),
       Design(kShape, "Shape1", {0, 40, 50, 20}), Design(kLine, "Line1", {0, 60, 50, 0})});
  form.Open();
  for (int round = 0; round < 5; ++round) DoEvents();
  auto& label = form.Find<Label>("Label1");
  struct Case {
    const char* control;
    const char* what;
    std::function<void()> assign;
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
    given.assign();
    EXPECT_EQ(paints.Count(), 0);
    DoEvents();
    EXPECT_EQ(paints.Count(), 1);
    given.assign();
    DoEvents();
    EXPECT_EQ(paints.Count(), 1);
  }
}

template <class Kind>
std::vector<int> IndicesOf(const ControlArray<Kind>& array) {
  std::vector<int> indices;
  for (const Kind* control : array) {
    indices.push_back(control->Index());
    EXPECT_EQ(&array(control->Index()), control);
  }
  return indices;
}

TEST(ControlArray, HasTheControlsOfItsNameInTheOrderOfTheirIndices) {
  const TestForm form({Design(kLabel, "Label1(2)"), Design(kLabel, "Label14(0)"),
                       Design(kLabel, "Label1(0)"), Design(kPictureBox, "Picture1"),
                       Design(kLabel, "Label1(1)").In("Picture1"), Design(kLabel, "Label2")});
  const ControlArray<Label> labels(form, "Label1");
  EXPECT_EQ(IndicesOf(labels), (std::vector<int>{0, 1, 2}));
  EXPECT_EQ(labels.UBound(), 2);
  const ControlArray<Label> none(form, "Label9");
  EXPECT_EQ(none.Count(), 0);
  EXPECT_EQ(none.UBound(), -1);
  EXPECT_EQ(form.Find<Label>("Label2").Index(), -1) << "a control in no array has an index";
}

class LoadedControl : public ::testing::Test {
 protected:
  LoadedControl() { form.Open(); }

  TestForm form{{Design(kPictureBox, "Box", {0, 0, 300, 200}),
                 Design(kPictureBox, "Picture2(0)", {10, 20, 30, 40})
                     .In("Box")
                     .Color(0x008000)
                     .Twips()
                     .Pointer(MousePointer::kSizeWestEast),
                 Design(kLabel, "Label2(0)", {0, 0, 20, 10})
                     .Caption("Title")
                     .In("Picture2(0)")
                     .Color(0x102030)
                     .Centred()
                     .Bordered(),
                 Design(kLine, "Line1(0)", {10, 100, 100, 0}).In("Box").Color(0x808080)}};
  ControlArray<PictureBox> boxes{form, "Picture2"};
  ControlArray<Label> labels{form, "Label2"};
  ControlArray<Line> lines{form, "Line1"};
};

TEST_F(LoadedControl, IsAHiddenCopyOfMemberZeroInItsContainer) {
  boxes(0).setForeColor(0xFFFFFF);
  boxes(0).setToolTipText("tip");
  boxes(0).setTakesKeyboard();
  EXPECT_EQ(boxes.Load(2).geometry(), boxes(0).geometry());
  EXPECT_EQ(boxes(2).focusPolicy(), boxes(0).focusPolicy());
  labels.Load(2);
  lines.Load(2);
  const std::string window = DescribeWindow(form);
  for (const char* row :
       {"\n  Picture2(2) PictureBox 10,20 30x40 008000 prints ffffff twips SizeHorCursor tip "
        "\"tip\" hidden",
        "\n    Label2(2) Label 0,0 300x150 \"Title\" f0e0d0 on 102030 bordered centred "
        "SizeHorCursor hidden",
        "\n  Line1(2) Line 10,100 to 110,100 808080 hidden"}) {
    EXPECT_NE(window.find(row), std::string::npos) << row << " isn't in " << window;
  }
}

TEST_F(LoadedControl, IsFoundByItsIndexInAnArrayWithGaps) {
  for (const int index : {2, 12, 3}) boxes.Load(index);
  EXPECT_EQ(IndicesOf(boxes), (std::vector<int>{0, 2, 3, 12}));
  EXPECT_EQ(boxes.UBound(), 12);
  for (const int missing : {-1, 1, 4, 13}) EXPECT_EQ(boxes.Member(missing), nullptr) << missing;
  EXPECT_THROW(static_cast<void>(boxes(4)), std::out_of_range);
}

TEST_F(LoadedControl, CallsTheHandlersOfMemberZeroWithItsOwnIndex) {
  Events events;
  Record(boxes(0), events);
  boxes(0).Resize = [&](int index) { events.push_back("Resize " + std::to_string(index)); };
  labels(0).Change = [&](int index) { events.push_back("Change " + std::to_string(index)); };
  PictureBox& box = boxes.Load(2);
  box.setLeft(100);
  box.setVisible(true);
  box.setWidth(50);
  labels.Load(3).setCaption("x");
  Pointer pointer(form);
  pointer.MoveTo(box, QPoint(3, 4));
  pointer.DoubleClick();
  EXPECT_EQ(events, (Events{"Resize 2", "Change 3", "Move 2 at 45,60", "Down 2 button 1 at 45,60",
                            "Up 2 button 1 at 45,60", "Double 2 button 1 at 45,60",
                            "Up 2 button 1 at 45,60"}));
}

TEST_F(LoadedControl, HasNothingOfTheDrawingOnMemberZero) {
  boxes(0).DrawLine(0, 0, 450, 0, 0xFF0000);
  PictureBox& box = boxes.Load(2);
  box.setVisible(true);
  EXPECT_EQ(CountOf(Picture(box), 0x008000), 30 * 40);
}

TEST_F(LoadedControl, IsHiddenByAMoveIntoAnotherContainerAndTakesItsUnit) {
  PictureBox& box = boxes.Load(2);
  box.setVisible(true);
  Label& label = labels.Load(2);
  label.setVisible(true);
  label.setContainer(box);
  EXPECT_EQ(label.parent(), &box);
  EXPECT_FALSE(label.Visible());
  label.setLeft(30);
  EXPECT_EQ(label.x(), 2);
}

}  // namespace
}  // namespace kelvane::testing
