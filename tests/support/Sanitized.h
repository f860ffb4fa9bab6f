#pragma once

namespace kelvane {

// Whether a sanitizer has replaced the allocator. A sanitizer's allocator keeps what is freed.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool kSanitized = true;
#else
constexpr bool kSanitized = false;
#endif

}  // namespace kelvane
