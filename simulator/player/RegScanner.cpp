#include "simulator/player/RegScanner.h"

#include <algorithm>
#include <optional>

#include "simulator/player/Text.h"

namespace scenario {
namespace {

std::optional<std::uint32_t> hexDigit(char16_t c) {
  if (c >= u'0' && c <= u'9') return static_cast<std::uint32_t>(c - u'0');
  if (c >= u'a' && c <= u'f') return static_cast<std::uint32_t>(c - u'a' + 10);
  if (c >= u'A' && c <= u'F') return static_cast<std::uint32_t>(c - u'A' + 10);
  return std::nullopt;
}

bool isBlank(char16_t c) {
  return c == u' ' || c == u'\t';
}

bool endsLine(char16_t c) {
  return c == u'\r' || c == u'\n';
}

}  // namespace

void RegScanner::skipBlanks() {
  while (!atEnd() && isBlank(text_[at_])) ++at_;
}

void RegScanner::skipBlankLines() {
  for (skipBlanks(); !atEnd(); skipBlanks()) {
    if (text_[at_] == u';') restOfLine();
    if (!atLineEnd()) return;
    takeLineEnd();
  }
}

bool RegScanner::take(std::u16string_view what) {
  if (!simulator::sameName(text_.substr(at_, what.size()), what)) return false;
  at_ += what.size();
  return true;
}

std::u16string RegScanner::text() {
  const RegScanner opening = *this;
  std::u16string result;
  for (++at_; !atEnd(); ++at_) {
    const char16_t c = text_[at_];
    if (c == u'"') {
      ++at_;
      return result;
    }
    if (c == u'\n') ++line_;
    const char16_t next = at_ + 1 < text_.size() ? text_[at_ + 1] : u'\0';
    if (c == u'\\' && (next == u'\\' || next == u'"')) ++at_;
    result += text_[at_];
  }
  // The place to look for is where the text began, not the end of the file.
  opening.expected("a closing quote", opening.peekWord());
}

std::u16string_view RegScanner::upToClosingBracket() {
  const std::u16string_view line = text_.substr(at_, text_.find_first_of(u"\r\n", at_) - at_);
  const std::size_t end = line.rfind(u']');
  if (end == std::u16string_view::npos) expected("\"]\" after the key", line);
  at_ += end + 1;
  return line.substr(0, end);
}

std::u16string_view RegScanner::restOfLine() {
  const std::size_t start = at_;
  while (!atLineEnd()) ++at_;
  std::size_t end = at_;
  while (end > start && isBlank(text_[end - 1])) --end;
  return text_.substr(start, end - start);
}

std::uint32_t RegScanner::hexNumber(std::size_t digits) {
  std::uint32_t number = 0;
  std::size_t count = 0;
  for (; count < digits && !atEnd(); ++count, ++at_) {
    const auto digit = hexDigit(text_[at_]);
    if (!digit) break;
    number = number << 4 | *digit;
  }
  if (count == 0) expected("a hexadecimal number", peekWord());
  return number;
}

std::string RegScanner::hexBytes() {
  std::string bytes;
  skipBlanksAndContinuations();
  // No bytes at all are an empty value.
  if (atLineEnd() || text_[at_] == u';') return bytes;
  while (true) {
    bytes += static_cast<char>(hexNumber(2));
    skipBlanksAndContinuations();
    if (!take(u',')) return bytes;
    skipBlanksAndContinuations();
  }
}

void RegScanner::endOfLine() {
  skipBlanks();
  if (!atEnd() && text_[at_] == u';') restOfLine();
  if (!atLineEnd()) expected("the end of the line", peekWord());
  takeLineEnd();
}

std::u16string_view RegScanner::peekWord() const {
  constexpr std::size_t Longest = 40;
  std::size_t end = at_;
  while (end < text_.size() && end - at_ < Longest && !endsLine(text_[end])) ++end;
  return text_.substr(at_, end - at_);
}

void RegScanner::fail(const std::string& message) const {
  throw RegError(line_, message);
}

void RegScanner::expected(const std::string& what, std::u16string_view found) const {
  fail("expected " + what + ", found " +
       (found.empty() ? std::string(atEnd() ? "the end of the text" : "the end of the line")
                      : "'" + oneLine(found) + "'"));
}

bool RegScanner::atLineEnd() const {
  return atEnd() || endsLine(text_[at_]);
}

void RegScanner::takeLineEnd() {
  if (atEnd()) return;
  if (text_[at_] == u'\r' && at_ + 1 < text_.size() && text_[at_ + 1] == u'\n') ++at_;
  ++at_;
  ++line_;
}

void RegScanner::skipBlanksAndContinuations() {
  skipBlanks();
  while (!atEnd() && text_[at_] == u'\\' && (at_ + 1 == text_.size() || endsLine(text_[at_ + 1]))) {
    ++at_;
    takeLineEnd();
    skipBlanks();
  }
}

}  // namespace scenario
