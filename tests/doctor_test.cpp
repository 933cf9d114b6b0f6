#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <set>

#include "demo/NativeAddin.h"
#include "doctor/Report.h"
#include "doctor/TraceLines.h"
#include "simulator/data/MailboxReader.h"
#include "simulator/data/Utf8.h"
#include "simulator/player/NativeStage.h"
#include "simulator/player/Player.h"

namespace doctor {
namespace {

using platform::RegistryRoot;
using simulator::Machine;

constexpr std::u16string_view Entry =
    u"Software\\Microsoft\\Office\\Outlook\\Addins\\VelnorOutlookCOMAddIn.Connect";
constexpr std::u16string_view Disabled =
    u"Software\\Microsoft\\Office\\11.0\\Outlook\\Resiliency\\DisabledItems";
constexpr std::u16string_view AddInKey = u"Software\\K9T\\CXComAddIn";
constexpr std::u16string_view TraceFile =
    u"C:\\Documents and Settings\\User\\Local Settings\\Application "
    u"Data\\VelnorLog\\Log_cxolcom.txt";

/// A machine on which all is well: add-in, Outlook, running client.
struct HealthyMachine {
  HealthyMachine() {
    simulator::installAddin(machine);
    machine.installClient();
    machine.client.startReady(true);
  }
  void set(std::u16string_view key, std::u16string_view name, std::u16string_view text) {
    machine.registry.setString(RegistryRoot::CurrentUser, key, name, text);
  }
  void disable(std::u16string_view path, std::uint32_t kind = 1, std::uint32_t cut = 0) {
    platform::RegistryValue value{platform::RegistryType::Binary, {}, {}};
    const auto number = [&](std::uint32_t n) {
      const auto bytes = platform::dwordValue(n).bytes;
      value.bytes.insert(value.bytes.end(), bytes.begin(), bytes.end());
    };
    number(kind);
    number(static_cast<std::uint32_t>(path.size() + 1) * 2);
    number(2);
    for (const char16_t c : std::u16string(path) + u'\0' + u'\0') {
      value.bytes.push_back(static_cast<std::byte>(c & 0xFF));
      value.bytes.push_back(std::byte{0});
    }
    value.bytes.resize(value.bytes.size() - cut);
    machine.registry.setRaw(RegistryRoot::CurrentUser, Disabled, std::u16string(path.substr(0, 6)),
                            value);
  }
  Report examined() { return examine(machine.registry, facts); }

  simulator::Boundary boundary;
  Machine machine{boundary};
  simulator::SimFacts facts{machine, true};
};

/// What is not well, a line each.
std::string complaints(const Report& report) {
  std::string text;
  for (const auto& finding : report.findings) {
    if (finding.verdict == Verdict::Well) continue;
    text += finding.verdict == Verdict::Odd ? "odd: " : "failed: ";
    text += simulator::toUtf8(finding.text) + " -> " + simulator::toUtf8(finding.remedy) + "\n";
  }
  return text;
}

TEST(Doctor, NamesEachDefectAndNothingElseAndCuresWhatIsTheUsers) {
  using platform::RegistryRoot::ClassesRoot;
  using platform::RegistryRoot::LocalMachine;
  constexpr auto Dll = u"C:\\Program Files\\Velnor Outlook AddIn\\cxolcom.dll";
  constexpr auto ClassKey = u"CLSID\\{873C647F-502B-4863-9F93-A83F43C0E12B}\\InprocServer32";
  constexpr auto CommandKey = u"CLSID\\{2A15A0D6-A49C-44AC-B751-B0C97D0F249F}\\InprocServer32";
  constexpr auto LibraryKey = u"TypeLib\\{303DF69F-DB02-48B8-B932-1DC32C79BDCC}\\1.0\\0\\win32";
  constexpr auto AppPath = u"Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\OUTLOOK.EXE";
  const struct {
    const char* names;  ///< how the one complaint begins; null for none
    bool curable;
    std::function<void(HealthyMachine&)> breakIt;
  } cases[] = {
      {nullptr, false, [](auto&) {}},
      // The add-in.
      {"failed: The add-in is not registered", false,
       [](auto& m) { m.machine.registry.removeKey(ClassesRoot, ClassKey); }},
      {"failed: The add-in is not registered", false,
       [](auto& m) {
         m.machine.registry.removeKey(ClassesRoot, u"VelnorOutlookCOMAddIn.Connect");
       }},
      {"failed: This file is missing: C:\\Program Files\\Velnor Outlook AddIn\\cxolcom.dll", false,
       [](auto& m) { m.machine.files.remove(Dll); }},
      {"failed: This file is no 32-bit program: C:\\Program Files\\Velnor", false,
       [](auto& m) { m.machine.files.put(Dll, simulator::programImage(false, 1)); }},
      {"failed: This file is no 32-bit program: C:\\Program Files\\Velnor", false,
       [](auto& m) { m.machine.files.put(Dll, "MZ"); }},
      {"odd: Left over from another installation: HKEY_CURRENT_USER\\Software\\Classes\\CLSID",
       false,
       [](auto& m) {
         m.set(std::u16string(u"Software\\Classes\\") + ClassKey, u"", u"D:\\old\\cxolcom.dll");
       }},
      {"odd: Left over from another installation: HKEY_CLASSES_ROOT\\TypeLib", false,
       [](auto& m) {
         m.machine.registry.setString(ClassesRoot, LibraryKey, u"", u"D:\\old\\cxolcom.dll");
       }},
      {nullptr, false,
       [](auto& m) {
         // The same file, spelt otherwise.
         m.machine.files.put(u"C:\\az\\cxolcom.dll", simulator::programImage(true, 1));
         m.machine.registry.setString(ClassesRoot, ClassKey, u"", u"C:\\az\\cxolcom.dll");
         for (const auto* key : {CommandKey, LibraryKey}) {
           m.machine.registry.setString(ClassesRoot, key, u"", u"c:\\AZ\\CXOLCOM.DLL");
         }
       }},
      // Its loading.
      {"failed: Outlook does not know the add-in", false,
       [](auto& m) { m.machine.registry.removeKey(RegistryRoot::CurrentUser, Entry); }},
      {"failed: Outlook does not load the add-in: it is switched off (LoadBehavior 2, HKEY_CURRENT",
       true,
       [](auto& m) {
         m.machine.registry.setDword(RegistryRoot::CurrentUser, Entry, u"LoadBehavior", 2);
         m.machine.registry.setDword(LocalMachine, Entry, u"LoadBehavior", 3);
       }},
      {"failed: Outlook does not load the add-in: it is switched off (LoadBehavior 2, HKEY_LOCAL",
       false,
       [](auto& m) {
         m.machine.registry.removeKey(RegistryRoot::CurrentUser, Entry);
         m.machine.registry.setDword(LocalMachine, Entry, u"LoadBehavior", 2);
       }},
      {"odd: Outlook does not load the add-in at its start, as it should (LoadBehavior 9", true,
       [](auto& m) {
         m.machine.registry.setDword(RegistryRoot::CurrentUser, Entry, u"LoadBehavior", 9);
       }},
      {"failed: The add-in is among the disabled items of Outlook 11.0", true,
       [](auto& m) {
         m.disable(u"d:\\other\\thing.dll");
         m.disable(u"c:\\program files\\velnor outlook addin\\cxolcom.dll");
       }},
      {nullptr, false,
       [](auto& m) {
         m.disable(u"a:\\xcxolcom.dll");
         m.disable(u"b:\\cxolcom.dll", 0);
         m.disable(u"c:\\cxolcom.dll", 1, 20);
       }},
      {"failed: Outlook is not installed", false,
       [](auto& m) { m.machine.registry.removeKey(LocalMachine, AppPath); }},
      {"odd: Outlook 14.0.0.0 is none of the versions", false,
       [](auto& m) {
         m.machine.files.put(u"C:\\Program Files\\Microsoft Office\\OFFICE11\\OUTLOOK.EXE",
                             simulator::programImage(true, 14));
       }},
      // The client and the libraries.
      {"failed: The telephony client is not installed", false,
       [](auto& m) { m.machine.registry.removeKey(ClassesRoot, simulator::Client::RegistryKey); }},
      {"failed: This file is missing: D:\\x.exe -> Install the telephony", false,
       [](auto& m) {
         m.machine.registry.setString(ClassesRoot, simulator::Client::RegistryKey, u"",
                                      u"\"D:\\x.exe\" /automation");
       }},
      {"odd: The telephony client does not run", false, [](auto& m) { m.machine.client.vanish(); }},
      {"failed: The telephony client runs but", false,
       [](auto& m) { m.machine.client.freeze(true); }},
      {"failed: The telephony client runs but", false,
       [](auto& m) {
         m.machine.client.setGaps({false, true, false});
       }},
      {"odd: The MAPI helper library cxmapihlp.dll is missing", false,
       [](auto& m) { m.machine.mapiHelper.setPresent(false); }},
      {nullptr, false,
       [](auto& m) {
         m.machine.mapiHelper.setPresent(false);
         m.set(AddInKey, u"UseMapi", u"0");
       }},
      {nullptr, false, [](auto& m) { m.machine.loggingLibrary.setPresent(true); }},
      // Settings and trace.
      {"odd: HKEY_CURRENT_USER\\Software\\K9T\\CXComAddIn\\DialRemote = \"yes\" can't be read; "
       "what "
       "holds: off",
       false, [](auto& m) { m.set(AddInKey, u"DialRemote", u"yes"); }},
      {"odd: "
       "HKEY_CURRENT_USER\\Software\\K9T\\Localization\\LangID\\Applications\\OUTLOOK.EXE\\LangID "
       "= \"3079\" can't be read; what holds: English",
       false,
       [](auto& m) {
         m.set(u"Software\\K9T\\Localization\\LangID\\Applications\\OUTLOOK.EXE", u"LangID",
               u"3079");
       }},
      {"odd: HKEY_CURRENT_USER\\Software\\K9T\\Logging\\LogFile = \"on\" can't be read", false,
       [](auto& m) { m.set(u"Software\\K9T\\Logging", u"LogFile", u"on"); }},
      {"odd: HKEY_CURRENT_USER\\Software\\K9T\\CXComAddIn\\DialRemot has no effect. Perhaps "
       "HKEY_CURRENT_USER\\Software\\K9T\\CXComAddIn\\DialRemote is meant",
       false, [](auto& m) { m.set(AddInKey, u"DialRemot", u"1"); }},
      {"odd: HKEY_CURRENT_USER\\Software\\K9T\\CXComAddIn\\StartWithOutlook has no effect. Perhaps "
       "HKEY_CURRENT_USER\\Software\\K9T\\Velnor30",
       false, [](auto& m) { m.set(AddInKey, u"StartWithOutlook", u"1"); }},
      {nullptr, false, [](auto& m) { m.set(AddInKey, u"Quite another", u"1"); }},
      {"odd: The trace file holds 11 MB", false,
       [](auto& m) { m.machine.files.put(TraceFile, std::string(11 << 20, 'x')); }},
      {"failed: The folder of the trace file can't be written", false,
       [](auto& m) {
         m.set(u"Software\\K9T\\Logging", u"LogFile", u"1");
         m.machine.files.setFoldersFail(true);
       }},
  };
  for (const auto& c : cases) {
    HealthyMachine machine;
    c.breakIt(machine);
    const auto report = machine.examined();
    const auto found = complaints(report);
    EXPECT_EQ(found.substr(0, c.names ? std::string(c.names).size() : 1), c.names ? c.names : "");
    EXPECT_EQ(std::count(found.begin(), found.end(), '\n'), c.names ? 1 : 0) << found;
    EXPECT_EQ(report.exitStatus(), !c.names ? 0 : found.starts_with("odd") ? 2 : 1) << found;
    EXPECT_EQ(report.cures.size(), c.curable ? 1u : 0u) << found;
    for (const auto& cure : report.cures) {
      EXPECT_TRUE(apply(machine.machine.registry, cure));
      EXPECT_EQ(complaints(machine.examined()), "");
      EXPECT_EQ(apply(machine.machine.registry, cure), cure.number.has_value());
    }
  }
}

TEST(Doctor, LeavesTheDisabledItemsOfOthersAlone) {
  HealthyMachine machine;
  machine.disable(u"c:\\velnor\\cxolcom.dll");
  const auto report = machine.examined();
  ASSERT_EQ(report.cures.size(), 1u);
  // Outlook has put another add-in in its place.
  machine.machine.registry.remove(RegistryRoot::CurrentUser, Disabled, report.cures[0].name);
  machine.disable(u"c:\\velnor.dll");
  Cure stale = report.cures[0];
  stale.name = u"c:\\vel";
  EXPECT_FALSE(apply(machine.machine.registry, stale));
  EXPECT_EQ(machine.machine.registry.valueNames(RegistryRoot::CurrentUser, Disabled).size(), 1u);
}

TEST(Doctor, SpeaksTheLanguageOfTheUserOrOfAllTheMakersProducts) {
  HealthyMachine machine;
  machine.machine.client.vanish();
  const auto line = [&] {
    for (const auto& finding : machine.examined().findings) {
      if (finding.verdict == Verdict::Odd) return simulator::toUtf8(finding.text);
    }
    return std::string();
  };
  EXPECT_EQ(line(), "The telephony client does not run.");
  machine.machine.language.setLangId(1040);
  EXPECT_EQ(line(), "Il client di telefonia non è in esecuzione.");
  machine.set(u"Software\\K9T\\Localization\\LangID", u"LangID", u"1031");
  EXPECT_EQ(line(), "Der Telefonie-Client läuft nicht.");
}

/// Plays lines at the prompt; gives the transcript.
std::string play(scenario::NativeStage& stage, const std::string& lines) {
  std::string transcript;
  scenario::Player player(stage, [&](auto line) { transcript += std::string(line) + "\n"; });
  scenario::TextSource source(lines, "test");
  player.play(source);
  return transcript;
}

TEST(Doctor, ReportsAndCuresAtThePrompt) {
  scenario::NativeStage stage(simulator::Mailbox(), makeNativeAddin, diagnoseNatively);
  const std::string loads =
      "registry HKCU\\Software\\Microsoft\\Office\\Outlook\\Addins\\VelnorOutlookCOMAddIn.Connect"
      "\\LoadBehavior = ";
  const auto before = play(stage, "client running\n" + loads + "dword:2\ndoctor\n");
  EXPECT_NE(before.find("failed  Outlook does not load the add-in"), std::string::npos) << before;
  EXPECT_NE(before.find("-> Unless that is wanted: choose"), std::string::npos);
  const auto after = play(stage, "doctor cure\n");
  EXPECT_NE(after.find("well    Outlook loads the add-in at its start"), std::string::npos)
      << after;
  EXPECT_EQ(after.find("failed"), std::string::npos) << after;
}

TEST(Trace, IsExplainedClickByClick) {
  const std::u16string trace =
      u"07.03.2008 14:05:09.042 Debug:   BtDial_Click\r\n"
      u"07.03.2008 14:05:09.043 Warning: GetVelnorPhoneCmdInservice() refused because "
      u"GetVelnorAuxSvc() not found!\r\n"
      u"torn";
  EXPECT_EQ(simulator::toUtf8(explainedTrace(trace, 1, false)),
            "\r\n07.03.2008 14:05:09.042 Debug:   BtDial_Click\r\n"
            "        click on Dial; a text after it is what failed\r\n"
            "07.03.2008 14:05:09.043 Warning: GetVelnorPhoneCmdInservice() refused because "
            "GetVelnorAuxSvc() not found!\r\n"
            "        the telephony client does not run: start it, or let it start with Outlook\r\n"
            "torn\r\n");
  const auto german = simulator::toUtf8(explainedTrace(trace, 0, true));
  EXPECT_TRUE(german.starts_with("07.03.2008 14:05:09.043")) << german;
  EXPECT_NE(german.find("der Telefonie-Client läuft nicht"), std::string::npos);
}

TEST(Masking, KeepsWhatIsOursAndHidesWhatIsTheUsers) {
  const struct {
    std::u16string_view text, masked;
  } cases[] = {
      {u"CxDial (030 (1) Ä): cmd.Dial()...", u"CxDial (### (#) x): cmd.Dial()..."},
      {u"AddinInstance_OnConnection, ConnectMode = 0", u""},
      {u"3 Buttons found:", u""},
      {u"ERROR in CxDial(): \"Meier\" of 4711 now", u"ERROR in CxDial(): \"xxxxx\" of #### now"},
      {u"what is this 1", u"xxxx xx xxxx #"},
  };
  for (const auto& c : cases) {
    const std::u16string head = u"07.03.2008 14:05:09.042 Debug:   ";
    const auto expected = c.masked.empty() ? c.text : c.masked;
    EXPECT_EQ(simulator::toUtf8(maskedTrace(head + std::u16string(c.text))),
              simulator::toUtf8(head + std::u16string(expected) + u"\r\n"));
  }
  EXPECT_EQ(maskedReport(u"1 C:\\users\\Anna\\x 2 D:\\Documents and Settings\\Anna B"),
            u"1 C:\\users\\xxx\\x 2 D:\\Documents and Settings\\xxx");
}

/// The telephone numbers and names of persons and items of a mailbox, as words of their own.
std::set<std::u16string> privateTexts(const simulator::Mailbox& mailbox) {
  std::set<std::u16string> texts{mailbox.user};
  for (const auto& folder : mailbox.folders) {
    for (const auto& item : folder.items) {
      texts.insert(item.title());
      for (const auto& [name, value] : item.properties) {
        if (value.isText() && name != u"MessageClass") texts.insert(value.toText());
      }
      for (const auto* list : {&item.mapi.telephoneNames, &item.mapi.telephoneNumbers}) {
        texts.insert(list->begin(), list->end());
      }
      texts.insert({item.mapi.name, item.mapi.senderAddresses[0], item.mapi.displayTo});
    }
  }
  // The product's own name is in the texts of the trace.
  std::erase_if(texts, [](const auto& text) { return text.size() < 4 || text == u"Velnor"; });
  return texts;
}

TEST(Masking, HidesNumbersAndNamesOfEverySample) {
  const auto mailbox = simulator::readMailboxFile(PROJECT_DIR "/samples/mailbox.json");
  const auto secrets = privateTexts(mailbox);
  ASSERT_GT(secrets.size(), 50u);
  std::size_t hidden = 0;
  std::set<std::string> unexplained;
  for (const auto& sample : std::filesystem::directory_iterator(PROJECT_DIR "/samples")) {
    if (sample.path().extension() != ".scn") continue;
    scenario::NativeStage stage(mailbox, makeNativeAddin, diagnoseNatively);
    stage.machine().loggingLibrary.setPresent(false);
    stage.machine().registry.setString(RegistryRoot::CurrentUser, u"Software\\K9T\\Logging",
                                       u"LogFile", u"1");
    play(stage, *simulator::readWholeFile(sample.path().string()));
    const auto trace = stage.machine().files.text(TraceFile);
    ASSERT_TRUE(trace) << sample.path();
    const auto masked = maskedTrace(*trace);
    for (const auto& secret : secrets) {
      hidden += trace->find(secret) != trace->npos;
      EXPECT_EQ(masked.find(secret), masked.npos) << sample.path() << simulator::toUtf8(secret);
    }
    std::u16string_view rest = *trace;
    while (!rest.empty()) {
      const auto end = rest.find(u"\r\n");
      const auto text = readTraceLine(rest.substr(0, end)).text;
      if (!meaningOf(text)) unexplained.insert(simulator::toUtf8(text));
      rest.remove_prefix(end + 2);
    }
  }
  EXPECT_GT(hidden, 20u);
  EXPECT_EQ(unexplained, std::set<std::string>());
}

}  // namespace
}  // namespace doctor
