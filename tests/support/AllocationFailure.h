#pragma once

#include <cstddef>

namespace kelvane::testing {

// Returns how many times this thread has allocated memory by operator new.
std::size_t Allocations();
// Makes one allocation of this thread fail: the one that follows the next `others`.
void FailAllocation(std::size_t others = 0);
// Returns whether it has failed; cancels it if not.
bool AllocationHasFailed();

}  // namespace kelvane::testing
