// Hands what libFuzzer thinks up to one target.
#include "fuzz/targets.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const fuzz::Target* const target = [] {
    for (const auto& each : fuzz::targets()) {
      if (each.name == CXOL_FUZZ_TARGET) return &each;
    }
    std::abort();
  }();
  target->run(data, size);
  return 0;
}
