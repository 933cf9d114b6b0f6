#pragma once

#include <initializer_list>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace simulator {

/// A file that can't be used. what() is UTF-8 and reads "FILE: PLACE: what was expected".
class InputError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// A place in a JSON file that knows where it stands. Everything it is asked for is checked; a
/// mistake raises InputError that names the place. Refers to the parsed file, which must outlive
/// it.
class JsonNode {
 public:
  JsonNode(const nlohmann::json& value, std::string_view file) : value_(&value), file_(file) {}

  bool isText() const;
  bool isBoolean() const;
  bool isArray() const;

  std::u16string text() const;
  /// Text that is not empty.
  std::u16string filledText() const;
  bool boolean() const;
  std::vector<JsonNode> elements() const;

  /// Raises unless this is an object with no other keys than these.
  void checkKeys(std::span<const std::string_view> allowed) const;
  void checkKeys(std::initializer_list<std::string_view> allowed) const {
    checkKeys(std::span(allowed.begin(), allowed.size()));
  }
  /// The members of an object, sorted by key.
  std::vector<std::pair<std::u16string, JsonNode>> members() const;
  std::optional<JsonNode> find(std::string_view key) const;
  /// Raises when the key is missing.
  JsonNode at(std::string_view key) const;

  /// Raises "FILE: PLACE: message".
  [[noreturn]] void fail(const std::string& message) const;
  /// Raises "FILE: PLACE: expected EXPECTED, found FOUND".
  [[noreturn]] void failExpected(const std::string& expected, const std::string& found) const;
  /// The same with the kind of value that stands here.
  [[noreturn]] void failExpected(const std::string& expected) const;

 private:
  JsonNode child(const nlohmann::json& value, std::string_view token) const;

  const nlohmann::json* value_;
  std::string_view file_;
  std::string pointer_;  // a JSON pointer; empty for the whole file
};

/// Parses JSON that may hold comments. Raises InputError for a mistake in the syntax, with line
/// and column, and for a key that stands twice in one object.
nlohmann::json parseJson(std::string_view text, std::string_view file);

/// "one, two or three"
std::string wordList(std::span<const std::string_view> words);

}  // namespace simulator
