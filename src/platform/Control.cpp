#include "platform/Control.h"

#include <QHelpEvent>
#include <QToolTip>
#include <algorithm>
#include <cmath>

#include "platform/Container.h"

namespace kelvane {

using namespace Qt::StringLiterals;

namespace {

int WholePixels(float pixels) {
  constexpr float kFarthest = QWIDGETSIZE_MAX;
  return static_cast<int>(std::lround(std::clamp(pixels, -kFarthest, kFarthest)));
}

// The markup that shows a text letter for letter, blanks and line breaks as well.
QString AsMarkup(const QString& text) {
  return u"<p style='white-space:pre'>%1</p>"_s.arg(text.toHtmlEscaped());
}

}  // namespace

Control::Control(Container& container, const QString& name)
    : MouseArea(&container.Widget(), name), container_(&container) {}

void Control::setLeft(float left) { Assign(left_, left); }

void Control::setTop(float top) { Assign(top_, top); }

void Control::setWidth(float width) {
  if (width >= 0) Assign(width_, width);
}

void Control::setHeight(float height) {
  if (height >= 0) Assign(height_, height);
}

void Control::Assign(float& part, float value) {
  if (!std::isfinite(value)) return;
  part = value;
  Place();
}

void Control::setContainer(Container& container) {
  container_ = &container;
  setParent(&container.Widget());
  Place();
}

void Control::CopyFrom(const Control& model) {
  setRole(model.Role());
  left_ = model.left_;
  top_ = model.top_;
  width_ = model.width_;
  height_ = model.height_;
  setGeometry(model.geometry());
  setCursor(model.cursor());
  setToolTip(model.toolTip());
  MouseDown = model.MouseDown;
  MouseMove = model.MouseMove;
  MouseUp = model.MouseUp;
  DblClick = model.DblClick;
}

void Control::Place() {
  const float unitsPerPixel = container_->UnitsPerPixel();
  const QRect before = geometry();
  const QPoint corner(WholePixels(left_ / unitsPerPixel), WholePixels(top_ / unitsPerPixel));
  setGeometry(
      QRect(container_->ContentOrigin() + corner,
            QSize(WholePixels(width_ / unitsPerPixel), WholePixels(height_ / unitsPerPixel))));
  if (pos() != before.topLeft() && IsBar()) AnnounceValue();
  if (size() != before.size()) SizeChanged();
}

float Control::MouseUnitsPerPixel() const { return container_->UnitsPerPixel(); }

void Control::FillWith(QWidget* stockWidget) {
  SpeakAs(stockWidget);
  stockWidget->setParent(this);
  stockWidget->setGeometry(rect());
  // What lies behind an opaque control needn't be painted for it, nor it for what lies behind.
  setAttribute(Qt::WA_OpaquePaintEvent, stockWidget->testAttribute(Qt::WA_OpaquePaintEvent));
  // A context menu of Qt's runs an event loop: a handler whose DoEvents opens one wouldn't go on
  // before it is closed.
  stockWidget->setContextMenuPolicy(Qt::NoContextMenu);
  for (QWidget* part : stockWidget->findChildren<QWidget*>()) {
    part->setContextMenuPolicy(Qt::NoContextMenu);
  }
}

// Without this a control that has no tip would show its container's, and Qt would take a text that
// looks like markup for markup.
bool Control::event(QEvent* event) {
  if (event->type() == QEvent::ShowToParent) AnnounceParts(QAccessible::ObjectCreated);
  if (event->type() == QEvent::HideToParent) AnnounceParts(QAccessible::ObjectDestroyed);
  if (event->type() != QEvent::ToolTip) return MouseArea::event(event);
  if (!toolTip().isEmpty()) {
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), AsMarkup(toolTip()), this);
  }
  return true;
}

void Control::resizeEvent(QResizeEvent* event) {
  MouseArea::resizeEvent(event);
  if (StockWidget() != nullptr) StockWidget()->setGeometry(rect());
}

}  // namespace kelvane
