#pragma once

#include <QCoreApplication>
#include <chrono>
#include <thread>

// Waiting for what a user would see. Nothing in the desktop tests sleeps for a time and hopes.
namespace kelvane::desktop {

using namespace std::chrono_literals;

// Long enough for the slowest machine and a sanitizer; a test that passes never waits this long.
constexpr std::chrono::milliseconds kPatience = 20s;

// Looks at `condition` until it holds, and serves this process's own events meanwhile. False if it
// doesn't hold before the deadline.
template <typename Condition>
bool WaitFor(Condition condition, std::chrono::milliseconds patience = kPatience,
             std::chrono::microseconds pause = 10ms) {
  const auto deadline = std::chrono::steady_clock::now() + patience;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > deadline) return false;
    if (QCoreApplication::instance() != nullptr) QCoreApplication::processEvents();
    std::this_thread::sleep_for(pause);
  }
  return true;
}

// True if `condition` holds now and goes on holding for `time`.
template <typename Condition>
bool HoldsFor(Condition condition, std::chrono::milliseconds time) {
  return !WaitFor([&] { return !condition(); }, time);
}

}  // namespace kelvane::desktop
