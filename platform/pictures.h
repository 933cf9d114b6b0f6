#pragma once

#include <cstdint>
#include <string_view>

#include "platform/automation.h"

namespace platform {

/// A button's face: two of the platform's picture objects, bitmaps of one size. The mask is black
/// where the picture is drawn and white where the button shows through.
struct Face {
  automation::Object picture;
  automation::Object mask;
};

/// The add-in's own pictures and the system clipboard. A picture is the platform's picture object.
/// The clipboard's operations wait while another program has it open: 25 tries, 20 ms apart.
class Pictures {
 public:
  virtual ~Pictures() = default;
  /// The icon with this resource id, in the size that the system gives small icons; raises an error
  /// when there is none.
  virtual automation::Object icon(std::int32_t id) = 0;
  /// The image list's picture of this name drawn over the one named `background`; raises an error
  /// when either is missing.
  virtual Face overlay(std::u16string_view name, std::u16string_view background) = 0;
  /// Puts a face in the place of what is on the clipboard; raises error 521 when another program
  /// keeps it open.
  virtual void setClipboard(const Face& face) = 0;
  /// Waits until the clipboard is free. False when it was free from the first.
  virtual bool awaitClipboard() = 0;
};

}  // namespace platform
