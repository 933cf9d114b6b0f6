#pragma once

#include <string_view>

#include "platform/velnor.h"

namespace cxol {

/// Whether typed text is a number to dial rather than a name to look up. The client decides; while
/// it can't answer (`service` may be nothing), its characters do.
bool IsDialableNumber(std::u16string_view text, const velnor::AuxiliaryService& service) noexcept;

}  // namespace cxol
