#include <gtest/gtest.h>

#include "tests/errorOf.h"
#include "windows/com/errors.h"
#include "windows/com/text.h"
#include "windows/services/Clock.h"
#include "windows/services/Files.h"
#include "windows/services/Language.h"
#include "windows/services/LoggingLibrary.h"
#include "windows/services/MapiHelper.h"
#include "windows/services/Processes.h"
#include "windows/services/Registry.h"
#include "windows/services/Timers.h"
#include "windows/tests/HandleMarks.h"
#include "windows/tests/TestObject.h"

namespace windows {
namespace {

using namespace std::string_literals;
using platform::RegistryRoot;
using platform::RegistryType;
using platform::RegistryValue;

constexpr std::u16string_view TestKey = u"Software\\K9T\\Tests of the add-in";

class RegistryTest : public testing::Test {
 protected:
  void TearDown() override { registry_.deleteKey(RegistryRoot::CurrentUser, TestKey); }

  std::optional<RegistryValue> read(std::u16string_view name) {
    return registry_.read(RegistryRoot::CurrentUser, TestKey, name);
  }
  void writeRaw(const wchar_t* name, DWORD type, const void* data, DWORD size) {
    HKEY key = nullptr;
    ASSERT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, wide(std::u16string(TestKey)), 0, nullptr, 0,
                              KEY_WRITE, nullptr, &key, nullptr),
              ERROR_SUCCESS);
    RegSetValueExW(key, name, 0, type, static_cast<const BYTE*>(data), size);
    RegCloseKey(key);
  }

  Registry registry_;
};

TEST_F(RegistryTest, GivesBackWhatWasWritten) {
  const RegistryValue values[] = {
      {RegistryType::String, u"Müller\0"s, {}},
      {RegistryType::String, u"", {}},
      {RegistryType::ExpandString, u"%TEMP%\0"s, {}},
      {RegistryType::MultiString, u"one\0two\0\0"s, {}},
      {RegistryType::Dword, {}, {std::byte{1}, std::byte{2}, std::byte{3}, std::byte{4}}},
      {RegistryType::Binary, {}, {std::byte{0xFF}, std::byte{0}}},
      {RegistryType::Binary, {}, {}},
      {RegistryType::Qword, {}, std::vector<std::byte>(8, std::byte{9})},
      {RegistryType::None, {}, {std::byte{5}}},
  };
  for (const auto& value : values) {
    registry_.write(RegistryRoot::CurrentUser, TestKey, u"Value", value);
    const auto back = read(u"VALUE");
    ASSERT_TRUE(back);
    EXPECT_EQ(back->type, value.type);
    EXPECT_EQ(back->text, value.text);
    EXPECT_EQ(back->bytes, value.bytes);
  }
}

TEST_F(RegistryTest, ReadsGarbageAsItIs) {
  // A text without its NUL (one behind it would be counted in), one of an odd number of bytes, a
  // number of three bytes.
  writeRaw(L"bare", REG_SZ, L"bare!", 8);
  writeRaw(L"odd", REG_SZ, "a\0b", 3);
  writeRaw(L"short", REG_DWORD, "abc", 3);
  ASSERT_TRUE(read(u"bare"));
  EXPECT_EQ(read(u"bare")->text, u"bare");
  EXPECT_TRUE(read(u"odd"));
  ASSERT_TRUE(read(u"short"));
  EXPECT_EQ(read(u"short")->bytes.size(), 3U);
}

TEST_F(RegistryTest, TellsWhatIsAbsent) {
  EXPECT_FALSE(read(u"any")) << "no key";
  writeRaw(L"", REG_SZ, L"default", 16);
  EXPECT_FALSE(read(u"any")) << "no value";
  EXPECT_EQ(read(u"")->text, u"default\0"s);
  EXPECT_FALSE(registry_.deleteValue(RegistryRoot::CurrentUser, TestKey, u"any"));
  EXPECT_TRUE(registry_.deleteValue(RegistryRoot::CurrentUser, TestKey, u""));
  EXPECT_FALSE(registry_.deleteKey(RegistryRoot::CurrentUser, u""));
}

TEST_F(RegistryTest, ListsAndDeletesTrees) {
  const RegistryValue text{RegistryType::String, u"x\0"s, {}};
  const std::u16string key(TestKey);
  registry_.write(RegistryRoot::CurrentUser, key + u"\\a\\deep", u"v", text);
  registry_.write(RegistryRoot::CurrentUser, key + u"\\b", u"v", text);
  registry_.write(RegistryRoot::CurrentUser, key, u"first", text);
  EXPECT_EQ(registry_.subkeyNames(RegistryRoot::CurrentUser, key),
            (std::vector<std::u16string>{u"a", u"b"}));
  EXPECT_EQ(registry_.valueNames(RegistryRoot::CurrentUser, key),
            (std::vector<std::u16string>{u"first"}));
  EXPECT_TRUE(registry_.deleteKey(RegistryRoot::CurrentUser, key));
  EXPECT_FALSE(registry_.deleteKey(RegistryRoot::CurrentUser, key));
  EXPECT_TRUE(registry_.subkeyNames(RegistryRoot::CurrentUser, key).empty());
}

TEST_F(RegistryTest, SeesThroughAKeyThatIsHeld) {
  const auto write = [&](std::u16string_view value) {
    Registry other;
    other.write(RegistryRoot::CurrentUser, TestKey, u"v",
                {RegistryType::String, std::u16string(value) + u'\0', {}});
  };
  EXPECT_FALSE(read(u"v")) << "absent";
  for (const auto* value : {u"1", u"longer than before", u"", u"22"}) {
    write(value);
    ASSERT_TRUE(read(u"v")) << "made, or made anew";
    EXPECT_EQ(read(u"v")->text, value + u"\0"s);
    write(u"changed");
    EXPECT_EQ(read(u"v")->text, u"changed\0"s);
    writeRaw(L"v", REG_SZ, L"bare!", 8);
    EXPECT_EQ(read(u"v")->text, u"bare");
    EXPECT_TRUE(Registry().deleteKey(RegistryRoot::CurrentUser, TestKey));
    // Once made anew before the next question, and once not.
    if (*value == u'1') write(u"anew");
    EXPECT_EQ(read(u"v").has_value(), *value == u'1');
  }
}

TEST_F(RegistryTest, HoldsEachKeyOnceAndClosesItInTheEnd) {
  writeRaw(L"v", REG_SZ, L"1", 4);
  const auto readOften = [](Registry& registry, int times) {
    for (int i = 0; i < times; ++i) {
      EXPECT_TRUE(registry.read(RegistryRoot::CurrentUser, TestKey, u"v"));
      EXPECT_FALSE(registry.read(RegistryRoot::CurrentUser, TestKey, u"absent"));
      EXPECT_FALSE(registry.read(RegistryRoot::CurrentUser, u"Software\\No such key", u"v"));
      registry.read(RegistryRoot::ClassesRoot, u"CLSID", u"");
    }
  };
  readOften(registry_, 1);
  const HandleMarks before;
  {
    Registry registry;
    readOften(registry, 1);
    const HandleMarks once;
    readOften(registry, 50);
    EXPECT_EQ(HandleMarks().kernel, once.kernel);
    EXPECT_NE(once.kernel, before.kernel);
  }
  EXPECT_EQ(HandleMarks().kernel, before.kernel);
}

TEST_F(RegistryTest, ExpandsTheVariablesOfTheProcess) {
  SetEnvironmentVariableW(L"VelnorTest", L"M\u00FCller");
  EXPECT_EQ(registry_.expanded(u"C:\\%velnortest%\\%Unset%"), u"C:\\Müller\\%Unset%");
  EXPECT_EQ(registry_.expanded(u""), u"");
}

/// Delivers messages for so long.
void pumpFor(DWORD milliseconds) {
  Clock clock;
  const DWORD start = GetTickCount();
  while (GetTickCount() - start < milliseconds) {
    clock.pumpMessages();
    clock.sleep(1);
  }
}

TEST(TimersTest, TickUntilTheyAreKilled) {
  Timers timers;
  int fast = 0;
  int once = 0;
  std::uint32_t onceId = 0;
  const auto fastId = timers.setTimer(10, [&] { ++fast; });
  // Kills itself, which ends its own function's life.
  onceId = timers.setTimer(10, [&, big = std::string(100, 'x')] {
    timers.killTimer(onceId);
    once += big.size() == 100 ? 1 : 100;
  });
  ASSERT_NE(fastId, 0U);
  ASSERT_NE(fastId, onceId);
  pumpFor(300);
  EXPECT_GE(fast, 3);
  EXPECT_EQ(once, 1);
  const int before = fast;
  timers.killTimer(fastId);
  timers.killTimer(fastId);
  pumpFor(100);
  EXPECT_EQ(fast, before);
}

TEST(TimersTest, LeaveNothingInTheQueue) {
  int ticks = 0;
  bool foreignSeen = false;
  UINT_PTR foreign = 0;
  {
    Timers timers;
    const auto own = timers.setTimer(10, [&] { ++ticks; });
    MSG due{};
    while (due.message != WM_TIMER) PeekMessageW(&due, nullptr, WM_TIMER, WM_TIMER, PM_NOREMOVE);
    ASSERT_EQ(due.wParam, own);
    foreign = SetTimer(nullptr, 0, 10, nullptr);
    // Windows keeps messages that are in the queue when their timer is killed.
    for (int i = 0; i < 3; ++i) {
      PostThreadMessageW(GetCurrentThreadId(), WM_TIMER, own, due.lParam);
      PostThreadMessageW(GetCurrentThreadId(), WM_TIMER, foreign, 0);
    }
  }
  KillTimer(nullptr, foreign);
  MSG message;
  while (PeekMessageW(&message, nullptr, WM_TIMER, WM_TIMER, PM_REMOVE)) {
    EXPECT_EQ(message.wParam, foreign) << "for the procedure of a timer that is gone";
    foreignSeen = true;
  }
  EXPECT_TRUE(foreignSeen) << "others' messages stay";
  EXPECT_EQ(ticks, 0);
}

/// Takes the end of the message loop from the queue.
void expectTheEnd(WPARAM exitCode) {
  MSG message;
  ASSERT_TRUE(PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE));
  EXPECT_EQ(message.message, static_cast<UINT>(WM_QUIT));
  EXPECT_EQ(message.wParam, exitCode);
}

TEST(TimersTest, LeaveTheEndToTheHost) {
  {
    Timers timers;
    timers.setTimer(10, [] {});
    PostQuitMessage(7);
  }
  expectTheEnd(7);
}

TEST(ClockTest, LeavesTheEndToTheHost) {
  PostQuitMessage(5);
  Clock().pumpMessages();
  expectTheEnd(5);
}

/// A timer that is slower than its own work, and a window that always wants to be painted.
void CALLBACK workSlowly(HWND, UINT, UINT_PTR, DWORD) {
  Sleep(30);
}
LRESULT CALLBACK neverValidate(HWND window, UINT message, WPARAM wide, LPARAM narrow) {
  return message == WM_PAINT ? 0 : DefWindowProcW(window, message, wide, narrow);
}

TEST(ClockTest, EndsAPassThatWouldNotEnd) {
  const auto expectShortPass = [] {
    const DWORD start = GetTickCount();
    Clock().pumpMessages();
    EXPECT_LE(GetTickCount() - start, 200U + 150U) << "200 ms and a message, on a busy machine";
  };
  const UINT_PTR timer = SetTimer(nullptr, 0, 10, workSlowly);
  Sleep(30);
  expectShortPass();
  KillTimer(nullptr, timer);

  WNDCLASSW windowClass{};
  windowClass.lpfnWndProc = neverValidate;
  windowClass.lpszClassName = L"VelnorNeverPainted";
  RegisterClassW(&windowClass);
  const HWND window = CreateWindowW(L"VelnorNeverPainted", nullptr, WS_POPUP | WS_VISIBLE, 0, 0, 50,
                                    50, nullptr, nullptr, nullptr, nullptr);
  InvalidateRect(window, nullptr, FALSE);
  expectShortPass();
  EXPECT_TRUE(GetUpdateRect(window, nullptr, FALSE)) << "it wants to be painted still";
  DestroyWindow(window);
  UnregisterClassW(L"VelnorNeverPainted", nullptr);
}

TEST(FilesTest, AppendAnsiTextToFilesInNewFolders) {
  wchar_t temporary[MAX_PATH];
  GetTempPathW(MAX_PATH, temporary);
  const std::u16string root = std::u16string(utf16(temporary)) + u"velnor-files-test\\";
  const std::u16string folder = root + u"Größe\\deep\\";
  const std::u16string path = folder + u"Log.txt";
  Files files;
  EXPECT_THROW(files.append(path, u"x"), automation::Error) << "no folder yet";
  ASSERT_TRUE(files.makeSureDirectoryPathExists(folder));
  EXPECT_TRUE(files.makeSureDirectoryPathExists(folder));
  files.append(path, u"Grüße\r\n");
  files.append(path, u"2\r\n");

  char content[32] = {};
  DWORD size = 0;
  const HANDLE file =
      CreateFileW(wide(path), GENERIC_READ, FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
  ReadFile(file, content, sizeof content, &size, nullptr);
  // While it is open for reading elsewhere.
  files.append(path, u"3");
  CloseHandle(file);
  EXPECT_EQ(std::string(content, size),
            "Gr\xFC\xDF"
            "e\r\n2\r\n");

  DeleteFileW(wide(path));
  for (auto name = folder; name.size() >= root.size();
       name.erase(name.rfind(u'\\', name.size() - 2) + 1)) {
    RemoveDirectoryW(wide(name));
  }
  EXPECT_FALSE(files.makeSureDirectoryPathExists(u"Q:\\no\\such\\drive\\"));
}

TEST(FilesTest, KnowTheCommonFolder) {
  const auto folder = Files().commonFilesFolder();
  ASSERT_TRUE(folder);
  EXPECT_NE(GetFileAttributesW(wide(*folder)), INVALID_FILE_ATTRIBUTES);
  EXPECT_NE(folder->back(), u'\\');
}

TEST(ProcessesTest, KnowHostAndWindows) {
  Processes processes;
  EXPECT_EQ(processes.hostModuleName(), u"windows_tests.exe");
  EXPECT_FALSE(processes.windowExists(u"VelnorTestWindow"));
  WNDCLASSW windowClass{};
  windowClass.lpfnWndProc = DefWindowProcW;
  windowClass.lpszClassName = L"VelnorTestWindow";
  RegisterClassW(&windowClass);
  const HWND window = CreateWindowW(L"VelnorTestWindow", nullptr, WS_POPUP, 0, 0, 0, 0, nullptr,
                                    nullptr, nullptr, nullptr);
  EXPECT_TRUE(processes.windowExists(u"VelnorTestWindow"));
  DestroyWindow(window);
  UnregisterClassW(L"VelnorTestWindow", nullptr);
}

TEST(ProcessesTest, StartProgramsByQuotedPath) {
  wchar_t temporary[MAX_PATH];
  wchar_t system[MAX_PATH];
  GetTempPathW(MAX_PATH, temporary);
  GetSystemDirectoryW(system, MAX_PATH);
  const std::u16string folder = std::u16string(utf16(temporary)) + u"velnor start test\\";
  const std::u16string program = folder + u"a program.exe";
  const std::u16string mark = folder + u"mark.txt";
  CreateDirectoryW(wide(folder), nullptr);
  ASSERT_TRUE(CopyFileW(wide(std::u16string(utf16(system)) + u"\\cmd.exe"), wide(program), FALSE));
  Processes processes;
  EXPECT_LE(processes.shellExecute(u"\"C:\\no such.exe\"", u"", u"C:\\"), 32);
  EXPECT_GT(processes.shellExecute(u"\"" + program + u"\"", u"/c echo x>mark.txt", folder), 32);
  for (int i = 0; i < 500 && GetFileAttributesW(wide(mark)) == INVALID_FILE_ATTRIBUTES; ++i) {
    Sleep(10);
  }
  EXPECT_NE(GetFileAttributesW(wide(mark)), INVALID_FILE_ATTRIBUTES);
  // The program may still hold its file for a moment.
  for (int i = 0; i < 500 && !DeleteFileW(wide(program)); ++i) Sleep(10);
  DeleteFileW(wide(mark));
  RemoveDirectoryW(wide(folder));
}

TEST(LanguageTest, IsTheUsers) {
  Language language;
  EXPECT_EQ(language.userDefaultLangId(), GetUserDefaultLangID());
  EXPECT_FALSE(language.shortDate({2008, 3, 18, 0, 0, 0, 0}).empty());
  EXPECT_THROW(language.shortDate({2008, 13, 40, 0, 0, 0, 0}), automation::Error);
}

std::u16string folderOfProgram() {
  wchar_t path[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  const auto text = utf16(path);
  return std::u16string(text.substr(0, text.rfind(u'\\') + 1));
}

TEST(LoggingLibraryTest, IsBoundAtTheFirstCall) {
  const UINT before = SetErrorMode(0);
  LoggingLibrary library;
  library.load(folderOfProgram() + u"K9tLogVB.dll");
  const auto create = [&](std::int32_t index) {
    return library.createLogger(index, u"Velnor", u"AddinOutlookToolbar", 7, 3, 35328, 1);
  };
  EXPECT_EQ(create(0), -6);
  EXPECT_EQ(create(1), 0);
  EXPECT_EQ(library.write(1, 17, u"Grüße"), 0);
  EXPECT_EQ(library.write(1, 3, u"Grüße"), 3);
  // A file that can't be loaded shows no box; whoever has set the mode finds it again.
  Library same("k9tlogvb.dll");
  constexpr UINT Quiet = SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX;
  EXPECT_EQ(same.require<UINT WINAPI()>("TestModeAtLoad")(), Quiet);
  EXPECT_EQ(SetErrorMode(before), 0U);
}

TEST(LibraryTest, OnlyTheMakersStay) {
  { LoggingLibrary().load(folderOfProgram() + u"k9tlogvb.dll"); }
  { MapiHelper().init(); }
  { EXPECT_TRUE(Library("msimg32.dll").load()); }
  EXPECT_TRUE(GetModuleHandleA("k9tlogvb.dll"));
  EXPECT_TRUE(GetModuleHandleA("cxmapihlp.dll"));
  EXPECT_FALSE(GetModuleHandleA("msimg32.dll"));
}

TEST(MapiHelperTest, TakesTextsAndListsBack) {
  MapiHelper helper;
  const auto tested = std::make_shared<TestObject>();
  const auto item = tested->handle();
  EXPECT_EQ(helper.init(), 17);
  EXPECT_EQ(helper.sender(item).first, u"a@b.example");
  EXPECT_EQ(helper.sender(item).second, u"") << "left empty";
  EXPECT_EQ(helper.name(item).count, 0);
  item.put(u"Value", u"Bürgermeister");
  EXPECT_EQ(helper.name(item).text, u"Bürgermeister");
  const auto recipients = helper.recipients(item);
  EXPECT_EQ(recipients[0], (MapiHelper::TextList{u"one", u"two"}));
  EXPECT_TRUE(recipients[1].empty());
  EXPECT_TRUE(recipients[2].empty()) << "left erased";
  EXPECT_EQ(recipients[3], MapiHelper::TextList{u"Jürgen"});
  EXPECT_EQ(helper.telephoneNumbers(item).names, (MapiHelper::TextList{u"Meier", u""}));
  EXPECT_EQ(helper.telephoneNumbers(item).numbers, (MapiHelper::TextList{u"0711 1", u"0711 2"}));
  EXPECT_EQ(helper.currentUser(), u"Anna Berger");
  EXPECT_EQ(errorOf([&] { helper.displayTo(item); }), 453) << "the library lacks it";
}

TEST(LibraryTest, IsMissedAtTheCallOnly) {
  LoggingLibrary logging;
  EXPECT_EQ(errorOf([&] { logging.write(0, 3, u""); }), 53);
  logging.load(u"C:\\nowhere\\K9tLogVB.dll");
  EXPECT_EQ(errorOf([&] { logging.write(0, 3, u""); }), 53);
  EXPECT_EQ(logging.createLogger(0, u"", u"", 0, 0, 0, 0), LoggingLibrary::NotThere);
  Library library("no such library.dll");
  EXPECT_EQ(errorOf([&] { library.require<void()>("Function"); }), 53);
  EXPECT_EQ(library.find<void()>("Function"), nullptr);
}

}  // namespace
}  // namespace windows
