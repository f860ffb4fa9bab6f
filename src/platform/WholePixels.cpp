#include "platform/WholePixels.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QWindow>
#include <cmath>

namespace kelvane {
namespace {

class PointerRounder : public QObject {
 public:
  using QObject::QObject;
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (!watched->isWindowType()) return false;
    switch (event->type()) {
      case QEvent::MouseButtonPress:
      case QEvent::MouseButtonRelease:
      case QEvent::MouseButtonDblClick:
      case QEvent::MouseMove:
        // This flag marks the second press of a double-click, which Qt passes to no widget. A copy
        // would lack the flag, and Qt would pass it to a widget.
        if (static_cast<QMouseEvent*>(event)->flags().testFlag(Qt::MouseEventCreatedDoubleClick)) {
          return false;
        }
        return SendRounded(*static_cast<QWindow*>(watched), *static_cast<QMouseEvent*>(event));
      default:
        return false;
    }
  }

 private:
  // Sends a rounded copy of an event that isn't rounded yet. Returns whether a copy was sent.
  static bool SendRounded(QWindow& window, QMouseEvent& event) {
    const QPointF position = event.scenePosition();
    const QPointF whole(std::floor(position.x()), std::floor(position.y()));
    const QPointF onScreen = window.mapToGlobal(QPointF()) + whole;
    if (whole == position && onScreen == event.globalPosition()) return false;
    QMouseEvent rounded(event.type(), event.position() + whole - position, whole, onScreen,
                        event.button(), event.buttons(), event.modifiers(), event.source(),
                        event.pointingDevice());
    rounded.setTimestamp(event.timestamp());
    QCoreApplication::sendEvent(&window, &rounded);
    event.setAccepted(rounded.isAccepted());
    return true;
  }
};

}  // namespace

void RoundPointerPositions() {
  QCoreApplication* application = QCoreApplication::instance();
  application->installEventFilter(new PointerRounder(application));
}

}  // namespace kelvane
