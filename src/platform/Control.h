#pragma once

#include "platform/MouseArea.h"

namespace kelvane {

class Container;

// The base of all controls of a form: a place in its container, in the container's scale unit, and
// the mouse. Belongs to the user-interface thread and to its container's widget.
class Control : public MouseArea {
  Q_OBJECT
 public:
  Control(Container& container, const QString& name);

  // In the container's scale unit and single precision. They read back as assigned; only the widget
  // on the screen is rounded to whole pixels. Assigning a negative width or height, or a value that
  // isn't finite, has no effect.
  float Left() const { return left_; }
  float Top() const { return top_; }
  float Width() const { return width_; }
  float Height() const { return height_; }
  void setLeft(float left);
  void setTop(float top);
  void setWidth(float width);
  void setHeight(float height);

  Container& container() const { return *container_; }
  // Moves the control into another container of its form; it is then hidden.
  void setContainer(Container& container);

  bool Visible() const { return !isHidden(); }
  void setMousePointer(MousePointer pointer) { setCursor(CursorOf(pointer)); }

  // Gives the control the keyboard focus.
  void SetFocus() { setFocus(); }

  // True of labels, shapes and lines, which lie behind all other controls of their container.
  virtual bool Windowless() const { return false; }

  // The text of the tool tip, shown without markup; there is no tip if it is empty.
  QString ToolTipText() const { return toolTip(); }
  void setToolTipText(const QString& text) { setToolTip(text); }

 protected:
  // Takes over the place, the pointer's shape, the tool tip and the handlers of another control.
  void CopyFrom(const Control& model);

  // Called when an assignment has changed the widget's size on the screen, before it returns.
  virtual void SizeChanged() {}
  float MouseUnitsPerPixel() const override;
  // Makes a stock widget of Qt's the whole inside of this control, which then owns it. The stock
  // widget gets the mouse events first, and the control those that it ignores. It has no context
  // menu.
  void FillWith(QWidget* stockWidget);

  bool event(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void Assign(float& part, float value);
  void Place();

  Container* container_;
  float left_ = 0;
  float top_ = 0;
  float width_ = 0;
  float height_ = 0;
};

}  // namespace kelvane
