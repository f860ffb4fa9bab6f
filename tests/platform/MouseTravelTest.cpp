// Where the mouse's events go, and where they don't.
#include <gtest/gtest.h>

#include <QMouseEvent>
#include <utility>

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

  Events Taken() { return std::exchange(events_, {}); }

  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    switch (event->type()) {
      case QEvent::MouseMove:
        events_.emplace_back("move");
        break;
      case QEvent::MouseButtonPress:
        events_.emplace_back("press");
        break;
      case QEvent::MouseButtonRelease:
        events_.emplace_back("release");
        break;
      case QEvent::MouseButtonDblClick:
        events_.emplace_back("double-click");
        break;
      case QEvent::Wheel:
        events_.emplace_back("wheel");
        break;
      case QEvent::ContextMenu:
        events_.emplace_back("context menu");
        break;
      case QEvent::ToolTip:
        events_.emplace_back("tool tip");
        break;
      default:
        break;
    }
    return false;
  }

 private:
  Events events_;
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

struct ClassCase {
  const char* name;
  ControlClass controlClass;
};

void PrintTo(const ClassCase& value, std::ostream* out) { *out << value.name; }

class AnyControl : public ::testing::TestWithParam<ClassCase> {};

TEST_P(AnyControl, LetsNoEventOfTheMouseTravelOnToItsContainer) {
  TestForm form({Design(kPictureBox, "Box", {0, 0, 300, 200}),
                 Design(GetParam().controlClass, "It", {20, 20, 100, 100}).In("Box")});
  form.Open();
  auto& box = form.Find<PictureBox>("Box");
  auto& control = form.Find<Control>("It");
  Events raised;
  Record(box, raised);
  box.setToolTip(u"The box's tip"_s);
  Arrivals atTheBox(box);
  Pointer pointer(form);
  DoEverything(pointer, control, {50, 50});
  EXPECT_EQ(raised, Events{});
  EXPECT_EQ(atTheBox.Taken(), Events{});
  // And the box does have its own.
  pointer.MoveTo(box, {200, 150});
  EXPECT_EQ(atTheBox.Taken(), Events{"move"});
  EXPECT_EQ(raised, Events{"Move -1: button 0 shift 0 at 200,150"});
}

INSTANTIATE_TEST_SUITE_P(
    Platform, AnyControl,
    ::testing::Values(ClassCase{"CommandButton", kCommandButton},
                      ClassCase{"HScrollBar", kHScrollBar}, ClassCase{"Label", kLabel},
                      ClassCase{"PictureBox", kPictureBox}, ClassCase{"ProgressBar", kProgressBar},
                      ClassCase{"Slider", kSlider}, ClassCase{"TextBox", kTextBox},
                      ClassCase{"VScrollBar", kVScrollBar},
                      ClassCase{"WindowsMediaPlayer", kWindowsMediaPlayer}),
    [](const auto& test) { return test.param.name; });

// A label, a box and the form's own area behind a frame and a line.
const Controls kCovered{Design(kLine, "Line1", {0, 20, 300, 1}),
                        Design(kShape, "Shape1", {0, 0, 300, 200}).BorderWidth(50),
                        Design(kLabel, "Label1", {10, 10, 50, 50}),
                        Design(kPictureBox, "Box", {100, 10, 50, 50})};

TEST(ShapesAndLines, LetTheMouseThroughToWhatLiesBehind) {
  TestForm form(kCovered);
  form.Open();
  Arrivals atTheShape(form.Find<Control>("Shape1"));
  Arrivals atTheLine(form.Find<Control>("Line1"));
  Events raised;
  Record(form.Find<Control>("Label1"), raised);
  Record(form.Find<Control>("Box"), raised);
  form.OnMouseMove = [&](const MouseEvent& event) { raised.push_back(Describe("Form", event)); };
  Pointer pointer(form);
  // On the line, on the frame's own pixels, and inside the frame.
  pointer.MoveTo(form, {15, 20});
  pointer.Click();
  pointer.MoveTo(form, {15, 30});
  pointer.MoveTo(form, {120, 20});
  pointer.DoubleClick();
  pointer.MoveTo(form, {120, 55});
  pointer.MoveTo(form, {200, 20});
  EXPECT_EQ(raised,
            (Events{"Move -1: button 0 shift 0 at 5,10", "Down -1: button 1 shift 0 at 5,10",
                    "Up -1: button 1 shift 0 at 5,10", "Move -1: button 0 shift 0 at 5,20",
                    "Move -1: button 0 shift 0 at 20,10", "Down -1: button 1 shift 0 at 20,10",
                    "Up -1: button 1 shift 0 at 20,10", "Double -1: button 1 shift 0 at 20,10",
                    "Up -1: button 1 shift 0 at 20,10", "Move -1: button 0 shift 0 at 20,45",
                    "Form -1: button 0 shift 0 at 200,20"}));
  EXPECT_EQ(atTheShape.Taken(), Events{});
  EXPECT_EQ(atTheLine.Taken(), Events{});
}

TEST(ATransparentLabel, StillTakesTheMouseFromWhatLiesBehind) {
  TestForm form(
      {Design(kLabel, "Front", {0, 0, 50, 50}), Design(kLabel, "Behind", {0, 0, 50, 50})});
  form.Open();
  Events front;
  Events behind;
  Record(form.Find<Control>("Front"), front);
  Record(form.Find<Control>("Behind"), behind);
  Pointer pointer(form);
  pointer.MoveTo(form, {5, 6});
  EXPECT_EQ(front, Events{"Move -1: button 0 shift 0 at 5,6"});
  EXPECT_EQ(behind, Events{});
}

TEST(AHiddenControl, LeavesTheMouseToWhatLiesBehind) {
  TestForm form(
      {Design(kLabel, "Front", {0, 0, 50, 50}).Hidden(), Design(kLabel, "Behind", {0, 0, 50, 50})});
  form.Open();
  Events front;
  Events behind;
  Record(form.Find<Control>("Front"), front);
  Record(form.Find<Control>("Behind"), behind);
  Pointer pointer(form);
  pointer.MoveTo(form, {5, 6});
  EXPECT_EQ(front, Events{});
  EXPECT_EQ(behind, Events{"Move -1: button 0 shift 0 at 5,6"});
}

}  // namespace
}  // namespace kelvane::testing
