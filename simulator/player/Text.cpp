#include "simulator/player/Text.h"

#include <cstdint>

namespace scenario {
namespace {

constexpr char32_t Replacement = 0xFFFD;

bool isContinuation(unsigned char byte) {
  return (byte & 0xC0) == 0x80;
}

/// Decodes the character at `at` and moves `at` behind it.
char32_t decode(std::string_view utf8, std::size_t& at) {
  const auto first = static_cast<unsigned char>(utf8[at++]);
  if (first < 0x80) return first;
  const int following = first >= 0xF0 ? 3 : first >= 0xE0 ? 2 : 1;
  if (first < 0xC2 || first > 0xF4) return Replacement;
  char32_t value = first & (0x3Fu >> following);
  for (int i = 0; i < following; ++i) {
    if (at >= utf8.size() || !isContinuation(static_cast<unsigned char>(utf8[at])))
      return Replacement;
    value = value << 6 | (static_cast<unsigned char>(utf8[at++]) & 0x3Fu);
  }
  constexpr char32_t smallest[] = {0, 0x80, 0x800, 0x10000};
  const bool surrogate = value >= 0xD800 && value <= 0xDFFF;
  return value < smallest[following] || value > 0x10FFFF || surrogate ? Replacement : value;
}

void encode(std::string& out, char32_t c) {
  const auto put = [&out](char32_t byte) { out += static_cast<char>(byte); };
  if (c < 0x80) {
    put(c);
  } else if (c < 0x800) {
    put(0xC0 | c >> 6);
    put(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    put(0xE0 | c >> 12);
    put(0x80 | (c >> 6 & 0x3F));
    put(0x80 | (c & 0x3F));
  } else {
    put(0xF0 | c >> 18);
    put(0x80 | (c >> 12 & 0x3F));
    put(0x80 | (c >> 6 & 0x3F));
    put(0x80 | (c & 0x3F));
  }
}

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
  if (c >= 0x391 && c <= 0x3A9) return offset(32);
  if (c >= 0x410 && c <= 0x42F) return offset(32);
  if (c >= 0x400 && c <= 0x40F) return offset(80);
  return c;
}

}  // namespace

std::u16string toUtf16(std::string_view utf8) {
  std::u16string text;
  text.reserve(utf8.size());
  for (std::size_t at = 0; at < utf8.size();) {
    const char32_t c = decode(utf8, at);
    if (c < 0x10000) {
      text += static_cast<char16_t>(c);
    } else {
      text += static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10));
      text += static_cast<char16_t>(0xDC00 + ((c - 0x10000) & 0x3FF));
    }
  }
  return text;
}

std::string toUtf8(std::u16string_view text) {
  std::string utf8;
  utf8.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    char32_t c = text[i];
    if (c >= 0xD800 && c <= 0xDFFF) {
      const bool pair =
          c <= 0xDBFF && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] <= 0xDFFF;
      c = pair ? 0x10000 + ((c - 0xD800) << 10) + (text[++i] - 0xDC00u) : Replacement;
    }
    encode(utf8, c);
  }
  return utf8;
}

std::u16string folded(std::u16string_view text) {
  std::u16string result(text);
  for (char16_t& c : result) c = lower(c);
  return result;
}

std::u16string_view trimmed(std::u16string_view text) {
  constexpr std::u16string_view blanks = u" \t\r\n\u00A0\uFEFF";
  const std::size_t from = text.find_first_not_of(blanks);
  if (from == text.npos) return {};
  return text.substr(from, text.find_last_not_of(blanks) - from + 1);
}

std::u16string shownCaption(std::u16string_view caption) {
  std::u16string shown;
  for (std::size_t i = 0; i < caption.size(); ++i) {
    if (caption[i] == u'&' && ++i == caption.size()) break;
    shown += caption[i];
  }
  return shown;
}

std::string oneLine(std::u16string_view text) {
  std::u16string visible;
  for (const char16_t c : text) {
    if (c == u'\n')
      visible += u"\\n";
    else if (c == u'\r')
      visible += u"\\r";
    else if (c == u'\t')
      visible += u"\\t";
    else
      visible += c < 0x20 || c == 0x7F ? u'\u00B7' : c;
  }
  return toUtf8(visible);
}

std::string quoted(std::u16string_view text) {
  return '"' + oneLine(text) + '"';
}

std::string padded(std::string_view utf8, std::size_t width) {
  std::string result(utf8);
  std::size_t characters = 0;
  for (const char byte : utf8) characters += !isContinuation(static_cast<unsigned char>(byte));
  if (characters < width) result.append(width - characters, ' ');
  return result;
}

}  // namespace scenario
