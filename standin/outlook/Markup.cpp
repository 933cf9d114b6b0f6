// The simulated host's reader of markup, on Windows: the system's own XML parser.

#include "simulator/outlook/Markup.h"

#include <cstdint>

#include "platform/automation.h"
#include "simulator/data/Utf8.h"
#include "windows/services/Objects.h"

namespace simulator {
namespace {

using automation::Object;

/// Types of nodes, as the parser counts them.
constexpr std::int32_t ElementNode = 1;
constexpr std::int32_t TextNode = 3;
constexpr std::int32_t SectionNode = 4;

std::string textOf(const Object& node, const char16_t* member) {
  return toUtf8(node.get(member).toText());
}

MarkupElement elementOf(const Object& node, const std::string& outerSpace) {
  MarkupElement element;
  element.name = textOf(node, u"nodeName");
  // Declarations of name spaces are no attributes here: not every version of the parser hands them
  // out as such.
  const std::string space = textOf(node, u"namespaceURI");
  if (space != outerSpace) element.attributes.emplace_back("xmlns", space);
  const Object attributes = node.call(u"selectNodes", u"@*").toObject();
  for (std::int32_t i = 0; i < attributes.get(u"length").toInt32(); ++i) {
    const Object attribute = attributes.get(u"item", i).toObject();
    element.attributes.emplace_back(textOf(attribute, u"nodeName"),
                                    textOf(attribute, u"nodeValue"));
  }
  const Object children = node.get(u"childNodes").toObject();
  for (std::int32_t i = 0; i < children.get(u"length").toInt32(); ++i) {
    const Object child = children.get(u"item", i).toObject();
    const std::int32_t type = child.get(u"nodeType").toInt32();
    if (type == ElementNode)
      element.children.push_back(elementOf(child, space));
    else if (type == TextNode || type == SectionNode)
      element.holdsText = true;
  }
  return element;
}

std::string problemOf(const Object& error) {
  std::string problem = textOf(error, u"reason");
  if (problem.empty()) problem = "no element";
  try {
    return "character " + std::to_string(error.get(u"filepos").toInt32()) + ": " + problem;
  } catch (const automation::Error&) {
    // Not every version of the parser knows the place.
    return problem;
  }
}

}  // namespace

MarkupElement readMarkup(std::u16string_view text) {
  const Object parser = windows::Objects().create(u"Msxml2.DOMDocument");
  parser.put(u"async", false);
  if (!parser.call(u"loadXML", text).toBoolean())
    throw MarkupError(problemOf(parser.get(u"parseError").toObject()));
  return elementOf(parser.get(u"documentElement").toObject(), "");
}

}  // namespace simulator
