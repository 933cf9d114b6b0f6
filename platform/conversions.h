#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Conversions between numbers and texts as automation makes them, independent of any locale: the
/// decimal separator is the point.
namespace automation {

/// The number that the whole text reads as: blanks around it, a sign before it, a fraction and an
/// exponent are allowed. Nothing for any other text and for the empty one.
std::optional<double> parseNumber(std::u16string_view text);

/// Rounds halves to the even neighbour; raises error 6 outside the range of 32 bits.
std::int32_t roundToInt32(double value);

/// The same for 16 bits.
std::int16_t roundToInt16(double value);

/// A single-precision number with at most 7 significant digits, trailing zeros dropped.
std::u16string singleText(float value);

/// A double-precision number with at most 15 significant digits, trailing zeros dropped.
std::u16string doubleText(double value);

std::u16string int32Text(std::int32_t value);

/// Widens ASCII text.
std::u16string widen(std::string_view ascii);

/// Ignores the case of ASCII letters, which is all that class names, registry texts and key marks
/// need.
bool equalsIgnoringCase(std::u16string_view a, std::u16string_view b);

}  // namespace automation
