#pragma once

#include <optional>

#include "platform/outlook.h"
#include "windows/com/api.h"

/// The menu of an explorer's window.
namespace standin {

enum class HandCommand : int {
  NewExplorer = 1000,
  SwitchView,
  SwitchAddin,
  Quit,
  /// New items: this one and the item's type.
  NewItem = 1100,
};

HMENU createHandMenu();

/// The type of item that a command makes; nothing for other commands.
std::optional<outlook::ItemType> newItemOf(int command);

}  // namespace standin
