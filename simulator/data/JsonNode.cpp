#include "simulator/data/JsonNode.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <set>

#include "simulator/data/Utf8.h"

namespace simulator {
namespace {

using nlohmann::json;

std::string typeName(const json& value) {
  switch (value.type()) {
    case json::value_t::null: return "null";
    case json::value_t::object: return "object";
    case json::value_t::array: return "list";
    case json::value_t::string: return "text";
    case json::value_t::boolean: return "true or false";
    default: return "number";
  }
}

std::string escapedToken(std::string_view token) {
  std::string escaped;
  for (const char c : token) escaped += c == '~' ? "~0" : c == '/' ? "~1" : std::string(1, c);
  return escaped;
}

/// "line 3, column 14" of a byte; columns count characters.
std::string lineAndColumn(std::string_view text, std::size_t byte) {
  const std::string_view before = text.substr(0, std::min(byte, text.size()));
  const std::size_t lineStart = before.rfind('\n') + 1;  // 0 on the first line
  const auto isLead = [](char c) { return (static_cast<unsigned char>(c) & 0xC0u) != 0x80u; };
  const auto column = std::ranges::count_if(before.substr(lineStart), isLead) + 1;
  return "line " + std::to_string(std::ranges::count(before, '\n') + 1) + ", column " +
         std::to_string(column);
}

/// Notices keys that stand twice in an object: the parser itself would keep the last silently.
/// Asked in a run of its own, because a parser with a callback looks at a list's every element each
/// time one is added.
class DuplicateKeys : public nlohmann::json_sax<json> {
 public:
  explicit DuplicateKeys(std::string_view file) : file_(file) {}

  bool null() override { return value(); }
  bool boolean(bool) override { return value(); }
  bool number_integer(number_integer_t) override { return value(); }
  bool number_unsigned(number_unsigned_t) override { return value(); }
  bool number_float(number_float_t, const string_t&) override { return value(); }
  bool string(string_t&) override { return value(); }
  bool binary(binary_t&) override { return value(); }
  bool start_object(std::size_t) override { return open(false); }
  bool end_object() override { return close(); }
  bool start_array(std::size_t) override { return open(true); }
  bool end_array() override { return close(); }
  bool parse_error(std::size_t, const std::string&, const json::exception&) override {
    return false;
  }
  bool key(string_t& key) override {
    Level& level = open_.back();
    level.key = key;
    if (!level.keys.insert(key).second)
      throw InputError(std::string(file_) + ": " + pointer() + ": this key stands twice here");
    return true;
  }

 private:
  struct Level {
    bool isArray;
    std::size_t elements;
    std::string key;  // the last one
    std::set<std::string> keys;
  };

  bool value() {
    if (!open_.empty() && open_.back().isArray) ++open_.back().elements;
    return true;
  }
  bool open(bool isArray) {
    value();
    open_.push_back({isArray, 0, {}, {}});
    return true;
  }
  bool close() {
    open_.pop_back();
    return true;
  }

  std::string pointer() const {
    std::string pointer;
    for (const Level& level : open_)
      pointer +=
          "/" + (level.isArray ? std::to_string(level.elements - 1) : escapedToken(level.key));
    return pointer;
  }

  std::string_view file_;
  std::vector<Level> open_;
};

}  // namespace

JsonNode JsonNode::child(const json& value, std::string_view token) const {
  JsonNode node(value, file_);
  node.pointer_ = pointer_ + "/" + escapedToken(token);
  return node;
}

bool JsonNode::isText() const {
  return value_->is_string();
}
bool JsonNode::isBoolean() const {
  return value_->is_boolean();
}
bool JsonNode::isArray() const {
  return value_->is_array();
}

std::u16string JsonNode::text() const {
  if (!value_->is_string()) failExpected("text");
  // The parser has accepted valid UTF-8 only.
  return fromUtf8(value_->get_ref<const std::string&>()).value();
}

std::u16string JsonNode::filledText() const {
  std::u16string result = text();
  if (result.empty()) failExpected("text", "empty text");
  return result;
}

bool JsonNode::boolean() const {
  if (!value_->is_boolean()) failExpected("true or false");
  return value_->get<bool>();
}

std::vector<JsonNode> JsonNode::elements() const {
  if (!value_->is_array()) failExpected("list");
  std::vector<JsonNode> nodes;
  for (std::size_t i = 0; i < value_->size(); ++i)
    nodes.push_back(child((*value_)[i], std::to_string(i)));
  return nodes;
}

void JsonNode::checkKeys(std::span<const std::string_view> allowed) const {
  if (!value_->is_object()) failExpected("object");
  for (const auto& member : value_->items())
    if (std::ranges::find(allowed, member.key()) == allowed.end())
      child(member.value(), member.key()).fail("unknown key, expected " + wordList(allowed));
}

std::vector<std::pair<std::u16string, JsonNode>> JsonNode::members() const {
  if (!value_->is_object()) failExpected("object");
  std::vector<std::pair<std::u16string, JsonNode>> members;
  for (const auto& member : value_->items())
    members.emplace_back(fromUtf8(member.key()).value(), child(member.value(), member.key()));
  return members;
}

std::optional<JsonNode> JsonNode::find(std::string_view key) const {
  if (!value_->is_object()) failExpected("object");
  const auto found = value_->find(std::string(key));
  if (found == value_->end()) return std::nullopt;
  return child(*found, key);
}

JsonNode JsonNode::at(std::string_view key) const {
  auto node = find(key);
  if (!node) fail("expected key \"" + std::string(key) + "\", found none");
  return *std::move(node);
}

void JsonNode::fail(const std::string& message) const {
  throw InputError(std::string(file_) + ": " + (pointer_.empty() ? "/" : pointer_) + ": " +
                   message);
}

void JsonNode::failExpected(const std::string& expected, const std::string& found) const {
  fail("expected " + expected + ", found " + found);
}

void JsonNode::failExpected(const std::string& expected) const {
  failExpected(expected, typeName(*value_));
}

json parseJson(std::string_view text, std::string_view file) {
  text = withoutByteOrderMark(text);
  constexpr bool Throwing = true, Strict = true, Comments = true;
  try {
    json parsed = json::parse(text, nullptr, Throwing, Comments);
    DuplicateKeys duplicates(file);
    json::sax_parse(text, &duplicates, json::input_format_t::json, Strict, Comments);
    return parsed;
  } catch (const json::parse_error& error) {
    // "[...] parse error at line 1, column 2: syntax error while parsing object - ..."
    std::string reason = error.what();
    if (const auto dash = reason.find(" - "); dash != std::string::npos) reason.erase(0, dash + 3);
    // It quotes the file up to the mistake: that may be any bytes, or half a character.
    if (!fromUtf8(reason)) {
      reason = fromUtf8(text) ? "unexpected character" : "the file is not in UTF-8";
    }
    const std::size_t byte = error.byte > 0 ? error.byte - 1 : 0;
    throw InputError(std::string(file) + ": " + lineAndColumn(text, byte) + ": " + reason);
  } catch (const json::out_of_range&) {
    throw InputError(std::string(file) + ": a number is too large");
  }
}

std::string wordList(std::span<const std::string_view> words) {
  std::string list;
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (i > 0) list += i + 1 == words.size() ? " or " : ", ";
    list += words[i];
  }
  return list;
}

}  // namespace simulator
