#pragma once

#include <cstddef>
#include <functional>

namespace kelvane::testing {

// The same thing done over and over in one program life.
struct Soak {
  int warmUp;  // rounds that aren't measured: caches fill, lists get their room
  int rounds;  // behind those
  std::function<void(int number)> round;
  // Bytes held for what the windows keep on purpose; none at all where it isn't set.
  std::function<std::size_t()> keptOnPurpose = {};
};

// Runs all rounds, and fails unless the program's descriptors, threads, children, timers and
// widgets are no more at the end than after the warm-up, and its memory in use has grown by less
// than half a KiB a round. Prints the figures. Stops at the first round that fails.
//
// A sanitizer's allocator doesn't tell what is in use: there the memory alone goes unjudged.
void ExpectFlat(const Soak& soak);

// Bytes in use on the heap, 0 under a sanitizer.
std::size_t BytesInUse();

}  // namespace kelvane::testing
