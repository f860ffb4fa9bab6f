#include "platform/Control.h"

#include <QAbstractScrollArea>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QToolTip>
#include <algorithm>
#include <cmath>

#include "platform/Border.h"
#include "platform/Container.h"
#include "platform/HandlerScope.h"
#include "shared/Colours.h"

namespace kelvane {

using namespace Qt::StringLiterals;

namespace {

int RoundToPixels(float pixels) {
  constexpr float kLimit = QWIDGETSIZE_MAX;
  return static_cast<int>(std::lround(std::clamp(pixels, -kLimit, kLimit)));
}

// Returns HTML that shows a text literally, including blanks and line breaks.
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

void Control::CopyFrom(const Control& other) {
  setRole(other.Role());
  left_ = other.left_;
  top_ = other.top_;
  width_ = other.width_;
  height_ = other.height_;
  setGeometry(other.geometry());
  setCursor(other.cursor());
  setToolTip(other.toolTip());
  MouseDown = other.MouseDown;
  MouseMove = other.MouseMove;
  MouseUp = other.MouseUp;
  DblClick = other.DblClick;
  MouseWheel = other.MouseWheel;
  KeyDown = other.KeyDown;
  setFocusPolicy(other.focusPolicy());
}

void Control::Place() {
  const float unitsPerPixel = container_->UnitsPerPixel();
  const QRect before = geometry();
  const QPoint corner(RoundToPixels(left_ / unitsPerPixel), RoundToPixels(top_ / unitsPerPixel));
  setGeometry(
      QRect(container_->ContentOrigin() + corner,
            QSize(RoundToPixels(width_ / unitsPerPixel), RoundToPixels(height_ / unitsPerPixel))));
  if (pos() != before.topLeft() && IsBar()) AnnounceValue();
  if (size() != before.size()) SizeChanged();
}

float Control::MouseUnitsPerPixel() const { return container_->UnitsPerPixel(); }

void Control::FillWith(QWidget* stockWidget) {
  setStockWidget(stockWidget);
  stockWidget->installEventFilter(this);
  stockWidget->setParent(this);
  stockWidget->setGeometry(rect());
  // Lets Qt repaint an opaque control without its parent, and the parent without the control.
  setAttribute(Qt::WA_OpaquePaintEvent, stockWidget->testAttribute(Qt::WA_OpaquePaintEvent));
  // Qt's context menus run a nested event loop: if a handler's call of DoEvents opened one, the
  // handler would be blocked until the user closes the menu.
  stockWidget->setContextMenuPolicy(Qt::NoContextMenu);
  for (QWidget* part : stockWidget->findChildren<QWidget*>()) {
    part->setContextMenuPolicy(Qt::NoContextMenu);
  }
}

// Tells a screen reader when the control is shown or hidden, and shows the control's own tip
// literally. By default Qt shows the container's tip for a control without one, and renders a text
// that looks like markup as markup.
bool Control::event(QEvent* event) {
  if (event->type() == QEvent::ShowToParent) AnnounceNodes(QAccessible::ObjectCreated);
  if (event->type() == QEvent::HideToParent) AnnounceNodes(QAccessible::ObjectDestroyed);
  if (event->type() != QEvent::ToolTip) return MouseArea::event(event);
  if (!toolTip().isEmpty()) {
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), AsMarkup(toolTip()), this);
  }
  return true;
}

void Control::keyPressEvent(QKeyEvent* event) {
  const KeyEvent key{.Index = Index(), .Key = event->key(), .Shift = ShiftOf(event->modifiers())};
  if (KeyDown) {
    const HandlerScope scope(this);
    if (KeyDown(key)) return;
  }
  const bool fires =
      key.Key == Qt::Key_Space || key.Key == Qt::Key_Return || key.Key == Qt::Key_Enter;
  if (Role() != SpokenRole::kCommand || !fires || key.Shift != 0) {
    MouseArea::keyPressEvent(event);
  } else if (!event->isAutoRepeat()) {
    SendMouse(Qt::LeftButton);
  }
}

void Control::focusInEvent(QFocusEvent* event) {
  NoteFocus(*event);
  MouseArea::focusInEvent(event);
}

void Control::NoteFocus(const QFocusEvent& event) {
  // All reasons but these four, such as the window's activation, leave `showsFocus_` as it was.
  const auto isOneOf = [&event](auto... reasons) { return ((event.reason() == reasons) || ...); };
  if (isOneOf(Qt::TabFocusReason, Qt::BacktabFocusReason)) showsFocus_ = true;
  if (isOneOf(Qt::MouseFocusReason, Qt::OtherFocusReason)) showsFocus_ = false;
}

bool Control::eventFilter(QObject* watched, QEvent* event) {
  const bool gainsFocus = event->type() == QEvent::FocusIn;
  if (watched == StockWidget() && (gainsFocus || event->type() == QEvent::FocusOut)) {
    if (gainsFocus) NoteFocus(*static_cast<QFocusEvent*>(event));
    const bool showsFrame = gainsFocus && showsFocus_;
    if (showsFrame && stockFocus_ == nullptr) {
      // Lists and tables have a frame of Qt's own, so their focus frame is two pixels thick.
      const bool isList = qobject_cast<QAbstractScrollArea*>(StockWidget()) != nullptr;
      stockFocus_ = new Border(*this, kWhite, isList ? std::optional(kWhite) : std::nullopt);
    }
    if (stockFocus_ != nullptr) stockFocus_->setVisible(showsFrame);
  }
  return MouseArea::eventFilter(watched, event);
}

void Control::PaintFocus(const QRect& place) {
  if (!showsFocus_ || !hasFocus()) return;
  QPainter painter(this);
  painter.setPen(QColor(kWhite));
  painter.drawRect(place.adjusted(0, 0, -1, -1));
}

void Control::resizeEvent(QResizeEvent* event) {
  MouseArea::resizeEvent(event);
  if (StockWidget() != nullptr) StockWidget()->setGeometry(rect());
}

}  // namespace kelvane
