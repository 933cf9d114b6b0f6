#pragma once

#include <cstdint>

namespace fuzz {

/// Steps that the instrumented code has taken since the program's start.
std::uint64_t stepsSoFar();

}  // namespace fuzz
