#include "standin/client/ClientSettings.h"

#include <array>
#include <charconv>
#include <optional>

#include "platform/conversions.h"
#include "standin/client/LineFile.h"
#include "standin/client/names.h"
#include "windows/com/text.h"
#include "windows/services/Registry.h"

namespace standin {
namespace {

using platform::RegistryRoot;
using Settings = ClientSettings;

/// A setting that is a number, or a flag as 0 or 1.
struct NumberRow {
  std::u16string_view name;
  std::uint32_t (*get)(const Settings&);
  void (*set)(Settings&, std::uint32_t);
};

constexpr NumberRow Numbers[] = {
    {u"WindowDelay", [](const Settings& s) { return s.delays.window; },
     [](Settings& s, std::uint32_t n) { s.delays.window = n; }},
    {u"ObjectDelay", [](const Settings& s) { return s.delays.object; },
     [](Settings& s, std::uint32_t n) { s.delays.object = n; }},
    {u"ServiceDelay", [](const Settings& s) { return s.delays.inService; },
     [](Settings& s, std::uint32_t n) { s.delays.inService = n; }},
    {u"NeverWindow", [](const Settings& s) { return std::uint32_t{s.gaps.window}; },
     [](Settings& s, std::uint32_t n) { s.gaps.window = n != 0; }},
    {u"NeverObject", [](const Settings& s) { return std::uint32_t{s.gaps.object}; },
     [](Settings& s, std::uint32_t n) { s.gaps.object = n != 0; }},
    {u"NeverService", [](const Settings& s) { return std::uint32_t{s.gaps.service}; },
     [](Settings& s, std::uint32_t n) { s.gaps.service = n != 0; }},
    {u"RaisesBeforeService", [](const Settings& s) { return std::uint32_t{s.raisesBeforeService}; },
     [](Settings& s, std::uint32_t n) { s.raisesBeforeService = n != 0; }},
    {u"Errors", [](const Settings& s) { return std::uint32_t{s.errors}; },
     [](Settings& s, std::uint32_t n) { s.errors = n != 0; }},
    {u"WithoutTypes", [](const Settings& s) { return std::uint32_t{s.withoutTypes}; },
     [](Settings& s, std::uint32_t n) { s.withoutTypes = n != 0; }},
};

constexpr std::u16string_view Lines = u"Lines";
constexpr std::u16string_view Journal = u"Journal";
constexpr std::u16string_view Watched = u"Watched";

std::optional<platform::RegistryValue> read(std::u16string_view name) {
  return windows::Registry().read(RegistryRoot::CurrentUser, SettingsKey, name);
}

void write(std::u16string_view name, const platform::RegistryValue& value) {
  windows::Registry().write(RegistryRoot::CurrentUser, SettingsKey, name, value);
}

/// The numbers of a text such as "1, 2".
std::vector<std::int32_t> numbersIn(std::u16string_view text) {
  const std::string plain = windows::ansi(text);
  const char* const end = plain.data() + plain.size();
  std::vector<std::int32_t> numbers;
  for (const char* at = plain.data(); at != end;) {
    std::int32_t number = 0;
    const auto [next, error] = std::from_chars(at, end, number);
    if (error == std::errc()) numbers.push_back(number);
    at = next == at ? at + 1 : next;
  }
  return numbers;
}

}  // namespace

std::u16string ClientSettings::temporaryJournal() {
  wchar_t folder[MAX_PATH + 1] = {};
  GetTempPathW(MAX_PATH, folder);
  return std::u16string(windows::utf16(folder)) + u"velnor-standin-told.txt";
}

ClientSettings ClientSettings::read() {
  Settings settings;
  for (const NumberRow& row : Numbers) {
    if (const auto number = platform::dwordOf(standin::read(row.name))) row.set(settings, *number);
  }
  if (const auto value = standin::read(Lines)) settings.lines = numbersIn(platform::textOf(value));
  if (const auto value = standin::read(Journal)) settings.journal = platform::textOf(value);
  if (const auto value = standin::read(Watched)) settings.watched = platform::textOf(value);
  return settings;
}

void ClientSettings::write() const {
  for (const NumberRow& row : Numbers) {
    standin::write(row.name, platform::dwordValue(row.get(*this)));
  }
  std::u16string text;
  for (const std::int32_t line : lines) {
    if (!text.empty()) text += u',';
    text += automation::int32Text(line);
  }
  standin::write(Lines, platform::stringValue(text));
  standin::write(Journal, platform::stringValue(journal));
  standin::write(Watched, platform::stringValue(watched));
}

std::u16string ClientSettings::journalTold(std::u16string_view line) const {
  const auto size = static_cast<double>(watched.empty() ? 0 : fileSize(watched));
  const std::array<std::u16string, 3> fields{timeOfDay(), automation::doubleText(size),
                                             std::u16string(line)};
  appendLine(journal, fields);
  return fields[0];
}

void ClientSettings::clear() {
  windows::Registry registry;
  const auto parent = SettingsKey.substr(0, SettingsKey.rfind(u'\\'));
  registry.deleteKey(RegistryRoot::CurrentUser, SettingsKey);
  if (registry.subkeyNames(RegistryRoot::CurrentUser, parent).empty() &&
      registry.valueNames(RegistryRoot::CurrentUser, parent).empty()) {
    registry.deleteKey(RegistryRoot::CurrentUser, parent);
  }
}

}  // namespace standin
