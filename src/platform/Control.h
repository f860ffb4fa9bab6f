#pragma once

#include <functional>

#include "platform/SpokenWidget.h"

namespace kelvane {

class Container;

// Mouse buttons of an event: the one that caused a press or release, the sum of those held in a
// move.
enum MouseButtons : int { kNoButton = 0, kLeftButton = 1, kRightButton = 2, kMiddleButton = 4 };

struct MouseEvent {
  int Index;   // of the control in its array; -1 for a control that is in none
  int Button;  // MouseButtons
  int Shift;   // 1 Shift, 2 Ctrl, 4 Alt, summed
  float X;     // of the pixel, relative to the control, in its scale unit
  float Y;
};

// Pointer shapes, by the numbers of the MousePointer property.
enum class MousePointer : int {
  kDefault = 0,
  kArrow = 1,
  kSizeNorthSouth = 7,
  kSizeWestEast = 9,
  kHourglass = 11
};
QCursor CursorOf(MousePointer pointer);

// The base of all controls of a form: a place in its container, in the container's scale unit, and
// the mouse. Belongs to the user-interface thread and to its container.
//
// The object name is the control's name in the design with the index of a control array:
// "Label14(3)".
class Control : public SpokenWidget {
  Q_OBJECT
 public:
  // A null container is for a window's own area alone.
  Control(Container* container, const QString& name);

  int Index() const { return index_; }

  // Single precision, and read back as assigned; only the widget on the screen is rounded to whole
  // pixels. A negative or undefined width or height is refused: the control keeps its last size.
  float Left() const { return left_; }
  float Top() const { return top_; }
  float Width() const { return width_; }
  float Height() const { return height_; }
  void setLeft(float left);
  void setTop(float top);
  void setWidth(float width);
  void setHeight(float height);

  // Moves the control into another container of its form; it is then hidden.
  void setContainer(Container& container);

  bool Visible() const { return !isHidden(); }
  void setMousePointer(MousePointer pointer) { setCursor(CursorOf(pointer)); }

  // Gives the control the keyboard.
  void SetFocus() { setFocus(); }

  // Labels, shapes and lines have no window of their own: they lie behind the controls that have.
  virtual bool Windowless() const { return false; }

  // The text that is shown, as it stands, beside a pointer that rests on the control; none if
  // empty.
  QString ToolTipText() const { return toolTip(); }
  void setToolTipText(const QString& text) { setToolTip(text); }

  // Every control tracks the mouse without a button, and none of its events travels on to its
  // container, nor does the container's tool tip show over it. A double-click brings press,
  // release, double-click, release.
  std::function<void(const MouseEvent&)> MouseDown;
  std::function<void(const MouseEvent&)> MouseMove;
  std::function<void(const MouseEvent&)> MouseUp;
  std::function<void(const MouseEvent&)> DblClick;

 protected:
  Container* container() const { return container_; }
  // Takes over the place, the pointer's shape, the tool tip and the handlers of another control.
  void TakeAfter(const Control& model);

  // Called when an assignment has changed the widget's size on the screen, before it returns.
  virtual void SizeChanged() {}
  // Of X and Y.
  virtual float MouseUnitsPerPixel() const;
  // Where in the widget X and Y begin.
  virtual QPoint MouseOrigin() const { return {}; }
  // Makes a stock widget of Qt the whole inside of this control. The mouse is that
  // widget's; the control gets what it leaves. Neither it nor a part of it has a context menu.
  void FillWith(QWidget* stockWidget);

  bool event(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  void Place();
  MouseEvent Arguments(const QMouseEvent& event, int button) const;

  Container* container_;
  int index_ = -1;
  float left_ = 0;
  float top_ = 0;
  float width_ = 0;
  float height_ = 0;
};

}  // namespace kelvane
