#include "platform/Shapes.h"

#include <QPainter>

#include "platform/Container.h"

namespace kelvane {

Shape::Shape(Container* container, const QString& name) : Control(container, name) {
  setAttribute(Qt::WA_TransparentForMouseEvents);
}

void Shape::SetBorder(QRgb color, int width) {
  if (color_ == color && borderWidth_ == width) return;
  color_ = color;
  borderWidth_ = width;
  update();
}

void Shape::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setPen(QColor(color_));
  for (int inset = 0; inset < borderWidth_; ++inset) {
    painter.drawRect(rect().adjusted(inset, inset, -inset - 1, -inset - 1));
  }
}

Line::Line(Container* container, const QString& name) : Control(container, name) {
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setMinimumHeight(1);
}

void Line::setBorderColor(QRgb color) {
  if (color_ == color) return;
  color_ = color;
  update();
}

void Line::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.fillRect(0, 0, width(), 1, QColor(color_));
}

}  // namespace kelvane
