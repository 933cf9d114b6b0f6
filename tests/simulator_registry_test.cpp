#include <cstddef>
#include <string>
#include <string_view>

#include "demo/import/RegFile.h"
#include "tests/SimulatedMachine.h"

namespace tests {
namespace {

using namespace std::string_view_literals;
using platform::RegistryType;
using platform::RegistryValue;

constexpr RegistryRoot User = RegistryRoot::CurrentUser;

class SimulatedRegistryTest : public SimulatedMachine {
 protected:
  std::u16string stringAt(std::u16string_view key, std::u16string_view name) const {
    const auto value = machine.registry.peek(User, key, name);
    return value ? value->text : u"<none>";
  }
};

TEST_F(SimulatedRegistryTest, RegistryIgnoresCaseAndKeepsSpelling) {
  on.registry.write(User, u"Software\\K9T\\Log", u"Über", platform::stringValue(u"1"));
  const auto found = on.registry.read(User, u"\\SOFTWARE\\k9t\\LOG\\", u"üBER");
  ASSERT_TRUE(found);
  EXPECT_EQ(found->text, u"1\0"sv);
  EXPECT_EQ(on.registry.valueNames(User, u"software\\k9t\\log"), Texts{u"Über"});
  EXPECT_EQ(on.registry.subkeyNames(User, u"software\\k9t"), Texts{u"Log"});
  EXPECT_FALSE(on.registry.read(RegistryRoot::LocalMachine, u"Software\\K9T\\Log", u"Über"));
  EXPECT_FALSE(on.registry.read(User, u"Software\\K9T\\Log", u""));

  EXPECT_FALSE(on.registry.deleteValue(User, u"Software\\K9T\\Log", u"missing"));
  EXPECT_TRUE(on.registry.deleteValue(User, u"Software\\K9T\\Log", u"über"));
  EXPECT_TRUE(machine.registry.hasKey(User, u"Software\\K9T\\Log"));
  EXPECT_TRUE(on.registry.deleteKey(User, u"software\\k9t\\"));
  EXPECT_FALSE(on.registry.deleteKey(User, u"Software\\K9T"));
  EXPECT_FALSE(on.registry.deleteKey(User, u""));
  EXPECT_FALSE(machine.registry.hasKey(User, u"Software\\K9T\\Log"));
}

TEST_F(SimulatedRegistryTest, ClassesAreAPartOfTheMachinesSoftware) {
  machine.installClient();
  const auto path =
      on.registry.read(RegistryRoot::LocalMachine,
                       u"Software\\Classes\\" + std::u16string(Client::RegistryKey), u"");
  ASSERT_TRUE(path);
  EXPECT_EQ(path->text, std::u16string(Client::DefaultPath) + u'\0');
  EXPECT_TRUE(on.registry.deleteKey(RegistryRoot::ClassesRoot, Client::RegistryKey));
  EXPECT_FALSE(machine.registry.peek(RegistryRoot::ClassesRoot, Client::RegistryKey, u""));
}

std::string utf16File(std::u16string_view text) {
  std::string bytes = "\xFF\xFE";
  for (const char16_t c : text) {
    bytes += static_cast<char>(c & 0xFF);
    bytes += static_cast<char>(c >> 8);
  }
  return bytes;
}

std::string bytesOf(const RegistryValue& value) {
  std::string bytes;
  for (const std::byte byte : value.bytes) bytes += static_cast<char>(byte);
  return bytes;
}

constexpr std::u16string_view Exported =
    u"Windows Registry Editor Version 5.00\r\n"
    u"\r\n"
    u"; what the set-up writes\r\n"
    u"[HKEY_CURRENT_USER\\Software\\K9T\\[old]]\r\n"
    u"[HKEY_CURRENT_USER\\Software\\K9T]\r\n"
    u"@=\"Größe \\\"8\\\" in C:\\\\Temp\"\r\n"
    u"\"a \\\"b\\\"\"=dword:8000000a ; comment\r\n"
    u"\"bin\"=hex:01,\\\r\n"
    u"  fe,\\\r\n"
    u"  0\r\n"
    u"\"none\"=hex(0):\r\n"
    u"\"exp\"=hex(2):25,00,41,00,00,00\r\n"
    u"\"odd\"=hex(1):31,00,32\r\n"
    u"\"multi\"=hex(7):61,00,00,00,62,00,00,00,00,00\r\n"
    u"\"q\"=hex(b):01,00,00,00,00,00,00,80\r\n"
    u"\"long\"=\"two\r\nlines\"\r\n"
    u"\"gone\"=-\r\n"
    u"[HKEY_USERS\\S-1-5-18\\Software\\K9T]\r\n"
    u"\"bin\"=dword:1\r\n"
    u"[-HKEY_CURRENT_USER\\Software\\Dead]\r\n";

TEST_F(SimulatedRegistryTest, ReadsWhatTheRegistryEditorExports) {
  machine.registry.setDword(User, u"Software\\K9T", u"gone", 1);
  machine.registry.setDword(User, u"Software\\Dead\\Below", u"x", 1);
  demo::importRegFile(machine.registry, utf16File(Exported));

  constexpr std::u16string_view Key = u"Software\\K9T";
  const auto at = [&](std::u16string_view name) {
    return machine.registry.peek(User, Key, name).value_or(RegistryValue{});
  };
  EXPECT_TRUE(machine.registry.hasKey(User, u"Software\\K9T\\[old]"));
  EXPECT_EQ(at(u"").text, u"Größe \"8\" in C:\\Temp\0"sv);
  EXPECT_EQ(at(u"a \"b\"").type, RegistryType::Dword);
  EXPECT_EQ(bytesOf(at(u"a \"b\"")), "\x0a\0\0\x80"sv);
  EXPECT_EQ(at(u"bin").type, RegistryType::Binary);
  EXPECT_EQ(bytesOf(at(u"bin")), "\x01\xfe\0"sv);
  EXPECT_EQ(at(u"none").type, RegistryType::None);
  EXPECT_EQ(at(u"exp").type, RegistryType::ExpandString);
  EXPECT_EQ(at(u"exp").text, u"%A\0"sv);
  EXPECT_EQ(at(u"odd").text, u"1") << "no NUL is added, half a character is dropped";
  EXPECT_EQ(at(u"multi").text, u"a\0b\0\0"sv);
  EXPECT_EQ(at(u"q").type, RegistryType::Qword);
  EXPECT_EQ(at(u"q").bytes.size(), 8u);
  EXPECT_EQ(at(u"long").text, u"two\r\nlines\0"sv);
  EXPECT_FALSE(machine.registry.peek(User, Key, u"gone"));
  EXPECT_FALSE(machine.registry.hasKey(User, u"Software\\Dead"));
}

TEST_F(SimulatedRegistryTest, RegistryFilesComeInSeveralEncodings) {
  const struct {
    std::string bytes;
    std::u16string_view text;
  } cases[] = {
      {"REGEDIT4\n[HKEY_CURRENT_USER\\K]\n\"v\"=\"\xFC\x80\"\n", u"ü€\0"sv},
      {"REGEDIT4\n[HKEY_CURRENT_USER\\K]\n\"v\"=hex(2):fc,00", u"ü\0"sv},
      {"\xEF\xBB\xBFWindows Registry Editor Version 5.00\n[HKCU\\K]\n\"v\"=\"\xC3\xBC\"", u"ü\0"sv},
      {"Windows Registry Editor Version 5.00\r\n[HKCU\\K]\r\n\"v\"=\"\xC3\xBC\"", u"ü\0"sv},
      {"Windows Registry Editor Version 5.00\r[HKCU\\K]\r\"v\"=\"\xFC\"", u"ü\0"sv},
  };
  for (const auto& c : cases) {
    machine.registry.removeKey(User, u"K");
    demo::importRegFile(machine.registry, c.bytes);
    EXPECT_EQ(stringAt(u"K", u"v"), c.text) << c.bytes;
  }
}

TEST_F(SimulatedRegistryTest, FaultyRegistryFilesNameTheirLineAndChangeNothing) {
  const std::string top = "REGEDIT4\n[HKEY_CURRENT_USER\\K]\n\"good\"=dword:1\n";
  const struct {
    std::string bytes;
    std::size_t line;
    std::string_view what;
  } cases[] = {
      {"", 1, "found the end of the text"},
      {"REGEDIT5\n", 1, "found 'REGEDIT5'"},
      {std::string("\xFF\xFEW", 3), 1, "half a character"},
      {"REGEDIT4\n\"v\"=dword:1\n", 2, "expected a key in brackets before"},
      {"REGEDIT4\n[HKEY_CURRENT_USER\\K\n", 2, "\"]\" after the key"},
      {"REGEDIT4\n[HKEY_MY_USER\\K]\n", 2, "found 'HKEY_MY_USER'"},
      {top + "[-HKEY_CURRENT_USER\\K]\n\n\"v\"=dword:1\n", 6, "this one is deleted"},
      {top + "v=dword:1\n", 4, "a name in quotes or @, found 'v=dword:1'"},
      {top + "\"v\" dword:1\n", 4, "\"=\" after the name"},
      {top + "\"v\"=1\n", 4, "dword:"},
      {top + "\"v\"=dword:\n", 4, "a hexadecimal number, found the end of the line"},
      {top + "\"v\"=dword:123456789\n", 4, "the end of the line, found '9'"},
      {top + "\"v\"=hex:01,\\\n  zz\n", 5, "found 'zz'"},
      {top + "\"v\"=hex:01,\n", 4, "a hexadecimal number"},
      {top + "\"v\"=hex:001\n", 4, "found '1'"},
      {top + "\"v\"=hex(2:00\n", 4, "\"):\" after the type"},
      {top + "\"v\"=\"open\n\n", 4, "a closing quote, found '\"open'"},
      {top + "\"a\"=\"x\ny\"\n\"b\"=\"c\" d\n", 6, "found 'd'"},
  };
  for (const auto& c : cases) {
    try {
      demo::importRegFile(machine.registry, c.bytes);
      ADD_FAILURE() << "accepted: " << c.bytes;
    } catch (const scenario::RegError& error) {
      EXPECT_EQ(error.line(), c.line) << error.what();
      EXPECT_NE(std::string_view(error.what()).find(c.what), std::string_view::npos)
          << error.what();
    }
  }
  EXPECT_FALSE(machine.registry.hasKey(User, u"K"));
}

}  // namespace
}  // namespace tests
