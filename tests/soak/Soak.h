#pragma once

#include <functional>

namespace kelvane::testing {

// The same thing done over and over while one program runs.
struct Soak {
  int warmUp;  // rounds that aren't measured, in which caches fill and lists grow to their size
  int rounds;  // the measured ones, which follow
  std::function<void(int number)> round;
  double mostBytesPerRound = 256;  // by which the memory in use may grow, on average
};

// Runs all rounds and prints what was measured. Fails if, compared with the end of the warm-up, the
// program has more descriptors, threads, running timers, objects or widgets, or uses more memory
// than the soak allows, on the heap or mapped beside it; or if an ended tool isn't reaped. Stops at
// the first round that fails.
//
// Only timers and objects that the windows and the application own are counted; others show
// only in the memory in use, of which a timer takes nearly 500 bytes. Under a sanitizer the memory
// is printed but not checked, since the sanitizer's allocator keeps what is freed.
void ExpectFlat(const Soak& soak);

}  // namespace kelvane::testing
