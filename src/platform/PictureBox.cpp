#include "platform/PictureBox.h"

#include <QEvent>
#include <QFontMetrics>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "platform/Fonts.h"
#include "platform/HandlerScope.h"

namespace kelvane {
namespace {

// Returns the pixels of a horizontal or vertical line without the last one, and none for a slanting
// line.
QRect LineRect(QPoint first, QPoint last) {
  if (first.y() == last.y()) {
    const int left = first.x() < last.x() ? first.x() : last.x() + 1;
    return {left, first.y(), std::abs(last.x() - first.x()), 1};
  }
  if (first.x() == last.x()) {
    const int top = first.y() < last.y() ? first.y() : last.y() + 1;
    return {first.x(), top, 1, std::abs(last.y() - first.y())};
  }
  return {};
}

}  // namespace

PictureBox::PictureBox(Container& container, const QString& name, ScaleMode scale)
    : Control(container, name), Container(*this, scale) {
  setRole(SpokenRole::kBox);
}

PictureBox& PictureBox::Duplicate(const QString& name) const {
  auto* copy = new PictureBox(container(), name, Scale());
  copy->CopyFrom(*this);
  copy->setBackColor(BackColor());
  copy->printFont_ = printFont_;
  copy->foreColor_ = foreColor_;
  copy->Resize = Resize;
  return *copy;
}

void PictureBox::setBackColor(QRgb color) {
  if (!drawing_.isNull()) Cls();
  Container::setBackColor(color);
}

std::optional<QPoint> PictureBox::PixelOf(float x, float y) const {
  if (std::isnan(x) || std::isnan(y)) return std::nullopt;
  const auto whole = [this](float coordinate) {
    constexpr float kLimit = QWIDGETSIZE_MAX;
    return static_cast<int>(
        std::nearbyint(std::clamp(coordinate / UnitsPerPixel(), -kLimit, kLimit)));
  };
  return QPoint(whole(x), whole(y));
}

// Returns the drawing, grown to the size of the inside. It never shrinks, so that nothing is lost.
QImage& PictureBox::Drawing() {
  const QSize wanted = drawing_.size().expandedTo(InnerSize());
  if (wanted != drawing_.size()) {
    QImage larger(wanted, QImage::Format_RGB32);
    larger.fill(QColor(BackColor()));
    QPainter(&larger).drawImage(0, 0, drawing_);
    drawing_ = larger;
  }
  return drawing_;
}

void PictureBox::Cls() {
  drawing_ = QImage();
  update();
}

void PictureBox::DrawLine(float x1, float y1, float x2, float y2, QRgb color) {
  const std::optional<QPoint> first = PixelOf(x1, y1);
  const std::optional<QPoint> last = PixelOf(x2, y2);
  if (!first || !last) return;
  const QRect pixels = LineRect(*first, *last) & QRect(QPoint(), InnerSize());
  if (pixels.isEmpty()) return;
  QPainter(&Drawing()).fillRect(pixels, QColor(color));
  update(pixels.translated(ContentOrigin()));
}

void PictureBox::PrintAt(float x, float y, const QString& text) {
  const std::optional<QPoint> corner = PixelOf(x, y);
  if (!corner || corner->x() >= InnerSize().width() || corner->y() >= InnerSize().height()) return;
  QPainter painter(&Drawing());
  painter.setFont(printFont_);
  painter.setPen(QColor(foreColor_));
  painter.drawText(*corner + QPoint(0, QFontMetrics(printFont_).ascent()), text);
  update();
}

void PictureBox::SetPrintFont(const QString& family, float points) {
  printFont_ = QFont(family);
  printFont_.setPixelSize(FontPixels(points));
}

// Keeps Qt from sending these events to each control in the box. There may be thousands of
// controls, and none needs them.
bool PictureBox::event(QEvent* event) {
  switch (event->type()) {
    case QEvent::WindowActivate:
    case QEvent::WindowDeactivate:
    case QEvent::WindowBlocked:
    case QEvent::WindowUnblocked:
      return true;
    default:
      return Control::event(event);
  }
}

void PictureBox::SizeChanged() { Raise(this, Resize, Index()); }

void PictureBox::paintEvent(QPaintEvent* event) {
  PaintBackground(*event);
  if (!drawing_.isNull()) QPainter(this).drawImage(ContentOrigin(), drawing_);
  PaintFocus(QRect(ContentOrigin(), InnerSize()));
}

}  // namespace kelvane
