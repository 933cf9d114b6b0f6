#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "simulator/data/VCardLines.h"

namespace simulator {

/// A mistake that makes a card useless.
class CardError : public std::runtime_error {
 public:
  CardError(std::size_t errorLine, const std::string& text)
      : std::runtime_error(text), line(errorLine) {}
  std::size_t line;
};

/// One property of a card, its value still encoded.
struct CardProperty {
  std::string name;                ///< in capitals, without its group
  std::vector<std::string> types;  ///< in capitals, without the prefixes of single programs
  std::string charset;
  bool quotedPrintable = false;
  CardVersion version = CardVersion::V30;
  std::string value;
  std::size_t line = 0;

  bool hasType(std::string_view type) const;
  /// The value decoded, with blanks around it cut off; raises CardError when the character set is
  /// unknown.
  std::u16string text() const;
  /// The same for each part of a value that semicolons divide.
  std::vector<std::u16string> parts() const;
};

/// Raises CardError when the line has not the form of a property.
CardProperty parseProperty(const CardLine& line, CardVersion version);

}  // namespace simulator
