#include <utility>
#include <vector>

#include "packaging/settings/pieces.h"
#include "simulator/data/Utf8.h"

namespace packaging {
namespace {

using platform::RegistryRoot;
using resources::Setting;
using resources::SettingType;

/// Classic templates write a text in double quotes, and take \n for a line end.
constexpr bool fits(const resources::BilingualText& text) {
  for (const auto& each : {text.english, text.german}) {
    if (each.empty() || each.find_first_of(u"\"\r\n") != each.npos ||
        each.find(u"\\n") != each.npos) {
      return false;
    }
  }
  return true;
}
static_assert([] {
  for (const auto& setting : resources::Settings) {
    if (!fits(setting.title) || !fits(setting.help)) return false;
  }
  return true;
}());

constexpr const char* Namespace =
    "http://schemas.microsoft.com/GroupPolicy/2006/07/PolicyDefinitions";

std::string idOf(const Setting& setting) {
  return simulator::toUtf8(setting.id);
}

/// Runs for every setting that is a policy of this root.
template <class Action>
void eachPolicy(RegistryRoot root, Action&& action) {
  for (const auto& setting : resources::Settings) {
    if (setting.policy && setting.place.root == root) action(setting);
  }
}

/// All texts of the policies by their names.
std::vector<std::pair<std::string, std::string>> strings(Language language) {
  std::vector<std::pair<std::string, std::string>> result = {
      {"Category", "Velnor Outlook AddIn"},
      {"Supported", text({u"At least Windows 2000 with Outlook 2000",
                          u"Mindestens Windows 2000 mit Outlook 2000"},
                         language)},
      {"Choice", text({u"Language:", u"Sprache:"}, language)}};
  for (const auto& each : resources::SettingLanguages) {
    result.emplace_back(simulator::toUtf8(each.id), text(each.title, language));
  }
  for (const auto root : {RegistryRoot::CurrentUser, RegistryRoot::LocalMachine}) {
    eachPolicy(root, [&](const Setting& setting) {
      result.emplace_back(idOf(setting), text(setting.title, language));
      result.emplace_back(idOf(setting) + "_Help", text(setting.help, language));
    });
  }
  return result;
}

// What the policy writes. "Disabled" always writes, too: a value that goes away would leave an
// option on that is on by default. Only a language can go: its absence is the choice of none.

std::string classicChoices(const Setting& setting) {
  const std::string name = "      VALUENAME \"" + nameOf(setting) + "\"\n";
  switch (setting.type) {
    case SettingType::OnOff: return name + "      VALUEON NUMERIC 1\n      VALUEOFF NUMERIC 0\n";
    case SettingType::TextOne: return name + "      VALUEON \"1\"\n      VALUEOFF \"0\"\n";
    default: break;
  }
  std::string part = "      PART !!Choice DROPDOWNLIST REQUIRED\n" + name + "      ITEMLIST\n";
  for (const auto& each : resources::SettingLanguages) {
    part += "        NAME !!" + simulator::toUtf8(each.id) + " VALUE NUMERIC " +
            std::to_string(each.langId) + "\n";
  }
  return part + "      END ITEMLIST\n      END PART\n";
}

/// The classic template. Its language is 3 in Windows 2000, 4 in Windows XP, 5 in its service pack
/// 2: what is newer than 3 is asked for.
std::string classic(Language language) {
  std::string lines = "; Made from the table of settings: changes made here will be lost.\n";
  for (const auto& [root, name] : {std::pair{RegistryRoot::CurrentUser, "USER"},
                                   std::pair{RegistryRoot::LocalMachine, "MACHINE"}}) {
    lines += std::string("CLASS ") + name + "\n  CATEGORY !!Category\n";
    eachPolicy(root, [&](const Setting& setting) {
      const auto id = idOf(setting);
      lines += "    POLICY !!" + id + "\n      KEYNAME \"" + keyOf(setting) +
               "\"\n#if version >= 4\n      SUPPORTED !!Supported\n#endif\n"
               "#if version >= 3\n      EXPLAIN !!" +
               id + "_Help\n#endif\n" + classicChoices(setting) + "    END POLICY\n";
    });
    lines += "  END CATEGORY\n";
  }
  lines += "\n[strings]\n";
  for (const auto& [name, value] : strings(language)) lines += name + "=\"" + value + "\"\n";
  // Editors take anything else for the code page of their own machine.
  std::string bytes = "\xFF\xFE";
  for (const char16_t c : simulator::toUtf16(windowsLines(lines))) {
    bytes += static_cast<char>(c & 0xFF);
    bytes += static_cast<char>(c >> 8);
  }
  return bytes;
}

std::string escaped(const std::string& text) {
  std::string result;
  for (const char c : text) {
    switch (c) {
      case '&': result += "&amp;"; break;
      case '<': result += "&lt;"; break;
      case '>': result += "&gt;"; break;
      default: result += c;
    }
  }
  return result;
}

std::string decimal(std::int32_t value) {
  return "<value><decimal value=\"" + std::to_string(value) + "\" /></value>";
}

std::string xmlChoices(const Setting& setting) {
  const auto both = [](const std::string& on, const std::string& off) {
    return "      <enabledValue>" + on + "</enabledValue>\n      <disabledValue>" + off +
           "</disabledValue>\n";
  };
  switch (setting.type) {
    case SettingType::OnOff: return both("<decimal value=\"1\" />", "<decimal value=\"0\" />");
    case SettingType::TextOne: return both("<string>1</string>", "<string>0</string>");
    default: break;
  }
  std::string element = "      <elements>\n        <enum id=\"" + idOf(setting) +
                        "_Choice\" valueName=\"" + nameOf(setting) + "\" required=\"true\">\n";
  for (const auto& each : resources::SettingLanguages) {
    element += "          <item displayName=\"$(string." + simulator::toUtf8(each.id) + ")\">" +
               decimal(each.langId) + "</item>\n";
  }
  return element + "        </enum>\n      </elements>\n";
}

bool isChoice(const Setting& setting) {
  return setting.type == SettingType::Language;
}

std::string xmlPolicy(const Setting& setting) {
  const auto id = idOf(setting);
  std::string policy = "    <policy name=\"" + id + "\" class=\"" +
                       (setting.place.root == RegistryRoot::CurrentUser ? "User" : "Machine") +
                       "\" displayName=\"$(string." + id + ")\" explainText=\"$(string." + id +
                       "_Help)\" key=\"" + keyOf(setting) + "\"";
  policy += isChoice(setting) ? " presentation=\"$(presentation." + id + ")\""
                              : " valueName=\"" + nameOf(setting) + "\"";
  return policy +
         ">\n      <parentCategory ref=\"Velnor\" />\n      <supportedOn ref=\"Supported\" />\n" +
         xmlChoices(setting) + "    </policy>\n";
}

std::string start(const std::string& element) {
  return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
         "<!-- Made from the table of settings: changes made here will be lost. -->\n<" +
         element + " revision=\"1.0\" schemaVersion=\"1.0\" xmlns=\"" + Namespace + "\">\n";
}

std::string definitions() {
  std::string lines =
      start("policyDefinitions") +
      "  <policyNamespaces>\n"
      "    <target prefix=\"velnor\" namespace=\"Velnor.Policies.OutlookAddIn\" />\n"
      "  </policyNamespaces>\n"
      "  <resources minRequiredRevision=\"1.0\" />\n"
      "  <supportedOn>\n    <definitions>\n"
      "      <definition name=\"Supported\" displayName=\"$(string.Supported)\" />\n"
      "    </definitions>\n  </supportedOn>\n"
      "  <categories>\n"
      "    <category name=\"Velnor\" displayName=\"$(string.Category)\" />\n"
      "  </categories>\n  <policies>\n";
  for (const auto root : {RegistryRoot::CurrentUser, RegistryRoot::LocalMachine}) {
    eachPolicy(root, [&](const Setting& setting) { lines += xmlPolicy(setting); });
  }
  return windowsLines(lines + "  </policies>\n</policyDefinitions>\n");
}

std::string texts(Language language) {
  std::string lines = start("policyDefinitionResources") +
                      "  <displayName>Velnor Outlook AddIn</displayName>\n"
                      "  <description>Velnor Outlook CTI Control</description>\n"
                      "  <resources>\n    <stringTable>\n";
  std::string choice;
  for (const auto& [name, value] : strings(language)) {
    lines += "      <string id=\"" + name + "\">" + escaped(value) + "</string>\n";
    if (name == "Choice") choice = escaped(value);
  }
  lines += "    </stringTable>\n    <presentationTable>\n";
  eachPolicy(RegistryRoot::CurrentUser, [&](const Setting& setting) {
    if (!isChoice(setting)) return;
    lines += "      <presentation id=\"" + idOf(setting) + "\">\n        <dropdownList refId=\"" +
             idOf(setting) + "_Choice\" noSort=\"true\" defaultItem=\"0\">" + choice +
             "</dropdownList>\n      </presentation>\n";
  });
  return windowsLines(lines +
                      "    </presentationTable>\n  </resources>\n</policyDefinitionResources>\n");
}

}  // namespace

void addPolicies(Files& files) {
  const std::string folder = "packaging/policy/";
  files[folder + "velnor.adm"] = classic(Language::English);
  files[folder + "velnor-de.adm"] = classic(Language::German);
  files[folder + "velnor.admx"] = definitions();
  files[folder + "en-US/velnor.adml"] = texts(Language::English);
  files[folder + "de-DE/velnor.adml"] = texts(Language::German);
}

}  // namespace packaging
