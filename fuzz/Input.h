#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace fuzz {

/// The bytes of one run, taken from their start to their end. What is not there is zero or empty.
class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size)
      : rest_(reinterpret_cast<const char*>(data), size) {}

  bool atEnd() const { return rest_.empty(); }
  std::uint8_t byte() {
    if (rest_.empty()) return 0;
    const auto value = static_cast<std::uint8_t>(rest_.front());
    rest_.remove_prefix(1);
    return value;
  }
  std::int32_t number() {
    std::uint32_t value = 0;
    for (int i = 0; i < 4; ++i) value = value << 8 | byte();
    return static_cast<std::int32_t>(value);
  }
  /// Up to a byte 0xFF, which can't occur in text files and so is left to separate.
  std::string_view part() {
    const auto end = rest_.find('\xFF');
    const auto text = rest_.substr(0, end);
    rest_ = end == std::string_view::npos ? std::string_view() : rest_.substr(end + 1);
    return text;
  }
  /// The same as UTF-16: a byte below 0xF0 stands for itself; one above brings half a character
  /// that its partner may never follow, or an uncommon separator.
  std::u16string text() { return widened(part()); }
  std::u16string restAsText() { return widened(rest()); }
  std::string_view rest() { return std::exchange(rest_, {}); }

 private:
  static std::u16string widened(std::string_view bytes) {
    static constexpr char16_t Odd[] = {0xD83D, 0xDE00, 0xD800, 0xDFFF, 0xFFFE, 0xFFFF,
                                       0x2028, 0x0085, 0x00A0, 0x200B, 0x0130, 0x0131,
                                       0x212A, 0xFF11, 0x0660, 0xFEFF};
    std::u16string text;
    text.reserve(bytes.size());
    for (const char c : bytes) {
      const auto unit = static_cast<std::uint8_t>(c);
      text.push_back(unit < 0xF0 ? static_cast<char16_t>(unit) : Odd[unit - 0xF0]);
    }
    return text;
  }

  std::string_view rest_;
};

}  // namespace fuzz
