#pragma once

#include <optional>

#include "platform/outlook.h"
#include "simulator/outlook/Snapshot.h"
#include "windows/com/api.h"

/// The menus of windows before they have a ribbon.
namespace standin {

enum class HandCommand : int {
  NewExplorer = 1000,
  SwitchView,
  SwitchAddin,
  Close,
  Quit,
  /// New items: this one and the item's type.
  NewItem = 1100,
};

HMENU createHandMenu(simulator::WindowKind kind);

/// The type of item that a command makes; nothing for other commands.
std::optional<outlook::ItemType> newItemOf(int command);

}  // namespace standin
