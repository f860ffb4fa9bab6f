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

// How Qt's values look in a failure.
inline void PrintTo(const QString& text, std::ostream* out) {
  *out << '"' << text.toStdString() << '"';
}
inline void PrintTo(const QSize& size, std::ostream* out) {
  *out << size.width() << 'x' << size.height();
}

// Waiting for the windows, standing in for the pointer and the clock, and writing down what
// happens.
namespace kelvane {

class Timer;

}  // namespace kelvane

namespace kelvane::testing {

using Texts = std::vector<std::string>;

// Serves everything that waits, deletions as well.
void PumpOnce();
// Waits for `count` ticks of a timer by the clock; false if they don't come in good time.
bool WaitForTicks(Timer& timer, int count);

// One tick of an enabled timer, now.
void Tick(Timer& timer);

// To be run by the next one to serve events, and by nobody before.
void AtNextDoEvents(std::function<void()> step);

// What the pointer does, in the widget's middle.
void MovePointerOver(QWidget& widget, Qt::MouseButtons held = Qt::NoButton);
void Press(QWidget& widget, Qt::MouseButton button = Qt::LeftButton);
void Release(QWidget& widget, Qt::MouseButton button = Qt::LeftButton);
void Click(QWidget& widget, Qt::MouseButton button = Qt::LeftButton);
// Presses at a place of the screen, which may lie between two pixels, and moves on to others with
// the button held. The widget may move meanwhile.
void DragThrough(QWidget& widget, const std::vector<QPointF>& places);

// Does something more before, or after, what is wired to an event.
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
// A colour as it stands in the tables of the design.
std::string Hex(unsigned int color);
std::string Hex(std::optional<unsigned int> color);

// The values that the windows share, as they are at the program's start.
void ForgetSharedValues();

}  // namespace kelvane::testing
