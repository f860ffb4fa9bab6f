#include "platform/Pointer.h"

#include <QtTest/qtestmouse.h>
#include <QtTest/qtestspontaneevent.h>
#include <QApplication>
#include <QHelpEvent>
#include <QWheelEvent>
#include <QWidget>
#include <QWindow>

namespace kelvane::testing {
namespace {

// The time stamp of the last event, in milliseconds. The presses of two clicks are so far apart
// that Qt doesn't take them for a double click.
int now = 0;
constexpr int kBetweenEvents = 10;
constexpr int kLongAfter = 5000;

}  // namespace

// Qt ignores a move to the place where it last saw the pointer, even if that was over an earlier
// window. So the pointer begins outside the window.
Pointer::Pointer(QWidget& window) : window_(window), place_(-9, -9) {
  Send(QEvent::MouseMove, Qt::NoButton);
}

void Pointer::MoveTo(const QWidget& widget, QPointF place) {
  place_ = widget.mapTo(&window_, place);
  Send(QEvent::MouseMove, Qt::NoButton);
}

void Pointer::Press(Qt::MouseButton button) {
  now += kLongAfter;
  held_.setFlag(button, true);
  Send(QEvent::MouseButtonPress, button);
}

void Pointer::Release(Qt::MouseButton button) {
  held_.setFlag(button, false);
  Send(QEvent::MouseButtonRelease, button);
}

void Pointer::Click(Qt::MouseButton button) {
  Press(button);
  Release(button);
}

void Pointer::DoubleClick(Qt::MouseButton button) {
  Click(button);
  held_.setFlag(button, true);
  Send(QEvent::MouseButtonPress, button);
  Release(button);
}

void Pointer::TurnWheel(QPoint angle) {
  QWheelEvent event(place_, window_.mapToGlobal(place_), QPoint(), angle, held_, keys_,
                    Qt::NoScrollPhase, false);
  QSpontaneKeyEvent::setSpontaneous(&event);
  qApp->notify(window_.windowHandle(), &event);
}

void Pointer::Rest() {
  const QPoint place = place_.toPoint();
  QWidget* under = window_.childAt(place);
  if (under == nullptr) under = &window_;
  QHelpEvent event(QEvent::ToolTip, under->mapFrom(&window_, place), window_.mapToGlobal(place));
  QCoreApplication::sendEvent(under, &event);
}

void Pointer::Send(QEvent::Type type, Qt::MouseButton button) {
  now += kBetweenEvents;
  qt_handleMouseEvent(window_.windowHandle(), place_, window_.mapToGlobal(place_), held_, button,
                      type, keys_, now);
}

}  // namespace kelvane::testing
