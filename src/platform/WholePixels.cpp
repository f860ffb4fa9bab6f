#include "platform/WholePixels.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QWindow>
#include <cmath>

namespace kelvane {
namespace {

class WholePixels : public QObject {
 public:
  using QObject::QObject;
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (!watched->isWindowType()) return false;
    switch (event->type()) {
      case QEvent::MouseButtonPress:
      case QEvent::MouseButtonRelease:
      case QEvent::MouseButtonDblClick:
      case QEvent::MouseMove:
        // Qt makes the press of a double click for itself, and no widget gets it.
        if (static_cast<QMouseEvent*>(event)->flags().testFlag(Qt::MouseEventCreatedDoubleClick)) {
          return false;
        }
        return SendRounded(*static_cast<QWindow*>(watched), *static_cast<QMouseEvent*>(event));
      default:
        return false;
    }
  }

 private:
  // Returns whether the event had to be replaced by a rounded one.
  static bool SendRounded(QWindow& window, QMouseEvent& event) {
    const QPointF place = event.scenePosition();
    const QPointF whole(std::floor(place.x()), std::floor(place.y()));
    const QPointF onScreen = window.mapToGlobal(QPointF()) + whole;
    if (whole == place && onScreen == event.globalPosition()) return false;
    QMouseEvent rounded(event.type(), event.position() + whole - place, whole, onScreen,
                        event.button(), event.buttons(), event.modifiers(), event.source(),
                        event.pointingDevice());
    rounded.setTimestamp(event.timestamp());
    QCoreApplication::sendEvent(&window, &rounded);
    event.setAccepted(rounded.isAccepted());
    return true;
  }
};

}  // namespace

void RoundPointerDown(QObject& owner) {
  QCoreApplication::instance()->installEventFilter(new WholePixels(&owner));
}

}  // namespace kelvane
