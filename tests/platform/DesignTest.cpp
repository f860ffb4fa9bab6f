// A form is built from its tables: names, classes, stacking, visibility, fonts, colours.
#include <gtest/gtest.h>

#include <QFontInfo>

#include "platform/CommandButton.h"
#include "platform/Label.h"
#include "platform/PictureBox.h"
#include "platform/Pointer.h"
#include "platform/ProgressBar.h"
#include "platform/ScrollBars.h"
#include "platform/Shapes.h"
#include "platform/Slider.h"
#include "platform/TestForm.h"
#include "platform/TextBox.h"
#include "platform/WindowsMediaPlayer.h"

namespace kelvane::testing {
namespace {

constexpr ControlClass kBox = ControlClass::kPictureBox;
constexpr ControlClass kLabel = ControlClass::kLabel;

// One of each class.
const Controls kOneOfEach{
    {.name = "Command1(0)",
     .controlClass = ControlClass::kCommandButton,
     .place = {0, 0, 750, 300},
     .caption = "Open Video"},
    {.name = "HScroll1", .controlClass = ControlClass::kHScrollBar, .place = {0, 300, 750, 300}},
    {.name = "Label1(0)", .controlClass = kLabel, .place = {0, 600, 750, 300}, .caption = "Width"},
    {.name = "Line1", .controlClass = ControlClass::kLine, .place = {0, 900, 750, 0}},
    {.name = "Picture1(0)", .controlClass = kBox, .place = {0, 1200, 750, 300}},
    {.name = "pbar", .controlClass = ControlClass::kProgressBar, .place = {0, 1500, 750, 300}},
    {.name = "Shape1", .controlClass = ControlClass::kShape, .place = {0, 1800, 750, 300}},
    {.name = "Slider1", .controlClass = ControlClass::kSlider, .place = {0, 2100, 750, 300}},
    {.name = "Text1(0)",
     .controlClass = ControlClass::kTextBox,
     .place = {0, 2400, 750, 300},
     .caption = "Source"},
    {.name = "VScroll1", .controlClass = ControlClass::kVScrollBar, .place = {750, 0, 300, 750}},
    {.name = "wmp", .controlClass = ControlClass::kWindowsMediaPlayer, .place = {}}};

TEST(ADesign, IsBuiltWithTheClassThatItNames) {
  const TestForm form(kOneOfEach);
  EXPECT_NE(form.findChild<CommandButton*>("Command1(0)"), nullptr);
  EXPECT_NE(form.findChild<HScrollBar*>("HScroll1"), nullptr);
  EXPECT_NE(form.findChild<Label*>("Label1(0)"), nullptr);
  EXPECT_NE(form.findChild<Line*>("Line1"), nullptr);
  EXPECT_NE(form.findChild<PictureBox*>("Picture1(0)"), nullptr);
  EXPECT_NE(form.findChild<ProgressBar*>("pbar"), nullptr);
  EXPECT_NE(form.findChild<Shape*>("Shape1"), nullptr);
  EXPECT_NE(form.findChild<Slider*>("Slider1"), nullptr);
  EXPECT_NE(form.findChild<TextBox*>("Text1(0)"), nullptr);
  EXPECT_NE(form.findChild<VScrollBar*>("VScroll1"), nullptr);
  EXPECT_NE(form.findChild<WindowsMediaPlayer*>("wmp"), nullptr);
}

TEST(ADesign, GivesCaptionsAndTexts) {
  const TestForm form(kOneOfEach);
  EXPECT_EQ(form.Find<CommandButton>("Command1(0)").Caption(), QStringLiteral("Open Video"));
  EXPECT_EQ(form.Find<Label>("Label1(0)").Caption(), QStringLiteral("Width"));
  EXPECT_EQ(form.Find<TextBox>("Text1(0)").Text(), QStringLiteral("Source"));
  EXPECT_EQ(form.objectName(), QStringLiteral("Form"));
  EXPECT_EQ(form.Caption(), QStringLiteral("A form"));
}

TEST(ADesign, PutsTheFirstOfTheListInFront) {
  TestForm form(
      {{.name = "First", .controlClass = kBox, .place = {0, 0, 450, 450}, .color = 0xFF0000},
       {.name = "Second", .controlClass = kBox, .place = {150, 150, 450, 450}, .color = 0x00FF00},
       {.name = "Third", .controlClass = kBox, .place = {300, 300, 450, 450}, .color = 0x0000FF}});
  form.Open();
  const QImage picture = Picture(form);
  EXPECT_EQ(CountOf(picture, 0xFF0000), 30 * 30);
  EXPECT_EQ(CountOf(picture, 0x00FF00), 30 * 30 - 20 * 20);
  EXPECT_EQ(ColorAt(picture, 25, 25), 0xFF0000U);
  EXPECT_EQ(ColorAt(picture, 35, 35), 0x00FF00U);
  EXPECT_EQ(ColorAt(picture, 45, 45), 0x0000FFU);
}

TEST(ADesign, PutsTheFirstInFrontInsideABoxToo) {
  TestForm form({{.name = "Canvas", .controlClass = kBox, .place = {0, 0, 1500, 1500}},
                 {.name = "Bar",
                  .controlClass = kBox,
                  .place = {0, 0, 75, 1500},
                  .container = "Canvas",
                  .color = 0x00FF00},
                 {.name = "Holder",
                  .controlClass = kBox,
                  .place = {0, 0, 1500, 1500},
                  .container = "Canvas",
                  .color = 0xC0C0C0},
                 {.name = "wmp",
                  .controlClass = ControlClass::kWindowsMediaPlayer,
                  .place = {0, 0, 1500, 750},
                  .container = "Holder"}});
  form.Open();
  const QImage picture = Picture(form);
  EXPECT_EQ(CountOf(picture, 0x00FF00), 5 * 100);
  EXPECT_EQ(CountOf(picture, 0x000000), 95 * 50);
  EXPECT_EQ(CountOf(picture, 0xC0C0C0), 95 * 50);
}

TEST(ADesign, HidesWhatItSays) {
  TestForm form({{.name = "Shown", .controlClass = kLabel, .place = {}},
                 {.name = "Hidden", .controlClass = kLabel, .place = {}, .visible = false},
                 {.name = "Box", .controlClass = kBox, .place = {}, .visible = false},
                 {.name = "InHiddenBox", .controlClass = kLabel, .place = {}, .container = "Box"},
                 {.name = "HiddenInHiddenBox",
                  .controlClass = kLabel,
                  .place = {},
                  .container = "Box",
                  .visible = false}});
  const auto visible = [&form](const char* name) {
    return form.Find<Control>(QLatin1String(name)).Visible();
  };
  // Whether the window itself is on the screen is nothing to its controls.
  for (int round = 0; round < 2; ++round) {
    EXPECT_TRUE(visible("Shown"));
    EXPECT_FALSE(visible("Hidden"));
    EXPECT_FALSE(visible("Box"));
    EXPECT_TRUE(visible("InHiddenBox"));
    EXPECT_FALSE(visible("HiddenInHiddenBox"));
    form.Open();
  }
}

TEST(Visible, IsAsAssignedWhateverLiesRound) {
  TestForm form({{.name = "Box", .controlClass = kBox, .place = {0, 0, 750, 750}},
                 {.name = "Label1", .controlClass = kLabel, .place = {}, .container = "Box"}});
  form.Open();
  auto& box = form.Find<PictureBox>("Box");
  auto& label = form.Find<Label>("Label1");
  box.setVisible(false);
  EXPECT_FALSE(box.Visible());
  EXPECT_TRUE(label.Visible());
  EXPECT_FALSE(label.isVisible());
  label.setVisible(false);
  box.setVisible(true);
  EXPECT_TRUE(box.Visible());
  EXPECT_FALSE(label.Visible());
  label.setVisible(true);
  EXPECT_TRUE(label.Visible());
  EXPECT_TRUE(label.isVisible());
}

TEST(ADesign, GivesLabelsTheFormsColourAndTheirOwnBack) {
  const TestForm form({{.name = "Transparent", .controlClass = kLabel, .place = {}},
                       {.name = "Filled",
                        .controlClass = kLabel,
                        .place = {},
                        .color = 0x232323,
                        .centred = true}});
  const auto& transparent = form.Find<Label>("Transparent");
  const auto& filled = form.Find<Label>("Filled");
  EXPECT_EQ(transparent.ForeColor(), kPixelForm.labelColor);
  EXPECT_EQ(filled.ForeColor(), kPixelForm.labelColor);
  EXPECT_EQ(transparent.BackColor(), std::nullopt);
  EXPECT_EQ(filled.BackColor(), 0x232323U);
  EXPECT_EQ(transparent.Alignment(), Qt::AlignLeft);
  EXPECT_EQ(filled.Alignment(), Qt::AlignHCenter);
}

TEST(ADesign, GivesShapesAndLinesTheirColourAndWidth) {
  const TestForm form(
      {{.name = "Shape1",
        .controlClass = ControlClass::kShape,
        .place = {},
        .color = 0x808080,
        .borderWidth = 2},
       {.name = "Shape2", .controlClass = ControlClass::kShape, .place = {}},
       {.name = "Line1", .controlClass = ControlClass::kLine, .place = {}, .color = 0x808080}});
  EXPECT_EQ(form.Find<Shape>("Shape1").BorderColor(), 0x808080U);
  EXPECT_EQ(form.Find<Shape>("Shape1").BorderWidth(), 2);
  EXPECT_EQ(form.Find<Shape>("Shape2").BorderWidth(), 1);
  EXPECT_EQ(form.Find<Line>("Line1").BorderColor(), 0x808080U);
}

// The screen of these tests has its own idea of the size of a point; the windows don't ask.
TEST(EveryText, IsElevenPixelsHighInAFaceOfArialsFamily) {
  TestForm form({{.name = "Box", .controlClass = kBox, .place = {0, 0, 3000, 3000}},
                 {.name = "Label1", .controlClass = kLabel, .place = {}, .container = "Box"},
                 {.name = "Command1", .controlClass = ControlClass::kCommandButton, .place = {}},
                 {.name = "Text1", .controlClass = ControlClass::kTextBox, .place = {}}});
  form.Open();
  QList<const QWidget*> widgets{&form.Find<Control>("Box"), &form.Find<Control>("Label1")};
  for (const char* name : {"Command1", "Text1"}) {
    widgets << form.Find<Control>(QLatin1String(name)).findChild<QWidget*>();
  }
  for (const QWidget* widget : widgets) {
    const QFont font = widget->font();
    EXPECT_EQ(font.family(), QStringLiteral("Arial"));
    EXPECT_EQ(font.pixelSize(), 11);
    EXPECT_EQ(QFontInfo(font).pixelSize(), 11);
    EXPECT_FALSE(font.bold());
  }
}

TEST(ACommandButton, RaisesClickWithItsIndexAndHasACaption) {
  TestForm form(kOneOfEach);
  form.Open();
  auto& button = form.Find<CommandButton>("Command1(0)");
  Events events;
  button.Click = [&](int index) { events.push_back(std::to_string(index)); };
  button.setCaption(QStringLiteral("Paused"));
  EXPECT_EQ(button.Caption(), QStringLiteral("Paused"));
  Pointer pointer(form);
  pointer.MoveTo(button, {10, 10});
  pointer.Press();
  EXPECT_EQ(events, Events{});
  pointer.Release();
  EXPECT_EQ(events, Events{"0"});
  pointer.Click(Qt::RightButton);
  EXPECT_EQ(events, Events{"0"});
  pointer.Press();
  pointer.MoveTo(form, {200, 150});
  pointer.Release();
  EXPECT_EQ(events, Events{"0"});
}

}  // namespace
}  // namespace kelvane::testing
