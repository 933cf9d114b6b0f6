#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/registry.h"
#include "simulator/data/Utf8.h"
#include "simulator/player/RegScanner.h"

/// What a file of the registry editor and the line of a scenario have in common.
namespace scenario {

/// A root and its names: "HKEY_CURRENT_USER", "HKCU".
struct RegRoot {
  std::u16string_view name;
  std::optional<platform::RegistryRoot> root;  ///< nothing for one that the machine does without
};

/// The root of that name; null for none.
const RegRoot* findRegRoot(std::u16string_view name);

/// How the bytes of a value become its text.
using BytesToText = std::u16string (*)(std::string_view bytes);

/// Takes a value as it stands behind the equals sign: "text", dword:, hex:, hex(type):, or "-",
/// which gives nothing: the value is deleted. Of a text, half a character at the end is dropped.
/// Raises RegError.
std::optional<platform::RegistryValue> takeRegValue(
    RegScanner& scan, BytesToText textOf = simulator::fromUtf16LittleEndian);

}  // namespace scenario
