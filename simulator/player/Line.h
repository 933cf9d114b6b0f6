#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/player/Stage.h"

namespace scenario {

struct Token {
  std::u16string text;
  bool quoted = false;
};

/// One line of a scenario, cut into its command word and arguments. Blanks and commas separate;
/// texts stand in "quotes" (inside them quotes come doubled or in pairs); # begins a comment.
struct Line {
  /// Raises Mistake for a text whose closing quote is missing.
  static Line read(std::u16string_view text);

  bool empty() const { return word.empty(); }

  std::u16string word;      ///< folded
  std::vector<Token> args;  ///< behind the command word
  std::u16string rest;      ///< the same as it was typed, comment included
};

/// The arguments of one command, taken one after the other. What does not fit raises Mistake.
class Arguments {
 public:
  explicit Arguments(const Line& line) : line_(line) {}

  bool atEnd() const { return next_ == line_.args.size(); }
  /// The next argument without taking it; null at the end.
  const Token* peek() const { return atEnd() ? nullptr : &line_.args[next_]; }
  bool atText() const { return !atEnd() && peek()->quoted; }
  const Token& take(std::string_view expected);

  /// A quoted text, or a bare word where that can't be misread.
  std::u16string text(std::string_view expected);
  /// Takes the word when it comes next, unabbreviated and without regard to case.
  bool skip(std::u16string_view word);
  /// One of these words, abbreviated as far as it stays unambiguous; its index.
  std::size_t choice(const std::vector<std::u16string_view>& words);
  bool onOff();
  /// A whole number of at most nine digits.
  bool atNumber() const;
  std::int32_t number(std::string_view expected);
  /// Raises Mistake when something is left over.
  void end() const;

  const Line& line() const { return line_; }

 private:
  const Line& line_;
  std::size_t next_ = 0;
};

/// Index of the word that `typed` means: the word itself, or the only one that begins with it.
/// Raises Mistake, naming what it could have been.
std::size_t chooseWord(std::u16string_view typed, const std::vector<std::u16string_view>& words,
                       std::string_view what);

}  // namespace scenario
