// velnor-doctor as a user has it before him: its buttons pressed, its questions answered.

#include "simulator/player/Text.h"
#include "standin/outlook/UserClipboard.h"
#include "standin/proof/ProofDesk.h"
#include "windows/com/text.h"
#include "windows/doctor/controls.h"

namespace proof {
namespace {

using platform::RegistryRoot;
using scenario::toUtf8;

constexpr std::u16string_view EntryKey =
    u"Software\\Microsoft\\Office\\Outlook\\Addins\\VelnorOutlookCOMAddIn.Connect";
constexpr std::u16string_view LoggingKey = u"Software\\K9T\\Logging";
constexpr int BoxText = 0xFFFF;

template <class Condition>
bool soon(const Condition& condition) {
  constexpr int Patience = 250;
  for (int i = 0; i < Patience && !condition(); ++i) Sleep(20);
  return condition();
}

/// A dialog of another program.
struct Dialog {
  HWND window = nullptr;

  std::string text(int control) const {
    std::u16string text(1 << 20, u'\0');
    const HWND item = GetDlgItem(window, control);
    const auto length =
        SendMessageW(item, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
    return toUtf8(text.substr(0, static_cast<std::size_t>(length)));
  }
  bool tells(int control, std::string_view part) const {
    return soon([&] { return text(control).find(part) != std::string::npos; });
  }
  void press(int control) const { PostMessageW(GetDlgItem(window, control), BM_CLICK, 0, 0); }
  /// The box or dialog that it has open.
  Dialog child() const {
    HWND found = nullptr;
    soon([&] {
      found = nullptr;
      do found = FindWindowExW(nullptr, found, L"#32770", nullptr);
      while (found && (GetWindow(found, GW_OWNER) != window || !IsWindowVisible(found)));
      return found != nullptr;
    });
    return {found};
  }
  /// Presses a button and waits for the end.
  void close(int button) const {
    PostMessageW(window, WM_COMMAND, static_cast<WPARAM>(button), 0);
    EXPECT_TRUE(soon([&] { return !IsWindow(window); }));
  }
  /// Whether nothing stands before it.
  bool free() const {
    return soon([&] { return IsWindowEnabled(window) != FALSE; });
  }
};

/// The program with its window, in English, from the start of a test to its end.
class DoctorWindow : public testing::Test {
 protected:
  DoctorWindow() {
    registry.setDword(RegistryRoot::CurrentUser, u"Software\\K9T\\Localization\\LangID", u"LangID",
                      1033);
    registry.setDword(RegistryRoot::CurrentUser, EntryKey, u"LoadBehavior", 2);
    registry.setText(RegistryRoot::CurrentUser, LoggingKey, u"LogFile", u"0");
    CreateDirectoryW(windows::wide(trace.path().substr(0, trace.path().rfind(u'\\'))), nullptr);
    DeleteFileW(windows::wide(trace.path()));
    standin::appendLine(trace.path(), std::vector<std::u16string>{
                                          u"07.03.2008 14:05:09.042 Debug:   CxDial (0711 4711)"});
    std::u16string line = u"\"" + beside(u"velnor-doctor.exe") + u"\"";
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    EXPECT_TRUE(CreateProcessW(nullptr, reinterpret_cast<wchar_t*>(line.data()), nullptr, nullptr,
                               FALSE, 0, nullptr, nullptr, &startup, &process));
    soon([&] { return (dialog.window = FindWindowW(nullptr, L"Velnor diagnosis")) != nullptr; });
    EXPECT_TRUE(dialog.tells(REPORT_TEXT, "Windows "));
  }
  ~DoctorWindow() override {
    dialog.close(IDCANCEL);
    if (WaitForSingleObject(process.hProcess, 5000) != WAIT_OBJECT_0) {
      ADD_FAILURE() << "it does not end";
      TerminateProcess(process.hProcess, 1);
    }
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    DeleteFileW(windows::wide(trace.path()));
  }

  std::optional<std::uint32_t> loadBehavior() {
    windows::Registry fresh;
    return platform::dwordOf(fresh.read(RegistryRoot::CurrentUser, EntryKey, u"LoadBehavior"));
  }

  standin::RegistryKeeper registry;
  standin::TraceFile trace;
  PROCESS_INFORMATION process{};
  Dialog dialog;
};

TEST_F(DoctorWindow, PutsRightWhatTheUserAgreesTo) {
  EXPECT_TRUE(dialog.tells(REPORT_TEXT, "it is switched off (LoadBehavior 2"));
  dialog.press(CURE_BUTTON);
  EXPECT_NE(dialog.child().text(BoxText).find("it is switched off"), std::string::npos);
  dialog.child().close(IDNO);
  EXPECT_TRUE(dialog.free()) << "nothing was changed: Outlook need not be restarted";
  EXPECT_EQ(loadBehavior(), 2u);

  dialog.press(CURE_BUTTON);
  dialog.child().close(IDYES);
  EXPECT_EQ(dialog.child().text(BoxText), "Restart Outlook.");
  dialog.child().close(IDOK);
  EXPECT_TRUE(dialog.tells(REPORT_TEXT, "Outlook loads the add-in at its start (LoadBehavior 3"));
  EXPECT_EQ(loadBehavior(), 3u);

  dialog.press(CURE_BUTTON);
  EXPECT_EQ(dialog.child().text(BoxText), "There is nothing that this program can put right.");
  dialog.child().close(IDOK);
}

TEST_F(DoctorWindow, CopiesTheReportAndSavesItWithTheMaskedTrace) {
  constexpr int FileName = 0x47C;
  standin::copyText(u"before");
  dialog.press(COPY_BUTTON);
  const auto report = dialog.text(REPORT_TEXT);
  EXPECT_TRUE(soon([&] { return toUtf8(standin::copiedText()) == report; }));

  const auto file = beside(u"support.txt");
  dialog.press(SAVE_BUTTON);
  const auto save = dialog.child();
  const HWND name = GetDlgItem(save.window, FileName);
  EXPECT_EQ(save.text(FileName), "velnor-support.txt");
  SendMessageW(name, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(windows::wide(file)));
  save.close(IDOK);
  EXPECT_TRUE(soon([&] { return !standin::readFile(file).empty(); }));
  const auto saved = standin::readFile(file);
  EXPECT_TRUE(saved.starts_with("\xEF\xBB\xBFwell    Windows ")) << saved;
  EXPECT_TRUE(saved.ends_with("\r\n07.03.2008 14:05:09.042 Debug:   CxDial (#### ####)\r\n"))
      << saved;
  DeleteFileW(windows::wide(file));
}

TEST_F(DoctorWindow, ShowsTheTraceAsItGrowsAndSwitchesIt) {
  dialog.press(TRACE_BUTTON);
  const auto shown = dialog.child();
  EXPECT_TRUE(shown.tells(REPORT_TEXT, "this number is dialled"));
  shown.press(WRITE_BOX);
  EXPECT_TRUE(soon([&] {
    windows::Registry fresh;
    const auto value = fresh.read(RegistryRoot::CurrentUser, LoggingKey, u"LogFile");
    return value && value->text.starts_with(u'1');
  }));
  standin::appendLine(trace.path(), std::vector<std::u16string>{
                                        u"07.03.2008 14:05:10.000 Error:   ERROR in CxDial(): no"});
  EXPECT_TRUE(shown.tells(REPORT_TEXT, "a command was given up"));
  const auto grow = [&](std::u16string text, std::string_view meaning) {
    standin::appendLine(trace.path(),
                        std::vector<std::u16string>{u"07.03.2008 14:05:11.000 Debug:   " + text});
    EXPECT_TRUE(shown.tells(REPORT_TEXT, meaning));
    return SendMessageW(GetDlgItem(shown.window, REPORT_TEXT), EM_GETFIRSTVISIBLELINE, 0, 0);
  };
  for (int i = 0; i < 100; ++i) grow(u"Timer stopped.", "");
  EXPECT_GT(grow(u"MAPI_Init()", "MAPI helper is started"), 0);
  SendMessageW(GetDlgItem(shown.window, REPORT_TEXT), WM_VSCROLL, SB_TOP, 0);
  EXPECT_EQ(grow(u"MAPI_Deinit()", "MAPI helper is ended"), 0) << "who reads is not disturbed";

  shown.press(PROBLEMS_BOX);
  EXPECT_TRUE(soon([&] { return shown.text(REPORT_TEXT).find("(0711") == std::string::npos; }));
  EXPECT_TRUE(shown.tells(REPORT_TEXT, "a command was given up"));
  shown.press(EMPTY_BUTTON);
  EXPECT_TRUE(soon([&] { return shown.text(REPORT_TEXT).empty(); }));
  EXPECT_EQ(standin::fileSize(trace.path()), 0u);

  // A trace that another program keeps for itself is not said to be empty.
  standin::appendLine(trace.path(), std::vector<std::u16string>{u"more"});
  const HANDLE held = CreateFileW(windows::wide(trace.path()), GENERIC_READ, FILE_SHARE_READ,
                                  nullptr, OPEN_EXISTING, 0, nullptr);
  shown.press(EMPTY_BUTTON);
  EXPECT_NE(shown.child().text(BoxText).find("can't be written to"), std::string::npos);
  shown.child().close(IDOK);
  CloseHandle(held);
  shown.close(IDCANCEL);
  EXPECT_TRUE(dialog.tells(REPORT_TEXT, "The trace file is switched on."));
}

}  // namespace
}  // namespace proof
