#pragma once

#include <ostream>
#include <string>

#include "platform/automation.h"

/// How the tests print values and compare them.
namespace automation {

inline std::string printed(const Value& value) {
  struct Print {
    std::string operator()(std::monostate) const { return "empty"; }
    std::string operator()(Missing) const { return "missing"; }
    std::string operator()(bool b) const { return b ? "true" : "false"; }
    std::string operator()(std::int32_t n) const { return "int " + std::to_string(n); }
    std::string operator()(double n) const { return "double " + std::to_string(n); }
    std::string operator()(const std::u16string& text) const {
      std::string result = "\"";
      for (const char16_t c : text) {
        result += c < 0x80 && c >= 0x20 ? std::string(1, static_cast<char>(c))
                                        : "\\" + std::to_string(static_cast<unsigned>(c));
      }
      return result + "\"";
    }
    std::string operator()(const Object& object) const { return object ? "object" : "nothing"; }
    std::string operator()(const Array& array) const {
      std::string result = "[";
      for (const Value& element : array) result += (result == "[" ? "" : ", ") + printed(element);
      return result + "]";
    }
  };
  return std::visit(Print(), value.data());
}

}  // namespace automation
