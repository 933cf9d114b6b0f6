#include "simulator/machine/ansi.h"

#include <array>
#include <cstddef>

namespace simulator {
namespace {

/// The characters of the bytes 80 to 9F; everywhere else byte and character have one value.
constexpr std::array<char16_t, 32> Upper = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};
constexpr char16_t FirstUpper = 0x80;
constexpr char16_t AfterUpper = 0xA0;

char toByte(char16_t c) {
  if (c < FirstUpper || (c >= AfterUpper && c <= 0xFF)) return static_cast<char>(c);
  for (std::size_t i = 0; i < Upper.size(); ++i) {
    if (Upper[i] == c) return static_cast<char>(FirstUpper + i);
  }
  return '?';
}

char16_t toCharacter(char byte) {
  const auto value = static_cast<unsigned char>(byte);
  return value >= FirstUpper && value < AfterUpper ? Upper[value - FirstUpper] : value;
}

}  // namespace

std::string toAnsi(std::u16string_view text) {
  std::string bytes;
  bytes.reserve(text.size());
  for (const char16_t c : text) bytes += toByte(c);
  return bytes;
}

std::u16string fromAnsi(std::string_view bytes) {
  std::u16string text;
  text.reserve(bytes.size());
  for (const char byte : bytes) text += toCharacter(byte);
  return text;
}

}  // namespace simulator
