// Counts the steps of what is compiled for it: called wherever the flow of control may branch. Is
// not compiled for it itself.
#include "fuzz/counter.h"

#include <cstdint>

namespace {
std::uint64_t steps = 0;
}

extern "C" void __sanitizer_cov_trace_pc() {
  ++steps;
}

std::uint64_t fuzz::stepsSoFar() {
  return steps;
}
