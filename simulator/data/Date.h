#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace simulator {

/// Brings a date, "2008-03-07", with or without a time, "T09:30" or " 09:30" and perhaps seconds,
/// to the form "2008-03-07T09:30:00", in which texts sort as the dates do. Nothing for any other
/// text and for dates and times that do not exist.
std::optional<std::u16string> normalizedDate(std::u16string_view text);

}  // namespace simulator
