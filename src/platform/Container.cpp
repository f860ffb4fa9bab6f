#include "platform/Container.h"

#include <QPaintEvent>
#include <QPainter>

#include "platform/Border.h"

namespace kelvane {
Container::Container(QWidget* window, ScaleMode scale)
    : Control(nullptr, QString()), scale_(scale) {
  setParent(window);
  setAttribute(Qt::WA_OpaquePaintEvent);
  setRole(SpokenRole::kBox);
}

Container::Container(Container* container, const QString& name, ScaleMode scale)
    : Control(container, name), scale_(scale) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  setRole(SpokenRole::kBox);
}

float Container::ScaleWidth() const {
  return static_cast<float>(width() - 2 * borderWidth_) * UnitsPerPixel();
}

float Container::ScaleHeight() const {
  return static_cast<float>(height() - 2 * borderWidth_) * UnitsPerPixel();
}

void Container::setBackColor(QRgb color) {
  if (color == backColor_) return;
  backColor_ = color;
  update();
}

void Container::setBordered() {
  borderWidth_ = Border::kWidth;
  new Border(*this, backColor_);
}

void Container::paintEvent(QPaintEvent* event) {
  QPainter(this).fillRect(event->rect(), QColor(backColor_));
}

}  // namespace kelvane
