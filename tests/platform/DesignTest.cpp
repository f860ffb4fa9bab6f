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

// One of each class.
const Controls kOneOfEach{
    Design(kCommandButton, "Command1(0)", {0, 0, 50, 20}).Caption("Open Video"),
    Design(kHScrollBar, "HScroll1", {0, 20, 50, 20}),
    Design(kLabel, "Label1(0)", {0, 40, 50, 20}).Caption("Width"),
    Design(kLine, "Line1", {0, 60, 50, 0}),
    Design(kPictureBox, "Picture1(0)", {0, 80, 50, 20}),
    Design(kProgressBar, "pbar", {0, 100, 50, 20}),
    Design(kShape, "Shape1", {0, 120, 50, 20}),
    Design(kSlider, "Slider1", {0, 140, 50, 20}),
    Design(kTextBox, "Text1(0)", {0, 160, 50, 20}).Caption("Source"),
    Design(kVScrollBar, "VScroll1", {50, 0, 20, 50}),
    Design(kWindowsMediaPlayer, "wmp")};

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
  EXPECT_EQ(form.Find<CommandButton>("Command1(0)").Caption(), u"Open Video"_s);
  EXPECT_EQ(form.Find<Label>("Label1(0)").Caption(), u"Width"_s);
  EXPECT_EQ(form.Find<TextBox>("Text1(0)").Text(), u"Source"_s);
  EXPECT_EQ(form.objectName(), u"Form"_s);
  EXPECT_EQ(form.Caption(), u"A form"_s);
}

TEST(ADesign, PutsTheFirstOfTheListInFront) {
  TestForm form({Design(kPictureBox, "First", {0, 0, 30, 30}).Color(0xFF0000),
                 Design(kPictureBox, "Second", {10, 10, 30, 30}).Color(0x00FF00),
                 Design(kPictureBox, "Third", {20, 20, 30, 30}).Color(0x0000FF)});
  form.Open();
  const QImage picture = Picture(form);
  EXPECT_EQ(CountOf(picture, 0xFF0000), 30 * 30);
  EXPECT_EQ(CountOf(picture, 0x00FF00), 30 * 30 - 20 * 20);
  EXPECT_EQ(ColorAt(picture, 25, 25), 0xFF0000U);
  EXPECT_EQ(ColorAt(picture, 35, 35), 0x00FF00U);
  EXPECT_EQ(ColorAt(picture, 45, 45), 0x0000FFU);
}

TEST(ADesign, PutsTheFirstInFrontInsideABoxToo) {
  TestForm form({Design(kPictureBox, "Canvas", {0, 0, 100, 100}),
                 Design(kPictureBox, "Bar", {0, 0, 5, 100}).In("Canvas").Color(0x00FF00),
                 Design(kPictureBox, "Holder", {0, 0, 100, 100}).In("Canvas").Color(0xC0C0C0),
                 Design(kWindowsMediaPlayer, "wmp", {0, 0, 100, 50}).In("Holder")});
  form.Open();
  const QImage picture = Picture(form);
  EXPECT_EQ(CountOf(picture, 0x00FF00), 5 * 100);
  EXPECT_EQ(CountOf(picture, 0x000000), 95 * 50);
  EXPECT_EQ(CountOf(picture, 0xC0C0C0), 95 * 50);
}

TEST(ADesign, HidesWhatItSays) {
  TestForm form({Design(kLabel, "Shown"), Design(kLabel, "Hidden").Hidden(),
                 Design(kPictureBox, "Box").Hidden(), Design(kLabel, "InHiddenBox").In("Box"),
                 Design(kLabel, "HiddenInHiddenBox").In("Box").Hidden()});
  const auto visible = [&form](const char* name) { return form.Find<Control>(name).Visible(); };
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
  TestForm form({Design(kPictureBox, "Box", {0, 0, 50, 50}), Design(kLabel, "Label1").In("Box")});
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
  const TestForm form(
      {Design(kLabel, "Transparent"), Design(kLabel, "Filled").Color(0x232323).Centred()});
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
  const TestForm form({Design(kShape, "Shape1").Color(0x808080).BorderWidth(2),
                       Design(kShape, "Shape2"), Design(kLine, "Line1").Color(0x808080)});
  EXPECT_EQ(form.Find<Shape>("Shape1").BorderColor(), 0x808080U);
  EXPECT_EQ(form.Find<Shape>("Shape1").BorderWidth(), 2);
  EXPECT_EQ(form.Find<Shape>("Shape2").BorderWidth(), 1);
  EXPECT_EQ(form.Find<Line>("Line1").BorderColor(), 0x808080U);
}

// The screen of these tests has its own idea of the size of a point; the windows don't ask.
TEST(EveryText, IsElevenPixelsHighInAFaceOfArialsFamily) {
  TestForm form({Design(kPictureBox, "Box", {0, 0, 200, 200}), Design(kLabel, "Label1").In("Box"),
                 Design(kCommandButton, "Command1"), Design(kTextBox, "Text1")});
  form.Open();
  QList<const QWidget*> widgets{&form.Find<Control>("Box"), &form.Find<Control>("Label1")};
  for (const char* name : {"Command1", "Text1"}) {
    widgets << form.Find<Control>(name).findChild<QWidget*>();
  }
  for (const QWidget* widget : widgets) {
    const QFont font = widget->font();
    EXPECT_EQ(font.family(), u"Arial"_s);
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
  button.setCaption(u"Paused"_s);
  EXPECT_EQ(button.Caption(), u"Paused"_s);
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
