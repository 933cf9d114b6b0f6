// Counts the steps of what is compiled for it: each comparison that the flow of control depends on
// calls one of these.
#include "fuzz/counter.h"

#include <cstdint>

namespace {
std::uint64_t steps = 0;
}

// The names and arguments are the compiler's. They must not be counted themselves.
#define CXOL_STEP(name, type)                                                                  \
  extern "C"                                                                                   \
      __attribute__((no_sanitize("coverage"))) void __sanitizer_cov_trace_##name(type, type) { \
    ++steps;                                                                                   \
  }
CXOL_STEP(cmp1, std::uint8_t)
CXOL_STEP(cmp2, std::uint16_t)
CXOL_STEP(cmp4, std::uint32_t)
CXOL_STEP(cmp8, std::uint64_t)
CXOL_STEP(const_cmp1, std::uint8_t)
CXOL_STEP(const_cmp2, std::uint16_t)
CXOL_STEP(const_cmp4, std::uint32_t)
CXOL_STEP(const_cmp8, std::uint64_t)

extern "C" __attribute__((no_sanitize("coverage"))) void __sanitizer_cov_trace_switch(
    std::uint64_t, std::uint64_t*) {
  ++steps;
}

std::uint64_t fuzz::stepsSoFar() {
  return steps;
}
