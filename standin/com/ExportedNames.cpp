#include "standin/com/ExportedNames.h"

#include <algorithm>
#include <vector>

#include "windows/com/Lock.h"

namespace standin {

using windows::Lock;
using windows::Locked;

namespace {

/// Far from the ids that type libraries use.
constexpr DISPID First = 0x40000000;

struct Names {
  Lock lock;
  std::vector<std::u16string> list;
};

Names& names() {
  static Names all;
  return all;
}

}  // namespace

DISPID ExportedNames::idOf(std::u16string_view name) {
  auto& [lock, list] = names();
  const Locked locked(lock);
  auto found = std::ranges::find(list, name);
  if (found == list.end()) found = list.insert(found, std::u16string(name));
  return First + static_cast<DISPID>(found - list.begin());
}

std::optional<std::u16string> ExportedNames::nameOf(DISPID id) {
  auto& [lock, list] = names();
  const Locked locked(lock);
  if (id < First || id - First >= static_cast<DISPID>(list.size())) return std::nullopt;
  return list[static_cast<std::size_t>(id - First)];
}

}  // namespace standin
