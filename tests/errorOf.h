#pragma once

#include <cstdint>

#include "platform/automation.h"

/// For the tests of both worlds: the number of the error that an action raises; 0 for none.
template <class Action>
std::int32_t errorOf(const Action& action) {
  try {
    action();
  } catch (const automation::Error& error) {
    return error.number();
  }
  return 0;
}
