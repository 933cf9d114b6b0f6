#include "simulator/player/Line.h"

#include <algorithm>

#include "simulator/player/Text.h"

namespace scenario {
namespace {

bool isSpace(char16_t c) {
  return c == u' ' || c == u'\t' || c == u'\r' || c == u'\u00A0';
}
bool separates(char16_t c) {
  return isSpace(c) || c == u',';
}

/// Reads a quoted text; `at` stands on the opening quote and ends behind the closing one, which a
/// separator or the line's end follows. Quotes inside are doubled, or come in pairs around a word.
std::u16string readQuoted(std::u16string_view line, std::size_t& at) {
  std::u16string text;
  bool innerOpen = false;
  for (++at; at < line.size(); ++at) {
    if (line[at] == u'"') {
      const char16_t next = at + 1 < line.size() ? line[at + 1] : u' ';
      if (innerOpen) {
        innerOpen = false;
      } else if (next == u'"') {
        ++at;
      } else if (separates(next) || next == u'#') {
        ++at;
        return text;
      } else {
        innerOpen = true;
      }
    }
    text += line[at];
  }
  throw Mistake("the text " + inQuotes(text) + " has no closing quotation mark");
}

std::string joined(const std::vector<std::u16string_view>& words) {
  std::string list;
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (i > 0) list += i + 1 == words.size() ? " or " : ", ";
    list += toUtf8(words[i]);
  }
  return list;
}

}  // namespace

Line Line::read(std::u16string_view text) {
  Line line;
  std::size_t at = 0;
  const auto skipBlanks = [&] {
    while (at < text.size() && (separates(text[at]) || text[at] == u'\uFEFF')) ++at;
  };
  skipBlanks();
  while (at < text.size() && text[at] != u'#') {
    Token token;
    if (text[at] == u'"') {
      token = {readQuoted(text, at), true};
    } else {
      const std::size_t from = at;
      while (at < text.size() && !separates(text[at]) && text[at] != u'"') ++at;
      token.text = text.substr(from, at - from);
    }
    if (line.word.empty() && line.args.empty() && !token.quoted) {
      line.word = folded(token.text);
      line.rest = trimmed(text.substr(at));
    } else {
      if (line.word.empty()) throw Mistake("a command comes first, then its texts");
      line.args.push_back(std::move(token));
    }
    skipBlanks();
  }
  return line;
}

const Token& Arguments::take(std::string_view expected) {
  if (atEnd()) throw Mistake("missing: " + std::string(expected));
  return line_.args[next_++];
}

std::u16string Arguments::text(std::string_view expected) {
  return take(expected).text;
}

bool Arguments::skip(std::u16string_view word) {
  if (atEnd() || peek()->quoted || folded(peek()->text) != word) return false;
  ++next_;
  return true;
}

std::size_t Arguments::choice(const std::vector<std::u16string_view>& words) {
  const Token& token = take(joined(words));
  if (token.quoted)
    throw Mistake(inQuotes(token.text) +
                  " stands where one of these words belongs: " + joined(words));
  return chooseWord(token.text, words, "here");
}

bool Arguments::onOff() {
  return choice({u"on", u"off"}) == 0;
}

bool Arguments::atNumber() const {
  return !atEnd() && !peek()->quoted && !peek()->text.empty() && peek()->text.size() <= 9 &&
         std::all_of(peek()->text.begin(), peek()->text.end(), isDigit);
}

std::int32_t Arguments::number(std::string_view expected) {
  if (!atEnd() && !atNumber())
    throw Mistake(inQuotes(peek()->text) + " is not " + std::string(expected));
  std::int32_t value = 0;
  for (const char16_t digit : take(expected).text) value = value * 10 + (digit - u'0');
  return value;
}

void Arguments::end() const {
  if (!atEnd()) throw Mistake(inQuotes(peek()->text) + " is too much here");
}

std::size_t chooseWord(std::u16string_view typed, const std::vector<std::u16string_view>& words,
                       std::string_view what) {
  const std::u16string start = folded(typed);
  std::vector<std::u16string_view> fitting;
  std::size_t found = words.size();
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (words[i] == start) return i;
    if (start.empty() || !words[i].starts_with(start)) continue;
    fitting.push_back(words[i]);
    found = i;
  }
  if (fitting.size() == 1) return found;
  if (fitting.empty()) {
    const auto near = nearest(typed, {words.begin(), words.end()});
    throw Mistake(
        inQuotes(typed) + " is unknown " + std::string(what) +
        (near ? "; did you mean " + toUtf8(words[*near]) + "?" : "; expected " + joined(words)));
  }
  throw Mistake(inQuotes(typed) + " could be " + joined(fitting));
}

}  // namespace scenario
