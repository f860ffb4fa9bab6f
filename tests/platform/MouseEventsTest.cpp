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

// A box in the form, with a bar in it.
const Controls kControls{Design(kPictureBox, "Box", {10, 10, 200, 150}),
                         Design(kPictureBox, "Bar(2)", {40, 20, 20, 100}).In("Box")};

class Mouse : public ::testing::Test {
 protected:
  explicit Mouse(const FormDesign& design = kPixelForm) : form(design, kControls) {
    form.Open();
    Record(box, events);
    Record(bar, events);
  }

  TestForm form;
  PictureBox& box = form.Find<PictureBox>("Box");
  PictureBox& bar = form.Find<PictureBox>("Bar(2)");
  Pointer pointer{form};
  Events events;
};

TEST_F(Mouse, MovesAreToldWithoutAButton) {
  pointer.MoveTo(bar, {3, 4});
  pointer.MoveTo(bar, {5, 6});
  pointer.MoveTo(box, {1, 2});
  EXPECT_EQ(events, (Events{"Move 2: button 0 shift 0 at 3,4", "Move 2: button 0 shift 0 at 5,6",
                            "Move -1: button 0 shift 0 at 1,2"}));
}

TEST_F(Mouse, PlacesAreWholePixelsRoundedDown) {
  pointer.MoveTo(bar, {3.9, 4.0});
  pointer.MoveTo(bar, {3.0, 4.999});
  pointer.Press();
  pointer.MoveTo(bar, {-0.1, -1.9});
  pointer.Release();
  EXPECT_EQ(events, (Events{"Move 2: button 0 shift 0 at 3,4", "Move 2: button 0 shift 0 at 3,4",
                            "Down 2: button 1 shift 0 at 3,4", "Move 2: button 1 shift 0 at -1,-2",
                            "Up 2: button 1 shift 0 at -1,-2"}));
}

TEST_F(Mouse, ADoubleClickBetweenTwoPixelsIsOneOfThePixelUnderIt) {
  pointer.MoveTo(bar, {3, 4});
  pointer.DoubleClick();
  const Events whole = std::exchange(events, {});
  pointer.MoveTo(bar, {3.4, 4.7});
  pointer.DoubleClick();
  EXPECT_EQ(events, whole);
}

TEST_F(Mouse, MovesOverTheFormItselfAreTheForms) {
  form.OnMouseMove = [&](const MouseEvent& event) { events.push_back(Describe("Form", event)); };
  pointer.MoveTo(form, {250, 7});
  EXPECT_EQ(events, (Events{"Form -1: button 0 shift 0 at 250,7"}));
}

TEST_F(Mouse, PressAndReleaseNameTheButtonThatCausedThemAndAMoveTheSumOfThoseHeld) {
  pointer.MoveTo(bar, {3, 4});
  events.clear();
  pointer.Press(Qt::LeftButton);
  pointer.MoveTo(bar, {3, 5});
  pointer.Press(Qt::RightButton);
  pointer.MoveTo(bar, {3, 6});
  pointer.Press(Qt::MiddleButton);
  pointer.MoveTo(bar, {3, 7});
  pointer.Release(Qt::LeftButton);
  pointer.MoveTo(bar, {3, 8});
  pointer.Release(Qt::RightButton);
  pointer.MoveTo(bar, {3, 9});
  pointer.Release(Qt::MiddleButton);
  pointer.MoveTo(bar, {3, 10});
  EXPECT_EQ(events, (Events{"Down 2: button 1 shift 0 at 3,4", "Move 2: button 1 shift 0 at 3,5",
                            "Down 2: button 2 shift 0 at 3,5", "Move 2: button 3 shift 0 at 3,6",
                            "Down 2: button 4 shift 0 at 3,6", "Move 2: button 7 shift 0 at 3,7",
                            "Up 2: button 1 shift 0 at 3,7", "Move 2: button 6 shift 0 at 3,8",
                            "Up 2: button 2 shift 0 at 3,8", "Move 2: button 4 shift 0 at 3,9",
                            "Up 2: button 4 shift 0 at 3,9", "Move 2: button 0 shift 0 at 3,10"}));
}

TEST_F(Mouse, AButtonBeyondTheThreeIsNeitherPressedNorReleased) {
  pointer.MoveTo(bar, {3, 4});
  events.clear();
  pointer.Press(Qt::BackButton);
  pointer.MoveTo(bar, {3, 5});
  pointer.Release(Qt::BackButton);
  EXPECT_EQ(events, (Events{"Move 2: button 0 shift 0 at 3,5"}));
}

TEST_F(Mouse, ShiftIsTheSumOfTheKeysHeld) {
  struct Case {
    Qt::KeyboardModifiers keys;
    int shift;
  };
  pointer.MoveTo(bar, {3, 4});
  for (const auto& [keys, shift] : {Case{Qt::NoModifier, 0},
                                    {Qt::ShiftModifier, 1},
                                    {Qt::ControlModifier, 2},
                                    {Qt::AltModifier, 4},
                                    {Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier, 7},
                                    {Qt::MetaModifier | Qt::KeypadModifier, 0}}) {
    events.clear();
    pointer.Hold(keys);
    pointer.Click();
    pointer.MoveTo(bar, {5, 6});
    pointer.MoveTo(bar, {3, 4});
    const std::string text = std::to_string(shift);
    EXPECT_EQ(events, (Events{"Down 2: button 1 shift " + text + " at 3,4",
                              "Up 2: button 1 shift " + text + " at 3,4",
                              "Move 2: button 0 shift " + text + " at 5,6",
                              "Move 2: button 0 shift " + text + " at 3,4"}));
  }
}

TEST_F(Mouse, ADoubleClickIsPressReleaseDoubleClickRelease) {
  pointer.MoveTo(bar, {3, 4});
  events.clear();
  pointer.DoubleClick();
  EXPECT_EQ(events, (Events{"Down 2: button 1 shift 0 at 3,4", "Up 2: button 1 shift 0 at 3,4",
                            "Double 2: button 1 shift 0 at 3,4", "Up 2: button 1 shift 0 at 3,4"}));
}

TEST_F(Mouse, TwoClicksFarApartAreNoDoubleClick) {
  pointer.MoveTo(bar, {3, 4});
  events.clear();
  pointer.Click();
  pointer.Click();
  EXPECT_EQ(events, (Events{"Down 2: button 1 shift 0 at 3,4", "Up 2: button 1 shift 0 at 3,4",
                            "Down 2: button 1 shift 0 at 3,4", "Up 2: button 1 shift 0 at 3,4"}));
}

TEST_F(Mouse, MovesWithAButtonHeldGoToThePressedControlBeyondItsEdges) {
  pointer.MoveTo(bar, {3, 4});
  events.clear();
  pointer.Press();
  pointer.MoveTo(bar, {-20, 150});
  pointer.Release();
  EXPECT_EQ(events,
            (Events{"Down 2: button 1 shift 0 at 3,4", "Move 2: button 1 shift 0 at -20,150",
                    "Up 2: button 1 shift 0 at -20,150"}));
}

TEST_F(Mouse, ABarThatMovesUnderThePointerIsFollowedByIt) {
  bar.MouseMove = [this](const MouseEvent& event) {
    events.push_back(Describe("Move", event));
    if (event.Button == kLeftButton) bar.setLeft(bar.Left() + event.X - 3);
  };
  pointer.MoveTo(bar, {3, 4});
  pointer.Press();
  for (const int x : {50, 70, 20}) {
    pointer.MoveTo(box, QPoint(x, 30));
    EXPECT_EQ(bar.Left(), static_cast<float>(x - 3));
  }
  EXPECT_EQ(events,
            (Events{"Move 2: button 0 shift 0 at 3,4", "Down 2: button 1 shift 0 at 3,4",
                    "Move 2: button 1 shift 0 at 10,10", "Move 2: button 1 shift 0 at 23,10",
                    "Move 2: button 1 shift 0 at -47,10"}));
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
  EXPECT_EQ(events, (Events{"Move 2: button 1 shift 0 at 5,7"}));
}

TEST_F(Mouse, AControlThatNobodyListensToTakesItsEventsQuietly) {
  bar.MouseDown = nullptr;
  bar.MouseMove = nullptr;
  bar.MouseUp = nullptr;
  bar.DblClick = nullptr;
  pointer.MoveTo(bar, {3, 4});
  pointer.DoubleClick();
  EXPECT_EQ(events, Events{});
}

// The unit of X and Y is that of the place that a control is in; of a box, its own.
TEST(MousePlaces, AreInTheControlsScaleUnit) {
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
    EXPECT_EQ(events, (Events{"Move -1: button 0 shift 0 at " + place + "," + place})) << name;
  }
  Events events;
  form.OnMouseMove = [&](const MouseEvent& event) { events.push_back(Describe("Form", event)); };
  pointer.MoveTo(form, {290, 7});
  EXPECT_EQ(events, (Events{"Form -1: button 0 shift 0 at 4350,105"}));
}

TEST(MousePlaces, InTwipsAreWholeForEveryPixel) {
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

TEST(ThePointersShape, IsTheControlsOwnOrElseThatOfWhatItIsIn) {
  TestForm form({Design(kPictureBox, "Bar(0)").Pointer(MousePointer::kSizeWestEast),
                 Design(kPictureBox, "Bar(1)").Pointer(MousePointer::kSizeNorthSouth),
                 Design(kLabel, "Label1")});
  const auto shape = [&form](const char* name) {
    return form.Find<Control>(name).cursor().shape();
  };
  EXPECT_EQ(shape("Bar(0)"), Qt::SizeHorCursor);
  EXPECT_EQ(shape("Bar(1)"), Qt::SizeVerCursor);
  EXPECT_EQ(shape("Label1"), Qt::ArrowCursor);
  form.setMousePointer(MousePointer::kHourglass);
  EXPECT_EQ(shape("Bar(0)"), Qt::SizeHorCursor);
  EXPECT_EQ(shape("Label1"), Qt::WaitCursor);
  form.setMousePointer(MousePointer::kDefault);
  EXPECT_EQ(shape("Label1"), Qt::ArrowCursor);
  form.Find<Control>("Label1").setMousePointer(MousePointer::kArrow);
  form.setMousePointer(MousePointer::kHourglass);
  EXPECT_EQ(shape("Label1"), Qt::ArrowCursor);
}

}  // namespace
}  // namespace kelvane::testing
