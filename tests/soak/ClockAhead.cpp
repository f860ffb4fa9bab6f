#include "soak/ClockAhead.h"

#include <atomic>
#include <ctime>

namespace {

std::atomic<std::chrono::steady_clock::rep> ahead = 0;

}  // namespace

// Stands in for the library's own.
std::chrono::steady_clock::time_point std::chrono::steady_clock::now() noexcept {
  timespec time{};
  ::clock_gettime(CLOCK_MONOTONIC, &time);
  return time_point(seconds(time.tv_sec) + nanoseconds(time.tv_nsec) + duration(ahead));
}

namespace kelvane::testing {

void MoveSteadyClockOn(std::chrono::steady_clock::duration by) { ahead += by.count(); }

}  // namespace kelvane::testing
