#include "support/Wait.h"

#include <QCoreApplication>
#include <thread>

namespace kelvane::testing {

void ServeEventsOrSleep() {
  constexpr auto kPause = 5ms;
  if (QCoreApplication::instance() != nullptr) QCoreApplication::processEvents();
  std::this_thread::sleep_for(kPause);
}

}  // namespace kelvane::testing
