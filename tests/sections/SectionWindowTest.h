#pragma once

#include <string>

#include "sections/Form3.h"
#include "support/DialogAnswers.h"
#include "support/OpenWindowTest.h"
#include "support/Pictures.h"

namespace kelvane::testing {

// The section window as it opens. Nothing should start its tools.
class SectionWindowTest : public OpenWindowTest<Form3> {
 protected:
  ~SectionWindowTest() override {
    EXPECT_EQ(tools_.Runs(), Texts{});
    SectionSourceShortPath.clear();
  }

  PictureBox& Strip() const { return Get<PictureBox>("Picture3", TimeLineStrip); }
  PictureBox& Frame() const { return Get<PictureBox>("Picture3", TimeLineFrame); }
  PictureBox& NeedleBox(Needle needle) const { return Get<PictureBox>("Picture4", needle); }
  PictureBox& Track(int slider) const { return Get<PictureBox>("Picture2", slider); }
  Label& Thumb(int slider) const { return Get<Label>("Label1", slider); }
  std::string Caption(const char* array, int index) const {
    return Get<Label>(array, index).Caption().toStdString();
  }
  // Of a slider's read-out, and of one of the needles'.
  std::string Value(int slider) const { return Caption("Label2", 2 * slider + 1); }
  std::string Time(SectionReadOut readOut) const { return Caption("Label8", readOut); }

  static MouseEvent At(const Control& control, int button, float x, float y = 0) {
    return {.Index = control.Index(), .Button = button, .Shift = 0, .X = x, .Y = y};
  }
  // Presses the control at X, and moves the mouse by that much with the button held.
  static void Drag(Control& control, float by, float pressedAt = 2) {
    control.MouseDown(At(control, kLeftButton, pressedAt));
    control.MouseMove(At(control, kLeftButton, pressedAt + by));
    if (control.MouseUp) control.MouseUp(At(control, kLeftButton, pressedAt));
  }
  // The same, so that its left edge comes to stand there.
  static void DragTo(Control& control, float left) { Drag(control, left - control.Left()); }
  static void MoveOver(Control& control, float x = 1) {
    control.MouseMove(At(control, kNoButton, x));
  }
  // Puts a control where no rule of the window puts one.
  static void Disarrange(Control& control) {
    control.setLeft(11);
    control.setTop(22);
    control.setWidth(33);
    control.setHeight(44);
  }
  void MoveOverTheWindow() const {
    MovePointerOver(*form_->findChild<ContentArea*>(QString(), Qt::FindDirectChildrenOnly));
  }
};

}  // namespace kelvane::testing
