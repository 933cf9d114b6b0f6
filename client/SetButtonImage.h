#pragma once

#include <string_view>

#include "platform/office.h"

namespace cxol {

/// Gives a button its picture, see-through where nothing is drawn: directly where Office offers
/// that, which leaves alone what the user has copied; in Office 2000 by way of the clipboard. Tries
/// again once; a button whose picture fails twice keeps its face. Never raises.
void SetButtonImage(std::u16string_view pictureName,
                    const office::CommandBarControl& button) noexcept;

}  // namespace cxol
