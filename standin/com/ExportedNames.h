#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "windows/com/api.h"

namespace standin {

/// The ids under which members without type information are known outside: one list a module, so
/// that a name has the same id for every object.
class ExportedNames {
 public:
  static DISPID idOf(std::u16string_view name);
  /// Nothing for an id that no name got.
  static std::optional<std::u16string> nameOf(DISPID id);
};

}  // namespace standin
