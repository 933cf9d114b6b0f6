// The stand-in client in trouble: it dies, hangs, freezes, never comes up; and what it leaves
// behind.

#include <algorithm>

#include "simulator/SimRegistry.h"
#include "standin/client/registration.h"
#include "standin/tests/ClientFixture.h"
#include "windows/services/Registry.h"

namespace standin::tests {
namespace {

TEST_F(StandinClient, ItsDeathLeavesHoldersWithErrors) {
  ASSERT_TRUE(control.startReady());
  const auto application = running();
  const auto command = application.phoneCommand();
  control.vanish();
  EXPECT_EQ(control.status(), u"not running");
  EXPECT_EQ(errorOf([&] { command.lineState(); }), Unavailable);
  EXPECT_EQ(errorOf([&] { application.phoneCommand(); }), Unavailable);
  EXPECT_EQ(errorOf([&] { running(); }), CannotCreate);
  EXPECT_FALSE(processes.windowExists(velnor::MainWindowClass));

  // In the middle of a call; what it was told before is known.
  ASSERT_TRUE(control.startReady());
  const auto another = running().phoneCommand();
  another.dial(0, 0, u"1");
  ASSERT_TRUE(control.dieIn(u"HangUp"));
  EXPECT_EQ(another.lineState(), 1);
  EXPECT_EQ(errorOf([&] { another.hangUp(); }), static_cast<std::int32_t>(0x800706BE));
  EXPECT_FALSE(control.running());
  EXPECT_EQ(told(), (Texts{u"dial 1 on a free line"}));
}

TEST_F(StandinClient, EndsByItsStopCommand) {
  ASSERT_TRUE(control.startReady());
  const auto command = running().phoneCommand();
  command.stop(1);
  EXPECT_EQ(command.lineState(), 4);
  command.stop(velnor::StopWithHost);
  for (int i = 0; i < 500 && control.running(); ++i) Sleep(5);
  EXPECT_FALSE(control.running());
  EXPECT_EQ(told(), (Texts{u"stop (1)", u"stop (13)"}));
}

TEST_F(StandinClient, HangsAndRecovers) {
  ASSERT_TRUE(control.startReady());
  const auto command = running().phoneCommand();
  ASSERT_TRUE(control.hang(true, 300));
  EXPECT_EQ(control.status(), u"running, hanging");
  const DWORD start = GetTickCount();
  EXPECT_EQ(errorOf([&] { command.lineState(); }), static_cast<std::int32_t>(0x8001010A));
  EXPECT_GE(GetTickCount() - start, 290u);
  ASSERT_TRUE(control.hang(false));
  EXPECT_EQ(command.lineState(), 4);
}

DWORD WINAPI stopHangingSoon(void* control) {
  Sleep(300);
  static_cast<ClientControl*>(control)->hang(false);
  return 0;
}

TEST_F(StandinClient, AnswersACallInWhichItStopsHanging) {
  ASSERT_TRUE(control.startReady());
  const auto command = running().phoneCommand();
  ASSERT_TRUE(control.hang(true, 60000));
  const HANDLE thread = CreateThread(nullptr, 0, stopHangingSoon, &control, 0, nullptr);
  EXPECT_EQ(command.lineState(), 4);
  WaitForSingleObject(thread, INFINITE);
  CloseHandle(thread);
}

TEST_F(StandinClient, FreezesAndThaws) {
  ASSERT_TRUE(control.startReady());
  ASSERT_TRUE(control.freeze(true));
  const HWND window = FindWindowA("SfFrameOrView", nullptr);
  ASSERT_TRUE(window);
  DWORD_PTR answer = 0;
  EXPECT_FALSE(SendMessageTimeoutA(window, WM_NULL, 0, 0, SMTO_ABORTIFHUNG, 300, &answer));
  EXPECT_EQ(errorOf([&] { running(); }), static_cast<std::int32_t>(0x8001010A));
  EXPECT_EQ(control.status(), u"running, frozen");
  ASSERT_TRUE(control.freeze(false));
  EXPECT_TRUE(SendMessageTimeoutA(window, WM_NULL, 0, 0, SMTO_ABORTIFHUNG, 3000, &answer));
  EXPECT_EQ(running().phoneCommand().lineState(), 4);
  // One that is frozen can be killed.
  ASSERT_TRUE(control.freeze(true));
  control.vanish();
  EXPECT_FALSE(control.running());
}

TEST_F(StandinClient, NeverComesToWhatItIsSetNotToReach) {
  control.setGaps({.window = false, .object = false, .service = true});
  ASSERT_TRUE(control.startReady());
  EXPECT_FALSE(running().phoneCommand());
  EXPECT_TRUE(running().auxiliaryService());
  EXPECT_FALSE(control.ring(u"1"));
  auto settings = control.settings();
  settings.raisesBeforeService = true;
  control.set(settings);
  EXPECT_EQ(errorOf([&] { running().phoneCommand(); }), static_cast<std::int32_t>(0x80010001));

  // At once, while it runs.
  control.setGaps({.window = true, .object = true, .service = false});
  for (int i = 0; i < 200 && processes.windowExists(velnor::MainWindowClass); ++i) Sleep(5);
  EXPECT_FALSE(processes.windowExists(velnor::MainWindowClass));
  EXPECT_EQ(errorOf([&] { running(); }), CannotCreate);
  control.setGaps({});
  for (int i = 0; i < 200 && errorOf([&] { running(); }) != 0; ++i) Sleep(5);
  EXPECT_TRUE(running().phoneCommand());
  EXPECT_TRUE(processes.windowExists(velnor::MainWindowClass));
}

TEST_F(StandinClient, NotesHowLongTheWatchedFileWas) {
  const std::u16string file = standin::ClientSettings::temporaryJournal() + u".watched";
  DeleteFileW(windows::wide(file));
  control.watch(file);
  ASSERT_TRUE(control.startReady());
  const auto command = running().phoneCommand();
  command.hangUp();
  const standin::Fields line{u"a\tb\\c\r\n", u"ü"};
  ASSERT_TRUE(standin::appendLine(file, line));
  command.pickUp();
  const auto lines = control.told();
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[0].watchedSize, 0u);
  EXPECT_EQ(lines[1].watchedSize, standin::fileSize(file));
  EXPECT_GT(lines[1].watchedSize, 0u);
  EXPECT_EQ(lines[1].time.size(), 12u);
  EXPECT_EQ(standin::LineReader(file).read(), std::vector<standin::Fields>{line});
  DeleteFileW(windows::wide(file));
}

/// All keys of a machine's classes that could have come from a registration.
bool anyTrace() {
  windows::Registry registry;
  const std::u16string_view places[] = {u"CLSID\\{4B7D2A91-3C5E-11D4-9F21-00A0C9E4B7D3}",
                                        u"CLSID\\{CEF2390A-BC53-4355-ABAF-FA3BFCD4AF08}",
                                        u"TypeLib\\{3F3EBC9D-58C7-4A8D-8012-A50639042D3B}",
                                        u"Interface\\{4C08FE4F-119F-42F1-94CB-72CFCCCE5AE4}",
                                        u"Interface\\{BFB449E4-1B9B-4BC4-AAED-332A6B0D87C7}",
                                        u"velnor.application",
                                        u"velnor.remote"};
  for (const auto place : places) {
    if (registry.read(RegistryRoot::ClassesRoot, place, u"")) return true;
    if (!registry.subkeyNames(RegistryRoot::ClassesRoot, place).empty()) return true;
  }
  return false;
}

TEST_F(StandinClient, LeavesNothingBehind) {
  EXPECT_TRUE(anyTrace());
  control.uninstall();
  EXPECT_FALSE(anyTrace());
  EXPECT_EQ(control.status(), u"not installed");
  standin::ClientSettings::clear();
  const auto keys = windows::Registry().subkeyNames(RegistryRoot::CurrentUser, u"Software");
  EXPECT_EQ(std::count(keys.begin(), keys.end(), u"Velnor Stand-in"), 0);
}

TEST_F(StandinClient, LetsAnotherClientsRegistrationAlone) {
  control.uninstall();
  windows::Registry registry;
  const std::u16string key =
      u"Software\\Classes\\" + std::u16string(simulator::Client::RegistryKey);
  const auto path = platform::stringValue(u"C:\\other.exe");
  registry.write(RegistryRoot::LocalMachine, key, u"", path);
  EXPECT_NE(errorOf([&] { control.install(); }), 0);
  standin::unregisterClient();
  EXPECT_EQ(registry.read(RegistryRoot::LocalMachine, key, u"")->text, path.text);
  registry.deleteKey(RegistryRoot::LocalMachine, key.substr(0, key.rfind(u'\\')));
}

}  // namespace
}  // namespace standin::tests
