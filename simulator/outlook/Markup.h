#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace simulator {

/// An element of an XML document; texts are UTF-8, values as they are meant.
struct MarkupElement {
  std::string name;
  /// In the order of the document; a name space that is declared here is the attribute "xmlns".
  std::vector<std::pair<std::string, std::string>> attributes;
  std::vector<MarkupElement> children;
  bool holdsText = false;  ///< more than blanks between its children

  /// Empty for an attribute that is not there.
  std::string_view attribute(std::string_view attributeName) const {
    for (const auto& [each, value] : attributes)
      if (each == attributeName) return value;
    return {};
  }
};

/// Markup that is not well formed: what is wrong with it.
class MarkupError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Reads a document and gives its root; comments are passed over. Raises MarkupError. The parser
/// behind it is a library's, on Windows the system's own.
MarkupElement readMarkup(std::u16string_view text);

}  // namespace simulator
