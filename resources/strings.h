#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace resources {

/// From the ids of one language's texts to those of the next one's.
inline constexpr std::int32_t LanguageStep = 5000;

/// The text with this id, which already carries its language's offset: German 0, English 5000 and
/// so on. Nothing when the table has no such id. The text lives as long as the program.
std::optional<std::u16string_view> string(std::int32_t id) noexcept;

}  // namespace resources
