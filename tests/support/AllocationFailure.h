#pragma once

#include <cstddef>

namespace kelvane::testing {

// Makes the next allocation of this thread that has from `least` to `most` bytes fail, and no
// other.
void FailNextAllocation(std::size_t least, std::size_t most);
// Returns whether it has failed. If it hasn't, none will.
bool AllocationHasFailed();

}  // namespace kelvane::testing
