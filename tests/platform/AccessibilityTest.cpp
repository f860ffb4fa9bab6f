// What a screen reader is told of controls, and what it may do with them.
#include "platform/Accessibility.h"

#include <gtest/gtest.h>

#include <QDialog>
#include <QMenu>
#include <cmath>
#include <limits>
#include <string>

#include "platform/Label.h"
#include "platform/PictureBox.h"
#include "platform/ProgressBar.h"
#include "platform/TestForm.h"
#include "support/Events.h"
#include "support/ScreenReader.h"

namespace kelvane::testing {
namespace {

using enum ControlClass;

// Twips: a twip design place of 150 is 10 pixels.
constexpr DesignPlace kAnywhere{150, 150, 1500, 300};

std::string HeardIn(const Controls& controls) {
  TestForm form(controls);
  form.Open();
  return testing::HeardIn(form);
}

TEST(ReadingALabel, SaysItsCaption) {
  EXPECT_EQ(
      HeardIn({{.name = "A", .controlClass = kLabel, .place = kAnywhere, .caption = "Width"}}),
      "\nWindow \"A form\"\n  StaticText \"Width\"\n");
}

TEST(ReadingALabel, SaysWhatStandsOnTheScreenWithoutTheBlanksAroundIt) {
  EXPECT_EQ(
      HeardIn(
          {{.name = "A", .controlClass = kLabel, .place = kAnywhere, .caption = " Cut && Paste "}}),
      "\nWindow \"A form\"\n  StaticText \"Cut & Paste\"\n");
}

TEST(ReadingALabel, AddsWhatItsCaptionMeans) {
  EXPECT_EQ(HeardIn({{.name = "A",
                      .controlClass = kLabel,
                      .place = kAnywhere,
                      .caption = "00:00:10",
                      .meaning = "Video Duration"}}),
            "\nWindow \"A form\"\n  StaticText \"00:00:10\" (Video Duration)\n");
}

TEST(ReadingAWindow, PassesOverWhatIsHiddenOrHasNothingToSay) {
  EXPECT_EQ(HeardIn({{.name = "Empty", .controlClass = kLabel, .place = kAnywhere},
                     {.name = "Blank", .controlClass = kLabel, .place = kAnywhere, .caption = " "},
                     {.name = "Shape", .controlClass = kShape, .place = kAnywhere},
                     {.name = "Line", .controlClass = kLine, .place = kAnywhere},
                     {.name = "Hidden",
                      .controlClass = kLabel,
                      .place = kAnywhere,
                      .caption = "Hidden",
                      .visible = false},
                     {.name = "OutOfSight",
                      .controlClass = kHScrollBar,
                      .place = kAnywhere,
                      .role = SpokenRole::kNothing},
                     {.name = "Box", .controlClass = kPictureBox, .place = kAnywhere}}),
            "\nWindow \"A form\"\n");
}

TEST(ReadingAWindow, HasNoNodeForWhatIsHidden) {
  const Controls controls{{.name = "Hidden",
                           .controlClass = kLabel,
                           .place = kAnywhere,
                           .caption = "Hidden",
                           .visible = false}};
  TestForm form(controls);
  form.Open();
  EXPECT_EQ(NodeOf(form).childCount(), 0);
  form.Find<Label>("Hidden").setVisible(true);
  EXPECT_EQ(NodeOf(form).childCount(), 1);
}

TEST(ReadingAWindow, HasABoxWithAMeaningForAGroupAndAnyOtherForNoLevel) {
  EXPECT_EQ(HeardIn({{.name = "Group",
                      .controlClass = kPictureBox,
                      .place = {0, 1500, 3000, 1500},
                      .meaning = "Time line"},
                     {.name = "Inner",
                      .controlClass = kPictureBox,
                      .place = {0, 0, 3000, 900},
                      .container = "Group"},
                     {.name = "A",
                      .controlClass = kLabel,
                      .place = kAnywhere,
                      .caption = "in a group",
                      .container = "Inner"},
                     {.name = "Box", .controlClass = kPictureBox, .place = {0, 0, 3000, 1500}},
                     {.name = "B",
                      .controlClass = kLabel,
                      .place = kAnywhere,
                      .caption = "in a box",
                      .container = "Box"},
                     {.name = "HiddenBox",
                      .controlClass = kPictureBox,
                      .place = {0, 0, 3000, 1500},
                      .visible = false},
                     {.name = "C",
                      .controlClass = kLabel,
                      .place = kAnywhere,
                      .caption = "in a hidden box",
                      .container = "HiddenBox"}}),
            "\nWindow \"A form\"\n"
            "  StaticText \"in a box\"\n"
            "  Grouping \"Time line\"\n"
            "    StaticText \"in a group\"\n");
}

TEST(ReadingAWindow, GoesFromLeftToRightAndFromTheTopDownWhateverLiesInFront) {
  EXPECT_EQ(
      HeardIn(
          {{.name = "4",
            .controlClass = kLabel,
            .place = {150, 1500, 600, 300},
            .caption = "fourth"},
           {.name = "2",
            .controlClass = kLabel,
            .place = {900, 190, 600, 300},
            .caption = "second, a little lower"},
           {.name = "1", .controlClass = kLabel, .place = {150, 200, 600, 300}, .caption = "first"},
           {.name = "3",
            .controlClass = kLabel,
            .place = {1650, 150, 600, 450},
            .caption = "third, taller"}}),
      "\nWindow \"A form\"\n"
      "  StaticText \"first\"\n"
      "  StaticText \"second, a little lower\"\n"
      "  StaticText \"third, taller\"\n"
      "  StaticText \"fourth\"\n");
}

TEST(ReadingAWindow, HasQtsOwnNodesUnderTheControlsMeanings) {
  EXPECT_EQ(HeardIn({{.name = "1",
                      .controlClass = kProgressBar,
                      .place = {0, 0, 1500, 300},
                      .meaning = "Progress"},
                     {.name = "2",
                      .controlClass = kTextBox,
                      .place = {0, 300, 1500, 300},
                      .caption = "/a/path",
                      .meaning = "Selected Video"},
                     {.name = "3",
                      .controlClass = kSlider,
                      .place = {0, 600, 1500, 300},
                      .meaning = "Audio Volume"},
                     {.name = "4",
                      .controlClass = kHScrollBar,
                      .place = {0, 900, 1500, 300},
                      .meaning = "Scroll"},
                     {.name = "5",
                      .controlClass = kOptionButton,
                      .place = {0, 1200, 1500, 300},
                      .caption = "No Transcode"},
                     {.name = "6",
                      .controlClass = kCommandButton,
                      .place = {0, 1500, 1500, 300},
                      .caption = "Open Video"}}),
            "\nWindow \"A form\"\n"
            "  ProgressBar \"Progress\" = 0\n"
            "  EditableText \"Selected Video\": \"/a/path\"\n"
            "  Slider \"Audio Volume\" = 0\n"
            "  ScrollBar \"Scroll\" = 0\n"
            "  RadioButton \"No Transcode\"\n"
            "  Button \"Open Video\"\n");
}

TEST(ReadingAWindow, CallsAFixedWindowADialog) {
  TestForm form(FixedForm());
  form.Open();
  EXPECT_EQ(testing::HeardIn(form), "\nDialog \"A form\"\n");
}

TEST(ReadingAWindow, FindsTheControlUnderAPlaceOfTheScreen) {
  TestForm form(Controls{
      {.name = "A", .controlClass = kLabel, .place = {150, 150, 1500, 300}, .caption = "here"}});
  form.Open();
  const auto& label = form.Find<Label>("A");
  QAccessibleInterface& window = NodeOf(form);
  const QPoint place = label.mapToGlobal(QPoint(3, 3));
  EXPECT_EQ(window.childAt(place.x(), place.y()), &NodeOf(form.Find<Label>("A")));
  EXPECT_EQ(window.childAt(place.x() - 10, place.y()), nullptr);
}

TEST(ReadingAWindow, FindsWhatLiesInFront) {
  TestForm form(Controls{{.name = "Back",
                          .controlClass = kPictureBox,
                          .place = {150, 150, 1500, 1500},
                          .meaning = "Back"},
                         {.name = "Front",
                          .controlClass = kPictureBox,
                          .place = {300, 300, 150, 150},
                          .meaning = "Front"}});
  form.Find<Control>("Front").raise();
  form.Open();
  const QPoint place = form.Find<Control>("Front").mapToGlobal(QPoint(3, 3));
  EXPECT_EQ(NodeOf(form).childAt(place.x(), place.y()), &NodeOf(form.Find<Control>("Front")));
  EXPECT_EQ(NodeOf(form).childAt(place.x() - 8, place.y()), &NodeOf(form.Find<Control>("Back")));
}

// A control that takes part in the tree by its role, in a form that is open.
class Acting : public ::testing::Test {
 protected:
  Acting() {
    form.Open();
    for (Control* control : form.findChildren<Control*>()) {
      if (!control->objectName().isEmpty()) Record(*control, events);
    }
  }

  QAccessibleInterface& Node(const char* name) const {
    return NodeOf(form.Find<Control>(QLatin1String(name)));
  }
  void Do(const char* name, const QString& action) const {
    Node(name).actionInterface()->doAction(action);
  }

  Events events;
  TestForm form{{
      {.name = "Command(3)",
       .controlClass = kLabel,
       .place = {150, 150, 1500, 300},
       .caption = "Load Video",
       .role = SpokenRole::kCommand},
      {.name = "Arrow",
       .controlClass = kLabel,
       .place = {2100, 150, 300, 300},
       .caption = "<",
       .meaning = "Towards the start",
       .role = SpokenRole::kCommand},
      {.name = "Text", .controlClass = kLabel, .place = {2550, 150, 300, 300}, .caption = "text"},
      {.name = "LeftBar",
       .controlClass = kPictureBox,
       .place = {300, 600, 150, 1500},
       .meaning = "Left Bar",
       .role = SpokenRole::kHorizontalBar},
      {.name = "TopBar",
       .controlClass = kPictureBox,
       .place = {600, 750, 1500, 150},
       .meaning = "Top Bar",
       .role = SpokenRole::kVerticalBar},
      {.name = "Thumb",
       .controlClass = kLabel,
       .place = {600, 1200, 150, 300},
       .meaning = "Step Size",
       .role = SpokenRole::kThumb,
       .readOut = "Value"},
      {.name = "Value",
       .controlClass = kLabel,
       .place = {900, 1200, 300, 300},
       .caption = "04",
       .meaning = "Step Size"},
      {.name = "Strips",
       .controlClass = kPictureBox,
       .place = {600, 1800, 1500, 600},
       .meaning = "Sections",
       .role = SpokenRole::kList},
      {.name = "Strip(2)",
       .controlClass = kPictureBox,
       .place = {0, 0, 600, 300},
       .container = "Strips",
       .meaning = "01",
       .role = SpokenRole::kListItem},
  }};
};

TEST_F(Acting, ReadsEveryRole) {
  EXPECT_EQ(testing::HeardIn(form),
            "\nWindow \"A form\"\n"
            "  Button \"Load Video\"\n"
            "  Button \"Towards the start\"\n"
            "  StaticText \"text\"\n"
            "  Slider \"Top Bar\" = 50\n"
            "  Slider \"Left Bar\" = 20\n"
            "  Slider \"Step Size\" = 4\n"
            "  StaticText \"04\" (Step Size)\n"
            "  List \"Sections\"\n"
            "    ListItem \"01\"\n");
}

TEST_F(Acting, ACommandsActionIsItsPress) {
  EXPECT_EQ(Node("Command(3)").actionInterface()->actionNames(),
            QStringList(QAccessibleActionInterface::pressAction()));
  EXPECT_EQ(Node("Text").actionInterface(), nullptr);
  EXPECT_EQ(Node("LeftBar").actionInterface(), nullptr);
}

TEST_F(Acting, APressIsAClickInTheMiddleThatComesFromTheMessageLoop) {
  Do("Command(3)", QAccessibleActionInterface::pressAction());
  EXPECT_EQ(events, Events{}) << "who asks isn't kept waiting";
  PumpOnce();
  EXPECT_EQ(events, (Events{"Down 3: button 1 shift 0 at 49,9", "Up 3: button 1 shift 0 at 49,9"}));
}

TEST_F(Acting, APressTellsTheSameAsAUsersClick) {
  Do("Command(3)", QAccessibleActionInterface::pressAction());
  PumpOnce();
  const Events pressed = std::exchange(events, {});
  Click(form.Find<Label>("Command(3)"));
  EXPECT_EQ(pressed, events);
}

TEST_F(Acting, APressOfWhatIsntThereOnTheScreenDoesNothing) {
  Do("Command(3)", QAccessibleActionInterface::pressAction());
  form.Find<Label>("Command(3)").setVisible(false);
  PumpOnce();
  EXPECT_EQ(events, Events{});
}

TEST_F(Acting, APressOfAControlOfNoWidthDoesNothing) {
  Do("Command(3)", QAccessibleActionInterface::pressAction());
  form.Find<Label>("Command(3)").setWidth(0);
  PumpOnce();
  EXPECT_EQ(events, Events{});
}

TEST_F(Acting, AnActionOnWhatItsBoxCutsOffDoesNothing) {
  auto& strip = form.Find<PictureBox>("Strip(2)");
  for (const float left : {100.0F, -40.0F}) {
    strip.setLeft(left);
    Do("Strip(2)", QAccessibleActionInterface::showMenuAction());
    PumpOnce();
    EXPECT_EQ(events, Events{}) << left;
  }
  strip.setLeft(99);
  Do("Strip(2)", QAccessibleActionInterface::showMenuAction());
  PumpOnce();
  EXPECT_EQ(events.size(), 2U) << "a pixel of it is to be seen";
}

TEST_F(Acting, AnActionInABoxThatTheWindowCutsOffDoesNothing) {
  form.Find<PictureBox>("Strips").setLeft(300);
  Do("Strip(2)", QAccessibleActionInterface::showMenuAction());
  PumpOnce();
  EXPECT_EQ(events, Events{});
}

TEST_F(Acting, APressOfWhatLiesBehindAnotherControlIsDoneAllTheSame) {
  auto& front = form.Find<PictureBox>("Strips");
  front.setAttribute(Qt::WA_OpaquePaintEvent);
  front.setLeft(10);
  front.setTop(10);
  Do("Command(3)", QAccessibleActionInterface::pressAction());
  PumpOnce();
  EXPECT_EQ(events, (Events{"Down 3: button 1 shift 0 at 49,9", "Up 3: button 1 shift 0 at 49,9"}));
}

TEST_F(Acting, APressBehindADialogDoesNothing) {
  QDialog dialog(&form);
  dialog.setModal(true);
  dialog.show();
  Do("Command(3)", QAccessibleActionInterface::pressAction());
  PumpOnce();
  EXPECT_EQ(events, Events{});
  dialog.hide();
  Do("Command(3)", QAccessibleActionInterface::pressAction());
  PumpOnce();
  EXPECT_EQ(events.size(), 2U);
}

TEST_F(Acting, APressBehindAMenuDoesNothing) {
  QMenu menu(&form);
  menu.addAction(QStringLiteral("Play"));
  menu.popup(form.mapToGlobal(QPoint(10, 10)));
  Do("Command(3)", QAccessibleActionInterface::pressAction());
  PumpOnce();
  EXPECT_EQ(events, Events{});
}

TEST_F(Acting, AnotherActionThanItsOwnDoesNothing) {
  Do("Command(3)", QAccessibleActionInterface::showMenuAction());
  Do("Strip(2)", QAccessibleActionInterface::pressAction());
  PumpOnce();
  EXPECT_EQ(events, Events{});
}

TEST_F(Acting, AListItemsActionIsARightClick) {
  Do("Strip(2)", QAccessibleActionInterface::showMenuAction());
  PumpOnce();
  EXPECT_EQ(events, (Events{"Down 2: button 2 shift 0 at 19,9", "Up 2: button 2 shift 0 at 19,9"}));
}

TEST_F(Acting, AWindowMayGoDuringAPress) {
  auto& command = form.Find<Label>("Command(3)");
  command.MouseUp = [this](const MouseEvent&) { form.Unload(); };
  Do("Command(3)", QAccessibleActionInterface::pressAction());
  PumpOnce();
  EXPECT_FALSE(form.isVisible());
}

TEST_F(Acting, ABarsValueIsItsPlaceBetweenTheEdgesOfItsBox) {
  QAccessibleValueInterface& left = *Node("LeftBar").valueInterface();
  QAccessibleValueInterface& top = *Node("TopBar").valueInterface();
  EXPECT_EQ(left.minimumValue().toDouble(), 0);
  EXPECT_EQ(left.maximumValue().toDouble(), 300);
  EXPECT_EQ(top.maximumValue().toDouble(), 200);
  form.Find<Control>("LeftBar").setLeft(-7);
  form.Find<Control>("TopBar").setTop(12.5F);
  EXPECT_EQ(left.currentValue().toDouble(), -7);
  EXPECT_EQ(top.currentValue().toDouble(), 12.5);
}

TEST_F(Acting, ABarThatIsGivenAValueIsDraggedThere) {
  Node("LeftBar").valueInterface()->setCurrentValue(50);
  Node("TopBar").valueInterface()->setCurrentValue(30);
  PumpOnce();
  EXPECT_EQ(events,
            (Events{"Down -1: button 1 shift 0 at 4,49", "Move -1: button 1 shift 0 at 34,49",
                    "Up -1: button 1 shift 0 at 34,49", "Down -1: button 1 shift 0 at 49,4",
                    "Move -1: button 1 shift 0 at 49,-16", "Up -1: button 1 shift 0 at 49,-16"}));
}

TEST_F(Acting, ABarThatIsGivenTwoValuesEndsAtTheLast) {
  auto& bar = form.Find<Control>("LeftBar");
  float pressed = 0;
  bar.MouseDown = [&](const MouseEvent& event) { pressed = event.X; };
  bar.MouseMove = [&](const MouseEvent& event) { bar.setLeft(bar.Left() + event.X - pressed); };
  for (const double value : {50.0, 70.0}) Node("LeftBar").valueInterface()->setCurrentValue(value);
  PumpOnce();
  EXPECT_EQ(bar.Left(), 70);
}

TEST_F(Acting, ABarThatIsScrolledOutOfSightTakesItsValueAsWell) {
  auto& bar = form.Find<Control>("LeftBar");
  bar.setLeft(400);
  float pressed = 0;
  bar.MouseDown = [&](const MouseEvent& event) { pressed = event.X; };
  bar.MouseMove = [&](const MouseEvent& event) { bar.setLeft(bar.Left() + event.X - pressed); };
  Node("LeftBar").valueInterface()->setCurrentValue(50);
  PumpOnce();
  EXPECT_EQ(bar.Left(), 50);
}

TEST_F(Acting, ABarStaysBetweenTheEdgesOfItsBoxAndTakesNothingThatIsNoNumber) {
  auto& bar = form.Find<Control>("LeftBar");
  float pressed = 0;
  bar.MouseDown = [&](const MouseEvent& event) { pressed = event.X; };
  bar.MouseMove = [&](const MouseEvent& event) { bar.setLeft(bar.Left() + event.X - pressed); };
  const auto after = [&](double value) {
    Node("LeftBar").valueInterface()->setCurrentValue(value);
    PumpOnce();
    return bar.Left();
  };
  EXPECT_EQ(after(1e300), 300);
  EXPECT_EQ(after(-1e300), 0);
  EXPECT_EQ(after(std::nan("")), 0);
  EXPECT_EQ(after(std::numeric_limits<double>::infinity()), 0);
}

TEST_F(Acting, OnlyABarKnowsItsLeastAndItsMostAndNothingItsStep) {
  for (const char* slider : {"LeftBar", "Thumb"}) {
    QAccessibleValueInterface& value = *Node(slider).valueInterface();
    const bool isBar = slider == std::string("LeftBar");
    EXPECT_EQ(value.minimumValue().isValid(), isBar) << slider;
    EXPECT_EQ(value.maximumValue().isValid(), isBar) << slider;
    EXPECT_FALSE(value.minimumStepSize().isValid()) << slider;
  }
}

TEST_F(Acting, AThumbWithoutAReadOutHasNoValue) {
  form.Find<Label>("Value").setObjectName(QStringLiteral("AnotherName"));
  EXPECT_FALSE(Node("Thumb").valueInterface()->currentValue().isValid());
}

TEST_F(Acting, SaysItsValueAsATextWhereItHasOne) {
  EXPECT_EQ(Node("Thumb").text(QAccessible::Value), QStringLiteral("4"));
  EXPECT_EQ(Node("Command(3)").text(QAccessible::Value), QString());
}

TEST_F(Acting, APartOfAnotherBoxIsNoChild) {
  EXPECT_EQ(NodeOf(form).indexOfChild(&Node("Strip(2)")), -1);
  EXPECT_EQ(Node("Strips").indexOfChild(&Node("Strip(2)")), 0);
}

TEST_F(Acting, AThumbsValueIsWhatItsReadOutSays) {
  form.Find<Label>("Value").setCaption(QStringLiteral("025"));
  EXPECT_EQ(Node("Thumb").valueInterface()->currentValue().toDouble(), 25);
  Node("Thumb").valueInterface()->setCurrentValue(3);
  PumpOnce();
  EXPECT_EQ(events, Events{});
}

TEST(ReadingACopy, HasTheRoleOfItsModel) {
  TestForm form({{.name = "Strip(0)",
                  .controlClass = kPictureBox,
                  .place = kAnywhere,
                  .role = SpokenRole::kListItem}});
  form.Open();
  PictureBox& copy = form.Find<PictureBox>("Strip(0)").Duplicate(QStringLiteral("Strip(2)"));
  copy.setMeaning(QStringLiteral("01"));
  copy.setVisible(true);
  EXPECT_EQ(Heard(NodeOf(copy)), "ListItem \"01\"");
}

}  // namespace
}  // namespace kelvane::testing
