#pragma once

#include <QPointF>
#include <QSize>
#include <QString>
#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "support/Wait.h"

class QWidget;

// How GoogleTest prints values of Qt.
inline void PrintTo(const QString& text, std::ostream* out) {
  *out << '"' << text.toStdString() << '"';
}
inline void PrintTo(const QSize& size, std::ostream* out) {
  *out << size.width() << 'x' << size.height();
}

namespace kelvane {
class Timer;
}

// Events of the windows, of the pointer and of timers.
namespace kelvane::testing {

using Texts = std::vector<std::string>;

// Serves all pending events, deferred deletions included.
void ServePendingEvents();
// Waits until the running timer has ticked `count` times. Returns false if it hasn't in time.
bool WaitForTicks(Timer& timer, int count);
// Makes an enabled timer tick once, now.
void Tick(Timer& timer);

// Runs the step the next time that events are served.
void AtNextDoEvents(std::function<void()> step);

// These send events of the pointer in the middle of the widget.
void MovePointerOver(QWidget& widget, Qt::MouseButtons held = Qt::NoButton);
void Press(QWidget& widget, Qt::MouseButton button = Qt::LeftButton);
void Release(QWidget& widget, Qt::MouseButton button = Qt::LeftButton);
void Click(QWidget& widget, Qt::MouseButton button = Qt::LeftButton);
// Presses the left button at the first place, moves through all places and releases it at the last.
// Places are positions on the screen, also between two pixels. The widget may move meanwhile.
void DragThrough(QWidget& widget, const std::vector<QPointF>& places);

// Adds a step before, or after, the handler of an event.
template <class... Arguments, class Step>
void Before(std::function<void(Arguments...)>& handler, Step step) {
  handler = [wired = std::move(handler), step](Arguments... arguments) mutable {
    step(arguments...);
    if (wired) wired(arguments...);
  };
}
template <class... Arguments, class Step>
void After(std::function<void(Arguments...)>& handler, Step step) {
  handler = [wired = std::move(handler), step](Arguments... arguments) mutable {
    if (wired) wired(arguments...);
    step(arguments...);
  };
}

// The name of an array's member: "Label14(3)".
QString Member(const char* array, int index);
// A colour such as "0xc0c0c0", or "transparent".
std::string Hex(unsigned int color);
std::string Hex(std::optional<unsigned int> color);

// Resets the values that the windows share.
void ForgetSharedValues();

}  // namespace kelvane::testing
