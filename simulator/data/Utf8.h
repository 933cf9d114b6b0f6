#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace simulator {

/// Nothing when the bytes are no valid UTF-8 (overlong forms and surrogates count as invalid).
std::optional<std::u16string> fromUtf8(std::string_view bytes);

/// What is no valid UTF-8 becomes U+FFFD.
std::u16string toUtf16(std::string_view bytes);

/// A lone surrogate becomes U+FFFD.
std::string toUtf8(std::u16string_view text);

/// Half a character at the end is dropped.
std::u16string fromUtf16LittleEndian(std::string_view bytes);
std::u16string fromUtf16BigEndian(std::string_view bytes);

/// A byte order mark, if any, cut off.
std::string_view withoutByteOrderMark(std::string_view bytes) noexcept;

/// The whole file, or nothing when it can't be read.
std::optional<std::string> readWholeFile(const std::string& path);

}  // namespace simulator
