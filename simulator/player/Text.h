#pragma once

#include <string>
#include <string_view>

/// Texts of scenarios: the edges where UTF-8 meets UTF-16, and comparison as a typist expects it.
namespace scenario {

/// Ill-formed input becomes U+FFFD in both directions.
std::u16string toUtf16(std::string_view utf8);
std::string toUtf8(std::u16string_view text);

/// Lower case of the letters of Latin-1, Latin Extended-A, Greek and Cyrillic; the rest unchanged.
std::u16string folded(std::u16string_view text);

std::u16string_view trimmed(std::u16string_view text);

/// A caption as it stands on the screen: accelerator marks gone, "&&" an ampersand.
std::u16string shownCaption(std::u16string_view caption);

/// For one line of the transcript: line ends and other control characters made visible.
std::string oneLine(std::u16string_view text);
/// The same in quotation marks.
std::string quoted(std::u16string_view text);

/// Padded with blanks to `width` characters.
std::string padded(std::string_view utf8, std::size_t width);

}  // namespace scenario
