#include "standin/outlook/markup/Markup.h"

#include <cstdint>

#include "platform/automation.h"
#include "simulator/data/Utf8.h"
#include "windows/services/Objects.h"

namespace standin {
namespace {

using automation::Object;

constexpr std::int32_t ElementNode = 1;

std::string textOf(const Object& node, const char16_t* member) {
  return simulator::toUtf8(node.get(member).toText());
}

std::string escaped(std::string_view value) {
  std::string text;
  for (const char c : value) {
    if (c == '&')
      text += "&amp;";
    else if (c == '<')
      text += "&lt;";
    else
      text += c;
  }
  return text;
}

std::unique_ptr<MarkupElement> elementOf(const Object& node, const MarkupElement* parent,
                                         bool meant) {
  auto element = std::make_unique<MarkupElement>();
  element->parent = parent;
  element->name = textOf(node, u"nodeName");
  // Declarations of name spaces are no attributes here: not every version of the parser hands them
  // out as such.
  const std::string space = textOf(node, u"namespaceURI");
  if (space != (parent ? parent->space : std::string()))
    element->attributes.emplace_back("xmlns", space);
  element->space = space;
  const Object attributes = node.call(u"selectNodes", u"@*").toObject();
  for (std::int32_t i = 0; i < attributes.get(u"length").toInt32(); ++i) {
    const Object attribute = attributes.get(u"item", i).toObject();
    const std::string value = textOf(attribute, u"nodeValue");
    element->attributes.emplace_back(textOf(attribute, u"nodeName"),
                                     meant ? value : escaped(value));
  }
  const Object children = node.get(u"childNodes").toObject();
  for (std::int32_t i = 0; i < children.get(u"length").toInt32(); ++i) {
    const Object child = children.get(u"item", i).toObject();
    if (child.get(u"nodeType").toInt32() == ElementNode)
      element->children.push_back(elementOf(child, element.get(), meant));
  }
  return element;
}

}  // namespace

Markup readMarkup(std::u16string_view text, bool meant) {
  const Object parser = windows::Objects().create(u"Msxml2.DOMDocument");
  parser.put(u"async", false);
  Markup result;
  if (parser.call(u"loadXML", text).toBoolean()) {
    result.document = std::make_unique<MarkupElement>();
    result.document->children.push_back(
        elementOf(parser.get(u"documentElement").toObject(), result.document.get(), meant));
    return result;
  }
  const Object error = parser.get(u"parseError").toObject();
  result.problem = textOf(error, u"reason");
  if (result.problem.empty()) result.problem = "no element";
  try {
    result.offset = error.get(u"filepos").toInt32();
  } catch (const automation::Error&) {
    // Not every version of the parser knows the place.
  }
  return result;
}

}  // namespace standin
