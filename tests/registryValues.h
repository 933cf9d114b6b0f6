#pragma once

#include <initializer_list>
#include <string_view>

#include "platform/registry.h"

namespace tests {

inline platform::RegistryValue bytes(platform::RegistryType type,
                                     std::initializer_list<int> values) {
  platform::RegistryValue value{type, {}, {}};
  for (const int byte : values) value.bytes.push_back(static_cast<std::byte>(byte));
  return value;
}

inline platform::RegistryValue text(platform::RegistryType type, std::u16string_view content) {
  return {type, std::u16string(content), {}};
}

}  // namespace tests
