#pragma once

#include "platform/Control.h"

namespace kelvane {

// The outline of a rectangle. Never takes the mouse: what lies behind it does.
class Shape : public Control {
  Q_OBJECT
 public:
  Shape(Container* container, const QString& name);

  QRgb BorderColor() const { return color_; }
  int BorderWidth() const { return borderWidth_; }
  // `width` in pixels.
  void SetBorder(QRgb color, int width);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QRgb color_ = 0;
  int borderWidth_ = 1;
};

// A level line one pixel thick along the top of its place. Never takes the mouse.
class Line : public Control {
  Q_OBJECT
 public:
  Line(Container* container, const QString& name);

  QRgb BorderColor() const { return color_; }
  void setBorderColor(QRgb color);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QRgb color_ = 0;
};

}  // namespace kelvane
