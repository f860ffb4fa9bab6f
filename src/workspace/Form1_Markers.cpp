// The marker bars follow the pointer without any limit. What a bar does to the other bars isn't
// symmetric, on purpose.
#include "platform/Screen.h"
#include "shared/TextHelpers.h"
#include "workspace/Form1.h"

namespace kelvane {
namespace {

// The pixels by which the right bar reaches down over its corner with the base bar.
constexpr float kRightBarOverlap = 5;

}  // namespace

void Form1::Picture2_MouseDown(const MouseEvent& event) {
  DragStartX = ToInteger16(event.X).value_or(DragStartX);
  DragStartY = ToInteger16(event.Y).value_or(DragStartY);
}

void Form1::Picture2_MouseMove(const MouseEvent& event) {
  if (event.Button != kLeftButton) return;
  PictureBox& left = Picture2(LeftBar);
  PictureBox& top = Picture2(TopBar);
  PictureBox& right = Picture2(RightBar);
  PictureBox& base = Picture2(BaseBar);
  switch (event.Index) {
    case LeftBar:
      left.setLeft(left.Left() + event.X - DragStartX);
      top.setLeft(left.Left());
      top.setWidth(right.Left() - left.Left());
      base.setLeft(left.Left());
      base.setWidth(right.Left() - left.Left());
      break;
    case TopBar:
      top.setTop(top.Top() + event.Y - DragStartY);
      left.setTop(top.Top());
      right.setTop(top.Top());
      left.setHeight(base.Top() - top.Top());
      right.setHeight(base.Top() - top.Top() + kRightBarOverlap);
      break;
    case RightBar:
      right.setLeft(right.Left() + event.X - DragStartX);
      top.setWidth(right.Left() - left.Left());
      base.setWidth(right.Left() - left.Left());
      break;
    case BaseBar:
      base.setTop(base.Top() + event.Y - DragStartY);
      left.setHeight(base.Top() - top.Top());
      right.setHeight(base.Top() - top.Top() + kRightBarOverlap);
      break;
  }
}

void Form1::Picture2_MouseUp(const MouseEvent& /*event*/) { Timer1.setEnabled(true); }

// Resets the pointer's shape once, a second after a release.
void Form1::Timer1_Timer() {
  Screen::setMousePointer(MousePointer::kDefault);
  Screen::setMousePointer(MousePointer::kArrow);
  Screen::setMousePointer(MousePointer::kDefault);
  Timer1.setEnabled(false);
}

}  // namespace kelvane
