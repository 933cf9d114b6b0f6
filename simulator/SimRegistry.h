#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/registry.h"
#include "simulator/boundary.h"

namespace simulator {

/// A registry in memory. Values are held raw, whatever their type and size. HKEY_CLASSES_ROOT is
/// "Software\Classes" of HKEY_LOCAL_MACHINE. Keys and names are listed in the order of the
/// alphabet.
class SimRegistry : public platform::Registry {
 public:
  explicit SimRegistry(Boundary& boundary) : boundary_(boundary) {}

  // An observer's error makes a read find nothing and a deletion fail; a write passes it on.
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

  // Not crossings: for the program that plays the machine.

  /// A variable of the process's environment.
  void setVariable(std::u16string_view name, std::u16string_view value);
  void makeKey(platform::RegistryRoot root, std::u16string_view key);
  void setDword(platform::RegistryRoot root, std::u16string_view key, std::u16string_view name,
                std::uint32_t value);
  void setString(platform::RegistryRoot root, std::u16string_view key, std::u16string_view name,
                 std::u16string_view text);
  void setRaw(platform::RegistryRoot root, std::u16string_view key, std::u16string_view name,
              platform::RegistryValue value);
  std::optional<platform::RegistryValue> peek(platform::RegistryRoot root, std::u16string_view key,
                                              std::u16string_view name) const;
  bool hasKey(platform::RegistryRoot root, std::u16string_view key) const;
  /// False when there was no such value.
  bool remove(platform::RegistryRoot root, std::u16string_view key, std::u16string_view name);
  /// The key with everything below it; false when there was none.
  bool removeKey(platform::RegistryRoot root, std::u16string_view key);

 private:
  struct NamedValue {
    std::u16string name;
    platform::RegistryValue value;
  };
  struct Key {
    std::u16string name;
    std::map<std::u16string, Key> keys;           // by folded name
    std::map<std::u16string, NamedValue> values;  // by folded name
  };
  const Key* find(platform::RegistryRoot root, std::u16string_view path) const;
  Key* find(platform::RegistryRoot root, std::u16string_view path);
  Key& make(platform::RegistryRoot root, std::u16string_view path);

  Boundary& boundary_;
  std::map<std::u16string, std::u16string> variables_;  // by folded name
  Key currentUser_;
  Key localMachine_;
};

}  // namespace simulator
