#include "tests/raised.h"

#include <typeinfo>

namespace {
std::size_t thrown;
}

std::size_t tests::raised() noexcept {
  return thrown;
}

// The linker leads each throw to the second, and the first to the compiler's own function.
extern "C" {
using Destroy = void (*)(void* object);

[[noreturn]] void throwOn(void* object, std::type_info* type,
                          Destroy destroy) __asm__("__real___cxa_throw");
[[noreturn]] void countThrow(void* object, std::type_info* type,
                             Destroy destroy) __asm__("__wrap___cxa_throw");

void countThrow(void* object, std::type_info* type, Destroy destroy) {
  ++thrown;
  throwOn(object, type, destroy);
}
}
