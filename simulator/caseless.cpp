#include "simulator/caseless.h"

namespace simulator {
namespace {

char16_t lower(char16_t c) {
  const auto offset = [c](int by) { return static_cast<char16_t>(c + by); };
  if (c >= u'A' && c <= u'Z') return offset(32);
  if (c < 0xC0) return c;
  if (c <= 0xDE) return c == 0xD7 ? c : offset(32);
  const bool evenPairs = (c >= 0x100 && c <= 0x137) || (c >= 0x14A && c <= 0x177);
  if (evenPairs) return c == 0x130 || c == 0x131 ? c : static_cast<char16_t>(c | 1);
  const bool oddPairs = (c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17E);
  if (oddPairs) return c % 2 ? offset(1) : c;
  if (c == 0x178) return 0xFF;
  if (c >= 0x391 && c <= 0x3AB) return offset(32);
  if (c >= 0x410 && c <= 0x42F) return offset(32);
  if (c >= 0x400 && c <= 0x40F) return offset(80);
  return c;
}

}  // namespace

std::u16string folded(std::u16string_view text) {
  std::u16string result(text);
  for (char16_t& c : result) c = lower(c);
  return result;
}

bool sameName(std::u16string_view a, std::u16string_view b) {
  return a.size() == b.size() && folded(a) == folded(b);
}

}  // namespace simulator
