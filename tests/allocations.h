#pragma once

#include <cstddef>

namespace tests {

/// Whether this program counts: not under the address sanitizer, which has its own `operator new`.
#ifdef __SANITIZE_ADDRESS__
inline constexpr bool CountsAllocations = false;
#else
inline constexpr bool CountsAllocations = true;
#endif

/// Allocations and bytes of this program since its start; every `operator new` counts.
struct Allocations {
  std::size_t count = 0;
  std::size_t bytes = 0;
};
Allocations allocations() noexcept;

}  // namespace tests
