#pragma once

#include <string>
#include <string_view>

namespace simulator {

/// The machine's ANSI code page, Windows-1252. What it lacks becomes "?", each half of a surrogate
/// pair for itself: a text has as many bytes as it has UTF-16 units. The five bytes without a
/// character stand for the control characters of the same value.
std::string toAnsi(std::u16string_view text);
std::u16string fromAnsi(std::string_view bytes);

}  // namespace simulator
