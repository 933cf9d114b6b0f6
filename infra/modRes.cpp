#include "infra/modRes.h"

#include <limits>
#include <optional>

#include "infra/RegOp.h"
#include "infra/badValue.h"
#include "infra/errors.h"
#include "infra/modRegistry.h"
#include "infra/runtime.h"
#include "infra/text.h"
#include "platform/conversions.h"
#include "platform/language.h"
#include "platform/objects.h"
#include "platform/pictures.h"
#include "platform/processes.h"
#include "resources/settings.h"
#include "resources/strings.h"

namespace cxol {
namespace {

constexpr auto OfHost = resources::setting(u"LanguageOfOutlook").place;
constexpr auto OfUser = resources::setting(u"Language").place;

/// The language id in a key, 0 when there is none; a value that gives none leaves a warning.
std::int32_t langIdIn(const resources::RegistryPlace& place, std::u16string_view key) {
  const std::int32_t langId = GetRegLong(place.root, key, place.name);
  if (langId != 0) return langId;
  trapQuietly([&] {
    const auto value = RegOp(machine().registry, place.root, key).value(place.name);
    ResumeNext resume;
    if (value &&
        !resume([&] { automation::Value(GetRegString(place.root, key, place.name)).toInt32(); }))
      WarnOfBadNumber(place.root, key, place.name, *value, u"0");
  });
  return 0;
}

std::int32_t langIdOfApplication() {
  return langIdIn(OfHost, concat(OfHost.key, machine().processes.hostModuleName()));
}

std::int32_t langIdOfLanguageService() {
  std::int32_t langId = 0;
  ResumeNext resume;
  resume([&] {
    constexpr std::u16string_view Service = u"BoreaLogonUM.BRLanguageServices";
    // Hardly ever there: not worth an error.
    if (!machine().objects.registered(Service)) return;
    const auto service = machine().objects.create(Service);
    langId = service.call(u"GetCurrentUserLanguage").toInt32();
  });
  return langId;
}

/// Every id that is not listed, relatives of those included, is served in English.
std::u16string_view codeOf(std::int32_t langId) {
  for (const auto& language : resources::SettingLanguages) {
    if (language.langId == langId) return language.code;
  }
  return u"EN";
}

std::optional<std::u16string_view> loadString(std::int32_t id) {
  const std::int32_t offset = runtime().language.offset;
  if (id > std::numeric_limits<std::int32_t>::max() - offset) return std::nullopt;
  return resources::string(offset + id);
}

}  // namespace

bool SelectLanguage() noexcept {
  bool selected = false;
  trapQuietly([&] {
    std::int32_t langId = langIdOfApplication();
    if (langId == 0) langId = langIdOfLanguageService();
    if (langId == 0) langId = langIdIn(OfUser, OfUser.key);
    if (langId == 0) langId = machine().language.userDefaultLangId();
    SetLanguage(codeOf(langId));
    selected = true;
  });
  return selected;
}

void SetLanguage(std::u16string_view code) {
  auto& state = runtime().language;
  state.code = code;
  state.offset = 0;
  std::int32_t offset = 0;
  for (const auto& language : resources::SettingLanguages) {
    if (equalsIgnoringCase(code, language.code)) state.offset = offset;
    offset += resources::LanguageStep;
  }
}

std::u16string LoadResStringDefault(std::int32_t id, std::u16string_view defaultText) {
  if (const auto text = loadString(id)) return std::u16string(*text);
  if (!defaultText.empty()) return std::u16string(defaultText);
  return concat(u"<ID=", automation::int32Text(id), u">");
}

std::u16string GetResString(std::int32_t id) {
  return replaceAllIgnoringCase(LoadResStringDefault(id, {}), NeutralName, u"Velnor");
}

automation::Object GetResPicture(std::int32_t id) noexcept {
  automation::Object picture;
  trapQuietly([&] { picture = machine().pictures.icon(id); });
  return picture;
}

}  // namespace cxol
