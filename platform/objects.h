#pragma once

#include <string_view>

#include "platform/automation.h"

namespace platform {

/// Objects of other programs, by class name.
class Objects {
 public:
  virtual ~Objects() = default;
  /// The running instance; raises error 429 when none runs.
  virtual automation::Object running(std::u16string_view className) = 0;
  /// A new instance; raises error 429 when the class is not there or does not start.
  virtual automation::Object create(std::u16string_view className) = 0;
};

}  // namespace platform
