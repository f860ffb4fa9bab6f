#include "platform/Control.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QToolTip>
#include <algorithm>
#include <cmath>

#include "platform/Container.h"
#include "platform/HandlerScope.h"

namespace kelvane {

using namespace Qt::StringLiterals;

namespace {

int WholePixels(float pixels) {
  constexpr float kFarthest = QWIDGETSIZE_MAX;
  return static_cast<int>(std::lround(std::clamp(pixels, -kFarthest, kFarthest)));
}

int ButtonsOf(Qt::MouseButtons buttons) {
  int sum = kNoButton;
  if (buttons.testFlag(Qt::LeftButton)) sum += kLeftButton;
  if (buttons.testFlag(Qt::RightButton)) sum += kRightButton;
  if (buttons.testFlag(Qt::MiddleButton)) sum += kMiddleButton;
  return sum;
}

int ShiftOf(Qt::KeyboardModifiers modifiers) {
  constexpr int kShift = 1;
  constexpr int kCtrl = 2;
  constexpr int kAlt = 4;
  int sum = 0;
  if (modifiers.testFlag(Qt::ShiftModifier)) sum += kShift;
  if (modifiers.testFlag(Qt::ControlModifier)) sum += kCtrl;
  if (modifiers.testFlag(Qt::AltModifier)) sum += kAlt;
  return sum;
}

// "Label14(3)" is 3; "pbar" is -1.
int IndexOf(const QString& name) {
  const qsizetype open = name.indexOf(u'(');
  return open < 0 ? -1 : name.mid(open + 1, name.size() - open - 2).toInt();
}

// The markup that shows a text letter for letter, blanks and line breaks as well.
QString AsItStands(const QString& text) {
  return u"<p style='white-space:pre'>%1</p>"_s.arg(text.toHtmlEscaped());
}

}  // namespace

QCursor CursorOf(MousePointer pointer) {
  switch (pointer) {
    case MousePointer::kSizeNorthSouth:
      return Qt::SizeVerCursor;
    case MousePointer::kSizeWestEast:
      return Qt::SizeHorCursor;
    case MousePointer::kHourglass:
      return Qt::WaitCursor;
    case MousePointer::kDefault:
    case MousePointer::kArrow:
      break;
  }
  return Qt::ArrowCursor;
}

Control::Control(Container* container, const QString& name)
    : SpokenWidget(container), container_(container), index_(IndexOf(name)) {
  setObjectName(name);
  setMouseTracking(true);
}

void Control::setLeft(float left) {
  if (!std::isfinite(left)) return;
  left_ = left;
  Place();
}

void Control::setTop(float top) {
  if (!std::isfinite(top)) return;
  top_ = top;
  Place();
}

void Control::setWidth(float width) {
  if (!std::isfinite(width) || width < 0) return;
  width_ = width;
  Place();
}

void Control::setHeight(float height) {
  if (!std::isfinite(height) || height < 0) return;
  height_ = height;
  Place();
}

void Control::setContainer(Container& container) {
  container_ = &container;
  setParent(&container);
  Place();
}

void Control::TakeAfter(const Control& model) {
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
  // A menu of Qt's would serve the queue, and hold up the handler at whose DoEvents it
  // came up.
  stockWidget->setContextMenuPolicy(Qt::NoContextMenu);
  for (QWidget* part : stockWidget->findChildren<QWidget*>()) {
    part->setContextMenuPolicy(Qt::NoContextMenu);
  }
}

// A control without a tip of its own would ask its container for one, and Qt takes a tip
// that looks like markup for such.
bool Control::event(QEvent* event) {
  switch (event->type()) {
    case QEvent::ToolTip:
      break;
    case QEvent::ShowToParent:
      AnnounceParts(QAccessible::ObjectCreated);
      return SpokenWidget::event(event);
    case QEvent::HideToParent:
      AnnounceParts(QAccessible::ObjectDestroyed);
      return SpokenWidget::event(event);
    default:
      return SpokenWidget::event(event);
  }
  if (!toolTip().isEmpty()) {
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), AsItStands(toolTip()), this);
  }
  return true;
}

void Control::resizeEvent(QResizeEvent* event) {
  SpokenWidget::resizeEvent(event);
  if (StockWidget() != nullptr) StockWidget()->setGeometry(rect());
}

// The place in the control is worked out from the place on the screen now: the control may have
// been moved under the pointer since the event was sent. mapFromGlobal may take that for a place on
// another screen: under a Wayland compositor Qt doesn't know where its windows are.
MouseEvent Control::Arguments(const QMouseEvent& event, int button) const {
  const QPointF inWindow = event.globalPosition() - window()->mapToGlobal(QPointF());
  const QPointF place = mapFrom(window(), inWindow) - MouseOrigin();
  const float unitsPerPixel = MouseUnitsPerPixel();
  return {.Index = index_,
          .Button = button,
          .Shift = ShiftOf(event.modifiers()),
          .X = static_cast<float>(place.x()) * unitsPerPixel,
          .Y = static_cast<float>(place.y()) * unitsPerPixel};
}

void Control::mousePressEvent(QMouseEvent* event) {
  event->accept();
  if (ButtonsOf(event->button()) == kNoButton) return;
  Raise(this, MouseDown, Arguments(*event, ButtonsOf(event->button())));
}

void Control::mouseMoveEvent(QMouseEvent* event) {
  event->accept();
  Raise(this, MouseMove, Arguments(*event, ButtonsOf(event->buttons())));
}

void Control::mouseReleaseEvent(QMouseEvent* event) {
  event->accept();
  if (ButtonsOf(event->button()) == kNoButton) return;
  Raise(this, MouseUp, Arguments(*event, ButtonsOf(event->button())));
}

void Control::mouseDoubleClickEvent(QMouseEvent* event) {
  event->accept();
  if (ButtonsOf(event->button()) == kNoButton) return;
  Raise(this, DblClick, Arguments(*event, ButtonsOf(event->button())));
}

void Control::wheelEvent(QWheelEvent* event) { event->accept(); }

void Control::contextMenuEvent(QContextMenuEvent* event) { event->accept(); }

}  // namespace kelvane
