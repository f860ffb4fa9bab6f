#pragma once

#include <optional>

#include "platform/Control.h"

namespace kelvane {

// The outline of a rectangle, filled if it has a fill colour. It ignores the mouse: events go to
// the widget behind it.
class Shape : public Control {
  Q_OBJECT
 public:
  Shape(Container& container, const QString& name);

  bool Windowless() const override { return true; }

  QRgb BorderColor() const { return color_; }
  int BorderWidth() const { return borderWidth_; }
  // `width` in pixels.
  void SetBorder(QRgb color, int width);

  // The fill colour; unset while the inside is transparent.
  std::optional<QRgb> FillColor() const { return fillColor_; }
  void setFillColor(QRgb color);

  // Surrounds a control of the same container at a distance of `gap`, in the container's unit.
  void Outline(const Control& control, float gap);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QRgb color_ = 0;
  int borderWidth_ = 1;
  std::optional<QRgb> fillColor_;
};

// A horizontal or vertical line one pixel thick, without the pixel at its right or lower end; a
// slanting one isn't drawn. It ignores the mouse.
class Line : public Control {
  Q_OBJECT
 public:
  Line(Container& container, const QString& name);

  bool Windowless() const override { return true; }

  // Returns a new line like this one in the same container, which owns it. The new line is hidden
  // if the container is on the screen.
  Line& Duplicate(const QString& name) const;

  // The ends, in the container's scale unit. The second may lie before the first. A value that
  // isn't finite has no effect. Left, Top, Width and Height follow the ends; don't assign them.
  float X1() const { return x1_; }
  float Y1() const { return y1_; }
  float X2() const { return x2_; }
  float Y2() const { return y2_; }
  void setX1(float x) { SetEnds(x, y1_, x2_, y2_); }
  void setY1(float y) { SetEnds(x1_, y, x2_, y2_); }
  void setX2(float x) { SetEnds(x1_, y1_, x, y2_); }
  void setY2(float y) { SetEnds(x1_, y1_, x2_, y); }
  void SetEnds(float x1, float y1, float x2, float y2);

  QRgb BorderColor() const { return color_; }
  void setBorderColor(QRgb color);

  // Raises the line to just below the lowest control that isn't Windowless, or to the front if
  // there is none.
  void BringToFront();

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  float x1_ = 0;
  float y1_ = 0;
  float x2_ = 0;
  float y2_ = 0;
  QRgb color_ = 0;
};

}  // namespace kelvane
