// What a screen reader is told of controls, and what it may do with them.
#include "platform/Accessibility.h"

#include <gtest/gtest.h>

#include <QDialog>
#include <QMenu>
#include <cmath>
#include <limits>
#include <ostream>
#include <string>
#include <utility>

#include "platform/Label.h"
#include "platform/PictureBox.h"
#include "platform/TestForm.h"
#include "support/Events.h"
#include "support/ScreenReader.h"

namespace kelvane::testing {
namespace {

constexpr DesignPlace kAnywhere{10, 10, 100, 20};

struct Reading {
  const char* name;
  Controls controls;
  std::string lines;  // under the window's own
};

void PrintTo(const Reading& reading, std::ostream* out) { *out << reading.name; }

const Reading kReadings[]{
    {"LabelsCaption",
     {Design(kLabel, "A", kAnywhere).Caption("Width")},
     "  StaticText \"Width\"\n"},
    {"CaptionAsDrawnWithoutTheBlanksAroundIt",
     {Design(kLabel, "A", kAnywhere).Caption(" Cut && Paste ")},
     "  StaticText \"Cut & Paste\"\n"},
    {"LabelsMeaning",
     {Design(kLabel, "A", kAnywhere).Caption("00:00:10").Meaning("Video Duration")},
     "  StaticText \"00:00:10\" (Video Duration)\n"},
    {"NothingHiddenOrSilent",
     {Design(kLabel, "Empty", kAnywhere), Design(kLabel, "Blank", kAnywhere).Caption(" "),
      Design(kShape, "Shape", kAnywhere), Design(kLine, "Line", kAnywhere),
      Design(kLabel, "Hidden", kAnywhere).Caption("Hidden").Hidden(),
      Design(kHScrollBar, "OutOfSight", kAnywhere).Role(SpokenRole::kNothing),
      Design(kPictureBox, "Box", kAnywhere)},
     ""},
    {"BoxWithAMeaningAsAGroupAndAnyOtherAsNoLevel",
     {Design(kPictureBox, "Group", {0, 100, 200, 100}).Meaning("Time line"),
      Design(kPictureBox, "Inner", {0, 0, 200, 60}).In("Group"),
      Design(kLabel, "A", kAnywhere).Caption("in a group").In("Inner"),
      Design(kPictureBox, "Box", {0, 0, 200, 100}),
      Design(kLabel, "B", kAnywhere).Caption("in a box").In("Box"),
      Design(kPictureBox, "HiddenBox", {0, 0, 200, 100}).Hidden(),
      Design(kLabel, "C", kAnywhere).Caption("in a hidden box").In("HiddenBox")},
     "  StaticText \"in a box\"\n  Grouping \"Time line\"\n    StaticText \"in a group\"\n"},
    {"LeftToRightAndTopDownWhateverLiesInFront",
     {Design(kLabel, "4", {10, 100, 40, 20}).Caption("fourth"),
      Design(kLabel, "2", {60, 12, 40, 20}).Caption("second, a little higher"),
      Design(kLabel, "1", {10, 13, 40, 20}).Caption("first"),
      Design(kLabel, "3", {110, 10, 40, 30}).Caption("third, taller")},
     "  StaticText \"first\"\n  StaticText \"second, a little higher\"\n"
     "  StaticText \"third, taller\"\n  StaticText \"fourth\"\n"},
    {"QtsNodesUnderTheControlsMeanings",
     {Design(kProgressBar, "1", {0, 0, 100, 20}).Meaning("Progress"),
      Design(kTextBox, "2", {0, 20, 100, 20}).Caption("/a/path").Meaning("Selected Video"),
      Design(kSlider, "3", {0, 40, 100, 20}).Meaning("Audio Volume"),
      Design(kHScrollBar, "4", {0, 60, 100, 20}).Meaning("Scroll"),
      Design(kOptionButton, "5", {0, 80, 100, 20}).Caption("No Transcode"),
      Design(kCommandButton, "6", {0, 100, 100, 20}).Caption("Open Video")},
     "  ProgressBar \"Progress\" = 0\n  EditableText \"Selected Video\": \"/a/path\"\n"
     "  Slider \"Audio Volume\" = 0\n  ScrollBar \"Scroll\" = 0\n"
     "  RadioButton \"No Transcode\"\n  Button \"Open Video\"\n"}};

class ScreenReaderHears : public ::testing::TestWithParam<Reading> {};

TEST_P(ScreenReaderHears, Lines) {
  TestForm form(GetParam().controls);
  form.Open();
  EXPECT_EQ(HeardIn(form), "\nWindow \"A form\"\n" + GetParam().lines);
}

INSTANTIATE_TEST_SUITE_P(Platform, ScreenReaderHears, ::testing::ValuesIn(kReadings),
                         [](const auto& test) { return test.param.name; });

TEST(ScreenReaderTree, HasNoNodeForAHiddenControl) {
  TestForm form({Design(kLabel, "Hidden", kAnywhere).Caption("Hidden").Hidden()});
  form.Open();
  EXPECT_EQ(NodeOf(form).childCount(), 0);
  form.Find<Label>("Hidden").setVisible(true);
  EXPECT_EQ(NodeOf(form).childCount(), 1);
}

TEST(ScreenReaderTree, CallsAFixedWindowADialog) {
  TestForm form(FixedForm());
  form.Open();
  EXPECT_EQ(HeardIn(form), "\nDialog \"A form\"\n");
}

TEST(ScreenReaderTree, FindsTheFrontControlAtAPlaceOfTheScreen) {
  TestForm form({Design(kPictureBox, "Back", {10, 10, 100, 100}).Meaning("Back"),
                 Design(kPictureBox, "Front", {20, 20, 10, 10}).Meaning("Front")});
  auto& back = form.Find<Control>("Back");
  auto& front = form.Find<Control>("Front");
  front.raise();
  form.Open();
  const auto at = [&form](QPoint place) {
    const QPoint onScreen = form.mapToGlobal(place);
    return NodeOf(form).childAt(onScreen.x(), onScreen.y());
  };
  EXPECT_EQ(at({23, 23}), &NodeOf(front));
  EXPECT_EQ(at({15, 23}), &NodeOf(back));
  EXPECT_EQ(at({5, 23}), nullptr);
}

TEST(ScreenReaderTree, GivesACopyTheRoleOfItsModel) {
  TestForm form({Design(kPictureBox, "Strip(0)", kAnywhere).Role(SpokenRole::kListItem)});
  form.Open();
  PictureBox& copy = form.Find<PictureBox>("Strip(0)").Duplicate("Strip(2)");
  copy.setMeaning("01");
  copy.setVisible(true);
  EXPECT_EQ(Heard(NodeOf(copy)), "ListItem \"01\"");
}

const QString kPress = QAccessibleActionInterface::pressAction();
const QString kMenu = QAccessibleActionInterface::showMenuAction();

// A form with a control of each role that a screen reader can act on.
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
  void Ask(const char* name, const QString& action) const {
    Node(name).actionInterface()->doAction(action);
  }
  // What the event loop then makes of an action.
  Events After(const char* name, const QString& action) {
    Ask(name, action);
    return Served();
  }
  Events Served() {
    PumpOnce();
    return std::exchange(events, {});
  }
  // The left bar, which from now on follows its drag.
  Control& FollowingBar() {
    auto& bar = form.Find<Control>("LeftBar");
    bar.MouseDown = [this](const MouseEvent& event) { pressed = event.X; };
    bar.MouseMove = [&](const MouseEvent& event) { bar.setLeft(bar.Left() + event.X - pressed); };
    return bar;
  }

  const Events kClick{"Down 3 button 1 at 49,9", "Up 3 button 1 at 49,9"};
  Events events;
  float pressed = 0;
  TestForm form{{Design(kLabel, "Command(3)", {10, 10, 100, 20})
                     .Caption("Load Video")
                     .Role(SpokenRole::kCommand),
                 Design(kLabel, "Arrow", {140, 10, 20, 20})
                     .Caption("<")
                     .Meaning("Towards the start")
                     .Role(SpokenRole::kCommand),
                 Design(kLabel, "Text", {170, 10, 20, 20}).Caption("text"),
                 Design(kPictureBox, "LeftBar", {20, 40, 10, 100})
                     .Meaning("Left Bar")
                     .Role(SpokenRole::kHorizontalBar),
                 Design(kPictureBox, "TopBar", {40, 50, 100, 10})
                     .Meaning("Top Bar")
                     .Role(SpokenRole::kVerticalBar),
                 Design(kLabel, "Thumb", {40, 80, 10, 20})
                     .Meaning("Step Size")
                     .Role(SpokenRole::kThumb)
                     .ReadOut("Value"),
                 Design(kLabel, "Value", {60, 80, 20, 20}).Caption("04").Meaning("Step Size"),
                 Design(kPictureBox, "Strips", {40, 120, 100, 40})
                     .Meaning("Sections")
                     .Role(SpokenRole::kList),
                 Design(kPictureBox, "Strip(2)", {0, 0, 40, 20})
                     .In("Strips")
                     .Meaning("01")
                     .Role(SpokenRole::kListItem)}};
  Label& command = form.Find<Label>("Command(3)");
};

TEST_F(ScreenReaderAction, ReadsEveryRole) {
  EXPECT_EQ(HeardIn(form),
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
  EXPECT_EQ(NodeOf(form).indexOfChild(&Node("Strip(2)")), -1);
  EXPECT_EQ(Node("Strips").indexOfChild(&Node("Strip(2)")), 0);
}

TEST_F(ScreenReaderAction, OnlyACommandHasAPressAndOnlyAListItemAMenu) {
  EXPECT_EQ(Node("Command(3)").actionInterface()->actionNames(), QStringList(kPress));
  EXPECT_EQ(Node("Strip(2)").actionInterface()->actionNames(), QStringList(kMenu));
  EXPECT_EQ(Node("Text").actionInterface(), nullptr);
  EXPECT_EQ(Node("LeftBar").actionInterface(), nullptr);
  EXPECT_EQ(After("Command(3)", kMenu), Events{});
  EXPECT_EQ(After("Strip(2)", kPress), Events{});
}

TEST_F(ScreenReaderAction, PressIsALeftClickInTheMiddleFromTheEventLoop) {
  Ask("Command(3)", kPress);
  EXPECT_EQ(events, Events{}) << "the caller isn't kept waiting";
  EXPECT_EQ(Served(), kClick);
}

TEST_F(ScreenReaderAction, MenuOfAListItemIsARightClick) {
  EXPECT_EQ(After("Strip(2)", kMenu), (Events{"Down 2 button 2 at 19,9", "Up 2 button 2 at 19,9"}));
}

TEST_F(ScreenReaderAction, PressOfAControlThatIsHiddenOrEmptyByThenHasNoEffect) {
  Ask("Command(3)", kPress);
  command.setWidth(0);
  EXPECT_EQ(Served(), Events{});
  command.setWidth(100);
  Ask("Command(3)", kPress);
  command.setVisible(false);
  EXPECT_EQ(Served(), Events{});
}

TEST_F(ScreenReaderAction, OnAControlOutsideItsBoxOrWindowHasNoEffect) {
  auto& strip = form.Find<PictureBox>("Strip(2)");
  for (const float left : {100.0F, -40.0F}) {
    strip.setLeft(left);
    EXPECT_EQ(After("Strip(2)", kMenu), Events{}) << left;
  }
  strip.setLeft(99);
  EXPECT_EQ(After("Strip(2)", kMenu).size(), 2U) << "a pixel of it can be seen";
  form.Find<PictureBox>("Strips").setLeft(300);
  strip.setLeft(0);
  EXPECT_EQ(After("Strip(2)", kMenu), Events{});
}

TEST_F(ScreenReaderAction, PressReachesAControlBehindAnother) {
  auto& front = form.Find<PictureBox>("Strips");
  front.setLeft(10);
  front.setTop(10);
  EXPECT_EQ(After("Command(3)", kPress), kClick);
}

TEST_F(ScreenReaderAction, PressBehindADialogOrAMenuHasNoEffect) {
  QDialog dialog(&form);
  dialog.setModal(true);
  dialog.show();
  EXPECT_EQ(After("Command(3)", kPress), Events{});
  dialog.hide();
  EXPECT_EQ(After("Command(3)", kPress), kClick);
  QMenu menu(&form);
  menu.addAction("Play");
  menu.popup(form.mapToGlobal(QPoint(10, 10)));
  EXPECT_EQ(After("Command(3)", kPress), Events{});
}

TEST_F(ScreenReaderAction, PressMayUnloadTheWindow) {
  command.MouseUp = [this](const MouseEvent&) { form.Unload(); };
  After("Command(3)", kPress);
  EXPECT_FALSE(form.isVisible());
}

TEST_F(ScreenReaderAction, ValueOfABarIsItsPlaceBetweenTheEdgesOfItsBox) {
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

TEST_F(ScreenReaderAction, SettingABarsValueDragsItThere) {
  Value("LeftBar").setCurrentValue(50);
  EXPECT_EQ(Served(),
            (Events{"Down button 1 at 4,49", "Move button 1 at 34,49", "Up button 1 at 34,49"}));
  Value("TopBar").setCurrentValue(30);
  EXPECT_EQ(Served(),
            (Events{"Down button 1 at 49,4", "Move button 1 at 49,-16", "Up button 1 at 49,-16"}));
}

TEST_F(ScreenReaderAction, LastOfTwoValuesCountsForABarInSightOrNot) {
  Control& bar = FollowingBar();
  for (const float begin : {20.0F, 400.0F}) {
    bar.setLeft(begin);
    for (const double value : {50.0, 70.0}) Value("LeftBar").setCurrentValue(value);
    PumpOnce();
    EXPECT_EQ(bar.Left(), 70) << begin;
  }
}

TEST_F(ScreenReaderAction, ValueOfABarIsHeldInItsBoxAndIgnoredWhereItIsNoNumber) {
  const Control& bar = FollowingBar();
  constexpr double kInfinite = std::numeric_limits<double>::infinity();
  for (const auto& [value, left] :
       {std::pair{1e300, 300.0F}, {std::nan(""), 300.0F}, {-1e300, 0.0F}, {kInfinite, 0.0F}}) {
    Value("LeftBar").setCurrentValue(value);
    PumpOnce();
    EXPECT_EQ(bar.Left(), left) << value;
  }
}

TEST_F(ScreenReaderAction, ValueOfAThumbIsItsReadOutAndCannotBeSet) {
  auto& readOut = form.Find<Label>("Value");
  readOut.setCaption("025");
  EXPECT_EQ(Value("Thumb").currentValue().toDouble(), 25);
  EXPECT_EQ(Node("Thumb").text(QAccessible::Value), u"25"_s);
  EXPECT_FALSE(Value("Thumb").minimumValue().isValid());
  EXPECT_FALSE(Value("Thumb").maximumValue().isValid());
  EXPECT_FALSE(Value("Thumb").minimumStepSize().isValid());
  Value("Thumb").setCurrentValue(3);
  EXPECT_EQ(Served(), Events{});
  readOut.setObjectName("AnotherName");
  EXPECT_FALSE(Value("Thumb").currentValue().isValid());
  EXPECT_EQ(Node("Command(3)").text(QAccessible::Value), QString());
}

}  // namespace
}  // namespace kelvane::testing
