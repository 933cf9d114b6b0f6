#include "simulator/player/Text.h"

namespace scenario {
namespace {

bool isContinuation(unsigned char byte) {
  return (byte & 0xC0) == 0x80;
}

}  // namespace

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
