#pragma once

#include <QEvent>
#include <QPointF>
#include <QString>
#include <Qt>

class QWidget;

namespace kelvane::testing {

// The user's pointer over a window that is on the screen. What it does goes in where the window
// system's own events do, so that Qt finds the widget under it.
class Pointer {
 public:
  // Comes from outside the window.
  explicit Pointer(QWidget& window);

  // From now on.
  void Hold(Qt::KeyboardModifiers keys) { keys_ = keys; }

  // `place` is relative to the widget, which is the window itself or anything in it.
  void MoveTo(const QWidget& widget, QPointF place);
  void Press(Qt::MouseButton button = Qt::LeftButton);
  void Release(Qt::MouseButton button = Qt::LeftButton);
  void Click(Qt::MouseButton button = Qt::LeftButton);
  void DoubleClick(Qt::MouseButton button = Qt::LeftButton);
  void TurnWheel();
  // As long as it takes for a tool tip to come up.
  void Rest();

 private:
  void Send(QEvent::Type type, Qt::MouseButton button);

  QWidget& window_;
  QPointF place_;  // in the window
  Qt::MouseButtons held_;
  Qt::KeyboardModifiers keys_;
};

}  // namespace kelvane::testing
