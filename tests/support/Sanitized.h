#pragma once

namespace kelvane {

// Whether a sanitizer stands in the allocator's place, and keeps for itself what is freed.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool kSanitized = true;
#else
constexpr bool kSanitized = false;
#endif

}  // namespace kelvane
