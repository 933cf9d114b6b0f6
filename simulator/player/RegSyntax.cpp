#include "simulator/player/RegSyntax.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

#include "simulator/SimRegistry.h"
#include "simulator/caseless.h"

namespace scenario {
namespace {

using platform::RegistryRoot;
using platform::RegistryType;
using platform::RegistryValue;

constexpr RegRoot Roots[] = {
    {u"HKEY_CLASSES_ROOT", RegistryRoot::ClassesRoot},
    {u"HKEY_CURRENT_USER", RegistryRoot::CurrentUser},
    {u"HKEY_LOCAL_MACHINE", RegistryRoot::LocalMachine},
    {u"HKCR", RegistryRoot::ClassesRoot},
    {u"HKCU", RegistryRoot::CurrentUser},
    {u"HKLM", RegistryRoot::LocalMachine},
    {u"HKEY_USERS", std::nullopt},
    {u"HKEY_CURRENT_CONFIG", std::nullopt},
};

RegistryValue typed(RegistryType type, const std::string& bytes, BytesToText textOf) {
  RegistryValue value;
  value.type = type;
  switch (type) {
    case RegistryType::String:
    case RegistryType::ExpandString:
    case RegistryType::MultiString: value.text = textOf(bytes); break;
    default:
      for (const char byte : bytes) value.bytes.push_back(static_cast<std::byte>(byte));
  }
  return value;
}

}  // namespace

const RegRoot* findRegRoot(std::u16string_view name) {
  const auto* const found = std::ranges::find_if(
      Roots, [&](const RegRoot& row) { return simulator::sameName(row.name, name); });
  return found == std::end(Roots) ? nullptr : found;
}

std::optional<RegistryValue> takeRegValue(RegScanner& scan, BytesToText textOf) {
  if (scan.take(u'-')) return std::nullopt;
  if (scan.startsText()) return platform::stringValue(scan.text());
  if (scan.take(u"dword:")) return platform::dwordValue(scan.hexNumber(8));
  if (scan.take(u"hex:")) return typed(RegistryType::Binary, scan.hexBytes(), textOf);
  if (scan.take(u"hex(")) {
    const auto type = static_cast<RegistryType>(scan.hexNumber(8));
    if (!scan.take(u"):")) scan.expected("\"):\" after the type", scan.peekWord());
    return typed(type, scan.hexBytes(), textOf);
  }
  scan.expected("a \"text\", dword:, hex:, hex(type): or -", scan.peekWord());
}

}  // namespace scenario
