#pragma once

#include <string>

#include "sections/Form3.h"
#ifdef KELVANE_STABILISER
#include "stabiliser/Stabiliser.h"
#endif
#include "support/DialogAnswers.h"
#include "support/Events.h"
#include "support/OpenWindowTest.h"
#include "support/Pictures.h"

namespace kelvane::testing {

// The tests of what is true of both windows are built twice, once for each.
#ifdef KELVANE_STABILISER
using SectionWindow = Stabiliser;
#else
using SectionWindow = Form3;
#endif

// The open section window. A test fails if the window runs a tool.
class SectionWindowTest : public OpenWindowTest<SectionWindow> {
 protected:
  ~SectionWindowTest() override {
    EXPECT_EQ(tools_.Runs(), Texts{});
    SectionSourceShortPath.clear();
  }

  PictureBox& Strip() const { return Get<PictureBox>("Picture3", TimeLineStrip); }
  PictureBox& Frame() const { return Get<PictureBox>("Picture3", TimeLineFrame); }
  PictureBox& NeedleBox(Needle needle) const { return Get<PictureBox>("Picture4", needle); }
  Label& ArrowButton(Arrow arrow) const { return Get<Label>("Label7", arrow); }
  PictureBox& Track(int slider) const { return Get<PictureBox>("Picture2", slider); }
  Label& Thumb(int slider) const { return Get<Label>("Label1", slider); }
  Shape& ThumbOutline(int slider) const { return Get<Shape>("Shape2", slider); }
  // The read-out of a slider.
  std::string Value(int slider) const {
    return Get<Label>("Label2", OptionReadOut(slider)).Caption().toStdString();
  }
  std::string Time(SectionReadOut readOut) const {
    return Get<Label>("Label8", readOut).Caption().toStdString();
  }

  static MouseEvent At(const Control& control, int button, float x) {
    return {.Index = control.Index(), .Button = button, .Shift = 0, .X = x, .Y = 0};
  }
  // Presses the control at `pressedAt`, moves the pointer to `movedTo` with the left button held,
  // and releases it. Both places are in the control's units.
  static void Drag(Control& control, float pressedAt, float movedTo) {
    control.MouseDown(At(control, kLeftButton, pressedAt));
    control.MouseMove(At(control, kLeftButton, movedTo));
    if (control.MouseUp) control.MouseUp(At(control, kLeftButton, pressedAt));
  }
  // Drags the control to the right by 50.5 pixels; the pointer rests between two pixels.
  static void DragBetweenPixels(Control& control) {
    ServePendingEvents();
    const QPointF start = control.mapToGlobal(QPointF(2.4, 5.7));
    const QPointF there = start + QPointF(50.5, 0);
    DragThrough(control, {start, start, start, there, there, there});
  }
  // Drags the control until its left edge is at `left`.
  static void DragTo(Control& control, float left) { Drag(control, 2, 2 + left - control.Left()); }
  // Moves the outline of a thumb to a place where the window never puts it.
  void MoveOutlineAway(int slider) const {
    Shape& outline = ThumbOutline(slider);
    outline.setLeft(11);
    outline.setTop(22);
    outline.setWidth(33);
    outline.setHeight(44);
  }
  // Expects that the thumb's outline surrounds a thumb whose left edge is at `left`.
  void ExpectOutlineAround(int slider, float left) const {
    const Shape& outline = ThumbOutline(slider);
    EXPECT_EQ(outline.Left(), left - 1);
    EXPECT_EQ(outline.Top(), -1);
    EXPECT_EQ(outline.Width(), 137);
    EXPECT_EQ(outline.Height(), 377);
  }
  static void MoveOver(Control& control, float x = 1) {
    control.MouseMove(At(control, kNoButton, x));
  }
  void MoveOverTheWindow() const {
    MovePointerOver(*form_->findChild<ContentArea*>(QString(), Qt::FindDirectChildrenOnly));
  }
};

}  // namespace kelvane::testing
