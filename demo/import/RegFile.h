#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/registry.h"
#include "simulator/SimRegistry.h"
#include "simulator/player/RegScanner.h"

namespace demo {

/// One step of an exported file.
struct RegStep {
  enum class Kind { MakeKey, DeleteKey, SetValue, DeleteValue };
  Kind kind = Kind::MakeKey;
  platform::RegistryRoot root = platform::RegistryRoot::CurrentUser;
  std::u16string key;
  std::u16string name;            ///< empty for the default value
  platform::RegistryValue value;  ///< of SetValue
};

/// Reads a file as the registry editor exports it, version 5 (UTF-16 or UTF-8, without a mark
/// UTF-8 if it can be, else ANSI) or version 4 ("REGEDIT4", ANSI). Keys of the roots HKEY_USERS and
/// HKEY_CURRENT_CONFIG are read and left out. Raises scenario::RegError.
std::vector<RegStep> readRegFile(std::string_view bytes);

/// Carries the steps of a file out, all of them or, when it raises scenario::RegError, none.
void importRegFile(simulator::SimRegistry& registry, std::string_view bytes);

}  // namespace demo
