#include "support/AllocationFailure.h"

#include <cstdlib>
#include <new>

namespace {

thread_local bool ordered = false;
thread_local std::size_t leastSize = 0;
thread_local std::size_t mostSize = 0;

}  // namespace

namespace kelvane::testing {

void FailNextAllocation(std::size_t least, std::size_t most) {
  leastSize = least;
  mostSize = most;
  ordered = true;
}

bool AllocationHasFailed() {
  const bool failed = !ordered;
  ordered = false;
  return failed;
}

}  // namespace kelvane::testing

// Replacements of the standard operators. ThreadSanitizer needs its own, to know which library
// allocates.
#ifndef __SANITIZE_THREAD__

void* operator new(std::size_t size) {
  if (ordered && size >= leastSize && size <= mostSize) {
    ordered = false;
    throw std::bad_alloc();
  }
  void* const memory = std::malloc(size == 0 ? 1 : size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

void* operator new[](std::size_t size) { return operator new(size); }

// For std::stable_sort. Otherwise the sanitizers' own would be mixed with those above.
void* operator new(std::size_t size, const std::nothrow_t& /*kind*/) noexcept try {
  return operator new(size);
} catch (const std::bad_alloc&) {
  return nullptr;
}

void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t /*size*/) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t /*size*/) noexcept { std::free(memory); }

#endif
