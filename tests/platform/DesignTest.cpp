// A form is built from its tables: names, classes, stacking, visibility, fonts, colours.
#include <gtest/gtest.h>

#include <QFontInfo>
#include <utility>

#include "platform/CommandButton.h"
#include "platform/Label.h"
#include "platform/PictureBox.h"
#include "platform/Pointer.h"
#include "platform/Shapes.h"
#include "platform/TestForm.h"
#include "platform/TextBox.h"

namespace kelvane::testing {
namespace {

TEST(FormDesign, NamesTheFormAndTheClassOfEachControl) {
  const std::pair<ControlClass, const char*> classes[]{
      {kCommandButton, "kelvane::CommandButton"},
      {kHScrollBar, "kelvane::HScrollBar"},
      {kLabel, "kelvane::Label"},
      {kLine, "kelvane::Line"},
      {kListBox, "kelvane::ListBox"},
      {kListView, "kelvane::ListView"},
      {kOptionButton, "kelvane::OptionButton"},
      {kPictureBox, "kelvane::PictureBox"},
      {kProgressBar, "kelvane::ProgressBar"},
      {kShape, "kelvane::Shape"},
      {kSlider, "kelvane::Slider"},
      {kTextBox, "kelvane::TextBox"},
      {kVScrollBar, "kelvane::VScrollBar"},
      {kWindowsMediaPlayer, "kelvane::WindowsMediaPlayer"}};
  for (const auto& [controlClass, name] : classes) {
    const TestForm form({Design(controlClass, "It(3)")});
    EXPECT_STREQ(form.Find<Control>("It(3)").metaObject()->className(), name);
    EXPECT_EQ(form.objectName(), u"Form"_s);
    EXPECT_EQ(form.Caption(), u"A form"_s);
  }
}

TEST(FormDesign, PutsTheFirstRowInFrontInABoxToo) {
  TestForm form({Design(kPictureBox, "Box", {0, 0, 100, 100}),
                 Design(kPictureBox, "First", {0, 0, 30, 30}).In("Box").Color(0xFF0000),
                 Design(kPictureBox, "Second", {10, 10, 30, 30}).In("Box").Color(0x00FF00),
                 Design(kWindowsMediaPlayer, "Third", {20, 20, 30, 30}).In("Box"),
                 Design(kPictureBox, "BehindTheBox", {80, 80, 30, 30}).Color(0x0000FF)});
  form.Find<PictureBox>("Box").setBackColor(0xC0C0C0);
  form.Open();
  const QImage picture = Picture(form);
  EXPECT_EQ(CountOf(picture, 0xFF0000), 30 * 30);
  EXPECT_EQ(CountOf(picture, 0x00FF00), 30 * 30 - 20 * 20);
  EXPECT_EQ(CountOf(picture, 0x000000), 30 * 30 - 20 * 20);
  EXPECT_EQ(CountOf(picture, 0x0000FF), 30 * 30 - 20 * 20);
}

TEST(FormDesign, HidesTheRowsThatSaySo) {
  TestForm form({Design(kLabel, "Shown"), Design(kLabel, "Hidden").Hidden(),
                 Design(kPictureBox, "Box").Hidden(), Design(kLabel, "InHiddenBox").In("Box"),
                 Design(kLabel, "HiddenInHiddenBox").In("Box").Hidden()});
  // Whether the window itself is on the screen makes no difference.
  for (int round = 0; round < 2; ++round) {
    for (const auto& [name, visible] : {std::pair{"Shown", true},
                                        {"Hidden", false},
                                        {"Box", false},
                                        {"InHiddenBox", true},
                                        {"HiddenInHiddenBox", false}}) {
      EXPECT_EQ(form.Find<Control>(name).Visible(), visible) << name;
    }
    form.Open();
  }
}

TEST(ControlVisible, IsAsAssignedWhateverTheContainerIs) {
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
}

TEST(FormDesign, GivesControlsTheirTextsAndColours) {
  const TestForm form({Design(kCommandButton, "Command1").Caption("Open Video"),
                       Design(kTextBox, "Text1").Caption("Source"), Design(kLabel, "Transparent"),
                       Design(kLabel, "Filled").Color(0x232323).Centred().Caption("Width"),
                       Design(kShape, "Shape1").Color(0x808080).BorderWidth(2),
                       Design(kShape, "Shape2"), Design(kLine, "Line1").Color(0x808080)});
  EXPECT_EQ(form.Find<CommandButton>("Command1").Caption(), u"Open Video"_s);
  EXPECT_EQ(form.Find<TextBox>("Text1").Text(), u"Source"_s);
  const auto& transparent = form.Find<Label>("Transparent");
  EXPECT_EQ(transparent.ForeColor(), kPixelForm.labelColor);
  EXPECT_EQ(transparent.BackColor(), std::nullopt);
  EXPECT_EQ(transparent.Alignment(), Qt::AlignLeft);
  const auto& filled = form.Find<Label>("Filled");
  EXPECT_EQ(filled.Caption(), u"Width"_s);
  EXPECT_EQ(filled.ForeColor(), kPixelForm.labelColor);
  EXPECT_EQ(filled.BackColor(), 0x232323U);
  EXPECT_EQ(filled.Alignment(), Qt::AlignHCenter);
  EXPECT_EQ(form.Find<Shape>("Shape1").BorderColor(), 0x808080U);
  EXPECT_EQ(form.Find<Shape>("Shape1").BorderWidth(), 2);
  EXPECT_EQ(form.Find<Shape>("Shape2").BorderWidth(), 1);
  EXPECT_EQ(form.Find<Line>("Line1").BorderColor(), 0x808080U);
}

// The screen of these tests has its own idea of the size of a point; the windows don't ask.
TEST(FormFont, IsArialElevenPixelsHigh) {
  TestForm form({Design(kPictureBox, "Box", {0, 0, 200, 200}), Design(kLabel, "Label1").In("Box"),
                 Design(kCommandButton, "Command1"), Design(kTextBox, "Text1")});
  form.Open();
  const auto inside = [&form](const char* name) {
    return form.Find<Control>(name).findChild<QWidget*>();
  };
  const QWidget* const widgets[]{&form.Find<Control>("Box"), &form.Find<Control>("Label1"),
                                 inside("Command1"), inside("Text1")};
  for (const QWidget* widget : widgets) {
    const QFont font = widget->font();
    EXPECT_EQ(font.family(), u"Arial"_s);
    EXPECT_EQ(font.pixelSize(), 11);
    EXPECT_EQ(QFontInfo(font).pixelSize(), 11);
    EXPECT_FALSE(font.bold());
  }
}

TEST(CommandButton, RaisesClickWithItsIndexAtTheRelease) {
  TestForm form({Design(kCommandButton, "Command1(4)", {0, 0, 50, 20})});
  form.Open();
  auto& button = form.Find<CommandButton>("Command1(4)");
  Events events;
  button.Click = [&](int index) { events.push_back(std::to_string(index)); };
  Pointer pointer(form);
  pointer.MoveTo(button, {10, 10});
  pointer.Press();
  EXPECT_EQ(events, Events{});
  pointer.Release();
  EXPECT_EQ(events, Events{"4"});
}

TEST(CommandButton, TakesAnotherCaption) {
  const TestForm form({Design(kCommandButton, "Command1").Caption("Pause")});
  auto& button = form.Find<CommandButton>("Command1");
  button.setCaption("Paused");
  EXPECT_EQ(button.Caption(), u"Paused"_s);
}

}  // namespace
}  // namespace kelvane::testing
