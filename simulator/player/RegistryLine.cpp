#include "simulator/player/RegistryLine.h"

#include <algorithm>

#include "simulator/SimRegistry.h"
#include "simulator/player/RegSyntax.h"
#include "simulator/player/Stage.h"
#include "simulator/player/Text.h"

namespace scenario {
namespace {

/// Besides what a registry file takes: a decimal number for a dword, "none" for "-".
std::optional<platform::RegistryValue> readValue(std::u16string_view text) {
  const std::u16string_view word = trimmed(text.substr(0, text.find(u'#')));
  if (folded(word) == u"none") return std::nullopt;
  constexpr std::size_t most = 9;  // digits that fit whatever they are
  if (!word.empty() && word.size() <= most && std::ranges::all_of(word, isDigit))
    return platform::dwordValue(static_cast<std::uint32_t>(std::stoul(toUtf8(word))));
  try {
    RegScanner scan(text);
    auto value = takeRegValue(scan);
    scan.skipBlanks();
    if (!scan.take(u'#') && !scan.atEnd()) scan.endOfLine();
    return value;
  } catch (const RegError& error) {
    throw Mistake(inQuotes(word) + " is no value: " + error.message());
  }
}

struct ReadRow {
  std::u16string_view key;   // what it begins with, folded
  std::u16string_view name;  // folded; empty for every one
  std::string_view when;
};

constexpr std::string_view nextLoad = "the add-in takes it over when it is loaded the next time";

/// The first row that fits says it.
constexpr ReadRow reading[] = {
    {u"software\\k9t\\cxcomaddin", u"dialremote", "the next call that is dialled asks for it"},
    {u"software\\k9t\\cxcomaddin", u"", nextLoad},
    {u"software\\k9t\\velnor30\\addin001", u"", nextLoad},
    {u"software\\k9t\\localization", u"", nextLoad},
    {u"software\\k9t\\log", u"", "the next trace line asks for it"},
    {u"clsid\\", u"", "the add-in asks for it when it looks for the client the next time"},
};

}  // namespace

std::string_view RegistryLine::readWhen() const {
  const std::u16string at = folded(key);
  const std::u16string valueName = folded(name);
  for (const ReadRow& row : reading)
    if (at.starts_with(row.key) && (row.name.empty() || row.name == valueName)) return row.when;
  return "the add-in itself asks for no such value";
}

RegistryLine RegistryLine::read(std::u16string_view text) {
  constexpr const char* expected =
      R"(expected a line such as: registry HKCU\Software\K9T\CXComAddIn\UseMapi = dword:0)";
  const std::size_t equals = text.find(u'=');
  if (equals == text.npos) throw Mistake(expected);
  std::u16string_view path = trimmed(text.substr(0, equals));
  if (path.size() >= 2 && path.front() == u'"' && path.back() == u'"')
    path = path.substr(1, path.size() - 2);

  RegistryLine line;
  const std::size_t first = path.find(u'\\');
  const std::size_t last = path.rfind(u'\\');
  if (first == path.npos || first == last) throw Mistake(expected);
  const RegRoot* root = findRegRoot(path.substr(0, first));
  if (!root || !root->root)
    throw Mistake(inQuotes(path.substr(0, first)) + " is no root; expected HKCU, HKLM or HKCR");
  line.root = *root->root;
  line.key = path.substr(first + 1, last - first - 1);
  line.name = path.substr(last + 1);
  line.value = readValue(trimmed(text.substr(equals + 1)));
  return line;
}

}  // namespace scenario
