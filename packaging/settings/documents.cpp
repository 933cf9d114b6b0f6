#include <algorithm>

#include "packaging/settings/pieces.h"
#include "simulator/data/Utf8.h"

namespace packaging {
namespace {

using resources::Setting;
using resources::SettingRead;
using resources::SettingType;
using resources::SettingWriter;

std::string typeOf(const Setting& setting) {
  switch (setting.type) {
    case SettingType::OnOff: return "number; on when not 0";
    case SettingType::TextOne: return "text; on when `1`";
    case SettingType::Language: return "number; a language id";
    default: return "text; a path";
  }
}

std::string defaultOf(const Setting& setting) {
  const bool isSwitch = setting.type == SettingType::OnOff || setting.type == SettingType::TextOne;
  return !isSwitch ? "none" : setting.on ? "on" : "off";
}

std::string readOf(const Setting& setting) {
  switch (setting.read) {
    case SettingRead::AtStart: return "once, at the start of Outlook";
    case SettingRead::AtEachDial: return "at each call";
    case SettingRead::AtEachClientStart: return "at each start of the client";
    case SettingRead::AtFirstTrace: return "once, at the first line of the trace";
    default: return "at each line of the trace";
  }
}

std::string writerOf(const Setting& setting) {
  switch (setting.writer) {
    case SettingWriter::Administrator: return "administrator, policy, the client's set-up";
    case SettingWriter::ClientSetup: return "the client's set-up";
    default: return "Windows";
  }
}

std::string document() {
  std::string lines =
      "<!-- Made from the table of settings (resources/settings.h): changes made here will be "
      "lost. "
      "-->\n# Settings\n\n"
      "Every registry value that the add-in reads. It writes none of them, and it works with none "
      "of them set. A value that should be a number and is not counts as absent, with a warning in "
      "the trace.\n\n"
      "Those marked *policy* are in the templates of `packaging/policy/`, in English and German. "
      "Their keys do not lie under `Software\\Policies`: they are preferences, so a value stays "
      "when its policy goes, and the policy editor of Windows XP shows them only after *View, "
      "Filtering, Only show policy settings that can be fully managed* has been switched off.\n\n"
      "| setting | value | default | read | policy |\n|---|---|---|---|---|\n";
  for (const auto& setting : resources::Settings) {
    const auto name = nameOf(setting);
    lines += "| " + text(setting.title, Language::English) + " | `" +
             (name.empty() ? "(default)" : name) + "` | " + defaultOf(setting) + " | " +
             readOf(setting) + " | " + (setting.policy ? "yes" : "") + " |\n";
  }
  for (const auto& setting : resources::Settings) {
    const auto name = nameOf(setting);
    lines += "\n## " + text(setting.title, Language::English) + "\n\n" +
             text(setting.help, Language::English) + "\n\n- key: `" + rootName(setting.place.root) +
             "\\" + keyOf(setting) + "`\n- value: `" + (name.empty() ? "(default)" : name) + "` (" +
             typeOf(setting) + ")\n- default: " + defaultOf(setting) + "\n- read " +
             readOf(setting) + "\n- written by: " + writerOf(setting) + "\n";
    if (setting.type != SettingType::Language) continue;
    lines += "- values:";
    for (const auto& each : resources::SettingLanguages) {
      lines += (&each == resources::SettingLanguages ? " " : ", ") + std::to_string(each.langId) +
               " " + text(each.title, Language::English);
    }
    lines += "; any other: English\n";
  }
  return lines;
}

/// "dword:00000001" and so on; "-" takes the value away.
std::string dataOf(const Setting& setting, bool on) {
  switch (setting.type) {
    case SettingType::OnOff: return on ? "dword:00000001" : "dword:00000000";
    case SettingType::TextOne: return on ? "\"1\"" : "\"0\"";
    default: return "-";
  }
}

std::string entry(const Setting& setting, const std::string& data) {
  return "\n; " + text(setting.title, Language::English) + ": " +
         text(setting.help, Language::English) + "\n[" + rootName(setting.place.root) + "\\" +
         keyOf(setting) + "]\n\"" + nameOf(setting) + "\"=" + data + "\n";
}

std::string sample(const std::string& what, const std::string& entries) {
  return windowsLines("Windows Registry Editor Version 5.00\n\n; " + what + "\n" + entries);
}

}  // namespace

void addDocuments(Files& files) {
  files["docs/settings.md"] = document();
  std::string defaults;
  std::string nothing;
  for (const auto& setting : resources::Settings) {
    if (!setting.policy) continue;
    defaults += entry(setting, dataOf(setting, setting.on));
    nothing += entry(setting, "-");
  }
  const auto& start = resources::setting(u"StartWithOutlook");
  const auto& trace = resources::setting(u"LogFile");
  const std::string folder = "packaging/policy/samples/";
  files[folder + "defaults.reg"] = sample("Every setting as it is without any value.", defaults);
  files[folder + "none.reg"] = sample("Takes every setting away.", nothing);
  files[folder + "recommended.reg"] =
      sample("What we recommend for everybody.", entry(start, dataOf(start, true)));
  files[folder + "trace-on.reg"] =
      sample("For finding a fault: the trace file on.", entry(trace, dataOf(trace, true)));
  files[folder + "trace-off.reg"] =
      sample("The trace file off.", entry(trace, dataOf(trace, false)));
}

}  // namespace packaging
