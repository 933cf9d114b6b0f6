#pragma once

#include <string_view>

#include "platform/office.h"

namespace cxol {

/// Gives a button its picture, by way of the clipboard: the one way that every Office version
/// knows. Tries again once; a button whose picture fails twice keeps its face. Never raises.
void SetButtonImage(std::u16string_view pictureName,
                    const office::CommandBarControl& button) noexcept;

}  // namespace cxol
