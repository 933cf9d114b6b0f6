#include "platform/registry.h"

namespace platform {

RegistryValue dwordValue(std::uint32_t number) {
  RegistryValue value{RegistryType::Dword, {}, {}};
  for (int shift = 0; shift < 32; shift += 8)
    value.bytes.push_back(static_cast<std::byte>(number >> shift & 0xFF));
  return value;
}

RegistryValue stringValue(std::u16string_view text) {
  return {RegistryType::String, std::u16string(text) + u'\0', {}};
}

std::uint64_t numberOf(std::span<const std::byte> bytes) {
  std::uint64_t number = 0;
  for (std::size_t i = bytes.size(); i-- > 0;)
    number = number << 8 | std::to_integer<std::uint64_t>(bytes[i]);
  return number;
}

std::optional<std::uint32_t> dwordOf(const std::optional<RegistryValue>& value) {
  if (!value || value->type != RegistryType::Dword || value->bytes.size() != sizeof(std::uint32_t))
    return std::nullopt;
  return static_cast<std::uint32_t>(numberOf(value->bytes));
}

std::u16string textOf(const std::optional<RegistryValue>& value) {
  return value ? value->text.substr(0, value->text.find(u'\0')) : std::u16string();
}

}  // namespace platform
