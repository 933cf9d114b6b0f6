#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/registry.h"

namespace scenario {

/// A registry value as a scenario writes it: `HKCU\Key\Name = dword:1`, `= "text"`, `= hex:01,00`
/// and so on as in a registry file, `= -` to remove it. A decimal number alone is a dword. A key
/// that ends in a backslash means its default value.
struct RegistryLine {
  /// Raises Mistake.
  static RegistryLine read(std::u16string_view text);

  /// When the add-in notices the value, in words.
  std::string_view readWhen() const;

  platform::RegistryRoot root = platform::RegistryRoot::CurrentUser;
  std::u16string key;
  std::u16string name;
  std::optional<platform::RegistryValue> value;
};

}  // namespace scenario
