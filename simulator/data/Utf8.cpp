#include "simulator/data/Utf8.h"

#include <cstddef>
#include <fstream>
#include <iterator>

namespace simulator {
namespace {

constexpr char32_t Invalid = 0xFFFFFFFF;
constexpr char32_t Replacement = 0xFFFD;

struct Lead {
  std::size_t followers;
  char32_t bits;
  char32_t least;  // smaller values have a shorter form
};

std::optional<Lead> classify(unsigned char byte) {
  if (byte < 0x80) return Lead{0, byte, 0};
  if (byte >= 0xC2 && byte < 0xE0) return Lead{1, byte & 0x1Fu, 0x80};
  if (byte >= 0xE0 && byte < 0xF0) return Lead{2, byte & 0x0Fu, 0x800};
  if (byte >= 0xF0 && byte < 0xF5) return Lead{3, byte & 0x07u, 0x10000};
  return std::nullopt;
}

char32_t nextCodePoint(std::string_view bytes, std::size_t& at) {
  const auto lead = classify(static_cast<unsigned char>(bytes[at++]));
  if (!lead) return Invalid;
  char32_t point = lead->bits;
  for (std::size_t i = 0; i < lead->followers; ++i) {
    // What does not belong to this character may begin the next one.
    if (at == bytes.size() || (static_cast<unsigned char>(bytes[at]) & 0xC0u) != 0x80u)
      return Invalid;
    point = (point << 6) | (static_cast<unsigned char>(bytes[at++]) & 0x3Fu);
  }
  const bool surrogate = point >= 0xD800 && point < 0xE000;
  return point < lead->least || surrogate || point > 0x10FFFF ? Invalid : point;
}

void append(std::u16string& text, char32_t point) {
  if (point < 0x10000) {
    text += static_cast<char16_t>(point);
  } else {
    text += static_cast<char16_t>(0xD800 + ((point - 0x10000) >> 10));
    text += static_cast<char16_t>(0xDC00 + ((point - 0x10000) & 0x3FF));
  }
}

std::u16string fromUtf16(std::string_view bytes, std::size_t high) {
  std::u16string text;
  text.reserve(bytes.size() / 2);
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(bytes[i + at]); };
    text += static_cast<char16_t>(byte(high) << 8 | byte(1 - high));
  }
  return text;
}

}  // namespace

std::optional<std::u16string> fromUtf8(std::string_view bytes) {
  std::u16string text;
  text.reserve(bytes.size());
  for (std::size_t at = 0; at < bytes.size();) {
    const char32_t point = nextCodePoint(bytes, at);
    if (point == Invalid) return std::nullopt;
    append(text, point);
  }
  return text;
}

std::u16string toUtf16(std::string_view bytes) {
  std::u16string text;
  text.reserve(bytes.size());
  for (std::size_t at = 0; at < bytes.size();) {
    const char32_t point = nextCodePoint(bytes, at);
    append(text, point == Invalid ? Replacement : point);
  }
  return text;
}

std::u16string fromUtf16LittleEndian(std::string_view bytes) {
  return fromUtf16(bytes, 1);
}

std::u16string fromUtf16BigEndian(std::string_view bytes) {
  return fromUtf16(bytes, 0);
}

std::string_view withoutByteOrderMark(std::string_view bytes) noexcept {
  constexpr std::string_view Mark = "\xEF\xBB\xBF";
  return bytes.starts_with(Mark) ? bytes.substr(Mark.size()) : bytes;
}

std::optional<std::string> readWholeFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) return std::nullopt;
  std::string bytes{std::istreambuf_iterator<char>(file), {}};
  // A folder opens but can't be read.
  return file.bad() ? std::nullopt : std::optional(std::move(bytes));
}

std::string toUtf8(std::u16string_view text) {
  std::string bytes;
  bytes.reserve(text.size());
  const auto tail = [&](char32_t c, int shift) {
    bytes.push_back(static_cast<char>(0x80 | (c >> shift & 0x3F)));
  };
  for (std::size_t i = 0; i < text.size(); ++i) {
    char32_t c = text[i];
    if (c >= 0xD800 && c <= 0xDFFF) {
      const bool pair =
          c <= 0xDBFF && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] <= 0xDFFF;
      c = pair ? 0x10000 + ((c - 0xD800) << 10) + (text[++i] - 0xDC00u) : Replacement;
    }
    if (c < 0x80) {
      bytes.push_back(static_cast<char>(c));
    } else if (c < 0x800) {
      bytes.push_back(static_cast<char>(0xC0 | c >> 6));
      tail(c, 0);
    } else if (c < 0x10000) {
      bytes.push_back(static_cast<char>(0xE0 | c >> 12));
      tail(c, 6);
      tail(c, 0);
    } else {
      bytes.push_back(static_cast<char>(0xF0 | c >> 18));
      tail(c, 12);
      tail(c, 6);
      tail(c, 0);
    }
  }
  return bytes;
}

}  // namespace simulator
