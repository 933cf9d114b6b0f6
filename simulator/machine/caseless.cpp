#include "simulator/machine/caseless.h"

namespace simulator {
namespace {

struct Range {
  char16_t first;
  char16_t last;
  char16_t distance;  // from an upper-case letter to its lower-case one
};

constexpr Range Ranges[] = {
    {u'A', u'Z', 32},   {0xC0, 0xD6, 32},   {0xD8, 0xDE, 32},   {0x391, 0x3A1, 32},
    {0x3A3, 0x3AB, 32}, {0x400, 0x40F, 80}, {0x410, 0x42F, 32},
};

char16_t lower(char16_t c) {
  for (const Range& range : Ranges) {
    if (c >= range.first && c <= range.last) return static_cast<char16_t>(c + range.distance);
  }
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
