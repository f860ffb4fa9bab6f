#include "platform/Container.h"

#include <QPaintEvent>
#include <QPainter>

#include "platform/Border.h"
#include "shared/Colours.h"

namespace kelvane {

Container::Container(QWidget& widget, ScaleMode scale) : widget_(widget), scale_(scale) {
  widget_.setAttribute(Qt::WA_OpaquePaintEvent);
}

QSize Container::InnerSize() const {
  return widget_.size() - 2 * QSize(borderWidth_, borderWidth_);
}

float Container::ScaleWidth() const {
  return static_cast<float>(InnerSize().width()) * UnitsPerPixel();
}

float Container::ScaleHeight() const {
  return static_cast<float>(InnerSize().height()) * UnitsPerPixel();
}

void Container::setBackColor(QRgb color) {
  if (color == backColor_) return;
  backColor_ = color;
  widget_.update();
}

void Container::setBordered() {
  borderWidth_ = Border::kWidth;
  new Border(widget_, kGrey, backColor_);
}

void Container::PaintBackground(const QPaintEvent& event) {
  QPainter(&widget_).fillRect(event.rect(), QColor(backColor_));
}

}  // namespace kelvane
