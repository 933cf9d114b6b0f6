#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <map>
#include <pugixml.hpp>
#include <regex>
#include <set>
#include <sstream>

#include "demo/NativeAddin.h"
#include "demo/import/RegFile.h"
#include "infra/modTrace.h"
#include "infra/runtime.h"
#include "packaging/settings/generated.h"
#include "platform/platform.h"
#include "resources/settings.h"
#include "simulator/data/Utf8.h"
#include "state/settings.h"
#include "tests/World.h"

namespace tests {
namespace {

using simulator::toUtf16;
using simulator::toUtf8;

/// A registry that notes what is read, as "root\key\name".
class NotingRegistry : public platform::Registry {
 public:
  explicit NotingRegistry(platform::Registry& below) : below_(below) {}
  std::optional<platform::RegistryValue> read(RegistryRoot root, std::u16string_view key,
                                              std::u16string_view name) override {
    reads.insert(place(root, key, name));
    return below_.read(root, key, name);
  }
  void write(RegistryRoot, std::u16string_view key, std::u16string_view,
             const platform::RegistryValue&) override {
    ADD_FAILURE() << "wrote " << toUtf8(key);
  }
  bool deleteValue(RegistryRoot, std::u16string_view, std::u16string_view) override {
    return false;
  }
  bool deleteKey(RegistryRoot, std::u16string_view) override { return false; }
  Texts valueNames(RegistryRoot, std::u16string_view) override { return {}; }
  Texts subkeyNames(RegistryRoot, std::u16string_view) override { return {}; }
  std::u16string expanded(const std::u16string& text) override { return below_.expanded(text); }

  static std::string place(RegistryRoot root, std::u16string_view key, std::u16string_view name) {
    return std::to_string(static_cast<int>(root)) + "\\" + toUtf8(key) + "\\" + toUtf8(name);
  }
  std::set<std::string> reads;

 private:
  platform::Registry& below_;
};

TEST(SettingsTableTest, TheAddinReadsWhatIsInTheTableAndAllOfIt) {
  std::optional<NotingRegistry> registry;  // outlives the add-in, whatever happens
  World world([&registry](const platform::Platform& on) {
    return makeNativeAddin({on.clock, on.files, on.language, on.loggingLibrary, on.mapiHelper,
                            on.objects, on.pictures, on.processes, *registry, on.screen,
                            on.timers});
  });
  world.machine.processes.setHostModuleName(std::u16string(resources::HostProgram));
  world.option(ClientKey, u"StartWithOutlook", 1);
  world.addContact(u"Meier", {{u"HomeTelephoneNumber", u"123"}});
  registry.emplace(world.machine.registry);
  world.start();
  world.machine.advance(25'000);
  world.startClient();
  world.select(u"Contacts", u"Meier");
  world.user.choice = u"Home";
  world.host->click(world.host->windows(simulator::WindowKind::Explorer).front(), u"CxBtDial");
  // The other route of the trace leads past its own switch.
  cxol::runtime().trace.UseInternalLog = false;
  cxol::IsLogFileEnabled();
  world.stop();

  std::set<std::string> table;
  for (const auto& setting : resources::Settings) {
    std::u16string key(setting.place.key);
    if (key.ends_with(u'\\')) key += resources::HostProgram;
    table.insert(NotingRegistry::place(setting.place.root, key, setting.place.name));
  }
  EXPECT_EQ(registry->reads, table);
}

TEST(SettingsTableTest, NoRegistryPathStandsInTheLogicItself) {
  const std::regex path(R"re("(Software|SYSTEM|CLSID|AppID|TypeLib|Interface)\\\\)re",
                        std::regex::icase);
  int files = 0;
  for (const char* folder :
       {"addin", "client", "explorer", "infra", "inspector", "items", "ribbon"}) {
    for (const auto& entry : std::filesystem::recursive_directory_iterator(
             std::filesystem::path(PROJECT_DIR) / folder)) {
      if (entry.path().extension() != ".cpp" && entry.path().extension() != ".h") continue;
      ++files;
      const auto source = simulator::readWholeFile(entry.path()).value();
      EXPECT_FALSE(std::regex_search(source, path)) << entry.path();
    }
  }
  EXPECT_GT(files, 50);
}

TEST(SettingsTableTest, WhatIsMadeFromTheTableIsUpToDate) {
  const auto files = packaging::generatedFiles();
  std::set<std::string> names;
  for (const auto& [name, bytes] : files) {
    names.insert(name);
    EXPECT_TRUE(simulator::readWholeFile(std::string(PROJECT_DIR) + "/" + name) == bytes)
        << name << " differs: run velnor-settings in the project's folder";
  }
  for (const auto& entry : std::filesystem::recursive_directory_iterator(std::string(PROJECT_DIR) +
                                                                         "/packaging/policy")) {
    if (!entry.is_regular_file()) continue;
    const auto name = std::filesystem::relative(entry.path(), PROJECT_DIR).string();
    EXPECT_TRUE(names.contains(name)) << name << " is no longer made";
  }
}

/// What a policy writes for each of its choices, as the editor of registry files writes it.
struct Policy {
  std::string key;
  std::string value;
  std::map<std::string, std::string> choices;  // "on", "off", or a language's name
  bool operator==(const Policy&) const = default;
};
using Policies = std::map<std::string, Policy>;

std::string numberData(const std::string& decimal) {
  char text[20];
  std::snprintf(text, sizeof text, "dword:%08x", static_cast<unsigned>(std::stoul(decimal)));
  return text;
}

std::string dataOf(const pugi::xml_node& node) {
  const auto number = node.child("decimal");
  return number ? numberData(number.attribute("value").value())
                : "\"" + std::string(node.child("string").text().get()) + "\"";
}

/// The name inside "$(string.NAME)", of which each language must have a text.
std::string named(const pugi::xml_attribute& reference,
                  const std::vector<pugi::xml_document>& texts) {
  const std::string text = reference.value();
  const auto dot = text.find('.');
  const std::string kind = text.substr(2, dot - 2);
  const std::string name = text.substr(dot + 1, text.size() - dot - 2);
  for (const auto& language : texts) {
    const auto table =
        language.document_element().child("resources").child((kind + "Table").c_str());
    EXPECT_FALSE(table.find_child_by_attribute(kind.c_str(), "id", name.c_str()).empty()) << text;
  }
  return name;
}

Policies policiesOfXml() {
  const auto files = packaging::generatedFiles();
  const auto load = [&](pugi::xml_document& document, const std::string& name) {
    const auto& bytes = files.at("packaging/policy/" + name);
    EXPECT_TRUE(document.load_buffer(bytes.data(), bytes.size())) << name;
  };
  pugi::xml_document document;
  load(document, "velnor.admx");
  std::vector<pugi::xml_document> texts(2);
  load(texts[0], "en-US/velnor.adml");
  load(texts[1], "de-DE/velnor.adml");

  Policies policies;
  for (const auto& node : document.document_element().child("policies")) {
    const std::string root = node.attribute("class").value() == std::string("User")
                                 ? "HKEY_CURRENT_USER\\"
                                 : "HKEY_LOCAL_MACHINE\\";
    auto& policy = policies[named(node.attribute("displayName"), texts)];
    named(node.attribute("explainText"), texts);
    policy.key = root + node.attribute("key").value();
    const auto list = node.child("elements").child("enum");
    if (list) named(node.attribute("presentation"), texts);
    policy.value = (list ? list : node).attribute("valueName").value();
    policy.choices["off"] = list ? "-" : dataOf(node.child("disabledValue"));
    if (!list) policy.choices["on"] = dataOf(node.child("enabledValue"));
    for (const auto& item : list) {
      policy.choices[named(item.attribute("displayName"), texts)] = dataOf(item.child("value"));
    }
  }
  return policies;
}

/// The same of a classic template, by what an editor needs of it.
Policies policiesOfClassic(const std::string& name) {
  const auto bytes = packaging::generatedFiles().at("packaging/policy/" + name);
  std::u16string text;
  for (std::size_t i = 2; i + 1 < bytes.size(); i += 2) {
    text += static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) |
                                  static_cast<unsigned char>(bytes[i + 1]) << 8);
  }
  EXPECT_EQ(bytes.substr(0, 2), "\xFF\xFE");
  std::istringstream lines(toUtf8(text));
  Policies policies;
  std::string root, policy;
  std::set<std::string> wanted, given;
  for (std::string line; std::getline(lines, line);) {
    EXPECT_TRUE(line.ends_with('\r')) << line;
    std::smatch m;
    const auto is = [&](const char* pattern) {
      return std::regex_match(line, m, std::regex(pattern));
    };
    if (is(R"(CLASS (\w+)\r)")) {
      root = m[1] == "USER" ? "HKEY_CURRENT_USER\\" : "HKEY_LOCAL_MACHINE\\";
    } else if (is(R"( *POLICY !!(\w+)\r)")) {
      policy = m[1];
    } else if (is(R"re( *KEYNAME "(.*)"\r)re")) {
      policies[policy].key = root + m[1].str();
    } else if (is(R"re( *VALUENAME "(.*)"\r)re")) {
      policies[policy].value = m[1];
    } else if (is(R"re( *VALUE(ON|OFF) (?:NUMERIC (\d+)|(".*"))\r)re")) {
      policies[policy].choices[m[1] == "ON" ? "on" : "off"] =
          m[2].matched ? numberData(m[2]) : m[3].str();
    } else if (is(R"( *NAME !!(\w+) VALUE NUMERIC (\d+)\r)")) {
      policies[policy].choices[m[1]] = numberData(m[2]);
      policies[policy].choices["off"] = "-";
    } else if (is(R"re((\w+)="([^"]+)"\r)re")) {
      given.insert(m[1]);
    }
    if (std::regex_search(line, m, std::regex("!!(\\w+)"))) wanted.insert(m[1]);
  }
  EXPECT_EQ(wanted, given) << name;
  return policies;
}

TEST(SettingsTableTest, EachChoiceOfEachPolicyReachesTheAddin) {
  const auto policies = policiesOfXml();
  EXPECT_EQ(policies, policiesOfClassic("velnor.adm"));
  EXPECT_EQ(policies, policiesOfClassic("velnor-de.adm"));

  World world;
  world.machine.processes.setHostModuleName(u"outlook.exe");
  const auto option = [](bool on) { return std::string(on ? "on" : "off"); };
  const auto language = [] { return toUtf8(cxol::runtime().language.code); };
  using cxol::globals;
  const std::map<std::string, std::function<std::string()>> observed = {
      {"StartWithOutlook", [&] { return option(globals().g_bStartWithOutlook); }},
      {"StopWithOutlook", [&] { return option(globals().g_bStopWithOutlook); }},
      {"ShowInspectorToolBar", [&] { return option(globals().g_bShowInspectorToolBar); }},
      {"IgnoreSelChange", [&] { return option(globals().g_bIgnoreSelChange); }},
      {"IgnoreSelChangeOfMachine", [&] { return option(globals().g_bIgnoreSelChange); }},
      {"UseMapi", [&] { return option(globals().g_bUseMapi); }},
      {"DialRemote", [&] { return option(cxol::ReadOption(cxol::options::DialRemote)); }},
      {"LanguageOfOutlook", language},
      {"Language", language},
      {"LogFile", [&] { return option(!world.trace().empty()); }},
  };
  const std::map<std::string, std::string> languages = {{"German", "DE"},  {"English", "EN"},
                                                        {"French", "FR"},  {"Italian", "IT"},
                                                        {"Spanish", "ES"}, {"Portuguese", "PT"}};
  EXPECT_EQ(observed.size(), policies.size());

  const auto check = [&](const std::string& id, const std::string& expected) {
    world.start();
    EXPECT_EQ(observed.at(id)(), expected);
    world.stop();
    world.forget();
  };
  for (const auto& setting : resources::Settings) {
    if (!setting.policy) continue;
    const auto id = toUtf8(setting.id);
    const auto& policy = policies.at(id);
    const auto choose = [&](const std::string& data) {
      demo::importRegFile(world.machine.registry, "Windows Registry Editor Version 5.00\r\n\r\n[" +
                                                      policy.key + "]\r\n\"" + policy.value +
                                                      "\"=" + data + "\r\n");
    };
    for (const auto& [choice, data] : policy.choices) {
      SCOPED_TRACE(id + " " + choice);
      choose(data);
      check(id, data == "-" ? "EN" : languages.contains(choice) ? languages.at(choice) : choice);
    }
    SCOPED_TRACE(id + " not configured");
    choose("-");
    const bool isLanguage = setting.type == resources::SettingType::Language;
    check(id, isLanguage ? "EN" : option(setting.on));
  }
}

TEST(SettingsTableTest, TheSamplesDoWhatTheyPromise) {
  World world;
  const auto import = [&](const std::string& name) {
    demo::importRegFile(world.machine.registry, packaging::generatedFiles().at(
                                                    "packaging/policy/samples/" + name + ".reg"));
  };
  const auto startsClient = [&] {
    world.start();
    const bool starts = cxol::globals().g_bStartWithOutlook;
    world.stop();
    return starts;
  };
  import("recommended");
  EXPECT_TRUE(startsClient());
  import("defaults");
  EXPECT_FALSE(startsClient());
  import("trace-on");
  world.forget();
  startsClient();
  EXPECT_FALSE(world.trace().empty());
  import("trace-off");
  world.forget();
  startsClient();
  EXPECT_TRUE(world.trace().empty());
  import("none");
  for (const auto& setting : resources::Settings) {
    if (!setting.policy) continue;
    std::u16string key(setting.place.key);
    if (key.ends_with(u'\\')) key += resources::HostProgram;
    EXPECT_FALSE(world.machine.registry.peek(setting.place.root, key, setting.place.name))
        << toUtf8(setting.id);
  }
}

}  // namespace
}  // namespace tests
