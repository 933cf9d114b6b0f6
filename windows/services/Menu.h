#pragma once

#include <vector>

#include "platform/screen.h"
#include "windows/com/Owner.h"

namespace windows {

struct FreeMenu {
  void operator()(HMENU menu) const noexcept { DestroyMenu(menu); }
};
/// A menu with its submenus.
using Menu = Owner<HMENU, FreeMenu>;

/// Raises bad_alloc when the system has no room for it.
Menu popupMenu(const std::vector<platform::PopupEntry>& entries);

}  // namespace windows
