#pragma once

#include <cstddef>

namespace kelvane::testing {

// Under ThreadSanitizer, which keeps its own operator new, nothing is counted, and nothing fails.

// Returns how many times this thread has allocated memory by operator new.
std::size_t Allocations();
// Makes one allocation of this thread fail: the one after the next `others` allocations.
void FailAllocation(std::size_t others = 0);
// Returns whether that allocation has failed; if it is still to come, it won't fail any more.
bool EndAllocationFailure();

}  // namespace kelvane::testing
