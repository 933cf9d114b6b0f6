#include "simulator/outlook/Markup.h"

#include <algorithm>
#include <pugixml.hpp>
#include <set>

namespace simulator {
namespace {

/// Values as they are written.
constexpr unsigned int AsWritten = pugi::parse_fragment;

/// The parser takes an unescaped "&" or "<" in a value and characters that XML does not have.
void requireWellFormedText(std::string_view value) {
  constexpr std::string_view References[] = {"&amp;", "&lt;", "&gt;", "&quot;", "&apos;", "&#"};
  for (std::size_t i = 0; i < value.size(); ++i) {
    const auto c = static_cast<unsigned char>(value[i]);
    const auto rest = value.substr(i);
    const bool reference = std::ranges::any_of(
        References, [&](std::string_view each) { return rest.starts_with(each); });
    const bool control = c < 0x20 && c != '\t' && c != '\n' && c != '\r';
    if ((c == '&' && !reference) || c == '<' || control)
      throw MarkupError("\"" + std::string(value) + "\" is not escaped");
  }
}

/// It takes the same attribute twice, too.
void requireWellFormed(const pugi::xml_node& node) {
  std::set<std::string_view> seen;
  for (const auto& attribute : node.attributes()) {
    if (!seen.insert(attribute.name()).second)
      throw MarkupError(std::string("<") + node.name() + "> has \"" + attribute.name() +
                        "\" twice");
    requireWellFormedText(attribute.value());
  }
  for (const auto& child : node.children()) requireWellFormed(child);
}

pugi::xml_document parse(std::u16string_view text, unsigned int flags) {
  pugi::xml_document document;
  const auto result = document.load_buffer(text.data(), text.size() * sizeof(char16_t), flags,
                                           pugi::encoding_utf16);
  if (!result) {
    throw MarkupError("character " +
                      std::to_string(result.offset / std::ptrdiff_t{sizeof(char16_t)}) + ": " +
                      result.description());
  }
  return document;
}

MarkupElement elementOf(const pugi::xml_node& node) {
  MarkupElement element;
  element.name = node.name();
  for (const auto& attribute : node.attributes())
    element.attributes.emplace_back(attribute.name(), attribute.value());
  for (const auto& child : node.children()) {
    if (child.type() == pugi::node_element)
      element.children.push_back(elementOf(child));
    else
      element.holdsText = true;
  }
  return element;
}

}  // namespace

MarkupElement readMarkup(std::u16string_view text) {
  if (text.find(u'\0') != std::u16string_view::npos) throw MarkupError("it holds a character 0");
  const pugi::xml_document document = parse(text, AsWritten);
  requireWellFormed(document);
  const MarkupElement written = elementOf(document);
  if (written.children.size() != 1 || written.holdsText)
    throw MarkupError("there is no single root");
  return elementOf(parse(text, pugi::parse_default).document_element());
}

}  // namespace simulator
