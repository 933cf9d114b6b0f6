#include "standin/outlook/RegistryKeeper.h"

#include <bit>
#include <cstring>

#include "windows/com/errors.h"

namespace standin {

using platform::RegistryRoot;
using platform::RegistryType;
using platform::RegistryValue;

RegistryKeeper::~RegistryKeeper() {
  for (const auto& [place, value] : before_) {
    const auto& [root, key, name] = place;
    windows::guardedQuietly([&] {
      if (value)
        registry_.write(root, key, name, *value);
      else
        registry_.deleteValue(root, key, name);
    });
  }
}

void RegistryKeeper::remember(const Place& place) {
  if (before_.contains(place)) return;
  const auto& [root, key, name] = place;
  before_.emplace(place, registry_.read(root, key, name));
}

bool RegistryKeeper::set(RegistryRoot root, std::u16string_view key, std::u16string_view name,
                         const Value& value) {
  remember({root, std::u16string(key), std::u16string(name)});
  if (!value) return registry_.deleteValue(root, key, name);
  registry_.write(root, key, name, *value);
  return true;
}

void RegistryKeeper::setDword(RegistryRoot root, std::u16string_view key, std::u16string_view name,
                              std::uint32_t value) {
  RegistryValue stored;
  stored.type = RegistryType::Dword;
  stored.bytes.resize(sizeof value);
  std::memcpy(stored.bytes.data(), &value, sizeof value);
  set(root, key, name, stored);
}

void RegistryKeeper::setText(RegistryRoot root, std::u16string_view key, std::u16string_view name,
                             std::u16string_view value) {
  RegistryValue stored;
  stored.type = RegistryType::String;
  stored.text = std::u16string(value) + u'\0';
  set(root, key, name, stored);
}

std::optional<std::uint32_t> dwordOf(const RegistryKeeper::Value& value) {
  std::uint32_t number = 0;
  if (!value || value->type != RegistryType::Dword || value->bytes.size() != sizeof number)
    return std::nullopt;
  std::memcpy(&number, value->bytes.data(), sizeof number);
  return number;
}

}  // namespace standin
