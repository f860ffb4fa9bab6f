#include "support/Events.h"

#include <QApplication>
#include <QMouseEvent>
#include <QWidget>
#include <QWindow>
#include <memory>

#include "platform/Timer.h"
#include "shared/SharedValues.h"

namespace kelvane::testing {
namespace {

void Send(QWidget& widget, QEvent::Type type, Qt::MouseButton button, Qt::MouseButtons held) {
  const QPointF place = widget.rect().center();
  QMouseEvent event(type, place, widget.mapToGlobal(place), button, held, Qt::NoModifier);
  QApplication::sendEvent(&widget, &event);
}

// Sends the event to the window, as the platform does; Qt finds the widget.
void SendToWindow(QWidget& window, QPointF place, QEvent::Type type, Qt::MouseButton button,
                  Qt::MouseButtons held) {
  const QPointF inWindow = window.mapFromGlobal(place);
  QMouseEvent event(type, inWindow, inWindow, place, button, held, Qt::NoModifier);
  QApplication::sendEvent(window.windowHandle(), &event);
}

}  // namespace

void ServePendingEvents() {
  bool served = false;
  AtNextDoEvents([&served] { served = true; });
  WaitFor([&served] { return served; });
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

bool WaitForTicks(Timer& timer, int count) {
  const std::function<void()> wired = timer.Tick;
  const auto ticks = std::make_shared<int>(0);
  timer.Tick = [wired, ticks] {
    if (wired) wired();
    ++*ticks;
  };
  const bool came = WaitFor([&] { return *ticks >= count; });
  timer.Tick = wired;
  return came;
}

void Tick(Timer& timer) {
  QTimerEvent event(0);
  QCoreApplication::sendEvent(&timer, &event);
}

void AtNextDoEvents(std::function<void()> step) {
  QMetaObject::invokeMethod(qApp, std::move(step), Qt::QueuedConnection);
}

void MovePointerOver(QWidget& widget, Qt::MouseButtons held) {
  Send(widget, QEvent::MouseMove, Qt::NoButton, held);
}

void Press(QWidget& widget, Qt::MouseButton button) {
  Send(widget, QEvent::MouseButtonPress, button, button);
}

void Release(QWidget& widget, Qt::MouseButton button) {
  Send(widget, QEvent::MouseButtonRelease, button, Qt::NoButton);
}

void Click(QWidget& widget, Qt::MouseButton button) {
  Press(widget, button);
  Release(widget, button);
}

void DragThrough(QWidget& widget, const std::vector<QPointF>& places) {
  QWidget& window = *widget.window();
  SendToWindow(window, places.front(), QEvent::MouseButtonPress, Qt::LeftButton, Qt::LeftButton);
  for (const QPointF& place : places) {
    SendToWindow(window, place, QEvent::MouseMove, Qt::NoButton, Qt::LeftButton);
  }
  SendToWindow(window, places.back(), QEvent::MouseButtonRelease, Qt::LeftButton, Qt::NoButton);
}

QString Member(const char* array, int index) {
  return QStringLiteral("%1(%2)").arg(QLatin1String(array)).arg(index);
}

std::string Hex(unsigned int color) {
  return QStringLiteral("0x%1").arg(color & 0xFFFFFFU, 6, 16, QLatin1Char('0')).toStdString();
}

std::string Hex(std::optional<unsigned int> color) { return color ? Hex(*color) : "transparent"; }

void ForgetSharedValues() {
  VideoPath.clear();
  VideoDuration.clear();
  ProbeDimensionsDone = false;
  CropWidth = CropHeight = CropLeft = CropTop = 0;
  CropFilter.clear();
  OutputPath.clear();
  MainWindowMinimised = false;
}

}  // namespace kelvane::testing
