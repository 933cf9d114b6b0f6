#include "windows/services/Menu.h"

#include <new>

#include "windows/com/text.h"

namespace windows {
namespace {

bool append(HMENU menu, const platform::PopupEntry& entry) {
  if (entry.separator) return AppendMenuW(menu, MF_SEPARATOR, 0, nullptr) != FALSE;
  const UINT state = entry.enabled ? MF_ENABLED : MF_GRAYED;
  if (entry.entries.empty()) {
    return AppendMenuW(menu, MF_STRING | state, static_cast<UINT_PTR>(entry.id),
                       wide(entry.caption)) != FALSE;
  }
  Menu submenu = popupMenu(entry.entries);
  if (!AppendMenuW(menu, MF_POPUP | state, reinterpret_cast<UINT_PTR>(submenu.get()),
                   wide(entry.caption)))
    return false;
  // From here on the menu owns its submenu.
  submenu.detach();
  return true;
}

}  // namespace

Menu popupMenu(const std::vector<platform::PopupEntry>& entries) {
  Menu menu = Menu::attach(CreatePopupMenu());
  if (!menu) throw std::bad_alloc();
  for (const auto& entry : entries)
    if (!append(menu.get(), entry)) throw std::bad_alloc();
  return menu;
}

}  // namespace windows
