#include "support/AllocationFailure.h"

#include <cstdlib>
#include <limits>
#include <new>

namespace {

constexpr std::size_t kNone = std::numeric_limits<std::size_t>::max();

thread_local std::size_t allocations = 0;
// The number of the allocation that fails.
thread_local std::size_t failing = kNone;

}  // namespace

namespace kelvane::testing {

std::size_t Allocations() { return allocations; }

void FailAllocation(std::size_t others) { failing = allocations + others; }

bool EndAllocationFailure() {
  const bool failed = failing < allocations;
  failing = kNone;
  return failed;
}

}  // namespace kelvane::testing

// These replace the standard operators; but ThreadSanitizer needs its own, which tell it which
// library allocates.
#ifndef __SANITIZE_THREAD__

void* operator new(std::size_t size) {
  if (allocations++ == failing) throw std::bad_alloc();
  void* const memory = std::malloc(size == 0 ? 1 : size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

void* operator new[](std::size_t size) { return operator new(size); }

// std::stable_sort allocates by this operator. A sanitizer's version of it would allocate memory
// that the delete operators below can't free.
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
