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
  double mostOfARound = 256;  // bytes by which the memory in use may grow
};

// Runs all rounds, and fails unless the program's descriptors, threads, running timers, objects and
// widgets are no more at the end than after the warm-up, the runner has taken leave of its tools,
// and the memory in use has grown by less than the soak allows on the heap, and as little where
// writable memory is mapped past the heap. Prints the figures. Stops at the first round that fails.
//
// Timers and objects are those of the windows and of the application, with all that hangs on them;
// one that nobody owns shows on the heap alone, of which a timer takes nearly 500 bytes.
// The resident memory is told and not judged: the heap keeps pages that it has handed back. A
// sanitizer's allocator doesn't tell what is in use: there the memory alone goes unjudged.
void ExpectFlat(const Soak& soak);

// Bytes in use on the heap, 0 under a sanitizer.
std::size_t BytesInUse();

}  // namespace kelvane::testing
