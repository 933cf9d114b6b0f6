#include "simulator/player/Text.h"

#include <algorithm>

namespace scenario {
namespace {

bool isContinuation(unsigned char byte) {
  return (byte & 0xC0) == 0x80;
}

/// Letters to insert, to leave out, to change or to swap with the next one.
std::size_t distance(std::u16string_view a, std::u16string_view b) {
  std::vector<std::size_t> beforeLast(b.size() + 1);
  std::vector<std::size_t> last(b.size() + 1);
  std::vector<std::size_t> row(b.size() + 1);
  for (std::size_t j = 0; j <= b.size(); ++j) row[j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    beforeLast.swap(last);
    last.swap(row);
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (a[i - 1] != b[j - 1])});
      if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
        row[j] = std::min(row[j], beforeLast[j - 2] + 1);
    }
  }
  return row[b.size()];
}

}  // namespace

std::optional<std::size_t> nearest(std::u16string_view typed,
                                   const std::vector<std::u16string>& candidates) {
  constexpr std::size_t longest = 40;
  const std::u16string wanted = folded(trimmed(typed));
  if (wanted.size() < 3 || wanted.size() > longest) return std::nullopt;
  std::size_t least = wanted.size() < 6 ? 2 : 3;  // one more than may differ
  std::optional<std::size_t> found;
  const auto consider = [&](std::size_t index, std::u16string_view text) {
    if (text.size() + least <= wanted.size() || text.size() >= wanted.size() + least) return;
    const std::size_t differing = distance(wanted, text);
    if (differing >= least) return;
    least = differing;
    found = index;
  };
  constexpr std::u16string_view separators = u" ,;.()\u00A0";
  for (std::size_t i = 0; i < candidates.size(); ++i) {
    const std::u16string text = folded(trimmed(candidates[i]));
    consider(i, text);
    for (std::size_t at = 0; at < text.size();) {
      const std::size_t end = std::min(text.find_first_of(separators, at), text.size());
      consider(i, std::u16string_view(text).substr(at, end - at));
      at = end + 1;
    }
  }
  return found;
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
  visible.reserve(text.size());
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

std::string inQuotes(std::u16string_view text) {
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
