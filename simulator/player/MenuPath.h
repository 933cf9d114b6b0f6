#pragma once

#include <string_view>
#include <vector>

#include "platform/screen.h"

namespace scenario {

/// The entry that `name` means: its number, separators not counted and a submenu's behind a point
/// ("3.1"), or, quoted, its caption or the part of one that only one entry has. Raises Mistake.
const platform::PopupEntry& findEntry(const std::vector<platform::PopupEntry>& menu,
                                      std::u16string_view name, bool byCaption);

/// All entries but separators, those of submenus behind their parent.
std::vector<const platform::PopupEntry*> allEntries(const std::vector<platform::PopupEntry>& menu);

}  // namespace scenario
