#pragma once

#include <cstdint>
#include <string_view>

#include "platform/automation.h"

namespace platform {

/// The add-in's own pictures and the system clipboard. A picture is the platform's picture object.
class Pictures {
 public:
  virtual ~Pictures() = default;
  /// The icon with this resource id; raises an error when there is none.
  virtual automation::Object icon(std::int32_t id) = 0;
  /// The image list's picture of this name drawn over the one named `background`; raises an error
  /// when either is missing.
  virtual automation::Object overlay(std::u16string_view name, std::u16string_view background) = 0;
  virtual void clearClipboard() = 0;
  virtual void setClipboard(const automation::Object& picture) = 0;
};

}  // namespace platform
