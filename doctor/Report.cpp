#include "doctor/Report.h"

#include <algorithm>

#include "doctor/Examiner.h"
#include "infra/errors.h"

namespace doctor {

Verdict Report::worst() const {
  Verdict worst = Verdict::Well;
  for (const auto& finding : findings) worst = std::max(worst, finding.verdict);
  return worst;
}

int Report::exitStatus() const {
  switch (worst()) {
    case Verdict::Failed: return 1;
    case Verdict::Odd: return 2;
    default: return 0;
  }
}

std::vector<std::u16string> Report::lines(bool tabs) const {
  constexpr Text Names[] = {Text::Well, Text::Odd, Text::Failed};
  std::vector<std::u16string> lines;
  std::size_t width = 0;
  for (const Text name : Names) width = std::max(width, textOf(language, name).size());
  const auto add = [&](std::u16string margin, const std::u16string& text) {
    if (!tabs) margin.resize(width + 2, u' ');
    lines.push_back(margin + (tabs ? u"\t" : u"") + text);
  };
  for (const auto& finding : findings) {
    add(textOf(language, Names[static_cast<std::size_t>(finding.verdict)]), finding.text);
    if (!finding.remedy.empty()) add({}, u"-> " + finding.remedy);
  }
  return lines;
}

std::size_t reportLanguage(platform::Registry& registry, platform::Facts& facts) {
  constexpr auto Place = resources::setting(u"Language").place;
  std::int32_t id = 0;
  cxol::trapQuietly([&] {
    const auto value = cxol::RegOp(registry, Place.root, Place.key).value(Place.name);
    if (value) id = value->toInt32();
  });
  return languageColumn(id != 0 ? id : facts.userLanguage());
}

std::u16string textAt(platform::Registry& registry, platform::RegistryRoot root,
                      std::u16string_view key, std::u16string_view name) {
  const auto value = cxol::RegOp(registry, root, key).value(name);
  return value ? value->toText() : std::u16string();
}

std::u16string_view hiveName(platform::RegistryRoot root) {
  if (root == CurrentUser) return u"HKEY_CURRENT_USER";
  return root == LocalMachine ? u"HKEY_LOCAL_MACHINE" : u"HKEY_CLASSES_ROOT";
}

std::u16string placeName(platform::RegistryRoot root, std::u16string_view key,
                         std::u16string_view name) {
  return cxol::concat(hiveName(root), u"\\", key, name.empty() ? u"" : u"\\", name);
}

Examiner::Examiner(platform::Registry& registry, platform::Facts& facts)
    : registry_(registry), facts_(facts) {
  report_.language = reportLanguage(registry, facts);
}

Report Examiner::run() {
  well(Text::Windows, facts_.systemVersion());
  outlook();
  addin();
  loading();
  disabledItems();
  client();
  libraries();
  settings();
  misspeltSettings();
  trace();
  return std::move(report_);
}

Report examine(platform::Registry& registry, platform::Facts& facts) {
  return Examiner(registry, facts).run();
}

bool apply(platform::Registry& registry, const Cure& cure) {
  const cxol::RegOp key(registry, CurrentUser, cure.key);
  if (!cure.number) {
    // Outlook may have written the list anew since.
    const auto value = registry.read(CurrentUser, cure.key, cure.name);
    return value && isOwnDisabledItem(*value) && key.deleteValue(cure.name);
  }
  bool written = false;
  cxol::trapQuietly([&] {
    key.setValue(cure.name, *cure.number);
    written = true;
  });
  return written;
}

}  // namespace doctor
