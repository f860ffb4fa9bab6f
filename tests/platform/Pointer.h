#pragma once

#include <QEvent>
#include <QPointF>
#include <QString>
#include <Qt>

class QWidget;

namespace kelvane::testing {

// The user's pointer over an exposed window. Its events enter Qt as those of the window system do,
// so that Qt finds the widget under the pointer.
class Pointer {
 public:
  // The pointer enters from outside the window.
  explicit Pointer(QWidget& window);

  // Sets the keys that are held from now on.
  void Hold(Qt::KeyboardModifiers keys) { keys_ = keys; }

  // `place` is relative to the widget, which is the window itself or anything in it.
  void MoveTo(const QWidget& widget, QPointF place);
  void Press(Qt::MouseButton button = Qt::LeftButton);
  void Release(Qt::MouseButton button = Qt::LeftButton);
  void Click(Qt::MouseButton button = Qt::LeftButton);
  void DoubleClick(Qt::MouseButton button = Qt::LeftButton);
  // `angle` is that of a QWheelEvent: 120 for a notch, positive upwards and to the left.
  void TurnWheel(QPoint angle = {0, 120});
  // Rests until Qt asks for a tool tip.
  void Rest();

 private:
  void Send(QEvent::Type type, Qt::MouseButton button);

  QWidget& window_;
  QPointF place_;  // in the window
  Qt::MouseButtons held_;
  Qt::KeyboardModifiers keys_;
};

}  // namespace kelvane::testing
