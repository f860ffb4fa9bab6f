#pragma once

#include <chrono>

// Waiting for a condition. No test sleeps for a time and hopes.
namespace kelvane::testing {

using namespace std::chrono_literals;

// Long enough for the slowest machine and a sanitizer; a test that passes never waits this long.
constexpr std::chrono::milliseconds kPatience = 20s;

// The pause between two looks at a condition: serves the waiting events of this process's
// application object, if there is one, and then sleeps for 5 ms.
void ServeEventsOrSleep();

// Serves events until `condition` holds. False if it doesn't hold in time.
template <class Condition>
bool WaitFor(Condition condition, std::chrono::milliseconds patience = kPatience) {
  const auto deadline = std::chrono::steady_clock::now() + patience;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > deadline) return false;
    ServeEventsOrSleep();
  }
  return true;
}

// Serves events for `time`, or less if `condition` doesn't hold all the while: then false.
template <class Condition>
bool HoldsFor(Condition condition, std::chrono::milliseconds time) {
  return !WaitFor([&] { return !condition(); }, time);
}

}  // namespace kelvane::testing
