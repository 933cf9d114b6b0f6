#pragma once

#include <malloc.h>

#include <cstddef>

namespace bench {

/// Bytes that the heap has handed out, its own rounding included; 0 under the address sanitizer,
/// which has a heap of its own.
inline double heldBytes() {
  const auto heap = mallinfo2();
  return static_cast<double>(heap.uordblks) + static_cast<double>(heap.hblkhd);
}

}  // namespace bench
