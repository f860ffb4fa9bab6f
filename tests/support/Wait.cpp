#include "support/Wait.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>
#include <thread>

namespace kelvane::testing {

void ServeEventsOrSleep() {
  constexpr auto kPause = 5ms;
  if (QCoreApplication::instance() == nullptr) {
    std::this_thread::sleep_for(kPause);
    return;
  }
  QTimer pause;
  pause.start(kPause);
  QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

}  // namespace kelvane::testing
