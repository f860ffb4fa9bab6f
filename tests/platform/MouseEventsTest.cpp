// What a control is told of the mouse.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QMouseEvent>

#include "platform/Label.h"
#include "platform/PictureBox.h"
#include "platform/Pointer.h"
#include "platform/TestForm.h"

namespace kelvane::testing {
namespace {

class Mouse : public ::testing::Test {
 protected:
  Mouse() {
    form.Open();
    Record(box, events);
    Record(bar, events);
  }

  TestForm form{{Design(kPictureBox, "Box", {10, 10, 200, 150}),
                 Design(kPictureBox, "Bar(2)", {40, 20, 20, 100}).In("Box")}};
  PictureBox& box = form.Find<PictureBox>("Box");
  PictureBox& bar = form.Find<PictureBox>("Bar(2)");
  Pointer pointer{form};
  Events events;
};

TEST_F(Mouse, MovesAreRaisedWithoutAButtonForTheControlUnderThePointer) {
  form.OnMouseMove = [&](const MouseEvent& event) { events.push_back(Describe("Form", event)); };
  pointer.MoveTo(bar, {3, 4});
  pointer.MoveTo(bar, {5, 6});
  pointer.MoveTo(box, {1, 2});
  pointer.MoveTo(form, {250, 7});
  EXPECT_EQ(events, (Events{"Move 2 at 3,4", "Move 2 at 5,6", "Move at 1,2", "Form at 250,7"}));
}

TEST_F(Mouse, PlacesAreWholePixelsRoundedDown) {
  pointer.MoveTo(bar, {3.9, 4.0});
  pointer.MoveTo(bar, {3.0, 4.999});
  pointer.Press();
  pointer.MoveTo(bar, {-0.1, -1.9});
  pointer.Release();
  EXPECT_EQ(events, (Events{"Move 2 at 3,4", "Move 2 at 3,4", "Down 2 button 1 at 3,4",
                            "Move 2 button 1 at -1,-2", "Up 2 button 1 at -1,-2"}));
}

TEST_F(Mouse, ADoubleClickIsPressReleaseDoubleClickRelease) {
  for (const QPointF place : {QPointF(3, 4), QPointF(3.4, 4.7)}) {
    pointer.MoveTo(bar, place);
    events.clear();
    pointer.DoubleClick();
    EXPECT_EQ(events, (Events{"Down 2 button 1 at 3,4", "Up 2 button 1 at 3,4",
                              "Double 2 button 1 at 3,4", "Up 2 button 1 at 3,4"}));
  }
}

TEST_F(Mouse, PressAndReleaseNameTheirButtonAndAMoveTheSumOfThoseHeld) {
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
  EXPECT_EQ(events,
            (Events{"Down 2 button 1 at 3,4", "Move 2 button 1 at 3,5", "Down 2 button 2 at 3,5",
                    "Move 2 button 3 at 3,6", "Down 2 button 4 at 3,6", "Move 2 button 7 at 3,7",
                    "Up 2 button 1 at 3,7", "Move 2 button 6 at 3,8", "Up 2 button 2 at 3,8",
                    "Move 2 button 4 at 3,9", "Up 2 button 4 at 3,9", "Move 2 at 3,10"}));
}

TEST_F(Mouse, AButtonBeyondTheThreeIsIgnored) {
  pointer.MoveTo(bar, {3, 4});
  events.clear();
  pointer.Press(Qt::BackButton);
  pointer.MoveTo(bar, {3, 5});
  pointer.Release(Qt::BackButton);
  EXPECT_EQ(events, Events{"Move 2 at 3,5"});
}

TEST_F(Mouse, ShiftIsTheSumOfTheKeysHeld) {
  struct Case {
    Qt::KeyboardModifiers keys;
    std::string shift;
  };
  pointer.MoveTo(bar, {3, 4});
  for (const auto& [keys, shift] :
       {Case{Qt::NoModifier, ""},
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

TEST_F(Mouse, AControlThatMovesUnderAHeldButtonGetsTheEventsBeyondItsEdges) {
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

// The event says where in the control the pointer was when it was sent; by then the control has
// been moved.
TEST_F(Mouse, PlacesAreWorkedOutFromTheScreenWhenTheEventIsHandled) {
  const QPoint onScreen = bar.mapToGlobal(QPoint(15, 9));
  QMouseEvent late(QEvent::MouseMove, QPointF(15, 9), onScreen, Qt::NoButton, Qt::LeftButton,
                   Qt::NoModifier);
  bar.setLeft(bar.Left() + 10);
  box.setTop(box.Top() + 2);
  QCoreApplication::sendEvent(&bar, &late);
  EXPECT_EQ(events, Events{"Move 2 button 1 at 5,7"});
}

TEST_F(Mouse, EventsWithoutAHandlerHaveNoEffect) {
  bar.MouseDown = nullptr;
  bar.MouseMove = nullptr;
  bar.MouseUp = nullptr;
  bar.DblClick = nullptr;
  pointer.MoveTo(bar, {3, 4});
  pointer.DoubleClick();
  EXPECT_EQ(events, Events{});
}

TEST(MousePlace, IsInTheContainersUnitOrABoxsOwn) {
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
  Events events;
  form.OnMouseMove = [&](const MouseEvent& event) { events.push_back(Describe("Form", event)); };
  pointer.MoveTo(form, {290, 7});
  EXPECT_EQ(events, (Events{"Form at 4350,105"}));
}

TEST(MousePlace, InTwipsIsWholeForEveryPixel) {
  TestForm form(TwipForm());
  form.Open();
  std::vector<float> places;
  form.OnMouseMove = [&](const MouseEvent& event) { places.push_back(event.X); };
  Pointer pointer(form);
  std::vector<float> expected;
  for (int x = 1; x < form.width(); ++x) {
    pointer.MoveTo(form, QPoint(x, 1));
    expected.push_back(static_cast<float>(x * 15));
  }
  EXPECT_EQ(places, expected);
}

TEST(MousePointer, IsTheControlsOwnOrElseTheForms) {
  TestForm form({Design(kPictureBox, "Bar(0)").Pointer(MousePointer::kSizeWestEast),
                 Design(kPictureBox, "Bar(1)").Pointer(MousePointer::kSizeNorthSouth),
                 Design(kLabel, "Label1")});
  auto& label = form.Find<Label>("Label1");
  EXPECT_EQ(form.Find<Control>("Bar(1)").cursor().shape(), Qt::SizeVerCursor);
  EXPECT_EQ(label.cursor().shape(), Qt::ArrowCursor);
  form.setMousePointer(MousePointer::kHourglass);
  EXPECT_EQ(form.Find<Control>("Bar(0)").cursor().shape(), Qt::SizeHorCursor);
  EXPECT_EQ(label.cursor().shape(), Qt::WaitCursor);
  label.setMousePointer(MousePointer::kArrow);
  EXPECT_EQ(label.cursor().shape(), Qt::ArrowCursor);
  form.setMousePointer(MousePointer::kDefault);
  EXPECT_EQ(form.cursor().shape(), Qt::ArrowCursor);
}

}  // namespace
}  // namespace kelvane::testing
