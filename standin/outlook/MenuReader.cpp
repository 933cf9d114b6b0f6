#include "standin/outlook/MenuReader.h"

namespace standin {
namespace {

/// Appends the keys that reach the entry; false when it is not in this menu.
bool reach(const std::vector<platform::PopupEntry>& menu, int id, bool firstSelected,
           std::vector<WPARAM>& keys) {
  const std::size_t before = keys.size();
  bool selected = firstSelected;
  for (const platform::PopupEntry& entry : menu) {
    if (entry.separator) continue;
    if (!selected) keys.push_back(VK_DOWN);
    selected = false;
    if (entry.entries.empty()) {
      if (entry.id != id) continue;
      keys.push_back(VK_RETURN);
      return true;
    }
    const std::size_t here = keys.size();
    // A submenu that is opened by key has its first entry selected.
    keys.push_back(VK_RIGHT);
    if (reach(entry.entries, id, true, keys)) return true;
    keys.resize(here);
  }
  keys.resize(before);
  return false;
}

}  // namespace

std::vector<platform::PopupEntry> readMenu(HMENU menu) {
  std::vector<platform::PopupEntry> entries;
  const int count = GetMenuItemCount(menu);
  for (int i = 0; i < count; ++i) {
    wchar_t text[1024] = {};
    MENUITEMINFOW info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_FTYPE | MIIM_STATE | MIIM_ID | MIIM_SUBMENU | MIIM_STRING;
    info.dwTypeData = text;
    info.cch = static_cast<UINT>(std::size(text));
    if (!GetMenuItemInfoW(menu, static_cast<UINT>(i), TRUE, &info)) continue;
    platform::PopupEntry entry;
    entry.id = static_cast<int>(info.wID);
    entry.separator = (info.fType & MFT_SEPARATOR) != 0;
    // A separator is disabled by nature.
    entry.enabled = entry.separator || (info.fState & MFS_DISABLED) == 0;
    if (!entry.separator) entry.caption.assign(reinterpret_cast<const char16_t*>(text));
    if (info.hSubMenu) entry.entries = readMenu(info.hSubMenu);
    entries.push_back(std::move(entry));
  }
  return entries;
}

bool isWithin(HMENU menu, HMENU root) {
  if (menu == root) return true;
  const int count = GetMenuItemCount(root);
  for (int i = 0; i < count; ++i) {
    const HMENU below = GetSubMenu(root, i);
    if (below && isWithin(menu, below)) return true;
  }
  return false;
}

std::optional<std::vector<WPARAM>> keysFor(const std::vector<platform::PopupEntry>& menu,
                                           std::optional<int> id) {
  if (!id) return std::vector<WPARAM>{VK_ESCAPE};
  std::vector<WPARAM> keys;
  if (!reach(menu, *id, false, keys)) return std::nullopt;
  return keys;
}

}  // namespace standin
