#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "demo/import/VCardProperty.h"

namespace demo {

/// One card: the properties between its BEGIN and its END.
struct CardText {
  std::size_t line = 0;  ///< where its BEGIN stands
  std::vector<CardProperty> properties;
};

struct CardWarning {
  std::size_t line = 0;
  std::string text;
};

struct CardFile {
  std::vector<CardText> cards;
  std::size_t skipped = 0;  ///< cards without an end or of an unknown version
  /// Told of those, of stray text and of lines that are no properties, which are passed over.
  std::vector<CardWarning> warnings;
};

/// Splits a file into cards and unfolds their lines. Cards inside of cards (agents) are left out. A
/// file in UTF-16 is known by its mark.
CardFile splitCards(std::string_view bytes);

}  // namespace demo
