#pragma once

#include "windows/com/Owner.h"

namespace windows {

struct DestroySafeArray {
  void operator()(SAFEARRAY* array) const noexcept { SafeArrayDestroy(array); }
};
/// Owns a SAFEARRAY, or nothing.
using SafeArray = Owner<SAFEARRAY*, DestroySafeArray>;

}  // namespace windows
