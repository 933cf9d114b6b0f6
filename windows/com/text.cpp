#include "windows/com/text.h"

namespace windows {

std::u16string_view utf16(const wchar_t* text) {
  return text ? std::u16string_view(reinterpret_cast<const char16_t*>(text))
              : std::u16string_view();
}

std::string ansi(std::u16string_view text) {
  if (text.empty()) return {};
  const auto* units = reinterpret_cast<const wchar_t*>(text.data());
  const int length = static_cast<int>(text.size());
  const int size = WideCharToMultiByte(CP_ACP, 0, units, length, nullptr, 0, nullptr, nullptr);
  std::string result(static_cast<std::size_t>(size), '\0');
  WideCharToMultiByte(CP_ACP, 0, units, length, result.data(), size, nullptr, nullptr);
  return result;
}

std::u16string fromAnsi(std::string_view text) {
  if (text.empty()) return {};
  const int length = static_cast<int>(text.size());
  const int size = MultiByteToWideChar(CP_ACP, 0, text.data(), length, nullptr, 0);
  std::u16string result(static_cast<std::size_t>(size), u'\0');
  MultiByteToWideChar(CP_ACP, 0, text.data(), length, reinterpret_cast<wchar_t*>(result.data()),
                      size);
  return result;
}

bool sameName(std::u16string_view a, std::u16string_view b) {
  constexpr LCID English = 0x0409;
  return CompareStringW(English, NORM_IGNORECASE, reinterpret_cast<const wchar_t*>(a.data()),
                        static_cast<int>(a.size()), reinterpret_cast<const wchar_t*>(b.data()),
                        static_cast<int>(b.size())) == CSTR_EQUAL;
}

}  // namespace windows
