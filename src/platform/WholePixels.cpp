#include "platform/WholePixels.h"

#include <QCoreApplication>
#include <QMouseEvent>
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
        return SendRounded(*watched, *static_cast<QMouseEvent*>(event));
      default:
        return false;
    }
  }

 private:
  // Returns whether there was anything to round.
  static bool SendRounded(QObject& window, QMouseEvent& event) {
    const QPointF place = event.scenePosition();
    const QPointF whole(std::floor(place.x()), std::floor(place.y()));
    const QPointF way = whole - place;
    if (way.isNull()) return false;
    QMouseEvent rounded(event.type(), event.position() + way, whole, event.globalPosition() + way,
                        event.button(), event.buttons(), event.modifiers(), event.pointingDevice());
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
