// What the registry's values mean: options, numbers, and warnings of those that are none.
#include <gtest/gtest.h>

#include "infra/RegOp.h"
#include "infra/modRes.h"
#include "state/process.h"
#include "state/settings.h"
#include "tests/World.h"
#include "tests/registryValues.h"

namespace tests {
namespace {

using platform::RegistryType;
using platform::RegistryValue;
using namespace std::string_view_literals;

class SettingsTest : public testing::Test {
 protected:
  World world;
  cxol::Process process{world.machine.platform()};
};

TEST_F(SettingsTest, OptionsAreNumbersOfManyKinds) {
  const struct {
    const char* why;
    RegistryValue stored;
    bool read;
    /// How a warning quotes it; nothing for a number.
    std::optional<std::u16string_view> quoted = std::nullopt;
  } cases[] = {
      {"number 0", bytes(RegistryType::Dword, {0, 0, 0, 0}), false},
      {"64-bit 0", bytes(RegistryType::Qword, {0, 0, 0, 0, 0, 0, 0, 0}), false},
      {"64-bit 1", bytes(RegistryType::Qword, {1, 0, 0, 0, 0, 0, 0, 0}), true},
      {"64-bit -1", bytes(RegistryType::Qword, {255, 255, 255, 255, 255, 255, 255, 255}), true},
      {"beyond 32 bits", bytes(RegistryType::Qword, {0, 0, 0, 0, 1, 0, 0, 0}), true},
      {"too long", bytes(RegistryType::Qword, {0, 15, 26, 255, 0, 0, 0, 0, 0}), true,
       u"00 0F 1A FF 00 00 00 00 00"},
      {"eight bytes, but no number", bytes(RegistryType::Binary, {0, 0, 0, 0, 0, 0, 0, 0}), true,
       u"00 00 00 00 00 00 00 00"},
      {"word", text(RegistryType::String, u"no\0"sv), true, u"no"},
      {"variable of 0", text(RegistryType::ExpandString, u"%Zero%\0"sv), false},
  };
  auto& registry = world.machine.registry;
  registry.setVariable(u"ZERO", u"0");
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    world.forget();
    registry.setRaw(RegistryRoot::CurrentUser, AddInKey, u"UseMapi", c.stored);
    EXPECT_EQ(cxol::ReadOption(cxol::options::UseMapi), c.read);
    Texts warnings;
    if (c.quoted) {
      warnings.push_back(u"Warning: HKEY_CURRENT_USER\\" + std::u16string(AddInKey) +
                         u"\\UseMapi is not a number: \"" + std::u16string(*c.quoted) +
                         u"\", using True");
    }
    Texts trace = world.trace();
    std::erase(trace, u"Warning: InitK9TLog failed, use internal logging");
    EXPECT_EQ(trace, warnings);
  }
}

TEST_F(SettingsTest, AGarbledLanguageIsPassedOverWithAWarning) {
  const std::u16string general = u"Software\\K9T\\Localization\\LangID";
  const std::u16string own = general + u"\\Applications\\OUTLOOK.EXE";
  const struct {
    const char* why;
    RegistryValue stored;
    std::u16string_view warning;
  } cases[] = {
      {"number", bytes(RegistryType::Dword, {7, 4, 0, 0}), u""},
      {"0 is none", bytes(RegistryType::Dword, {0, 0, 0, 0}), u""},
      {"text of 0", text(RegistryType::String, u"0\0"sv), u""},
      {"word", text(RegistryType::String, u"DE\0"sv), u"\"DE\""},
      {"empty text", text(RegistryType::String, u"\0"sv), u"\"\""},
      {"text without its end", text(RegistryType::String, u"1031"), u"\"1031\""},
      {"too many bytes", bytes(RegistryType::Binary, {7, 4, 0, 0, 0}), u"\"07 04 00 00 00\""},
      {"a kind that is not read", bytes(RegistryType::None, {7, 4}), u"\"1031\""},
  };
  auto& registry = world.machine.registry;
  for (const auto& key : {own, general}) {
    for (const auto& c : cases) {
      SCOPED_TRACE(c.why);
      world.forget();
      registry.setRaw(RegistryRoot::CurrentUser, key, u"LangID", c.stored);
      EXPECT_TRUE(cxol::SelectLanguage());
      EXPECT_EQ(world.traced(u"Warning: HKEY_CURRENT_USER\\" + key + u"\\LangID is not a number: " +
                             std::u16string(c.warning) + u", using 0"),
                !c.warning.empty());
      EXPECT_LE(world.trace().size(), c.warning.empty() ? 0u : 2u);
    }
    registry.remove(RegistryRoot::CurrentUser, key, u"LangID");
  }
}

TEST_F(SettingsTest, OnlyTextsNumbersAndBooleansAreWritten) {
  const cxol::RegOp key(world.machine.registry, RegistryRoot::CurrentUser, u"Key");
  const struct {
    automation::Value value;
    std::int32_t error;
    automation::Value back;
  } cases[] = {
      {u"text", 0, u"text"},
      {u"", 0, u""},
      {7, 0, 7},
      {-1, 0, -1},
      {true, 0, -1},
      {2.5, 0, 2},
      {5e9, 6, {}},
      {{}, 13, {}},
      {automation::Missing(), 13, {}},
      {automation::Object(), 13, {}},
      {automation::Array(), 13, {}},
  };
  for (const auto& c : cases) {
    key.deleteValue(u"Name");
    std::int32_t error = 0;
    try {
      key.setValue(u"Name", c.value);
    } catch (const automation::Error& raised) {
      error = raised.number();
    }
    EXPECT_EQ(error, c.error);
    const auto back = key.value(u"Name");
    EXPECT_EQ(back.has_value(), c.error == 0);
    EXPECT_TRUE(!back || back->toText() == c.back.toText());
  }
}

}  // namespace
}  // namespace tests
