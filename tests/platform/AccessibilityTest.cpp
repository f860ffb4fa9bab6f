// What a screen reader is told of controls, and what it can do with them. The files in
// tests/windows hold the roles, the names and the reading order of the program's windows.
#include "platform/Accessibility.h"

#include <gtest/gtest.h>

#include <QDialog>
#include <QMenu>
#include <cmath>
#include <limits>
#include <utility>

#include "platform/Label.h"
#include "platform/PictureBox.h"
#include "platform/TestForm.h"
#include "support/Events.h"
#include "support/ScreenReader.h"

namespace kelvane::testing {
namespace {

TEST(ScreenReaderTree, HasNoNodeForAHiddenControl) {
  TestForm form({Design(kLabel, "Hidden", {10, 10, 100, 20}).Caption("Hidden").Hidden()});
  form.Open();
  EXPECT_EQ(NodeOf(form).childCount(), 0);
  form.Find<Label>("Hidden").setVisible(true);
  EXPECT_EQ(NodeOf(form).childCount(), 1);
}

TEST(ScreenReaderTree, FindsTheFrontControlAtAPlaceOfTheScreen) {
  TestForm form({Design(kPictureBox, "Front", {20, 20, 10, 10}).Meaning("Front"),
                 Design(kPictureBox, "Back", {10, 10, 100, 100}).Meaning("Back")});
  form.Open();
  const auto at = [&form](QPoint place) {
    const QPoint onScreen = form.mapToGlobal(place);
    return NodeOf(form).childAt(onScreen.x(), onScreen.y());
  };
  EXPECT_EQ(at({23, 23}), &NodeOf(form.Find<Control>("Front")));
  EXPECT_EQ(at({15, 23}), &NodeOf(form.Find<Control>("Back")));
  EXPECT_EQ(at({5, 23}), nullptr);
}

TEST(ScreenReaderTree, GivesACopyTheRoleOfItsOriginal) {
  TestForm form({Design(kPictureBox, "Strip(0)", {10, 10, 100, 20}).Role(SpokenRole::kListItem)});
  form.Open();
  PictureBox& copy = form.Find<PictureBox>("Strip(0)").Duplicate("Strip(2)");
  copy.setMeaning("01");
  EXPECT_EQ(Heard(NodeOf(copy)), "ListItem \"01\"");
}

const QString kPress = QAccessibleActionInterface::pressAction();
const QString kMenu = QAccessibleActionInterface::showMenuAction();

// A form with a control of each role on which a screen reader can act, and with some others.
class ScreenReaderAction : public ::testing::Test {
 protected:
  ScreenReaderAction() {
    form.Open();
    for (Control* control : form.findChildren<Control*>()) {
      if (!control->objectName().isEmpty()) Record(*control, events);
    }
  }

  QAccessibleInterface& Node(const char* name) const { return NodeOf(form.Find<Control>(name)); }
  QAccessibleValueInterface& Value(const char* name) const { return *Node(name).valueInterface(); }
  void Request(const char* name, const QString& action) const {
    Node(name).actionInterface()->doAction(action);
  }
  // Runs the event loop and returns the events that were raised since the last call.
  Events ProcessEvents() {
    ServePendingEvents();
    return std::exchange(events, {});
  }
  Events EventsOf(const char* name, const QString& action) {
    Request(name, action);
    return ProcessEvents();
  }
  // Makes the left bar move with the pointer that drags it, and returns the bar.
  Control& LetTheLeftBarFollow() {
    auto& bar = form.Find<Control>("LeftBar");
    bar.MouseDown = [this](const MouseEvent& event) { pressedX = event.X; };
    bar.MouseMove = [&](const MouseEvent& event) { bar.setLeft(bar.Left() + event.X - pressedX); };
    return bar;
  }

  const Events kClick{"Down 3 button 1 at 49,9", "Up 3 button 1 at 49,9"};
  Events events;
  float pressedX = 0;
  TestForm form{
      {Design(kLabel, "Command(3)", {10, 10, 100, 20})
           .Caption("Load Video")
           .Role(SpokenRole::kCommand),
       Design(kLabel, "Text", {170, 10, 20, 20}).Caption("text"),
       Design(kPictureBox, "LeftBar", {20, 40, 10, 100}).Role(SpokenRole::kHorizontalBar),
       Design(kPictureBox, "TopBar", {40, 50, 100, 10}).Role(SpokenRole::kVerticalBar),
       Design(kLabel, "Thumb", {40, 80, 10, 20}).Role(SpokenRole::kThumb).ReadOut("Value"),
       Design(kLabel, "Value", {60, 80, 20, 20}).Caption("025"),
       Design(kPictureBox, "Strips", {40, 120, 100, 40}).Role(SpokenRole::kList),
       Design(kPictureBox, "Strip(2)", {0, 0, 40, 20}).In("Strips").Role(SpokenRole::kListItem)}};
  Label& command = form.Find<Label>("Command(3)");
};

TEST_F(ScreenReaderAction, IsPressForACommandAndShowMenuForAListItemAndMissingForOthers) {
  EXPECT_EQ(Node("Command(3)").actionInterface()->actionNames(), QStringList(kPress));
  EXPECT_EQ(Node("Strip(2)").actionInterface()->actionNames(), QStringList(kMenu));
  EXPECT_EQ(Node("Text").actionInterface(), nullptr);
  EXPECT_EQ(Node("LeftBar").actionInterface(), nullptr);
  EXPECT_EQ(EventsOf("Command(3)", kMenu), Events{});
  EXPECT_EQ(EventsOf("Strip(2)", kPress), Events{});
}

TEST_F(ScreenReaderAction, ClicksTheMiddleOfItsControlLaterFromTheEventLoop) {
  Request("Command(3)", kPress);
  EXPECT_EQ(events, Events{}) << "the screen reader had to wait for the handlers";
  EXPECT_EQ(ProcessEvents(), kClick);
  EXPECT_EQ(EventsOf("Strip(2)", kMenu),
            (Events{"Down 2 button 2 at 19,9", "Up 2 button 2 at 19,9"}));
}

TEST_F(ScreenReaderAction, HasNoEffectIfItsControlIsHiddenOrHasNoWidthWhenTheEventLoopRuns) {
  Request("Command(3)", kPress);
  command.setWidth(0);
  EXPECT_EQ(ProcessEvents(), Events{});
  command.setWidth(100);
  Request("Command(3)", kPress);
  command.setVisible(false);
  EXPECT_EQ(ProcessEvents(), Events{});
}

TEST_F(ScreenReaderAction, HasNoEffectOnAControlOutsideItsBoxOrWindow) {
  auto& strip = form.Find<PictureBox>("Strip(2)");
  for (const float left : {100.0F, -40.0F}) {
    strip.setLeft(left);
    EXPECT_EQ(EventsOf("Strip(2)", kMenu), Events{}) << left;
  }
  strip.setLeft(99);
  EXPECT_EQ(EventsOf("Strip(2)", kMenu).size(), 2U) << "its visible column isn't clicked";
  form.Find<PictureBox>("Strips").setLeft(300);
  strip.setLeft(0);
  EXPECT_EQ(EventsOf("Strip(2)", kMenu), Events{});
}

TEST_F(ScreenReaderAction, ReachesAControlBehindAnother) {
  form.Find<PictureBox>("Strips").setLeft(10);
  form.Find<PictureBox>("Strips").setTop(10);
  EXPECT_EQ(EventsOf("Command(3)", kPress), kClick);
}

TEST_F(ScreenReaderAction, HasNoEffectWhileADialogOrAMenuIsOpen) {
  QDialog dialog(&form);
  dialog.setModal(true);
  dialog.show();
  EXPECT_EQ(EventsOf("Command(3)", kPress), Events{});
  dialog.hide();
  EXPECT_EQ(EventsOf("Command(3)", kPress), kClick);
  QMenu menu(&form);
  menu.addAction("Play");
  menu.popup(form.mapToGlobal(QPoint(10, 10)));
  EXPECT_EQ(EventsOf("Command(3)", kPress), Events{});
}

using ScreenReaderValue = ScreenReaderAction;

TEST_F(ScreenReaderValue, IsThePositionOfABarWithTheLengthOfItsBoxAsTheRange) {
  for (const auto& [name, length] : {std::pair{"LeftBar", 300.0}, {"TopBar", 200.0}}) {
    EXPECT_EQ(Value(name).minimumValue(), QVariant(0.0));
    EXPECT_EQ(Value(name).maximumValue(), QVariant(length));
    EXPECT_FALSE(Value(name).minimumStepSize().isValid());
  }
  form.Find<Control>("LeftBar").setLeft(-7);
  form.Find<Control>("TopBar").setTop(12.5F);
  EXPECT_EQ(Value("LeftBar").currentValue(), QVariant(-7.0));
  EXPECT_EQ(Value("TopBar").currentValue(), QVariant(12.5));
}

TEST_F(ScreenReaderValue, DragsABarToThePositionThatIsSet) {
  Value("LeftBar").setCurrentValue(50);
  EXPECT_EQ(ProcessEvents(),
            (Events{"Down button 1 at 4,49", "Move button 1 at 34,49", "Up button 1 at 34,49"}));
  Value("TopBar").setCurrentValue(30);
  EXPECT_EQ(ProcessEvents(),
            (Events{"Down button 1 at 49,4", "Move button 1 at 49,-16", "Up button 1 at 49,-16"}));
}

TEST_F(ScreenReaderValue, IsTheLastOfTwoThatWereSetEvenForABarOutOfSight) {
  Control& bar = LetTheLeftBarFollow();
  for (const float begin : {20.0F, 400.0F}) {
    bar.setLeft(begin);
    for (const double value : {50.0, 70.0}) Value("LeftBar").setCurrentValue(value);
    ServePendingEvents();
    EXPECT_EQ(bar.Left(), 70) << begin;
  }
}

TEST_F(ScreenReaderValue, IsLimitedToTheBoxOfABarAndHasNoEffectUnlessItIsFinite) {
  const Control& bar = LetTheLeftBarFollow();
  constexpr double kInfinite = std::numeric_limits<double>::infinity();
  for (const auto& [value, left] :
       {std::pair{1e300, 300.0F}, {std::nan(""), 300.0F}, {-1e300, 0.0F}, {kInfinite, 0.0F}}) {
    Value("LeftBar").setCurrentValue(value);
    ServePendingEvents();
    EXPECT_EQ(bar.Left(), left) << value;
  }
}

TEST_F(ScreenReaderValue, IsTheReadOutOfAThumbAndCannotBeSet) {
  EXPECT_EQ(Value("Thumb").currentValue().toDouble(), 25);
  EXPECT_EQ(Node("Thumb").text(QAccessible::Value), u"25"_s);
  EXPECT_EQ(Node("Thumb").text(QAccessible::Help), QString());
  EXPECT_FALSE(Value("Thumb").minimumValue().isValid());
  EXPECT_FALSE(Value("Thumb").maximumValue().isValid());
  Value("Thumb").setCurrentValue(3);
  EXPECT_EQ(ProcessEvents(), Events{});
  form.Find<Label>("Value").setObjectName("AnotherName");
  EXPECT_FALSE(Value("Thumb").currentValue().isValid());
}

}  // namespace
}  // namespace kelvane::testing
