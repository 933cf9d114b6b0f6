#include "simulator/player/RegistryLine.h"

#include <cstring>

#include "simulator/player/Stage.h"
#include "simulator/player/Text.h"

namespace scenario {
namespace {

using platform::RegistryRoot;
using platform::RegistryType;
using platform::RegistryValue;

struct RootRow {
  std::u16string_view name;
  RegistryRoot root;
};

constexpr RootRow roots[] = {
    {u"hkcu", RegistryRoot::CurrentUser},  {u"hkey_current_user", RegistryRoot::CurrentUser},
    {u"hklm", RegistryRoot::LocalMachine}, {u"hkey_local_machine", RegistryRoot::LocalMachine},
    {u"hkcr", RegistryRoot::ClassesRoot},  {u"hkey_classes_root", RegistryRoot::ClassesRoot},
};

int hexDigit(char16_t c) {
  if (c >= u'0' && c <= u'9') return c - u'0';
  const char16_t lower = c | 0x20;
  return lower >= u'a' && lower <= u'f' ? lower - u'a' + 10 : -1;
}

[[noreturn]] void refuse(std::u16string_view value) {
  throw Mistake(quoted(value) +
                " is no value; expected a number, a \"text\", hex:01,00, hex(7):... or none");
}

/// A 32-bit number in decimal or, behind 0x, in hexadecimal digits.
std::uint32_t readNumber(std::u16string_view text) {
  const bool hex = folded(text).starts_with(u"0x");
  const bool negative = !hex && text.starts_with(u'-');
  const std::u16string_view digits = text.substr(hex ? 2 : negative ? 1 : 0);
  std::uint64_t value = 0;
  for (const char16_t c : digits) {
    const int digit = hexDigit(c);
    if (digit < 0 || (!hex && digit > 9) || value > 0xFFFFFFFF) refuse(text);
    value = value * (hex ? 16u : 10u) + static_cast<unsigned>(digit);
  }
  if (digits.empty() || value > (negative ? 0x80000000u : 0xFFFFFFFFu)) refuse(text);
  return static_cast<std::uint32_t>(negative ? 0 - value : value);
}

std::vector<std::byte> readBytes(std::u16string_view text) {
  std::vector<std::byte> bytes;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = std::min(text.find(u',', at), text.size());
    const std::u16string_view pair = trimmed(text.substr(at, end - at));
    if (pair.size() != 2 || hexDigit(pair[0]) < 0 || hexDigit(pair[1]) < 0) refuse(text);
    bytes.push_back(static_cast<std::byte>(hexDigit(pair[0]) * 16 + hexDigit(pair[1])));
    at = end + 1;
  }
  return bytes;
}

bool holdsText(RegistryType type) {
  return type == RegistryType::String || type == RegistryType::ExpandString ||
         type == RegistryType::MultiString;
}

RegistryValue fromBytes(RegistryType type, std::vector<std::byte> bytes) {
  RegistryValue value;
  value.type = type;
  if (holdsText(type)) {
    value.text.resize(bytes.size() / sizeof(char16_t));
    std::memcpy(value.text.data(), bytes.data(), value.text.size() * sizeof(char16_t));
  } else {
    value.bytes = std::move(bytes);
  }
  return value;
}

RegistryValue fromNumber(std::uint32_t number) {
  std::vector<std::byte> bytes;
  for (int shift = 0; shift < 32; shift += 8)
    bytes.push_back(static_cast<std::byte>(number >> shift & 0xFF));
  return fromBytes(RegistryType::Dword, std::move(bytes));
}

/// A text that begins with a quote; nothing but a comment may follow it.
RegistryValue fromText(std::u16string_view text) {
  RegistryValue value;
  value.type = RegistryType::String;
  for (std::size_t i = 1; i < text.size(); ++i) {
    if (text[i] != u'"') {
      value.text += text[i];
    } else if (text.substr(i + 1).starts_with(u'"')) {
      value.text += text[i++];
    } else {
      const std::u16string_view behind = trimmed(text.substr(i + 1));
      if (!behind.empty() && !behind.starts_with(u'#')) refuse(text);
      value.text += u'\0';
      return value;
    }
  }
  throw Mistake("the text " + quoted(text.substr(1)) + " has no closing quotation mark");
}

std::optional<RegistryValue> readValue(std::u16string_view text) {
  if (text.starts_with(u'"')) return fromText(text);
  text = trimmed(text.substr(0, text.find(u'#')));
  const std::u16string word = folded(text);
  if (word == u"none") return std::nullopt;
  if (!word.starts_with(u"hex")) return fromNumber(readNumber(text));
  const std::size_t colon = text.find(u':');
  if (colon == text.npos) refuse(text);
  RegistryType type = RegistryType::Binary;
  const std::u16string_view code = text.substr(3, colon - 3);
  if (!code.empty()) {
    if (code.size() < 3 || code.front() != u'(' || code.back() != u')') refuse(text);
    type = static_cast<RegistryType>(
        readNumber(u"0x" + std::u16string(code.substr(1, code.size() - 2))));
  }
  return fromBytes(type, readBytes(text.substr(colon + 1)));
}

}  // namespace

RegistryLine RegistryLine::read(std::u16string_view text) {
  constexpr const char* expected =
      R"(expected a line such as: registry HKCU\Software\K9T\CXComAddIn\UseMapi = 0)";
  const std::size_t equals = text.find(u'=');
  if (equals == text.npos) throw Mistake(expected);
  std::u16string_view path = trimmed(text.substr(0, equals));
  if (path.size() >= 2 && path.front() == u'"' && path.back() == u'"')
    path = path.substr(1, path.size() - 2);

  RegistryLine line;
  const std::size_t first = path.find(u'\\');
  const std::size_t last = path.rfind(u'\\');
  if (first == path.npos || first == last) throw Mistake(expected);
  const std::u16string root = folded(path.substr(0, first));
  bool known = false;
  for (const RootRow& row : roots) {
    if (row.name != root) continue;
    line.root = row.root;
    known = true;
  }
  if (!known)
    throw Mistake(quoted(path.substr(0, first)) + " is no root; expected HKCU, HKLM or HKCR");
  line.key = path.substr(first + 1, last - first - 1);
  line.name = path.substr(last + 1);
  line.value = readValue(trimmed(text.substr(equals + 1)));
  return line;
}

}  // namespace scenario
