#pragma once

#include <cstddef>

namespace tests {

/// Allocations and bytes of this program since its start; every `operator new` counts, and
/// under the address sanitizer what is allocated otherwise as well.
struct Allocations {
  std::size_t count = 0;
  std::size_t bytes = 0;
};
Allocations allocations() noexcept;

}  // namespace tests
