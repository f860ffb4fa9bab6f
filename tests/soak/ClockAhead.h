#pragma once

#include <chrono>

namespace kelvane::testing {

// The standard library's steady clock is this much further on, for everybody in this program who
// asks it. Qt's timers have a clock of their own.
void MoveSteadyClockOn(std::chrono::steady_clock::duration by);

}  // namespace kelvane::testing
