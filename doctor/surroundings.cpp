#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

#include "doctor/Examiner.h"
#include "infra/errors.h"
#include "platform/conversions.h"
#include "platform/velnor.h"

namespace doctor {
namespace {

constexpr std::u16string_view OutlookWindow = u"rctrl_renwnd32";
constexpr std::u16string_view MapiHelper = u"cxmapihlp.dll";

constexpr auto ClientProgram = resources::setting(u"ClientProgram").place;
constexpr auto LocalAppData = resources::setting(u"LocalAppData").place;
constexpr auto TraceSwitch = resources::setting(u"LogFile").place;

bool samePlace(const resources::RegistryPlace& a, const resources::RegistryPlace& b) {
  return a.root == b.root && cxol::equalsIgnoringCase(a.key, b.key) &&
         cxol::equalsIgnoringCase(a.name, b.name);
}

/// How many letters must be changed, added or left out to make one text of the other.
std::size_t distance(std::u16string_view a, std::u16string_view b) {
  std::vector<std::size_t> row(b.size() + 1);
  for (std::size_t j = 0; j <= b.size(); ++j) row[j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    std::size_t diagonal = row[0];
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const bool same = cxol::equalsIgnoringCase(a.substr(i - 1, 1), b.substr(j - 1, 1));
      const std::size_t cost = std::min({row[j] + 1, row[j - 1] + 1, diagonal + (same ? 0 : 1)});
      diagonal = std::exchange(row[j], cost);
    }
  }
  return row.back();
}

}  // namespace

// ---- The client and the libraries.

void Examiner::client() {
  const auto path = std::u16string(cxol::programOf(
      textAt(registry_, ClientProgram.root, ClientProgram.key, ClientProgram.name)));
  if (path.empty()) {
    found(Verdict::Failed, text(Text::ClientMissing), Text::InstallClient);
  } else if (isThere(path, Text::InstallClient)) {
    well(Text::ClientWell, path);
  }
  clientRuns();
}

void Examiner::clientRuns() {
  const bool window = facts_.windowExists(velnor::MainWindowClass);
  const auto object = facts_.object(velnor::ApplicationClass, velnor::MainWindowClass);
  if (window && object == platform::ObjectState::Runs) return well(Text::ClientRuns);
  if (window || object != platform::ObjectState::None) {
    return found(Verdict::Failed, text(Text::ClientHangs), Text::RestartClient);
  }
  // Nobody misses it while Outlook does not run.
  if (!facts_.windowExists(OutlookWindow)) return well(Text::ClientRunsNot);
  found(Verdict::Odd, text(Text::ClientRunsNot), Text::StartClient);
}

void Examiner::libraries() {
  // Outlook finds a library in its own folder first.
  auto helper = cxol::concat(outlookFolder_, MapiHelper);
  if (outlookFolder_.empty() || !facts_.fileSize(helper)) helper = facts_.findLibrary(MapiHelper);
  if (!helper.empty()) {
    if (program32(helper, Text::InstallClient)) well(Text::MapiWell, helper);
  } else if (constexpr auto UseMapi = resources::setting(u"UseMapi").place;
             textAt(registry_, UseMapi.root, UseMapi.key, UseMapi.name) != u"0") {
    found(Verdict::Odd, text(Text::MapiMissing, MapiHelper), Text::InstallClient);
  }
  const auto logger = facts_.commonFilesFolder() + u"\\K9T\\K9tLogVB.dll";
  if (!facts_.fileSize(logger)) return well(Text::RouteFile, traceFile(registry_));
  if (program32(logger, Text::InstallClient)) well(Text::RouteLibrary, logger);
}

// ---- The settings.

void Examiner::settings() {
  for (const auto& row : resources::Settings) {
    // These two have checks of their own.
    if (row.type != resources::SettingType::Path) setting(row);
  }
}

void Examiner::setting(const resources::Setting& row) {
  using resources::SettingType;
  auto key = std::u16string(row.place.key);
  if (key.ends_with(u'\\')) key += resources::HostProgram;
  const auto place = placeName(row.place.root, key, row.place.name);
  const auto value = cxol::RegOp(registry_, row.place.root, key).value(row.place.name);
  const auto shown = value ? value->toText() : std::u16string();
  const auto number = automation::parseNumber(shown);
  const auto onOff = [&](bool on) { return text(on ? Text::On : Text::Off); };

  bool good = true;
  std::u16string effect;
  if (row.type == SettingType::Language) {
    const auto id = number ? static_cast<std::int32_t>(*number) : 0;
    const auto& language = resources::SettingLanguages[languageColumn(id)];
    effect = id == 0 ? text(Text::NotChosen) : std::u16string(language.ownName);
    // Every other id makes the add-in speak English.
    good = !value || (number && (id == 0 || language.langId == id));
  } else if (row.type == SettingType::TextOne) {
    effect = onOff(shown == u"1");
    good = shown.empty() || shown == u"0" || shown == u"1";
  } else {
    effect = onOff(number ? *number != 0 : row.on);
    good = !value || number;
  }
  if (!value) return well(Text::SettingUnset, place, effect);
  const auto assigned = cxol::concat(place, u" = \"", shown, u"\"");
  if (good) return well(Text::SettingSet, assigned, effect);
  found(Verdict::Odd, text(Text::SettingBad, assigned, effect), Text::CorrectValue);
}

/// A name that is nearly one, or stands under another key. Of keys that other products of the maker
/// share only the user's is looked at.
void Examiner::misspeltSettings() {
  constexpr std::size_t Near = 2;
  const struct {
    platform::RegistryRoot root;
    std::u16string_view key;
  } keys[] = {{CurrentUser, resources::settingKeys::AddIn},
              {CurrentUser, resources::settingKeys::Client},
              {CurrentUser, TraceSwitch.key},
              {LocalMachine, resources::settingKeys::AddIn},
              {LocalMachine, resources::settingKeys::Client}};
  for (const auto& [root, key] : keys) {
    for (const auto& name : registry_.valueNames(root, key)) {
      const resources::Setting* best = nullptr;
      bool known = false;
      for (const auto& row : resources::Settings) {
        known = known || samePlace(row.place, {root, key, name});
        const bool option = row.type == resources::SettingType::OnOff ||
                            row.type == resources::SettingType::TextOne;
        if (!option || distance(row.place.name, name) > Near) continue;
        if (!best || distance(row.place.name, name) < distance(best->place.name, name)) {
          best = &row;
        }
      }
      if (known || !best) continue;
      found(Verdict::Odd,
            text(Text::SettingMisspelt, placeName(root, key, name),
                 placeName(best->place.root, best->place.key, best->place.name)),
            Text::CorrectValue);
    }
  }
}

// ---- The trace.

std::u16string traceFolder(platform::Registry& registry) {
  return textAt(registry, LocalAppData.root, LocalAppData.key, LocalAppData.name) +
         u"\\VelnorLog\\";
}

std::u16string traceFile(platform::Registry& registry) {
  return traceFolder(registry) + u"Log_cxolcom.txt";
}

bool traceIsOn(platform::Registry& registry) {
  return textAt(registry, TraceSwitch.root, TraceSwitch.key, TraceSwitch.name) == u"1";
}

void switchTrace(platform::Registry& registry, bool on) {
  cxol::RegOp(registry, TraceSwitch.root, TraceSwitch.key)
      .setValue(TraceSwitch.name, std::u16string(on ? u"1" : u"0"));
}

void Examiner::trace() {
  const bool on = traceIsOn(registry_);
  const auto folder = traceFolder(registry_);
  const auto file = traceFile(registry_);
  const auto size = facts_.fileSize(file).value_or(0);
  if (size > BigTrace) {
    const auto megabytes = automation::int32Text(static_cast<std::int32_t>(size >> 20));
    found(Verdict::Odd, text(Text::TraceBig, megabytes), Text::EmptyTrace);
  }
  if (on && !facts_.writable(folder)) {
    return found(Verdict::Failed, text(Text::FolderNotWritable, folder), Text::AskAdministrator);
  }
  if (on && !facts_.writable(file)) {
    return found(Verdict::Failed, text(Text::TraceNotWritable, file), Text::AskAdministrator);
  }
  well(on ? Text::TraceOn : Text::TraceOff);
}

}  // namespace doctor
