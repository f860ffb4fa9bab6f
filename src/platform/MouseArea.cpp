#include "platform/MouseArea.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QPointer>
#include <cstdlib>

#include "platform/HandlerScope.h"

namespace kelvane {
namespace {

// Returns a sum of MouseButtons, whose numbers are those of Qt::MouseButton.
int ButtonsOf(Qt::MouseButtons buttons) {
  return static_cast<int>(buttons & (Qt::LeftButton | Qt::RightButton | Qt::MiddleButton));
}

// Returns 3 for "Label14(3)" and -1 for "pbar".
int IndexOf(const QString& name) {
  const qsizetype open = name.indexOf(u'(');
  return open < 0 ? -1 : name.mid(open + 1, name.size() - open - 2).toInt();
}

}  // namespace

// Qt has Shift, Ctrl and Alt in three adjacent bits, in that order.
int ShiftOf(Qt::KeyboardModifiers modifiers) {
  constexpr auto kReported = Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier;
  return static_cast<int>((modifiers & kReported).toInt() / Qt::ShiftModifier);
}

QCursor CursorOf(MousePointer pointer) {
  if (pointer == MousePointer::kSizeNorthSouth) return Qt::SizeVerCursor;
  if (pointer == MousePointer::kSizeWestEast) return Qt::SizeHorCursor;
  return pointer == MousePointer::kHourglass ? Qt::WaitCursor : Qt::ArrowCursor;
}

MouseArea::MouseArea(QWidget* parent, const QString& name)
    : SpokenWidget(parent), index_(IndexOf(name)) {
  setObjectName(name);
  setMouseTracking(true);
  // Otherwise a disabled area's events would go to its parent.
  setAttribute(Qt::WA_NoMousePropagation);
}

// The position in the widget is computed from the one on the screen, since the widget may have been
// moved under the pointer after the event was sent. Under Wayland Qt doesn't know where its windows
// are. The event's position has the same error as the window's corner, so the difference is right,
// while mapFromGlobal may take the position to be on another screen.
MouseEvent MouseArea::MakeEvent(const QMouseEvent& event, int button) const {
  const QPointF inWindow = event.globalPosition() - window()->mapToGlobal(QPointF());
  const QPointF position = mapFrom(window(), inWindow) - MouseOrigin();
  const float unitsPerPixel = MouseUnitsPerPixel();
  return {.Index = index_,
          .Button = button,
          .Shift = ShiftOf(event.modifiers()),
          .X = static_cast<float>(position.x()) * unitsPerPixel,
          .Y = static_cast<float>(position.y()) * unitsPerPixel};
}

void MouseArea::RaiseButtonEvent(const MouseHandler& handler, QMouseEvent& event) {
  event.accept();
  const int button = ButtonsOf(event.button());
  if (button != kNoButton) Raise(this, handler, MakeEvent(event, button));
}

void MouseArea::mousePressEvent(QMouseEvent* event) { RaiseButtonEvent(MouseDown, *event); }

void MouseArea::mouseMoveEvent(QMouseEvent* event) {
  event->accept();
  Raise(this, MouseMove, MakeEvent(*event, ButtonsOf(event->buttons())));
}

void MouseArea::mouseReleaseEvent(QMouseEvent* event) { RaiseButtonEvent(MouseUp, *event); }

void MouseArea::mouseDoubleClickEvent(QMouseEvent* event) { RaiseButtonEvent(DblClick, *event); }

void MouseArea::wheelEvent(QWheelEvent* event) {
  event->accept();
  const QPoint angle = event->angleDelta();
  const int delta = std::abs(angle.x()) > std::abs(angle.y()) ? angle.x() : angle.y();
  if (delta == 0) return;  // as when the fingers leave a touchpad
  constexpr float kNotch = QWheelEvent::DefaultDeltasPerStep;
  Raise(this, MouseWheel,
        WheelEvent{.Index = index_,
                   .Shift = ShiftOf(event->modifiers()),
                   .Notches = static_cast<float>(delta) / kNotch});
}

void MouseArea::contextMenuEvent(QContextMenuEvent* event) { event->accept(); }

void MouseArea::SendMouse(Qt::MouseButton button, QPoint offset) {
  const QPointer<MouseArea> alive(this);
  const QPoint begin = mapToGlobal(rect().center());
  const auto send = [&](QEvent::Type type, QPoint position, Qt::MouseButton cause,
                        Qt::MouseButtons held) {
    if (alive == nullptr) return;
    QMouseEvent event(type, mapFromGlobal(position), position, cause, held, Qt::NoModifier);
    QCoreApplication::sendEvent(this, &event);
  };
  send(QEvent::MouseButtonPress, begin, button, button);
  if (!offset.isNull()) send(QEvent::MouseMove, begin + offset, Qt::NoButton, button);
  send(QEvent::MouseButtonRelease, begin + offset, button, Qt::NoButton);
}

}  // namespace kelvane
