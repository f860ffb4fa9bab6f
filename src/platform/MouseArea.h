#pragma once

#include <functional>

#include "platform/SpokenWidget.h"

namespace kelvane {

// The mouse buttons of an event: the one that caused a press or release, or the sum of those held
// during a move.
enum MouseButtons : int { kNoButton = 0, kLeftButton = 1, kRightButton = 2, kMiddleButton = 4 };

struct MouseEvent {
  int Index;   // of the control in its array; -1 if it is in none
  int Button;  // MouseButtons
  int Shift;   // 1 Shift, 2 Ctrl, 4 Alt, summed
  // The position from the control's top left corner, in the unit of its container. For a picture
  // box or a content area it is the position from the top left corner of the inside, in the unit of
  // that box or area.
  float X;
  float Y;
};

struct WheelEvent {
  int Index;  // as in a MouseEvent
  int Shift;
  float Notches;  // positive towards the top or the left; a touchpad sends fractions
};

// The pointer shapes that the windows set.
enum class MousePointer : int {
  kDefault = 0,
  kArrow = 1,
  kSizeNorthSouth = 7,
  kSizeWestEast = 9,
  kHourglass = 11
};
QCursor CursorOf(MousePointer pointer);

// Returns the modifier keys held, summed as in MouseEvent::Shift.
int ShiftOf(Qt::KeyboardModifiers modifiers);

// A part of a window that raises mouse events, also for moves without a pressed button. The events
// don't propagate to the parent. A disabled area raises none. A double-click raises MouseDown,
// MouseUp, DblClick, MouseUp.
class MouseArea : public SpokenWidget {
  Q_OBJECT
 public:
  // `name` becomes the object name. In a control array it ends in the index: "Label14(3)".
  MouseArea(QWidget* parent, const QString& name);

  // The index in the control array; -1 if it is in none.
  int Index() const { return index_; }

  // Raised on the user-interface thread. A handler must not delete the area, but may unload the
  // area's form.
  using MouseHandler = std::function<void(const MouseEvent&)>;
  MouseHandler MouseDown;
  MouseHandler MouseMove;
  MouseHandler MouseUp;
  MouseHandler DblClick;
  // Raised by a turn of the wheel in either direction, or by two fingers on a touchpad.
  std::function<void(const WheelEvent&)> MouseWheel;

  // Sends a press in the middle of the area and the release. If `offset` isn't null, sends a move
  // by that many pixels in between. Stops if the area is deleted meanwhile.
  void SendMouse(Qt::MouseButton button, QPoint offset = {});

 protected:
  // Returns how many units of X and Y make a pixel.
  virtual float MouseUnitsPerPixel() const = 0;
  // The point of the widget, in pixels, at which X and Y are 0.
  virtual QPoint MouseOrigin() const { return {}; }

  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  MouseEvent MakeEvent(const QMouseEvent& event, int button) const;
  void RaiseButtonEvent(const MouseHandler& handler, QMouseEvent& event);

  int index_;
};

}  // namespace kelvane
