#pragma once

#include <optional>

#include "windows/com/Owner.h"

namespace windows {

/// The system clipboard, open for this program as long as the object lives. Other programs have it
/// open for moments, above all when something new is on it: whoever finds it taken tries again, 25
/// times in all, 20 ms apart.
class Clipboard {
 public:
  /// Raises error 521 when another program keeps it open.
  Clipboard();
  ~Clipboard();
  Clipboard(const Clipboard&) = delete;
  Clipboard& operator=(const Clipboard&) = delete;

  /// Puts a button's face in the place of what is there: picture and mask, both 24-bit sections of
  /// one size, as Office 2000 takes them, and the picture as a bitmap for everybody else. Raises an
  /// error when that fails.
  void set(HBITMAP picture, HBITMAP mask);

  /// Waits until it is free. How many tries failed; nothing when all did.
  static std::optional<int> await() { return open(nullptr, true); }

 private:
  static std::optional<int> open(HWND owner, bool closeAgain);

  struct FreeWindow {
    void operator()(HWND window) const noexcept { DestroyWindow(window); }
  };
  using Window = Owner<HWND, FreeWindow>;

  /// Without an owner the clipboard takes nothing.
  Window owner_;
};

}  // namespace windows
