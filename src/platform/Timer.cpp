#include "platform/Timer.h"

#include "platform/HandlerScope.h"

namespace kelvane {

Timer::Timer(HandlerOwner& form, const char* name, int interval)
    : QObject(&form), form_(form), interval_(interval) {
  setObjectName(QLatin1String(name));
}

void Timer::setEnabled(bool enabled) {
  if (enabled == Enabled()) return;
  if (enabled) {
    timer_.start(interval_, this);
  } else {
    timer_.stop();
  }
}

// While an event of a timer is being handled, Qt sends no other event of that timer. Restarting the
// timer lets further events come in a nested DoEvents.
void Timer::timerEvent(QTimerEvent* /*event*/) {
  timer_.start(interval_, this);
  if (form_.Loaded()) Raise(this, Tick);
}

}  // namespace kelvane
