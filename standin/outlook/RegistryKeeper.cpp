#include "standin/outlook/RegistryKeeper.h"

#include "windows/com/errors.h"

namespace standin {

using platform::RegistryRoot;

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
  set(root, key, name, platform::dwordValue(value));
}

void RegistryKeeper::setText(RegistryRoot root, std::u16string_view key, std::u16string_view name,
                             std::u16string_view value) {
  set(root, key, name, platform::stringValue(value));
}

}  // namespace standin
