#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

enum class RegistryRoot { ClassesRoot, CurrentUser, LocalMachine };

/// Type codes of registry values as Windows numbers them; others may occur and travel as they are.
enum class RegistryType : std::uint32_t {
  None = 0,
  String = 1,
  ExpandString = 2,
  Binary = 3,
  Dword = 4,
  MultiString = 7,
  Qword = 11,
};

/// A value as the registry holds it.
struct RegistryValue {
  RegistryType type = RegistryType::None;
  /// The text of the string types, NULs and all, exactly as long as the stored size: a value that
  /// was stored without its final NUL has none here.
  std::u16string text;
  /// The bytes of all other types.
  std::vector<std::byte> bytes;
};

/// A 32-bit number, and a string with its final NUL, as the registry holds them.
RegistryValue dwordValue(std::uint32_t number);
RegistryValue stringValue(std::u16string_view text);
/// The number that up to 8 bytes make, least significant byte first.
std::uint64_t numberOf(std::span<const std::byte> bytes);
/// Nothing for what is no 32-bit number.
std::optional<std::uint32_t> dwordOf(const std::optional<RegistryValue>& value);
/// The text up to its first NUL; empty for no text.
std::u16string textOf(const std::optional<RegistryValue>& value);

/// The registry as the process sees it. Key paths are separated by backslashes; keys and names are
/// found without regard to case; an empty name is the key's default value.
class Registry {
 public:
  virtual ~Registry() = default;
  /// Nothing when key or value is absent or can't be read.
  virtual std::optional<RegistryValue> read(RegistryRoot root, std::u16string_view key,
                                            std::u16string_view name) = 0;
  /// Creates the key when missing; raises an error when the value can't be written.
  virtual void write(RegistryRoot root, std::u16string_view key, std::u16string_view name,
                     const RegistryValue& value) = 0;
  /// False when there was nothing to delete or it can't be deleted.
  virtual bool deleteValue(RegistryRoot root, std::u16string_view key,
                           std::u16string_view name) = 0;
  /// Deletes the key with everything below it; false as above.
  virtual bool deleteKey(RegistryRoot root, std::u16string_view key) = 0;
  virtual std::vector<std::u16string> valueNames(RegistryRoot root, std::u16string_view key) = 0;
  virtual std::vector<std::u16string> subkeyNames(RegistryRoot root, std::u16string_view key) = 0;
  /// The text with the values of the process's environment variables in place of their names
  /// ("%NAME%"): what a text of type ExpandString means. Names of no variable stay.
  virtual std::u16string expanded(const std::u16string& text) = 0;
};

}  // namespace platform
