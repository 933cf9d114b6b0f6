#pragma once

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

namespace scenario {

/// A text that is not in the registry editor's format. The message (UTF-8) says what was expected
/// and what was found; what() also names the line.
class RegError : public std::runtime_error {
 public:
  RegError(std::size_t line, const std::string& message)
      : std::runtime_error("line " + std::to_string(line) + ": " + message),
        line_(line),
        message_(message) {}
  /// Counts from 1.
  std::size_t line() const { return line_; }
  const std::string& message() const { return message_; }

 private:
  std::size_t line_;
  std::string message_;
};

/// Takes the text of a registry file, or of one value of it, apart, from its start to its end. What
/// does not fit raises RegError with the line of the present place.
class RegScanner {
 public:
  /// The text must outlive the scanner.
  explicit RegScanner(std::u16string_view text) : text_(text) {}

  bool atEnd() const { return at_ == text_.size(); }
  /// Blanks and tabs.
  void skipBlanks();
  /// Empty lines, comment lines and the blanks at the start of the next one.
  void skipBlankLines();
  /// Takes what stands here if it is this; letters in any case.
  bool take(char16_t c) { return take(std::u16string_view(&c, 1)); }
  bool take(std::u16string_view what);
  bool startsText() const { return at_ < text_.size() && text_[at_] == u'"'; }
  /// A text in quotes, with \\ and \" for a backslash and a quote. It may run over several lines.
  std::u16string text();
  /// Everything up to the last closing bracket of the line, which is taken too: a key may contain
  /// brackets.
  std::u16string_view upToClosingBracket();
  /// The rest of the line, without the blanks at its end.
  std::u16string_view restOfLine();
  /// A number of 1 to `digits` (at most 8) hexadecimal digits.
  std::uint32_t hexNumber(std::size_t digits);
  /// Bytes of one or two hexadecimal digits with commas between them; a backslash at the end of a
  /// line continues on the next one.
  std::string hexBytes();
  /// Nothing but a comment may follow on the line; goes to the next one.
  void endOfLine();

  /// The next few characters of the line, for a message.
  std::u16string_view peekWord() const;
  [[noreturn]] void fail(const std::string& message) const;
  [[noreturn]] void expected(const std::string& what, std::u16string_view found) const;

 private:
  bool atLineEnd() const;
  void takeLineEnd();
  void skipBlanksAndContinuations();

  std::u16string_view text_;
  std::size_t at_ = 0;
  std::size_t line_ = 1;
};

}  // namespace scenario
