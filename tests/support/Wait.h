#pragma once

#include <QCoreApplication>
#include <chrono>
#include <thread>

// Waiting for a condition.
namespace kelvane::testing {

using namespace std::chrono_literals;

// Long enough for a slow machine and a sanitizer. A test that passes never waits this long.
constexpr std::chrono::milliseconds kPatience = 20s;

// Serves the events of the application object, if there is one, until the condition holds, which is
// checked every 5 ms. Returns false if the condition doesn't hold in time.
template <class Condition>
bool WaitFor(Condition condition, std::chrono::milliseconds patience = kPatience) {
  const auto deadline = std::chrono::steady_clock::now() + patience;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > deadline) return false;
    if (QCoreApplication::instance() != nullptr) QCoreApplication::processEvents();
    std::this_thread::sleep_for(5ms);
  }
  return true;
}

// Serves events for `time`, and returns true. Returns false as soon as the condition doesn't hold.
template <class Condition>
bool HoldsFor(Condition condition, std::chrono::milliseconds time) {
  return !WaitFor([&] { return !condition(); }, time);
}

}  // namespace kelvane::testing
