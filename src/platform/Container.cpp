#include "platform/Container.h"

#include <QPaintEvent>
#include <QPainter>

#include "platform/Colours.h"

namespace kelvane {
namespace {
constexpr int kBorderWidth = 2;
}

Container::Container(QWidget* window, ScaleMode scale)
    : Control(nullptr, QString()), scale_(scale) {
  setParent(window);
  setAttribute(Qt::WA_OpaquePaintEvent);
}

Container::Container(Container* container, const QString& name, ScaleMode scale)
    : Control(container, name), scale_(scale) {
  setAttribute(Qt::WA_OpaquePaintEvent);
}

void Container::setBackColor(QRgb color) {
  if (color == backColor_) return;
  backColor_ = color;
  update();
}

void Container::setBordered() {
  borderWidth_ = kBorderWidth;
  update();
}

void Container::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  painter.fillRect(event->rect(), QColor(backColor_));
  if (borderWidth_ == 0) return;
  // The outer pixel is the line on show, the inner one a gap to what lies inside.
  painter.setPen(QColor(kGrey));
  painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

}  // namespace kelvane
