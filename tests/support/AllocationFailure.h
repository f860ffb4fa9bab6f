#pragma once

#include <cstddef>

namespace kelvane::testing {

// The next allocation of a size from `least` to `most` bytes fails, that one alone. While nothing
// fails in this way, allocations are the system's.
void FailNextAllocation(std::size_t least, std::size_t most);
// True if it has come to that; takes the order back if not.
bool AllocationHasFailed();

}  // namespace kelvane::testing
