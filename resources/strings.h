#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace resources {

/// The text with this id, which already carries its language's offset: German 0, English 5000,
/// French 10000, Italian 15000, Spanish 20000, Portuguese 25000. Nothing when the table has no such
/// id. The text lives as long as the program.
std::optional<std::u16string_view> string(std::int32_t id) noexcept;

}  // namespace resources
