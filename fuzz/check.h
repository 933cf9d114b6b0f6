#pragma once

#include <cstdio>
#include <cstdlib>

namespace fuzz {

/// Ends the run as a crash when something does not hold.
inline void check(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "does not hold: %s\n", what);
  std::abort();
}

}  // namespace fuzz
