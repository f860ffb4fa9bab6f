// Where the mouse's events go, and where they don't.
#include <gtest/gtest.h>

#include <QMetaEnum>
#include <QMouseEvent>

#include "platform/Label.h"
#include "platform/PictureBox.h"
#include "platform/Pointer.h"
#include "platform/TestForm.h"

namespace kelvane::testing {
namespace {

// Writes down the events of the mouse that Qt brings to a widget.
class Arrivals : public QObject {
 public:
  explicit Arrivals(QObject& watched) { watched.installEventFilter(this); }

  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    switch (event->type()) {
      case QEvent::MouseMove:
      case QEvent::MouseButtonPress:
      case QEvent::MouseButtonRelease:
      case QEvent::MouseButtonDblClick:
      case QEvent::Wheel:
      case QEvent::ContextMenu:
      case QEvent::ToolTip:
        events.emplace_back(QMetaEnum::fromType<QEvent::Type>().valueToKey(event->type()));
        break;
      default:
        break;
    }
    return false;
  }

  Events events;
};

// Everything that the mouse can do in one place.
void DoEverything(Pointer& pointer, const QWidget& widget, QPoint place) {
  pointer.MoveTo(widget, place);
  pointer.MoveTo(widget, place + QPoint(1, 1));
  pointer.Rest();
  pointer.Click();
  pointer.DoubleClick();
  pointer.Press(Qt::MiddleButton);
  pointer.MoveTo(widget, place);
  pointer.Release(Qt::MiddleButton);
  pointer.Click(Qt::RightButton);
  pointer.TurnWheel();
}

TEST(MouseEvents, OfAnyControlDoNotReachItsContainer) {
  for (const ControlClass controlClass :
       {kCommandButton, kHScrollBar, kLabel, kListBox, kListView, kOptionButton, kPictureBox,
        kProgressBar, kSlider, kTextBox, kVScrollBar, kWindowsMediaPlayer}) {
    SCOPED_TRACE(static_cast<int>(controlClass));
    TestForm form({Design(kPictureBox, "Box", {0, 0, 300, 200}),
                   Design(controlClass, "It", {20, 20, 100, 100}).In("Box")});
    form.Open();
    auto& box = form.Find<PictureBox>("Box");
    Events raised;
    Record(box, raised);
    box.setToolTip("The box's tip");
    const Arrivals atTheBox(box);
    Pointer pointer(form);
    DoEverything(pointer, form.Find<Control>("It"), {50, 50});
    EXPECT_EQ(raised, Events{});
    EXPECT_EQ(atTheBox.events, Events{});
    // And the box does get its own.
    pointer.MoveTo(box, {200, 150});
    EXPECT_EQ(atTheBox.events, Events{"MouseMove"});
    EXPECT_EQ(raised, Events{"Move at 200,150"});
  }
}

TEST(MouseEvents, PassThroughShapesAndLinesToWhatLiesBehind) {
  TestForm form({Design(kLine, "Line1", {0, 20, 300, 1}),
                 Design(kShape, "Shape1", {0, 0, 300, 200}).BorderWidth(50),
                 Design(kLabel, "Label1", {10, 10, 50, 50}),
                 Design(kPictureBox, "Box", {100, 10, 50, 50})});
  form.Open();
  const Arrivals atTheShape(form.Find<Control>("Shape1"));
  const Arrivals atTheLine(form.Find<Control>("Line1"));
  Events raised;
  Record(form.Find<Control>("Label1"), raised);
  Record(form.Find<Control>("Box"), raised);
  form.OnMouseMove = [&](const MouseEvent& event) { raised.push_back(Describe("Form", event)); };
  Pointer pointer(form);
  // On the line, on the shape's own pixels, and inside the shape.
  pointer.MoveTo(form, {15, 20});
  pointer.Click();
  pointer.MoveTo(form, {15, 30});
  pointer.MoveTo(form, {120, 20});
  pointer.DoubleClick();
  pointer.MoveTo(form, {120, 55});
  pointer.MoveTo(form, {200, 20});
  EXPECT_EQ(raised, (Events{"Move at 5,10", "Down button 1 at 5,10", "Up button 1 at 5,10",
                            "Move at 5,20", "Move at 20,10", "Down button 1 at 20,10",
                            "Up button 1 at 20,10", "Double button 1 at 20,10",
                            "Up button 1 at 20,10", "Move at 20,45", "Form at 200,20"}));
  EXPECT_EQ(atTheShape.events, Events{});
  EXPECT_EQ(atTheLine.events, Events{});
}

TEST(MouseEvents, GoToATransparentLabelInFrontUnlessItIsHidden) {
  TestForm form(
      {Design(kLabel, "Label1(0)", {0, 0, 50, 50}), Design(kLabel, "Label1(1)", {0, 0, 50, 50})});
  form.Open();
  Events raised;
  Record(form.Find<Control>("Label1(0)"), raised);
  Record(form.Find<Control>("Label1(1)"), raised);
  Pointer pointer(form);
  pointer.MoveTo(form, {5, 6});
  form.Find<Control>("Label1(0)").setVisible(false);
  pointer.MoveTo(form, {6, 6});
  EXPECT_EQ(raised, (Events{"Move 0 at 5,6", "Move 1 at 6,6"}));
}

}  // namespace
}  // namespace kelvane::testing
