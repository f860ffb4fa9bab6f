#include "platform/Border.h"

#include <QPainter>
#include <QResizeEvent>

namespace kelvane {

Border::Border(QWidget& control, QRgb gapColor) : QWidget(&control), gapColor_(gapColor) {
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
  setMask(QRegion(rect()) - rect().adjusted(kWidth, kWidth, -kWidth, -kWidth));
}

void Border::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.fillRect(rect(), QColor(gapColor_));
  painter.setPen(Qt::darkGray);
  painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

}  // namespace kelvane
