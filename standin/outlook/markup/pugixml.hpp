#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "standin/outlook/markup/Markup.h"

/// There is no pugixml for Windows among the packages: what the simulated host uses of it, over the
/// system's own parser. That refuses all markup that is not well formed, so there are elements
/// only.
namespace pugi {

inline constexpr unsigned parse_default = 1;
/// Values stay as they are written.
inline constexpr unsigned parse_fragment = 0;
inline constexpr unsigned parse_comments = 0;
enum xml_encoding { encoding_utf16 };
enum xml_node_type { node_null, node_element, node_text, node_comment, node_pi, node_declaration };

class xml_attribute {
 public:
  xml_attribute() = default;
  xml_attribute(const std::string& name, const std::string& text) : name_(&name), text_(&text) {}
  const char* name() const { return name_ ? name_->c_str() : ""; }
  const char* value() const { return text_ ? text_->c_str() : ""; }
  bool as_bool(bool missing) const {
    constexpr std::string_view yes = "1tTyY";
    if (!text_) return missing;
    return !text_->empty() && yes.find(text_->front()) != std::string_view::npos;
  }

 private:
  const std::string* name_ = nullptr;
  const std::string* text_ = nullptr;
};

class xml_node {
 public:
  explicit xml_node(const standin::MarkupElement* element = nullptr) : element_(element) {}
  xml_node_type type() const { return element_ ? node_element : node_null; }
  const char* name() const { return element_ ? element_->name.c_str() : ""; }
  xml_node parent() const { return xml_node(element_ ? element_->parent : nullptr); }

  xml_attribute attribute(std::string_view attributeName) const {
    for (const xml_attribute& attribute : attributes())
      if (attribute.name() == attributeName) return attribute;
    return {};
  }
  std::vector<xml_attribute> attributes() const {
    std::vector<xml_attribute> list;
    if (!element_) return list;
    for (const auto& [name, text] : element_->attributes) list.emplace_back(name, text);
    return list;
  }
  std::vector<xml_node> children(std::string_view childName = {}) const {
    std::vector<xml_node> nodes;
    if (!element_) return nodes;
    for (const auto& child : element_->children)
      if (childName.empty() || child->name == childName) nodes.emplace_back(child.get());
    return nodes;
  }
  xml_node child(std::string_view childName) const {
    const auto nodes = children(childName);
    return nodes.empty() ? xml_node() : nodes.front();
  }

 private:
  const standin::MarkupElement* element_;
};

struct xml_parse_result {
  std::string reason;
  std::ptrdiff_t offset = 0;
  explicit operator bool() const { return reason.empty(); }
  const char* description() const { return reason.c_str(); }
};

class xml_document : public xml_node {
 public:
  xml_document() = default;

  xml_parse_result load_buffer(const void* text, std::size_t bytes, unsigned flags, xml_encoding) {
    standin::Markup markup = standin::readMarkup(
        {static_cast<const char16_t*>(text), bytes / sizeof(char16_t)}, flags == parse_default);
    document_ = std::move(markup.document);
    static_cast<xml_node&>(*this) = xml_node(document_.get());
    return {markup.problem, markup.offset * static_cast<std::ptrdiff_t>(sizeof(char16_t))};
  }

 private:
  std::unique_ptr<standin::MarkupElement> document_;
};

}  // namespace pugi
