// The keyboard on controls: the focus, its frame, and keys. Labels that are disabled.
#include <gtest/gtest.h>

#include <QPointer>
#include <QtTest/QTest>
#include <cmath>
#include <utility>
#include <vector>

#include "platform/Label.h"
#include "platform/ListBox.h"
#include "platform/PictureBox.h"
#include "platform/Pointer.h"
#include "platform/TestForm.h"
#include "shared/Colours.h"
#include "support/Events.h"
#include "support/ScreenReader.h"

namespace kelvane::testing {
namespace {

class Keyboard : public ::testing::Test {
 protected:
  Keyboard() {
    form.Open();
    form.activateWindow();
    EXPECT_TRUE(WaitFor([this] { return form.isActiveWindow(); }));
    for (Control* control : {static_cast<Control*>(&play), static_cast<Control*>(&stop),
                             static_cast<Control*>(&text), static_cast<Control*>(&needle)}) {
      control->setTakesKeyboard();
      Record(*control, events);
    }
  }

  // Presses and releases a key as the window system does.
  void Type(Qt::Key key, Qt::KeyboardModifiers held = {}) const {
    QTest::keyClick(form.windowHandle(), key, held);
  }
  void Tab() const { Type(Qt::Key_Tab); }
  void TabBack() const { Type(Qt::Key_Backtab, Qt::ShiftModifier); }
  Events EventsOf(Qt::Key key, Qt::KeyboardModifiers held = {}) {
    events.clear();
    Type(key, held);
    return events;
  }
  std::string Focused() const {
    const QWidget* widget = form.focusWidget();
    return widget == nullptr ? "" : widget->objectName().toStdString();
  }
  // Returns whether a frame is drawn just inside the edges of `place`, a part of the control.
  static bool HasFrame(Control& control, const QRect& place) {
    const QImage picture = Picture(*control.window()).copy(control.geometry());
    const int frame = 2 * (place.width() + place.height()) - 4;
    const QRect inside = place.adjusted(1, 1, -1, -1);
    return CountOf(picture, place, kWhite) - CountOf(picture, inside, kWhite) == frame;
  }
  static bool HasFrame(Control& control) { return HasFrame(control, control.rect()); }

  const Events kClick{"Down 3 button 1 at 49,9", "Up 3 button 1 at 49,9"};
  Events events;
  TestForm form{
      {Design(kLabel, "Play(3)", {10, 10, 100, 20}).Caption("Play").Role(SpokenRole::kCommand),
       Design(kLabel, "NoCommand", {10, 40, 100, 20}).Caption("text"),
       Design(kPictureBox, "Needle(1)", {10, 70, 20, 20}).Color(kCanvasGrey).Bordered(),
       Design(kLabel, "Reset(4)", {120, 40, 100, 20}).Caption("Reset").Role(SpokenRole::kCommand),
       Design(kLabel, "Stop(5)", {120, 10, 100, 20}).Caption("Stop").Role(SpokenRole::kCommand)}};
  Label& play = form.Find<Label>("Play(3)");
  Label& text = form.Find<Label>("NoCommand");
  PictureBox& needle = form.Find<PictureBox>("Needle(1)");
  Label& stop = form.Find<Label>("Stop(5)");
};

TEST_F(Keyboard, ReachesTheControlsThatTakeItInTheOrderOfTheirDesign) {
  const std::vector<std::string> order{"Play(3)", "NoCommand", "Needle(1)", "Stop(5)"};
  for (const std::string& name : order) {
    Tab();
    EXPECT_EQ(Focused(), name);
  }
  TabBack();
  EXPECT_EQ(Focused(), "Needle(1)");
  text.setVisible(false);
  TabBack();
  EXPECT_EQ(Focused(), "Play(3)");
}

TEST_F(Keyboard, ReachesTheControlsInTheOrderThatIsGivenToOrderFocus) {
  TestForm other({Design(kLabel, "Play", {10, 10, 100, 20}),
                  Design(kListBox, "List", {10, 40, 100, 40}),
                  Design(kLabel, "Stop", {10, 90, 100, 20})});
  auto& first = other.Find<Label>("Stop");
  auto& list = other.Find<ListBox>("List");
  auto& last = other.Find<Label>("Play");
  for (Label* label : {&first, &last}) label->setTakesKeyboard();
  Form::OrderFocus({&first, &list, &last});
  other.Open();
  other.activateWindow();
  ASSERT_TRUE(WaitFor([&] { return other.isActiveWindow(); }));
  for (const QWidget* each :
       {static_cast<QWidget*>(&first), list.StockWidget(), static_cast<QWidget*>(&last)}) {
    QTest::keyClick(other.windowHandle(), Qt::Key_Tab);
    EXPECT_EQ(other.focusWidget(), each);
  }
}

TEST_F(Keyboard, ReachesNoControlUntilTheUserPressesTab) {
  EXPECT_EQ(form.focusWidget(), &form);
  EXPECT_EQ(EventsOf(Qt::Key_Space), Events{});
  EXPECT_EQ(EventsOf(Qt::Key_Return), Events{});
}

TEST_F(Keyboard, ShowsAFrameAroundAQtWidgetWhereTheFocusCameByTab) {
  TestForm other({Design(kListBox, "List", {10, 40, 100, 40}).Color(kCanvasGrey)});
  auto& list = other.Find<ListBox>("List");
  other.Open();
  other.activateWindow();
  ASSERT_TRUE(WaitFor([&] { return other.isActiveWindow(); }));
  list.StockWidget()->setFocus();
  EXPECT_FALSE(HasFrame(list));
  list.StockWidget()->clearFocus();
  QTest::keyClick(other.windowHandle(), Qt::Key_Tab);
  EXPECT_TRUE(HasFrame(list));
  const qsizetype widgets = list.children().size();
  list.StockWidget()->clearFocus();
  EXPECT_FALSE(HasFrame(list));
  QTest::keyClick(other.windowHandle(), Qt::Key_Tab);
  EXPECT_TRUE(HasFrame(list));
  EXPECT_EQ(list.children().size(), widgets) << "a second frame was made";
}

TEST_F(Keyboard, ReachesNoControlThatHasNotBeenToldToTakeIt) {
  TestForm other({Design(kLabel, "Play", {10, 10, 100, 20}).Role(SpokenRole::kCommand),
                  Design(kPictureBox, "Box", {10, 40, 50, 50})});
  other.Open();
  QTest::keyClick(other.windowHandle(), Qt::Key_Tab);
  Pointer(other).Click();
  EXPECT_EQ(other.focusWidget(), &other);
}

TEST_F(Keyboard, ClicksACommandInItsMiddleBySpaceAndEnter) {
  Tab();
  for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
    EXPECT_EQ(EventsOf(key), kClick) << key;
  }
  EXPECT_EQ(EventsOf(Qt::Key_Enter, Qt::KeypadModifier), kClick);
  for (const auto held : {Qt::ShiftModifier, Qt::ControlModifier, Qt::AltModifier}) {
    EXPECT_EQ(EventsOf(Qt::Key_Return, held), Events{}) << held;
  }
  EXPECT_EQ(EventsOf(Qt::Key_A), Events{});
  EXPECT_TRUE(HasFrame(play));
  Tab();
  EXPECT_EQ(EventsOf(Qt::Key_Space), Events{}) << "a label that is no command was clicked";
}

TEST_F(Keyboard, ClicksOnceWhileAKeyIsHeld) {
  Tab();
  const auto send = [&](QEvent::Type type, bool repeats) {
    QKeyEvent event(type, Qt::Key_Space, Qt::NoModifier, " ", repeats);
    QCoreApplication::sendEvent(&play, &event);
  };
  send(QEvent::KeyPress, false);
  send(QEvent::KeyPress, true);
  send(QEvent::KeyPress, true);
  send(QEvent::KeyRelease, false);
  EXPECT_EQ(events, kClick);
}

TEST_F(Keyboard, RaisesKeyDownAndThenClicksACommandUnlessTheHandlerHandlesTheKey) {
  std::string keys;
  bool handles = true;
  const auto record = [&](const KeyEvent& event) {
    keys += std::to_string(event.Index) + ":" + QKeySequence(event.Key).toString().toStdString() +
            "+" + std::to_string(event.Shift) + " ";
    return handles;
  };
  needle.KeyDown = play.KeyDown = record;
  needle.SetFocus();
  Type(Qt::Key_Left);
  Type(Qt::Key_Right, Qt::ShiftModifier | Qt::ControlModifier);
  Tab();
  EXPECT_EQ(std::exchange(keys, ""), "1:Left+0 1:Shift+1 1:Control+3 1:Right+3 ");
  EXPECT_EQ(Focused(), "Stop(5)");
  play.SetFocus();
  EXPECT_EQ(EventsOf(Qt::Key_Space), Events{});
  handles = false;
  EXPECT_EQ(EventsOf(Qt::Key_Space), kClick);
  EXPECT_EQ(keys, "3:Space+0 3:Space+0 ");
}

TEST(KeyHandler, MayUnloadItsForm) {
  const QPointer<TestForm> alive(
      new TestForm(Controls{Design(kPictureBox, "Box", {10, 10, 50, 50})}));
  alive->DeleteWhenUnloaded();
  alive->Open();
  auto& box = alive->Find<PictureBox>("Box");
  box.KeyDown = [&](const KeyEvent&) {
    alive->Unload();
    ServePendingEvents();
    EXPECT_NE(alive, nullptr) << "the form was deleted while its handler runs";
    return true;
  };
  box.SetFocus();
  QTest::keyClick(&box, Qt::Key_Left);
  ServePendingEvents();
  EXPECT_EQ(alive, nullptr);
}

TEST_F(Keyboard, GoesToAControlThatIsPressed) {
  Pointer pointer(form);
  for (Control* control : {static_cast<Control*>(&needle), static_cast<Control*>(&stop)}) {
    pointer.MoveTo(*control, {5, 5});
    pointer.Press();
    EXPECT_TRUE(control->hasFocus());
    pointer.Release();
    EXPECT_FALSE(HasFrame(*control));
  }
}

TEST_F(Keyboard, ShowsAFrameWhereTheFocusCameByTab) {
  const QImage before = Picture(form);
  Tab();
  EXPECT_TRUE(HasFrame(play));
  TabBack();
  EXPECT_FALSE(HasFrame(play));
  EXPECT_TRUE(HasFrame(stop));
  TabBack();
  EXPECT_TRUE(HasFrame(needle, QRect(2, 2, 16, 16))) << "no frame inside the border";
  play.SetFocus();
  EXPECT_TRUE(play.hasFocus());
  EXPECT_EQ(Picture(form), before);
}

TEST_F(Keyboard, ShowsItsFrameAgainWhenTheWindowBecomesActiveAgain) {
  Tab();
  TestForm other;
  other.Open();
  other.activateWindow();
  ASSERT_TRUE(WaitFor([&] { return other.isActiveWindow(); }));
  EXPECT_FALSE(HasFrame(play));
  form.activateWindow();
  ASSERT_TRUE(WaitFor([&] { return play.hasFocus(); }));
  EXPECT_TRUE(HasFrame(play));
}

// Returns the relative luminance as the guidelines for accessible web pages define it.
double Luminance(QRgb color) {
  const auto linear = [](int part) {
    const double share = part / 255.0;
    return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(qRed(color)) + 0.7152 * linear(qGreen(color)) +
         0.0722 * linear(qBlue(color));
}

TEST_F(Keyboard, HasAFrameWithAContrastOfThreeToTheDarkColoursOfTheWindows) {
  Tab();
  const QRgb frame = ColorAt(Picture(play), 50, 0);
  for (const QRgb back : {kDark, kCanvasGrey}) {
    EXPECT_GE((Luminance(frame) + 0.05) / (Luminance(back) + 0.05), 3);
  }
}

class DisabledLabel : public Keyboard {
 protected:
  // Returns how many pixels of the label have the colour.
  int Ink(QRgb color) { return CountOf(Picture(form).copy(play.geometry()), color); }
};

TEST_F(DisabledLabel, HasItsDisabledColourIfThatIsSetAndElseItsForeColour) {
  play.setCaption("HHHH");
  play.setForeColor(kLight);
  const int pixels = Ink(kLight);
  ASSERT_GT(pixels, 0);
  play.setEnabled(false);
  EXPECT_EQ(Ink(kLight), pixels);
  play.setDisabledColor(kGrey);
  EXPECT_EQ(Ink(kGrey), pixels);
  play.setForeColor(kWhite);
  EXPECT_EQ(Ink(kGrey), pixels) << "the fore colour, which a highlight sets, is shown";
  EXPECT_EQ(Ink(kWhite), 0);
  play.setEnabled(true);
  EXPECT_EQ(Ink(kWhite), pixels);
}

TEST_F(DisabledLabel, IsLeftByTheFocusAndNotReachedByIt) {
  Tab();
  play.setEnabled(false);
  EXPECT_EQ(Focused(), "NoCommand");
  TabBack();
  EXPECT_EQ(Focused(), "Stop(5)");
  Pointer pointer(form);
  pointer.MoveTo(play, {5, 5});
  pointer.Click();
  EXPECT_EQ(Focused(), "Stop(5)");
  EXPECT_EQ(events, Events{});
}

TEST_F(DisabledLabel, IsUnavailableToAScreenReader) {
  play.setEnabled(false);
  EXPECT_TRUE(NodeOf(play).state().disabled);
  EXPECT_FALSE(NodeOf(stop).state().disabled);
  NodeOf(play).actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  ServePendingEvents();
  EXPECT_EQ(events, Events{});
}

TEST_F(Keyboard, TellsAScreenReaderWhichControlsTakeTheFocusAndWhichHasIt) {
  EXPECT_TRUE(NodeOf(play).state().focusable);
  EXPECT_FALSE(NodeOf(form.Find<Label>("Reset(4)")).state().focusable);
  Tab();
  EXPECT_TRUE(NodeOf(play).state().focused);
  EXPECT_EQ(NodeOf(form).focusChild(), &NodeOf(play));
}

}  // namespace
}  // namespace kelvane::testing
