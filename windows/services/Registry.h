#pragma once

#include "platform/registry.h"
#include "windows/services/HeldKeys.h"

namespace windows {

/// The registry. Values are read as ANSI text, as the programs that share them write them; all else
/// is Unicode. The keys of values that were read stay open until the object's end. To be used by
/// one thread.
class Registry : public platform::Registry {
 public:
  std::optional<platform::RegistryValue> read(platform::RegistryRoot root, std::u16string_view key,
                                              std::u16string_view name) override;
  void write(platform::RegistryRoot root, std::u16string_view key, std::u16string_view name,
             const platform::RegistryValue& value) override;
  bool deleteValue(platform::RegistryRoot root, std::u16string_view key,
                   std::u16string_view name) override;
  bool deleteKey(platform::RegistryRoot root, std::u16string_view key) override;
  std::vector<std::u16string> valueNames(platform::RegistryRoot root,
                                         std::u16string_view key) override;
  std::vector<std::u16string> subkeyNames(platform::RegistryRoot root,
                                          std::u16string_view key) override;
  std::u16string expanded(const std::u16string& text) override;

 private:
  HeldKeys heldKeys_;
};

}  // namespace windows
