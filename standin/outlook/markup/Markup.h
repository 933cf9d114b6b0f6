#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace standin {

/// An element of an XML document, in UTF-8.
struct MarkupElement {
  std::string name;
  std::string space;  ///< its name space
  std::vector<std::pair<std::string, std::string>> attributes;
  std::vector<std::unique_ptr<MarkupElement>> children;
  const MarkupElement* parent = nullptr;
};

/// What came of reading a document.
struct Markup {
  /// Without a name; holds the root. Null for malformed markup.
  std::unique_ptr<MarkupElement> document;
  std::string problem;
  std::ptrdiff_t offset = 0;  ///< character at which the problem was found
};

/// Reads a document with the system's own XML parser; values are given as they are meant or, with
/// their special characters escaped, as they may be written. Raises an error without that parser.
Markup readMarkup(std::u16string_view text, bool meant);

}  // namespace standin
