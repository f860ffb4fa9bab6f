// The mouse: the events of controls, which control gets them, and the pointer's shape.
#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QMouseEvent>
#include <QSet>
#include <utility>

#include "platform/Label.h"
#include "platform/PictureBox.h"
#include "platform/Pointer.h"
#include "platform/Screen.h"
#include "platform/TestForm.h"

namespace kelvane::testing {
namespace {

class Mouse : public ::testing::Test {
 protected:
  Mouse() {
    form.Open();
    Record(box, events);
    Record(bar, events);
    form.OnMouseMove = [&](const MouseEvent& event) { events.push_back(Describe("Form", event)); };
  }

  TestForm form{{Design(kPictureBox, "Box", {10, 10, 200, 150}),
                 Design(kPictureBox, "Bar(2)", {40, 20, 20, 100}).In("Box")}};
  PictureBox& box = form.Find<PictureBox>("Box");
  PictureBox& bar = form.Find<PictureBox>("Bar(2)");
  Pointer pointer{form};
  Events events;
};

TEST_F(Mouse, RaisesMovesOfTheControlUnderThePointerEvenWithoutAButton) {
  pointer.MoveTo(bar, {3, 4});
  pointer.MoveTo(bar, {5, 6});
  pointer.MoveTo(box, {1, 2});
  pointer.MoveTo(form, {250, 7});
  EXPECT_EQ(events, (Events{"Move 2 at 3,4", "Move 2 at 5,6", "Move at 1,2", "Form at 250,7"}));
}

TEST_F(Mouse, RoundsPlacesDownToWholePixels) {
  pointer.MoveTo(bar, {3.9, 4.0});
  pointer.MoveTo(bar, {3.0, 4.999});
  pointer.Press();
  pointer.MoveTo(bar, {-0.1, -1.9});
  pointer.Release();
  EXPECT_EQ(events, (Events{"Move 2 at 3,4", "Move 2 at 3,4", "Down 2 button 1 at 3,4",
                            "Move 2 button 1 at -1,-2", "Up 2 button 1 at -1,-2"}));
}

TEST_F(Mouse, RaisesPressReleaseDoubleClickAndReleaseForADoubleClick) {
  for (const QPointF place : {QPointF(3, 4), QPointF(3.4, 4.7)}) {
    pointer.MoveTo(bar, place);
    events.clear();
    pointer.DoubleClick();
    EXPECT_EQ(events, (Events{"Down 2 button 1 at 3,4", "Up 2 button 1 at 3,4",
                              "Double 2 button 1 at 3,4", "Up 2 button 1 at 3,4"}));
  }
}

TEST_F(Mouse, TellsTheLeftRightOrMiddleButtonOfAPressAndTheSumOfThoseHeldInAMove) {
  int y = 4;
  const auto move = [&] { pointer.MoveTo(bar, QPoint(3, y++)); };
  move();
  events.clear();
  for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton}) {
    pointer.Press(button);
    move();
  }
  for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton}) {
    pointer.Release(button);
    move();
  }
  pointer.Press(Qt::BackButton);
  move();
  pointer.Release(Qt::BackButton);
  EXPECT_EQ(events,
            (Events{"Down 2 button 1 at 3,4", "Move 2 button 1 at 3,5", "Down 2 button 2 at 3,5",
                    "Move 2 button 3 at 3,6", "Down 2 button 4 at 3,6", "Move 2 button 7 at 3,7",
                    "Up 2 button 1 at 3,7", "Move 2 button 6 at 3,8", "Up 2 button 2 at 3,8",
                    "Move 2 button 4 at 3,9", "Up 2 button 4 at 3,9", "Move 2 at 3,10",
                    "Move 2 at 3,11"}));
}

TEST_F(Mouse, TellsTheSumOfTheKeysHeld) {
  pointer.MoveTo(bar, {3, 4});
  for (const auto& [keys, shift] :
       {std::pair<Qt::KeyboardModifiers, std::string>{Qt::NoModifier, ""},
        {Qt::ShiftModifier, " shift 1"},
        {Qt::ControlModifier, " shift 2"},
        {Qt::AltModifier, " shift 4"},
        {Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier, " shift 7"},
        {Qt::MetaModifier | Qt::KeypadModifier, ""}}) {
    events.clear();
    pointer.Hold(keys);
    pointer.Click();
    pointer.MoveTo(bar, {5, 6});
    pointer.MoveTo(bar, {3, 4});
    EXPECT_EQ(events,
              (Events{"Down 2 button 1" + shift + " at 3,4", "Up 2 button 1" + shift + " at 3,4",
                      "Move 2" + shift + " at 5,6", "Move 2" + shift + " at 3,4"}));
  }
}

TEST_F(Mouse, TellsADraggedControlOfMovesBeyondItsEdgesWhileItFollowsThePointer) {
  bar.MouseMove = [this](const MouseEvent& event) {
    events.push_back(Describe("Move", event));
    if (event.Button == kLeftButton) bar.setLeft(bar.Left() + event.X - 3);
  };
  pointer.MoveTo(bar, {3, 4});
  events.clear();
  pointer.Press();
  for (const int x : {50, 70, 20}) {
    pointer.MoveTo(box, QPoint(x, 150));
    EXPECT_EQ(bar.Left(), static_cast<float>(x - 3));
  }
  pointer.Release();
  EXPECT_EQ(events, (Events{"Down 2 button 1 at 3,4", "Move 2 button 1 at 10,130",
                            "Move 2 button 1 at 23,130", "Move 2 button 1 at -47,130",
                            "Up 2 button 1 at 3,130"}));
}

TEST_F(Mouse, TellsThePlaceInAControlThatHasMovedSinceTheEventWasSent) {
  const QPoint onScreen = bar.mapToGlobal(QPoint(15, 9));
  QMouseEvent late(QEvent::MouseMove, QPointF(15, 9), onScreen, Qt::NoButton, Qt::LeftButton,
                   Qt::NoModifier);
  bar.setLeft(bar.Left() + 10);
  box.setTop(box.Top() + 2);
  QCoreApplication::sendEvent(&bar, &late);
  EXPECT_EQ(events, Events{"Move 2 button 1 at 5,7"});
}

TEST_F(Mouse, TellsTheNotchesOfTheWheelAndFractionsOfThemUpwardsAndToTheLeftAsPositive) {
  bar.MouseWheel = [this](const WheelEvent& event) {
    events.push_back(std::to_string(event.Index) + ": " + std::to_string(event.Notches) +
                     " shift " + std::to_string(event.Shift));
  };
  pointer.MoveTo(bar, {3, 4});
  events.clear();
  for (const QPoint angle : {QPoint(0, 120), {0, -240}, {0, 15}, {-30, 0}, {60, -15}, {0, 0}}) {
    pointer.TurnWheel(angle);
  }
  pointer.Hold(Qt::ShiftModifier);
  pointer.TurnWheel();
  EXPECT_EQ(events, (Events{"2: 1.000000 shift 0", "2: -2.000000 shift 0", "2: 0.125000 shift 0",
                            "2: -0.250000 shift 0", "2: 0.500000 shift 0", "2: 1.000000 shift 1"}));
}

TEST_F(Mouse, RaisesNoEventOfADisabledControlNorOneOfItsContainer) {
  box.MouseWheel = bar.MouseWheel = [this](const WheelEvent&) { events.push_back("Wheel"); };
  bar.setEnabled(false);
  pointer.MoveTo(bar, {3, 4});
  pointer.DoubleClick();
  pointer.Click(Qt::RightButton);
  pointer.TurnWheel();
  EXPECT_EQ(events, Events{});
  bar.setEnabled(true);
  pointer.TurnWheel();
  pointer.Click();
  EXPECT_EQ(events, (Events{"Wheel", "Down 2 button 1 at 3,4", "Up 2 button 1 at 3,4"}));
}

TEST(MousePlace, IsInTheUnitOfTheContainerAndForABoxInItsOwn) {
  TestForm form(TwipForm(), {Design(kLabel, "Label1", {0, 0, 50, 50}),
                             Design(kPictureBox, "Pixels", {60, 0, 50, 50}),
                             Design(kPictureBox, "Twips", {120, 0, 100, 100}).Twips(),
                             Design(kLabel, "Label2", {10, 10, 40, 40}).In("Twips")});
  form.Open();
  Pointer pointer(form);
  struct Case {
    const char* name;
    int pixels;
    int units;
  };
  for (const auto& [name, pixels, units] :
       {Case{"Label1", 7, 105}, {"Pixels", 7, 7}, {"Twips", 7, 105}, {"Label2", 11, 165}}) {
    Events events;
    Record(form.Find<Control>(name), events);
    pointer.MoveTo(form.Find<Control>(name), QPoint(pixels, pixels));
    const std::string place = std::to_string(units);
    EXPECT_EQ(events, (Events{"Move at " + place + "," + place})) << name;
  }
}

// Counts the mouse's events that Qt delivers to a widget.
class MouseEventCount : public QObject {
 public:
  explicit MouseEventCount(QObject& watched) { watched.installEventFilter(this); }

  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    static const QSet<QEvent::Type> kTypes{
        QEvent::MouseMove, QEvent::MouseButtonPress,    QEvent::MouseButtonRelease,
        QEvent::Wheel,     QEvent::MouseButtonDblClick, QEvent::ContextMenu,
        QEvent::ToolTip};
    if (kTypes.contains(event->type())) ++count;
    return false;
  }

  int count = 0;
};

TEST(MouseEvents, DoNotReachTheContainerOfAControl) {
  for (const ControlClass controlClass :
       {kCommandButton, kHScrollBar, kLabel, kListBox, kListView, kOptionButton, kPictureBox,
        kProgressBar, kSlider, kTextBox, kVScrollBar, kWindowsMediaPlayer}) {
    SCOPED_TRACE(static_cast<int>(controlClass));
    TestForm form({Design(kPictureBox, "Box", {0, 0, 300, 200}),
                   Design(controlClass, "Control", {20, 20, 100, 100}).In("Box")});
    form.Open();
    auto& box = form.Find<PictureBox>("Box");
    box.setToolTip("The box's tip");
    const MouseEventCount ofTheBox(box);
    Pointer pointer(form);
    pointer.MoveTo(form.Find<Control>("Control"), {50, 50});
    pointer.Rest();
    pointer.DoubleClick();
    pointer.Press(Qt::MiddleButton);
    pointer.MoveTo(form.Find<Control>("Control"), {51, 51});
    pointer.Release(Qt::MiddleButton);
    pointer.Click(Qt::RightButton);
    pointer.TurnWheel();
    EXPECT_EQ(ofTheBox.count, 0);
    pointer.MoveTo(box, {200, 150});
    EXPECT_EQ(ofTheBox.count, 1) << "not just the one event of the box's own";
  }
}

TEST(MouseEvents, PassThroughShapesAndLinesToTheControlBehind) {
  TestForm form({Design(kLine, "Line1", {0, 20, 300, 1}),
                 Design(kShape, "Shape1", {0, 0, 300, 200}).BorderWidth(50),
                 Design(kLabel, "Label1", {10, 10, 50, 50}),
                 Design(kPictureBox, "Box", {100, 10, 50, 50})});
  form.Open();
  Events events;
  Record(form.Find<Control>("Label1"), events);
  Record(form.Find<Control>("Box"), events);
  form.OnMouseMove = [&](const MouseEvent& event) { events.push_back(Describe("Form", event)); };
  Pointer pointer(form);
  pointer.MoveTo(form, {15, 20});  // on the line
  pointer.Click();
  pointer.MoveTo(form, {120, 20});
  pointer.MoveTo(form, {120, 30});  // on the outline of the shape
  pointer.MoveTo(form, {120, 55});  // inside the shape
  pointer.MoveTo(form, {200, 20});
  EXPECT_EQ(events, (Events{"Move at 5,10", "Down button 1 at 5,10", "Up button 1 at 5,10",
                            "Move at 20,10", "Move at 20,20", "Move at 20,45", "Form at 200,20"}));
}

TEST(MouseEvents, GoToATransparentLabelInFrontUnlessItIsHidden) {
  TestForm form(
      {Design(kLabel, "Label1(0)", {0, 0, 50, 50}), Design(kLabel, "Label1(1)", {0, 0, 50, 50})});
  form.Open();
  Events events;
  Record(form.Find<Control>("Label1(0)"), events);
  Record(form.Find<Control>("Label1(1)"), events);
  Pointer pointer(form);
  pointer.MoveTo(form, {5, 6});
  form.Find<Control>("Label1(0)").setVisible(false);
  pointer.MoveTo(form, {6, 6});
  EXPECT_EQ(events, (Events{"Move 0 at 5,6", "Move 1 at 6,6"}));
}

TEST(MousePointer, IsTheControlsOwnOrElseTheForms) {
  TestForm form(
      {Design(kPictureBox, "Bar").Pointer(MousePointer::kSizeWestEast), Design(kLabel, "Label1")});
  auto& label = form.Find<Label>("Label1");
  EXPECT_EQ(label.cursor().shape(), Qt::ArrowCursor);
  form.setMousePointer(MousePointer::kHourglass);
  EXPECT_EQ(form.Find<Control>("Bar").cursor().shape(), Qt::SizeHorCursor);
  EXPECT_EQ(label.cursor().shape(), Qt::WaitCursor);
  label.setMousePointer(MousePointer::kArrow);
  EXPECT_EQ(label.cursor().shape(), Qt::ArrowCursor);
  form.setMousePointer(MousePointer::kDefault);
  EXPECT_EQ(form.cursor().shape(), Qt::ArrowCursor);
}

TEST(ScreenPointer, HasTheShapeThatWasSetUntilTheDefaultLeavesItToTheControls) {
  for (const MousePointer pointer :
       {MousePointer::kSizeWestEast, MousePointer::kArrow, MousePointer::kHourglass}) {
    Screen::setMousePointer(pointer);
    EXPECT_EQ(Screen::Pointer(), pointer);
    EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), CursorOf(pointer).shape());
  }
  for (int times = 0; times < 2; ++times) {
    Screen::setMousePointer(MousePointer::kDefault);
    EXPECT_EQ(Screen::Pointer(), MousePointer::kDefault);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
  }
}

}  // namespace
}  // namespace kelvane::testing
