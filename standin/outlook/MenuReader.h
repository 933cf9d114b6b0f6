#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/screen.h"
#include "windows/com/api.h"

/// An open popup menu as a person sees and uses it.
namespace standin {

/// The entries of a menu with those of its submenus.
std::vector<platform::PopupEntry> readMenu(HMENU menu);

/// Whether `menu` is `root` or a submenu below it.
bool isWithin(HMENU menu, HMENU root);

/// The keys that choose the entry of this id, from the open menu's start on; nothing when the menu
/// has none. Without an id the key that leaves the menu.
std::optional<std::vector<WPARAM>> keysFor(const std::vector<platform::PopupEntry>& menu,
                                           std::optional<int> id);

}  // namespace standin
