#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/automation.h"
#include "platform/registry.h"

namespace cxol {

/// Access to the values and subkeys of one registry key.
class RegOp {
 public:
  RegOp(platform::Registry& registry, platform::RegistryRoot root, std::u16string_view key)
      : registry_(registry), root_(root), key_(key) {}

  /// A string (up to its first NUL, and expanded where its type says so) as text, bytes of up to 32
  /// bits and 64-bit numbers as a number, longer bytes as their text in hexadecimal. Nothing when
  /// the value is absent.
  std::optional<automation::Value> value(std::u16string_view name) const;
  /// Writes a text as a string, a number or Boolean as a 32-bit number, creating the key when
  /// missing. Raises error 6 for a number beyond 32 bits, 13 for any other kind, what is empty
  /// included, and whatever a failing write raises.
  void setValue(std::u16string_view name, const automation::Value& value) const;
  /// False when there was nothing to delete or it can't be deleted.
  bool deleteValue(std::u16string_view name) const;
  /// Deletes the key itself with everything below it; false as above.
  bool deleteKey() const;

  std::vector<std::u16string> valueNames() const;
  std::vector<std::u16string> subkeyNames() const;

 private:
  platform::Registry& registry_;
  platform::RegistryRoot root_;
  std::u16string key_;
};

}  // namespace cxol
