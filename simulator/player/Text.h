#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/caseless.h"
#include "simulator/data/Utf8.h"

/// Texts of scenarios: comparison as a typist expects it, and what is shown in a line.
namespace scenario {

using simulator::folded;
using simulator::toUtf16;
using simulator::toUtf8;

constexpr bool isDigit(char16_t c) {
  return c >= u'0' && c <= u'9';
}

std::u16string_view trimmed(std::u16string_view text);

/// A caption as it stands on the screen: accelerator marks gone, "&&" an ampersand.
std::u16string shownCaption(std::u16string_view caption);

/// For one line of the transcript: line ends and other control characters made visible.
std::string oneLine(std::u16string_view text);
/// The same in quotation marks.
std::string inQuotes(std::u16string_view text);

/// Index of the candidate that was probably meant: one with which, or with one word of which, the
/// typed text agrees but for a letter or, in longer texts, two. Nothing when none is near.
std::optional<std::size_t> nearest(std::u16string_view typed,
                                   const std::vector<std::u16string>& candidates);

/// Padded with blanks to `width` characters.
std::string padded(std::string_view utf8, std::size_t width);

}  // namespace scenario
