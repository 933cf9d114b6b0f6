#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace demo {

/// What makes a line of a card, or all of the card, useless.
class CardError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

enum class CardVersion { V21, V30, V40 };

/// One property of a card, its value still encoded.
struct CardProperty {
  std::string group;               ///< in capitals; what stood before the point, empty for none
  std::string name;                ///< in capitals
  std::vector<std::string> types;  ///< in capitals, without the prefixes of single programs
  std::string charset;
  bool quotedPrintable = false;
  bool base64 = false;
  CardVersion version = CardVersion::V30;
  std::string value;
  std::size_t line = 0;  ///< where it begins in the file, from 1

  bool hasType(std::string_view type) const;
  /// The value decoded, with blanks around it cut off; raises CardError when the character set is
  /// unknown.
  std::u16string text() const;
  /// The same for each part of a value that semicolons divide.
  std::vector<std::u16string> parts() const;
};

/// The property of a line: its head is what stands before the colon, its value the rest. Raises
/// CardError when the head does not begin with a name.
CardProperty parseProperty(std::string_view head, std::string_view value);

/// ASCII letters only.
std::string upperCase(std::string_view text);
std::string_view trimmed(std::string_view text);

}  // namespace demo
