#pragma once

#include <vector>

#include "platform/screen.h"
#include "windows/com/api.h"

namespace windows {

/// Owns a popup menu with its submenus.
class MenuHandle {
 public:
  /// Raises bad_alloc when the system has no room for it.
  explicit MenuHandle(const std::vector<platform::PopupEntry>& entries);
  ~MenuHandle() { DestroyMenu(menu_); }
  MenuHandle(const MenuHandle&) = delete;
  MenuHandle& operator=(const MenuHandle&) = delete;

  HMENU get() const noexcept { return menu_; }

 private:
  HMENU menu_;
};

}  // namespace windows
