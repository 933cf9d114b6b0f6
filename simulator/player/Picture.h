#pragma once

#include <string>
#include <vector>

#include "platform/screen.h"
#include "simulator/player/Stage.h"

/// Outlook's windows and menus drawn as lines of UTF-8 text.
namespace scenario {

/// The title line, then the window's content: folder and selection, bars, ribbon groups.
std::vector<std::string> drawWindow(const WindowView& window);

/// The entries with the numbers under which they can be chosen.
std::vector<std::string> drawMenu(const std::vector<platform::PopupEntry>& menu);

/// The items of a folder with the numbers under which they can be selected, at most 40.
std::vector<std::string> drawItems(const std::vector<ItemEntry>& items);

}  // namespace scenario
