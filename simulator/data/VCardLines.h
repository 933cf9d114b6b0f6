#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace simulator {

/// A content line of a card, unfolded.
struct CardLine {
  std::string text;
  std::size_t line = 0;  ///< where it begins in the file, from 1
};

enum class CardVersion { V21, V30, V40 };

/// One card: the lines between its BEGIN and its END.
struct CardText {
  std::size_t line = 0;  ///< where its BEGIN stands
  CardVersion version = CardVersion::V30;
  std::vector<CardLine> lines;
};

struct CardWarning {
  std::size_t line = 0;
  std::string text;
};

struct CardFile {
  std::vector<CardText> cards;
  std::vector<CardWarning> warnings;  ///< cards without an end, stray lines, unknown versions
};

/// Splits a file into cards and unfolds their lines. Cards inside of cards (agents) are left out.
CardFile splitCards(std::string_view bytes);

/// ASCII letters only.
std::string upperCase(std::string_view text);
std::string_view trimmed(std::string_view text);

}  // namespace simulator
