#pragma once

#include <string_view>

#include "platform/automation.h"

namespace platform {

/// Objects of other programs, by class name.
class Objects {
 public:
  virtual ~Objects() = default;
  /// False when there is no such class on this machine: it could not be created.
  virtual bool registered(std::u16string_view className) = 0;
  /// The running instance; raises error 429 when none runs, ServerBusy when one runs that takes no
  /// messages.
  virtual automation::Object running(std::u16string_view className) = 0;
  /// A new instance; raises error 429 when the class is not there or does not start, ServerBusy as
  /// above.
  virtual automation::Object create(std::u16string_view className) = 0;
  /// False when an instance runs that takes no messages at present: calls of it would not return.
  virtual bool answers(std::u16string_view className) = 0;
};

}  // namespace platform
