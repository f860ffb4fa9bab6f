#include "platform/Border.h"

#include <QPainter>
#include <QResizeEvent>

namespace kelvane {

Border::Border(QWidget& control, QRgb lineColor, std::optional<QRgb> gapColor)
    : QWidget(&control), lineColor_(lineColor), gapColor_(gapColor) {
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setAttribute(Qt::WA_OpaquePaintEvent);
  setGeometry(control.rect());
  control.installEventFilter(this);
}

bool Border::eventFilter(QObject* /*watched*/, QEvent* event) {
  if (event->type() == QEvent::Resize) resize(static_cast<QResizeEvent*>(event)->size());
  return false;
}

void Border::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  const int width = gapColor_ ? kWidth : 1;
  setMask(QRegion(rect()) - rect().adjusted(width, width, -width, -width));
}

void Border::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  if (gapColor_) painter.fillRect(rect(), QColor(*gapColor_));
  painter.setPen(QColor(lineColor_));
  painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

}  // namespace kelvane
