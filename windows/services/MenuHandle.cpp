#include "windows/services/MenuHandle.h"

#include <new>
#include <utility>

#include "windows/com/text.h"

namespace windows {
namespace {

HMENU popupOf(const std::vector<platform::PopupEntry>& entries);

bool append(HMENU menu, const platform::PopupEntry& entry) {
  if (entry.separator) return AppendMenuW(menu, MF_SEPARATOR, 0, nullptr) != FALSE;
  const UINT state = entry.enabled ? MF_ENABLED : MF_GRAYED;
  if (entry.entries.empty()) {
    return AppendMenuW(menu, MF_STRING | state, static_cast<UINT_PTR>(entry.id),
                       wide(entry.caption)) != FALSE;
  }
  const HMENU submenu = popupOf(entry.entries);
  // From here on the menu owns its submenu.
  if (AppendMenuW(menu, MF_POPUP | state, reinterpret_cast<UINT_PTR>(submenu),
                  wide(entry.caption))) {
    return true;
  }
  DestroyMenu(submenu);
  return false;
}

HMENU popupOf(const std::vector<platform::PopupEntry>& entries) {
  const HMENU menu = CreatePopupMenu();
  if (!menu) throw std::bad_alloc();
  try {
    for (const auto& entry : entries) {
      if (!append(menu, entry)) throw std::bad_alloc();
    }
  } catch (...) {
    DestroyMenu(menu);
    throw;
  }
  return menu;
}

}  // namespace

MenuHandle::MenuHandle(const std::vector<platform::PopupEntry>& entries)
    : menu_(popupOf(entries)) {}

}  // namespace windows
