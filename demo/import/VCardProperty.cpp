#include "demo/import/VCardProperty.h"

#include <algorithm>
#include <utility>

#include "demo/import/Charset.h"
#include "simulator/data/Utf8.h"

namespace demo {
namespace {

/// Splits at a separator that stands outside of double quotes.
std::vector<std::string_view> splitUnquoted(std::string_view text, char separator) {
  std::vector<std::string_view> parts;
  bool quoted = false;
  std::size_t start = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '"') quoted = !quoted;
    if (quoted || text[i] != separator) continue;
    parts.push_back(text.substr(start, i - start));
    start = i + 1;
  }
  parts.push_back(text.substr(start));
  return parts;
}

std::string_view unquoted(std::string_view text) {
  text = trimmed(text);
  const bool quoted = text.size() >= 2 && text.front() == '"' && text.back() == '"';
  return quoted ? text.substr(1, text.size() - 2) : text;
}

/// "X-EVOLUTION-CALLBACK" says what "CALLBACK" says.
std::string withoutPrefix(std::string type) {
  for (const std::string_view prefix : {"X-EVOLUTION-", "X-MS-", "X-"})
    if (type.starts_with(prefix)) return type.substr(prefix.size());
  return type;
}

void readParameter(CardProperty& property, std::string_view parameter) {
  const std::size_t equals = parameter.find('=');
  // In 2.1 a value may stand without its name.
  const bool named = equals != std::string_view::npos;
  const std::string name = named ? upperCase(trimmed(parameter.substr(0, equals))) : "";
  const std::string_view value = unquoted(named ? parameter.substr(equals + 1) : parameter);
  const std::string upper = upperCase(value);
  if (name == "CHARSET") property.charset = upper;
  if (name == "ENCODING" || !named) {
    property.quotedPrintable |= upper == "QUOTED-PRINTABLE";
    property.base64 |= upper == "BASE64" || (named && upper == "B");
  }
  if (name == "PREF" && value == "1") property.types.push_back("PREF");
  if (name == "TYPE" || !named)
    for (const std::string_view type : splitUnquoted(upper, ','))
      property.types.push_back(withoutPrefix(std::string(trimmed(type))));
}

bool isPropertyName(std::string_view name) {
  const auto allowed = [](char c) {
    return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' || c == '_';
  };
  return !name.empty() && std::ranges::all_of(name, allowed);
}

int hexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}

/// An equals sign without two hexadecimal digits stays: phones write such.
std::string decodeQuotedPrintable(std::string_view text) {
  std::string bytes;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool room = text[i] == '=' && i + 2 < text.size();
    const int high = room ? hexValue(text[i + 1]) : -1;
    const int low = room ? hexValue(text[i + 2]) : -1;
    if (high < 0 || low < 0) {
      bytes += text[i];
      continue;
    }
    bytes += static_cast<char>(high * 16 + low);
    i += 2;
  }
  return bytes;
}

/// 2.1 knows no escaped line break; a backslash before an "n" is one there.
std::u16string unescaped(std::u16string_view text, CardVersion version) {
  constexpr std::u16string_view Escapable = u"\\,;:";
  std::u16string plain;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t next = text[i] == u'\\' && i + 1 < text.size() ? text[i + 1] : u'\0';
    const bool lineBreak = version != CardVersion::V21 && (next == u'n' || next == u'N');
    const bool escaped = next != u'\0' && Escapable.find(next) != std::u16string_view::npos;
    plain += lineBreak ? u'\n' : escaped ? next : text[i];
    if (lineBreak || escaped) ++i;
  }
  return plain;
}

std::u16string withoutOuterBlanks(const std::u16string& text) {
  const std::size_t first = text.find_first_not_of(u" \t\r\n");
  if (first == std::u16string::npos) return {};
  return text.substr(first, text.find_last_not_of(u" \t\r\n") - first + 1);
}

/// With its escapes still in it: in some character sets a byte of a letter looks like a backslash
/// or a semicolon, so that only the decoded text can be divided.
std::u16string decoded(const CardProperty& property) {
  const std::string bytes =
      property.quotedPrintable ? decodeQuotedPrintable(property.value) : property.value;
  if (auto text = decodeCharset(bytes, property.charset)) return *std::move(text);
  // What stands there may be any bytes.
  const bool readable = simulator::fromUtf8(property.charset).has_value();
  throw CardError(readable ? "unknown character set \"" + property.charset + "\""
                           : "unknown character set");
}

}  // namespace

bool CardProperty::hasType(std::string_view type) const {
  return std::ranges::find(types, type) != types.end();
}

std::u16string CardProperty::text() const {
  return withoutOuterBlanks(unescaped(decoded(*this), version));
}

std::vector<std::u16string> CardProperty::parts() const {
  const std::u16string whole = decoded(*this);
  std::vector<std::u16string> parts;
  std::size_t start = 0;
  for (std::size_t i = 0; i <= whole.size(); ++i) {
    if (i + 1 < whole.size() && whole[i] == u'\\') {
      ++i;
    } else if (i == whole.size() || whole[i] == u';') {
      const auto part = std::u16string_view(whole).substr(start, i - start);
      parts.push_back(withoutOuterBlanks(unescaped(part, version)));
      start = i + 1;
    }
  }
  return parts;
}

CardProperty parseProperty(std::string_view head, std::string_view value) {
  const auto parameters = splitUnquoted(head, ';');
  CardProperty property;
  property.name = upperCase(trimmed(parameters.front()));
  if (const auto point = property.name.rfind('.'); point != std::string::npos) {
    property.group = property.name.substr(0, point);
    property.name.erase(0, point + 1);
  }
  if (!isPropertyName(property.name)) throw CardError("no property of the form NAME:VALUE");
  property.value = value;
  for (std::size_t i = 1; i < parameters.size(); ++i) readParameter(property, parameters[i]);
  return property;
}

std::string upperCase(std::string_view text) {
  std::string upper(text);
  for (char& c : upper)
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  return upper;
}

std::string_view trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

}  // namespace demo
