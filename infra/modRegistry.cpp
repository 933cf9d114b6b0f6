#include "infra/modRegistry.h"

#include <optional>

#include "infra/errors.h"
#include "infra/runtime.h"
#include "platform/conversions.h"
#include "resources/settings.h"

namespace cxol {
namespace {

constexpr auto LocalAppData = resources::setting(u"LocalAppData").place;

/// The integer that a read into `size` bytes of zeros gives, least significant byte first. A value
/// that is larger than its buffer can't be read.
std::optional<std::uint32_t> readInto(std::size_t size, const platform::RegistryValue& value) {
  if (value.bytes.size() > size) return std::nullopt;
  return static_cast<std::uint32_t>(platform::numberOf(value.bytes));
}

}  // namespace

std::u16string GetRegString(platform::RegistryRoot root, std::u16string_view key,
                            std::u16string_view name) {
  const auto value = machine().registry.read(root, key, name);
  if (!value) return {};
  switch (value->type) {
    case platform::RegistryType::String: {
      const auto end = value->text.find(u'\0');
      if (end == std::u16string::npos) {
        throw automation::Error(automation::ErrorNumber::InvalidProcedureCall);
      }
      return value->text.substr(0, end);
    }
    case platform::RegistryType::Dword: {
      const auto number = readInto(sizeof(std::int32_t), *value);
      return number ? automation::int32Text(static_cast<std::int32_t>(*number)) : std::u16string();
    }
    case platform::RegistryType::Binary: {
      const auto number = readInto(sizeof(std::int16_t), *value);
      return number ? automation::int32Text(static_cast<std::int16_t>(*number)) : std::u16string();
    }
    default: return {};
  }
}

std::int32_t GetRegLong(platform::RegistryRoot root, std::u16string_view key,
                        std::u16string_view name) noexcept {
  std::int32_t number = 0;
  trapQuietly([&] {
    const auto text = GetRegString(root, key, name);
    // Nearly always: not worth an error.
    if (!text.empty()) number = automation::Value(text).toInt32();
  });
  return number;
}

std::u16string GetLocalAppDataFolder() {
  return GetRegString(LocalAppData.root, LocalAppData.key, LocalAppData.name) + u"\\";
}

}  // namespace cxol
