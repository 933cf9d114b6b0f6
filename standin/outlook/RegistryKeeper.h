#pragma once

#include <map>
#include <optional>
#include <string>
#include <tuple>

#include "windows/services/Registry.h"

namespace standin {

/// Changes values of the registry and puts everything back in the end.
class RegistryKeeper {
 public:
  RegistryKeeper() = default;
  ~RegistryKeeper();
  RegistryKeeper(const RegistryKeeper&) = delete;
  RegistryKeeper& operator=(const RegistryKeeper&) = delete;

  using Value = std::optional<platform::RegistryValue>;

  /// Nothing as the value deletes it; false when there was nothing to delete.
  bool set(platform::RegistryRoot root, std::u16string_view key, std::u16string_view name,
           const Value& value);
  void setDword(platform::RegistryRoot root, std::u16string_view key, std::u16string_view name,
                std::uint32_t value);
  void setText(platform::RegistryRoot root, std::u16string_view key, std::u16string_view name,
               std::u16string_view value);

  windows::Registry& registry() { return registry_; }

 private:
  using Place = std::tuple<platform::RegistryRoot, std::u16string, std::u16string>;
  void remember(const Place& place);

  windows::Registry registry_;
  std::map<Place, Value> before_;
};

}  // namespace standin
