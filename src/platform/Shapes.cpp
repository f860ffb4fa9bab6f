#include "platform/Shapes.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace kelvane {

Shape::Shape(Container& container, const QString& name) : Control(container, name) {
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setRole(SpokenRole::kNothing);
}

void Shape::SetBorder(QRgb color, int width) {
  if (color_ == color && borderWidth_ == width) return;
  color_ = color;
  borderWidth_ = width;
  update();
}

void Shape::setFillColor(QRgb color) {
  if (fillColor_ == color) return;
  fillColor_ = color;
  update();
}

void Shape::Outline(const Control& control, float gap) {
  setLeft(control.Left() - gap);
  setTop(control.Top() - gap);
  setWidth(control.Width() + 2 * gap);
  setHeight(control.Height() + 2 * gap);
}

void Shape::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  if (fillColor_) painter.fillRect(rect(), QColor(*fillColor_));
  painter.setPen(QColor(color_));
  for (int inset = 0; inset < borderWidth_; ++inset) {
    painter.drawRect(rect().adjusted(inset, inset, -inset - 1, -inset - 1));
  }
}

Line::Line(Container& container, const QString& name) : Control(container, name) {
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setRole(SpokenRole::kNothing);
  setMinimumSize(1, 1);
}

Line& Line::Duplicate(const QString& name) const {
  auto* copy = new Line(container(), name);
  copy->SetEnds(x1_, y1_, x2_, y2_);
  copy->color_ = color_;
  return *copy;
}

void Line::SetEnds(float x1, float y1, float x2, float y2) {
  if (!std::isfinite(x1) || !std::isfinite(y1) || !std::isfinite(x2) || !std::isfinite(y2)) return;
  x1_ = x1;
  y1_ = y1;
  x2_ = x2;
  y2_ = y2;
  setLeft(std::min(x1, x2));
  setTop(std::min(y1, y2));
  setWidth(std::abs(x2 - x1));
  setHeight(std::abs(y2 - y1));
}

void Line::setBorderColor(QRgb color) {
  if (color_ == color) return;
  color_ = color;
  update();
}

void Line::BringToFront() {
  for (QObject* sibling : parent()->children()) {
    auto* control = qobject_cast<Control*>(sibling);
    if (control == nullptr || control->Windowless()) continue;
    stackUnder(control);
    return;
  }
  raise();
}

// The widget is one pixel thick in the direction in which the line has no extent.
void Line::paintEvent(QPaintEvent* /*event*/) {
  if ((x1_ == x2_) == (y1_ == y2_)) return;
  QPainter(this).fillRect(rect(), QColor(color_));
}

}  // namespace kelvane
