#pragma once

#include <string>
#include <string_view>

#include "windows/com/api.h"

/// Texts at the edge to Windows, whose wide characters are UTF-16 units of another type.
namespace windows {

static_assert(sizeof(wchar_t) == sizeof(char16_t));

/// The text must end in a NUL.
inline const wchar_t* wide(const char16_t* text) {
  return reinterpret_cast<const wchar_t*>(text);
}
inline const wchar_t* wide(const std::u16string& text) {
  return wide(text.c_str());
}

inline std::u16string_view utf16(const wchar_t* text, std::size_t length) {
  return {reinterpret_cast<const char16_t*>(text), length};
}
/// Empty for a null pointer.
std::u16string_view utf16(const wchar_t* text);

/// In the system's ANSI code page; what that lacks becomes its default character.
std::string ansi(std::u16string_view text);
std::u16string fromAnsi(std::string_view text);

/// Whether two names are the same but for the case of their letters, in no particular language.
bool sameName(std::u16string_view a, std::u16string_view b);

}  // namespace windows
