// Every value that the add-in reads from the registry, as anything that a registry can hold.

#include <algorithm>
#include <variant>

#include "simulator/client/Client.h"
#include "simulator/player/Text.h"
#include "standin/proof/ProofDesk.h"
#include "windows/com/text.h"

namespace proof {
namespace {

using platform::RegistryRoot;
using scenario::toUtf8;
using namespace std::literals;

/// The bytes of a text as the registry keeps it; its end is written out as "\0".
std::string wideBytes(std::u16string_view text) {
  return std::string(reinterpret_cast<const char*>(text.data()), text.size() * sizeof(char16_t));
}

std::string terminated(std::u16string text) {
  text.push_back(u'\0');
  return wideBytes(text);
}

constexpr DWORD BigEndian = 5;
constexpr DWORD Link = 6;
constexpr DWORD Unheard = 0x12345;

const std::u16string Huge(100'000, u'7');

/// One garbled value. Its bytes go to the registry as they are.
struct Stored {
  DWORD type;
  std::string bytes;
};

/// A value, put back in the end.
class Garbled {
 public:
  Garbled(RegistryRoot root, std::u16string_view key, std::u16string_view name,
          const Stored& stored) {
    // For what was there before.
    keeper_.setDword(root, key, name, 0);
    HKEY opened = nullptr;
    const HKEY parent = root == RegistryRoot::LocalMachine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
    RegOpenKeyExW(parent, windows::wide(std::u16string(key)), 0, KEY_SET_VALUE, &opened);
    // The system counts a NUL that happens to stand behind a text as its end.
    const std::string fenced = stored.bytes + "\xFF\xFF";
    EXPECT_EQ(RegSetValueExW(opened, windows::wide(std::u16string(name)), 0, stored.type,
                             reinterpret_cast<const BYTE*>(fenced.data()),
                             static_cast<DWORD>(stored.bytes.size())),
              ERROR_SUCCESS);
    RegCloseKey(opened);
  }

 private:
  standin::RegistryKeeper keeper_;
};

class RegistryFaults : public ProofDesk {
 protected:
  bool traceHas(const Lines& lines, const std::string& line) {
    return std::ranges::count(lines, line) == 1;
  }
};

TEST_F(RegistryFaults, Options) {
  const auto text = [](std::u16string_view value) { return Stored{REG_SZ, wideBytes(value)}; };
  const struct {
    const char* what;
    Stored stored;
    /// True, false, or how the warning of a value that is no number quotes it.
    std::variant<bool, std::string> meaning;
  } rows[] = {
      {"number", {REG_DWORD, "\2\0\0\0"s}, true},
      {"number 0", {REG_DWORD, "\0\0\0\0"s}, false},
      {"number of two bytes", {REG_DWORD, "\1\0"s}, true},
      {"number of two bytes, 0", {REG_DWORD, "\0\0"s}, false},
      {"number of no bytes", {REG_DWORD, ""}, ""s},
      {"number of five bytes", {REG_DWORD, "\1\0\0\0\0"s}, "01 00 00 00 00"s},
      {"long number", {REG_QWORD, "\1\0\0\0\0\0\0\0"s}, true},
      {"number from the other end", {BigEndian, "\0\0\0\1"s}, true},
      {"bytes", {REG_BINARY, "\xFF"s}, true},
      {"bytes of 0", {REG_BINARY, "\0\0\0"s}, false},
      {"many bytes", {REG_BINARY, std::string(6, '\xA5')}, "A5 A5 A5 A5 A5 A5"s},
      {"nothing", {REG_NONE, ""}, ""s},
      {"nothing with bytes", {REG_NONE, "\0\0\0\0"s}, false},
      {"link", {Link, wideBytes(u"ab")}, true},
      {"unheard-of type", {Unheard, "\0\0"s}, false},
      {"text of a number", text(u"1\0"sv), true},
      {"text of 0", text(u"0\0"sv), false},
      {"text without its end", text(u"0"), false},
      {"text of half a character", {REG_SZ, "1"}, ""s},
      {"text behind its end", text(u"0\0rest\0"sv), false},
      {"empty text", text(u"\0"sv), ""s},
      {"text of no bytes", text(u""), ""s},
      {"word", text(u"J\u00E4\0"sv), "J\u00E4"s},
      {"text to expand", {REG_EXPAND_SZ, wideBytes(u"0\0"sv)}, false},
      {"text that is not expanded", {REG_EXPAND_SZ, wideBytes(u"%X%\0"sv)}, "%X%"s},
      {"list", {REG_MULTI_SZ, wideBytes(u"0\0001\0\0"sv)}, false},
      {"empty list", {REG_MULTI_SZ, wideBytes(u"\0"sv)}, ""s},
      {"huge text", {REG_SZ, terminated(Huge)}, toUtf8(Huge)},
  };
  const struct {
    RegistryRoot root;
    std::u16string_view key;
    std::u16string_view name;
    bool absent;
    /// How the trace names it; none for one that is not traced.
    const char* traced;
  } options[] = {
      {RegistryRoot::CurrentUser, AddinKey, u"UseMapi", true, "UseMapi"},
      {RegistryRoot::CurrentUser, ClientOptionsKey, u"StartWithOutlook", false,
       "Start Velnor with Outlook"},
      {RegistryRoot::CurrentUser, ClientOptionsKey, u"StopWithOutlook", false,
       "Terminate Velnor with Outlook"},
      {RegistryRoot::CurrentUser, AddinKey, u"IgnoreSelChange", false, nullptr},
      {RegistryRoot::LocalMachine, AddinKey, u"IgnoreSelChange", false,
       "Ignore selection change events"},
      {RegistryRoot::CurrentUser, AddinKey, u"ShowInspectorToolBar", true, nullptr},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    std::vector<std::unique_ptr<Garbled>> values;
    for (const auto& option : options)
      values.push_back(std::make_unique<Garbled>(option.root, option.key, option.name, row.stored));
    start();
    host().openItem(u"two");
    quit();
    const Lines lines = traced();
    for (const auto& option : options) {
      const bool* meant = std::get_if<bool>(&row.meaning);
      const std::string value = (meant ? *meant : option.absent) ? "True" : "False";
      EXPECT_TRUE(!option.traced || traceHas(lines, "Debug: "s + option.traced + " = " + value))
          << option.traced;
      // The machine's is not asked when the user's says yes.
      if (meant) continue;
      const std::string root =
          option.root == RegistryRoot::CurrentUser ? "HKEY_CURRENT_USER\\" : "HKEY_LOCAL_MACHINE\\";
      const std::string warning = "Warning: " + root + toUtf8(option.key) + "\\" +
                                  toUtf8(option.name) + " is not a number: \"" +
                                  std::get<std::string>(row.meaning) + "\", using " + value;
      EXPECT_TRUE(traceHas(lines, warning)) << warning.substr(0, 200);
    }
    const bool inspectors = std::get_if<bool>(&row.meaning) ? std::get<bool>(row.meaning) : true;
    EXPECT_EQ(traceHas(lines, "Debug: Create inspector"), inspectors);
    EXPECT_EQ(boxes, Lines());
  }
}

TEST_F(RegistryFaults, TheLanguage) {
  const struct {
    const char* what;
    Stored stored;
    bool german;
  } rows[] = {
      {"number", {REG_DWORD, "\x07\x04\0\0"s}, true},
      {"number of two bytes", {REG_DWORD, "\x07\x04"s}, true},
      {"number of no bytes", {REG_DWORD, ""}, false},
      {"number of eight bytes", {REG_DWORD, "\x07\x04\0\0\0\0\0\0"s}, false},
      {"long number", {REG_QWORD, "\x07\x04\0\0\0\0\0\0"s}, false},
      {"two bytes", {REG_BINARY, "\x07\x04"s}, true},
      {"four bytes", {REG_BINARY, "\x07\x04\0\0"s}, false},
      {"nothing", {REG_NONE, "\x07\x04"s}, false},
      {"text", {REG_SZ, wideBytes(u"1031\0"sv)}, true},
      {"text without its end", {REG_SZ, wideBytes(u"1031"sv)}, false},
      {"text of no bytes", {REG_SZ, ""}, false},
      {"word", {REG_SZ, wideBytes(u"DE\0"sv)}, false},
      {"huge text", {REG_SZ, terminated(Huge)}, false},
      {"text to expand", {REG_EXPAND_SZ, wideBytes(u"1031\0"sv)}, false},
      {"list", {REG_MULTI_SZ, wideBytes(u"1031\0\0"sv)}, false},
  };
  constexpr std::u16string_view Key = u"Software\\K9T\\Localization\\LangID";
  const std::u16string own = std::u16string(Key) + u"\\Applications\\STANDIN_PROOF_TESTS.EXE";
  for (const bool ofApplication : {false, true}) {
    for (const auto& row : rows) {
      SCOPED_TRACE(row.what);
      const Garbled general(RegistryRoot::CurrentUser, Key, u"LangID", {REG_DWORD, "\0\0\0\0"s});
      const Garbled garbled(RegistryRoot::CurrentUser, ofApplication ? own : std::u16string(Key),
                            u"LangID", row.stored);
      // A bar that is kept keeps its captions.
      session.bars().explorers.clear();
      start();
      std::u16string caption;
      const auto view = host().snapshot();
      for (const auto& bar : view.windows.at(0).bars)
        for (const auto& control : bar.controls)
          if (control.tag == u"CxBtDrop") caption = control.caption;
      quit();
      EXPECT_EQ(toUtf8(caption), row.german ? "Auflegen" : "Hang up");
    }
  }
}

TEST_F(RegistryFaults, TheSwitchOfTheTrace) {
  const struct {
    const char* what;
    Stored stored;
    bool on;
  } rows[] = {
      {"text", {REG_SZ, wideBytes(u"1\0"sv)}, true},
      {"text behind its end", {REG_SZ, wideBytes(u"1\0002\0"sv)}, true},
      {"text without its end", {REG_SZ, wideBytes(u"1"sv)}, false},
      {"longer text", {REG_SZ, wideBytes(u"11\0"sv)}, false},
      {"huge text", {REG_SZ, terminated(Huge)}, false},
      {"number", {REG_DWORD, "\1\0\0\0"s}, true},
      {"two bytes", {REG_BINARY, "\1\0"s}, true},
      {"three bytes", {REG_BINARY, "\1\0\0"s}, false},
      {"long number", {REG_QWORD, "\1\0\0\0\0\0\0\0"s}, false},
      {"nothing", {REG_NONE, wideBytes(u"1\0"sv)}, false},
      {"text to expand", {REG_EXPAND_SZ, wideBytes(u"1\0"sv)}, false},
      {"list", {REG_MULTI_SZ, wideBytes(u"1\0\0"sv)}, false},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    const Garbled garbled(RegistryRoot::CurrentUser, u"Software\\K9T\\Logging", u"LogFile",
                          row.stored);
    start();
    quit();
    EXPECT_EQ(!traced().empty(), row.on);
  }
}

TEST_F(RegistryFaults, TheFolderOfTheTrace) {
  const std::string usual = toUtf8(trace.path());
  const struct {
    const char* what;
    Stored stored;
    /// Relative to the root of the drive; null for none.
    const char16_t* folder;
  } rows[] = {
      {"number", {REG_DWORD, "\5\0\0\0"s}, u"C:\\5\\"},
      {"nothing", {REG_NONE, ""}, u"C:\\"},
      {"text to expand", {REG_EXPAND_SZ, wideBytes(u"C:\\x\0"sv)}, u"C:\\"},
      {"list", {REG_MULTI_SZ, wideBytes(u"C:\\x\0\0"sv)}, u"C:\\"},
      {"long number", {REG_QWORD, "\1\0\0\0\0\0\0\0"s}, u"C:\\"},
      {"text without its end", {REG_SZ, wideBytes(u"C:\\proof"sv)}, nullptr},
      {"huge text", {REG_SZ, terminated(u"C:\\" + Huge)}, nullptr},
      {"no such drive", {REG_SZ, wideBytes(u"Q:\\x\0"sv)}, nullptr},
      {"no path", {REG_SZ, wideBytes(u"C:\\<|>*?\0"sv)}, nullptr},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    const Garbled garbled(RegistryRoot::CurrentUser,
                          u"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders",
                          u"Local AppData", row.stored);
    start();
    quit();
    EXPECT_EQ(traced(), Lines());
    if (!row.folder) continue;
    const std::u16string folder = std::u16string(row.folder) + u"VelnorLog";
    EXPECT_TRUE(DeleteFileW(windows::wide(folder + u"\\Log_cxolcom.txt")));
    EXPECT_TRUE(RemoveDirectoryW(windows::wide(folder)));
    if (folder.size() > 12) RemoveDirectoryW(windows::wide(std::u16string(row.folder)));
  }
}

TEST_F(RegistryFaults, ThePathOfTheClient) {
  const std::u16string program = beside(u"velnor-standin.exe");
  const struct {
    const char* what;
    Stored stored;
    bool starts;
  } rows[] = {
      {"text", {REG_SZ, terminated(program)}, true},
      {"text without its end", {REG_SZ, wideBytes(program)}, true},
      {"text to expand", {REG_EXPAND_SZ, terminated(program)}, true},
      {"list", {REG_MULTI_SZ, terminated(program + u'\0' + u"x")}, true},
      {"text in quotes", {REG_SZ, terminated(u"\"" + program + u"\"")}, true},
      {"empty text", {REG_SZ, terminated(u"")}, false},
      {"no such file", {REG_SZ, terminated(u"C:\\no such folder\\client.exe")}, false},
      {"huge text", {REG_SZ, terminated(Huge)}, false},
      {"number", {REG_DWORD, "\5\0\0\0"s}, false},
      {"long number", {REG_QWORD, "\1\0\0\0\0\0\0\0"s}, false},
      {"bytes", {REG_BINARY, wideBytes(program)}, false},
      {"nothing", {REG_NONE, ""}, false},
  };
  const std::u16string key =
      u"Software\\Classes\\" + std::u16string(simulator::Client::RegistryKey);
  const Lines problem{"Cannot start Velnor. Please re-install the software."};
  const Lines expected{"Error: " + problem.front()};
  start();
  complaints();
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    client.vanish();
    client.setGaps({});
    const Garbled garbled(RegistryRoot::LocalMachine, key, u"", row.stored);
    click(u"CxBtVelnor");
    for (int i = 0; i < (row.starts ? 1000 : 20) && !client.running(); ++i) Sleep(5);
    EXPECT_EQ(client.running(), row.starts);
    EXPECT_EQ(complaints(), Lines());
    if (row.starts) continue;
    // One that shows no window is started anew, and used as it is when that fails.
    client.setGaps({.window = true, .object = false, .service = false});
    ASSERT_TRUE(client.startReady());
    click(u"CxBtDrop");
    EXPECT_EQ(complaints(), expected);
    EXPECT_EQ(boxes, problem);
    boxes.clear();
    EXPECT_EQ(told(), Lines{"hang up"});
  }
}

}  // namespace
}  // namespace proof
