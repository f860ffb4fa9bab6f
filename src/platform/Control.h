#pragma once

#include "platform/MouseArea.h"

class QFocusEvent;

namespace kelvane {

class Border;
class Container;

struct KeyEvent {
  int Index;  // of the control in its array; -1 if it is in none
  int Key;    // Qt::Key
  int Shift;  // as in a MouseEvent
};

// The base of all controls of a form, with a position and size in a container and with the mouse's
// events. Belongs to the user-interface thread. The container's widget owns it.
class Control : public MouseArea {
  Q_OBJECT
 public:
  Control(Container& container, const QString& name);

  // The position and size, in the container's scale unit and single precision. They are returned as
  // they were assigned; only the widget on the screen is rounded to whole pixels. Assigning a
  // negative width or height, or a value that isn't finite, has no effect.
  float Left() const { return left_; }
  float Top() const { return top_; }
  float Width() const { return width_; }
  float Height() const { return height_; }
  void setLeft(float left);
  void setTop(float top);
  void setWidth(float width);
  void setHeight(float height);

  Container& container() const { return *container_; }
  // Moves the control into another container of its form. If that container is on the screen, this
  // hides the control.
  void setContainer(Container& container);

  bool Visible() const { return !isHidden(); }
  void setMousePointer(MousePointer pointer) { setCursor(CursorOf(pointer)); }

  // Gives the control the keyboard focus.
  void SetFocus() { setFocus(); }
  // Lets the user give a label or a picture box the keyboard focus by Tab or Shift+Tab and, with
  // the default policy, by a press of the mouse. A frame shows the focus, unless it came by the
  // mouse or by SetFocus. Space and Enter then click a control whose role is kCommand, as a screen
  // reader does when it presses the control.
  void setTakesKeyboard(Qt::FocusPolicy policy = Qt::StrongFocus) { setFocusPolicy(policy); }
  // Raised by a key, also while the key repeats, if the focus is on the control or on a widget in
  // it that doesn't handle the key. The handler returns whether it has handled the key.
  std::function<bool(const KeyEvent&)> KeyDown;

  // Returns true for labels, shapes and lines: Line::BringToFront raises a line above these alone.
  virtual bool Windowless() const { return false; }

  // The text of the tool tip, shown literally; there is no tip if it is empty.
  QString ToolTipText() const { return toolTip(); }
  void setToolTipText(const QString& text) { setToolTip(text); }

 protected:
  // Copies the position, size, role, cursor, tool tip and handlers of another control, and
  // whether it takes the keyboard.
  void CopyFrom(const Control& other);

  // Called before an assignment returns, if it has changed the widget's size in pixels.
  virtual void SizeChanged() {}
  float MouseUnitsPerPixel() const override;
  // Makes a Qt widget fill this control, which takes ownership of it. The Qt widget gets the mouse
  // events first, and the control gets those that the Qt widget ignores. The Qt widget loses its
  // context menu, and a frame shows that it has the focus, as described at setTakesKeyboard.
  void FillWith(QWidget* stockWidget);

  // Draws a frame along the edges of `place` if the control has the keyboard focus and shows it.
  void PaintFocus(const QRect& place);

  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void Assign(float& part, float value);
  void Place();
  void NoteFocus(const QFocusEvent& event);

  Container* container_;
  float left_ = 0;
  float top_ = 0;
  float width_ = 0;
  float height_ = 0;
  bool showsFocus_ = false;
  Border* stockFocus_ = nullptr;  // the Qt widget's focus frame; null until first shown
};

}  // namespace kelvane
