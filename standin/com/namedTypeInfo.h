#pragma once

#include <string_view>

#include "windows/com/ComPtr.h"

namespace standin {

/// Type information that tells the name of a dispatch interface and no members. Raises an error
/// when it can't be made.
windows::ComPtr<ITypeInfo> namedTypeInfo(std::u16string_view name);

}  // namespace standin
