#include "doctor/TraceLines.h"

#include <algorithm>

#include "infra/text.h"

namespace doctor {
namespace {

constexpr std::u16string_view LineEnd = u"\r\n";

bool isDigit(char16_t c) {
  return c >= u'0' && c <= u'9';
}

/// Calls `each` with every line.
template <class Each>
void forLines(std::u16string_view text, Each each) {
  while (!text.empty()) {
    const auto end = text.find(u'\n');
    auto line = text.substr(0, end);
    if (line.ends_with(u'\r')) line.remove_suffix(1);
    each(line);
    if (end == std::u16string_view::npos) return;
    text.remove_prefix(end + 1);
  }
}

/// Digits and letters, of whatever script, become signs that stand for them.
std::u16string veiled(std::u16string_view text) {
  std::u16string result(text);
  for (char16_t& c : result) {
    const bool letter = (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z') || c > 0x7F;
    c = isDigit(c) ? u'#' : letter ? u'x' : c;
  }
  return result;
}

/// What an error or a setting says about itself stays; what it quotes and long numbers do not.
std::u16string withoutQuotedAndNumbers(std::u16string_view text) {
  constexpr std::u16string_view Quotes = u"\"'\u00AB\u00BB\u201C\u201D\u201E";
  constexpr std::size_t ShortNumber = 2;
  std::u16string result;
  while (!text.empty()) {
    std::size_t length = 1;
    bool hide = false;
    if (Quotes.find(text.front()) != Quotes.npos) {
      length = std::min(text.find_last_of(Quotes) + 1, text.size());
      hide = true;
    } else if (isDigit(text.front())) {
      while (length < text.size() && isDigit(text[length])) ++length;
      hide = length > ShortNumber;
    }
    const auto part = text.substr(0, length);
    result += hide ? veiled(part) : std::u16string(part);
    text.remove_prefix(length);
  }
  return result;
}

/// A text may begin with a count.
std::size_t countLength(std::u16string_view text) {
  std::size_t length = 0;
  while (length < text.size() && isDigit(text[length])) ++length;
  return length;
}

std::u16string maskedText(std::u16string_view text) {
  const auto* meaning = meaningOf(text);
  if (!meaning) return veiled(text);
  const auto count = countLength(text);
  if (count > 0) return cxol::concat(text.substr(0, count), maskedText(text.substr(count)));
  const auto tail = text.substr(meaning->prefix.size());
  if ((meaning->flags & Personal) == 0) {
    return cxol::concat(meaning->prefix, withoutQuotedAndNumbers(tail));
  }
  // The number that is dialled stands in brackets; what became of it is ours.
  const auto bracket = meaning->prefix.ends_with(u'(') ? tail.rfind(u"): ") : tail.npos;
  if (bracket == tail.npos) return cxol::concat(meaning->prefix, veiled(tail));
  return cxol::concat(meaning->prefix, veiled(tail.substr(0, bracket)), tail.substr(bracket));
}

}  // namespace

TraceLine readTraceLine(std::u16string_view line) {
  constexpr std::u16string_view Pattern = u"00.00.0000 00:00:00.000 ";
  constexpr std::size_t LevelWidth = 9;
  bool timed = line.size() >= Pattern.size() + LevelWidth;
  for (std::size_t i = 0; timed && i < Pattern.size(); ++i) {
    timed = Pattern[i] == u'0' ? isDigit(line[i]) : line[i] == Pattern[i];
  }
  const auto level = timed ? line.substr(Pattern.size(), LevelWidth) : std::u16string_view();
  const auto colon = level.find(u':');
  if (colon == level.npos) return {{}, {}, line};
  return {line.substr(0, Pattern.size()), level.substr(0, colon),
          line.substr(Pattern.size() + LevelWidth)};
}

const TraceMeaning* meaningOf(std::u16string_view text) {
  text.remove_prefix(countLength(text));
  const TraceMeaning* best = nullptr;
  for (const auto& row : TraceMeanings) {
    if (!text.starts_with(row.prefix)) continue;
    if (!best || row.prefix.size() > best->prefix.size()) best = &row;
  }
  return best;
}

std::u16string explainedTrace(std::u16string_view trace, std::size_t language, bool onlyProblems) {
  constexpr std::size_t German = 0;
  std::u16string result;
  forLines(trace, [&](std::u16string_view line) {
    const auto read = readTraceLine(line);
    if (onlyProblems && read.level != u"Warning" && read.level != u"Error") return;
    const auto* meaning = meaningOf(read.text);
    if (meaning && (meaning->flags & Click) != 0 && !onlyProblems) result.append(LineEnd);
    result.append(line).append(LineEnd);
    if (!meaning) return;
    result.append(u"        ").append(language == German ? meaning->german : meaning->english);
    result.append(LineEnd);
  });
  return result;
}

std::u16string maskedTrace(std::u16string_view trace) {
  std::u16string result;
  forLines(trace, [&](std::u16string_view line) {
    const auto read = readTraceLine(line);
    result.append(line.substr(0, line.size() - read.text.size()));
    result.append(maskedText(read.text)).append(LineEnd);
  });
  return result;
}

std::u16string maskedReport(std::u16string_view report) {
  std::u16string result(report);
  for (const std::u16string_view folder : {u"\\Documents and Settings\\", u"\\Users\\"}) {
    for (std::size_t at = 0; at < result.size(); ++at) {
      const auto here = std::u16string_view(result).substr(at, folder.size());
      if (!cxol::equalsIgnoringCase(here, folder)) continue;
      at += folder.size();
      const auto end = std::min(result.find_first_of(u"\\\r\n", at), result.size());
      result.replace(at, end - at, u"xxx");
    }
  }
  return result;
}

}  // namespace doctor
