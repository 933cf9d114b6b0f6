#pragma once

#include <string_view>

#include "platform/automation.h"
#include "platform/registry.h"

namespace cxol {

/// Leaves a warning in the trace: the value does not read as a number, and what is used instead.
void WarnOfBadNumber(platform::RegistryRoot root, std::u16string_view key, std::u16string_view name,
                     const automation::Value& value, std::u16string_view used) noexcept;

}  // namespace cxol
