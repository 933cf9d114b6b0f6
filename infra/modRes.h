#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/automation.h"

namespace cxol {

/// Chooses the interface language: the value set for this host program, the maker's language
/// service, the user's value for all programs, the user's regional settings. False when that
/// failed; German stays in force then.
bool SelectLanguage() noexcept;

/// Sets the language by its two-letter code, without regard to case; German for any other code.
void SetLanguage(std::u16string_view code);

/// The text with this id in the chosen language. Without one: the default, or "<ID=" id ">" when
/// the default is empty.
std::u16string LoadResStringDefault(std::int32_t id, std::u16string_view defaultText);

/// The text with this id, the product's name filled in.
std::u16string GetResString(std::int32_t id);

/// The icon with this id, or nothing.
automation::Object GetResPicture(std::int32_t id) noexcept;

/// What stands for the product's name in a text, and for the name of a bar that has none.
inline constexpr std::u16string_view NeutralName = u"!!VELNOR_NEUTRAL!!";

}  // namespace cxol
