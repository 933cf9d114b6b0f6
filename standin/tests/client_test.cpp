// The stand-in client from outside: another process that reaches it as the add-in does.

#include <gtest/gtest.h>

#include <algorithm>

#include "platform/velnor.h"
#include "simulator/machine/SimRegistry.h"
#include "standin/client/ClientControl.h"
#include "standin/client/interfaces.h"
#include "standin/client/names.h"
#include "standin/client/registration.h"
#include "windows/com/Bstr.h"
#include "windows/com/ComObject.h"
#include "windows/com/Variant.h"
#include "windows/com/errors.h"
#include "windows/com/text.h"
#include "windows/com/values.h"
#include "windows/services/Objects.h"
#include "windows/services/Processes.h"
#include "windows/services/Registry.h"

namespace {

using automation::Error;
using automation::ErrorNumber;
using automation::Object;
using automation::Value;
using platform::RegistryRoot;
using standin::ClientControl;

constexpr std::u16string_view WindowClass = simulator::Client::WindowClass;
constexpr auto Unavailable = static_cast<std::int32_t>(ErrorNumber::ServerUnavailable);
constexpr auto CannotCreate = static_cast<std::int32_t>(ErrorNumber::CannotCreateObject);

/// The number of the error that this raises; 0 for none.
template <class Action>
std::int32_t errorOf(const Action& action) {
  try {
    action();
  } catch (const Error& error) {
    return error.number();
  }
  return 0;
}

std::u16string clientProgram() {
  wchar_t path[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  const std::u16string_view whole = windows::utf16(path);
  return std::u16string(whole.substr(0, whole.rfind(u'\\'))) + u"\\velnor-standin.exe";
}

class StandinClient : public testing::Test {
 protected:
  StandinClient() {
    control.vanish();
    control.install();
  }
  ~StandinClient() override {
    control.uninstall();
    standin::ClientSettings::clear();
    DeleteFileW(windows::wide(standin::ClientSettings::temporaryJournal()));
  }

  velnor::Application running() {
    return velnor::Application(objects.running(velnor::ApplicationClass));
  }
  std::vector<std::u16string> told() {
    std::vector<std::u16string> texts;
    for (const auto& line : control.told()) texts.push_back(line.text);
    return texts;
  }

  ClientControl control{clientProgram()};
  windows::Objects objects{{{velnor::ApplicationClass, WindowClass}}};
  windows::Processes processes;
};

using Texts = std::vector<std::u16string>;

TEST_F(StandinClient, IsFoundByTheShellAndItsStagesComeOneAfterTheOther) {
  EXPECT_EQ(control.status(), u"not running");
  EXPECT_EQ(errorOf([&] { running(); }), CannotCreate);
  control.setDelays({150, 400, 700});
  windows::Registry registry;
  const auto path = registry.read(RegistryRoot::ClassesRoot, simulator::Client::RegistryKey, u"");
  ASSERT_TRUE(path);
  const std::u16string file = u"\"" + path->text.substr(0, path->text.find(u'\0')) + u"\"";
  const DWORD start = GetTickCount();
  ASSERT_GT(processes.shellExecute(file, u"-hideOnStartup", u""), 32);

  // Each is looked for again and again; the time is taken when it was there.
  const auto reached = [start](const auto& condition) {
    while (!condition() && GetTickCount() - start < 10000) Sleep(5);
    return GetTickCount() - start;
  };
  EXPECT_GE(reached([&] { return processes.windowExists(WindowClass); }), 150u);
  EXPECT_GE(reached([&] { return errorOf([&] { running(); }) == 0; }), 400u);
  const DWORD service = reached([&] { return static_cast<bool>(running().phoneCommand()); });
  EXPECT_GE(service, 700u);
  EXPECT_LT(service, 10000u);
  EXPECT_FALSE(IsWindowVisible(FindWindowA("SfFrameOrView", nullptr)));
  EXPECT_EQ(control.status(), u"running hidden");

  // Started again without hiding, the one that runs shows itself.
  processes.shellExecute(file, u"", u"");
  for (int i = 0; i < 500 && !IsWindowVisible(FindWindowA("SfFrameOrView", nullptr)); ++i) Sleep(5);
  EXPECT_TRUE(IsWindowVisible(FindWindowA("SfFrameOrView", nullptr)));
  wchar_t caption[100] = {};
  GetWindowTextW(FindWindowA("SfFrameOrView", nullptr), caption, 100);
  EXPECT_EQ(windows::utf16(caption), u"Velnor - running");
}

TEST_F(StandinClient, TakesCallsByName) {
  ASSERT_TRUE(control.startReady());
  const auto application = running();
  EXPECT_EQ(application.object().typeName(), u"Application");
  const auto command = Object(application.object().get(u"PhoneCommand").toObject());
  const auto service = Object(application.object().get(u"AuxiliaryService").toObject());

  EXPECT_EQ(command.call(u"LineState", 0).toInt32(), 4);
  const auto lines = command.call(u"Lines", 0).toArray();
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[1].toInt32(), 2);
  EXPECT_EQ(service.call(u"ConvertNumber", u"+49 (0)711/12-3").toText(), u"+49711123");
  EXPECT_FALSE(service.call(u"IsNumber", u"Müller").toBoolean());
  EXPECT_TRUE(service.call(u"IsNumber", u"0711 123").toBoolean());

  command.call(u"Dial", 1, 2, u"0711 123", automation::Missing{});
  service.call(u"ShowNumber", u"Müller", u"", u"", u"", u"", u"", 1);
  service.call(u"ShowActions", u"a\n\nb", 1, 1);
  service.call(u"ShowCallInfo");
  command.call(u"Transfer", 0);
  EXPECT_EQ(told(), (Texts{u"dial \"0711 123\" on line 2 (first line 1)", u"show number \"Müller\"",
                           u"open actions \"a\\n\\nb\" (1, 1)", u"show call info", u"transfer"}));
  EXPECT_EQ(control.status(), u"running, dialling: 0711 123");
}

/// Each place with the arguments that its member wants, under a name that nobody knows.
TEST_F(StandinClient, TakesCallsByPlace) {
  ASSERT_TRUE(control.startReady());
  constexpr std::u16string_view NoName = u"Nameless";
  const auto application = running().object();
  const Object command = application.get({NoName, 2}).toObject();
  const Object service = application.get({NoName, 5}).toObject();
  EXPECT_EQ(command.typeName(), u"PhoneCommand");
  EXPECT_EQ(service.typeName(), u"AuxiliaryService");
  EXPECT_EQ(command.call({NoName, 26}, 0).toArray().size(), 2u);
  EXPECT_EQ(command.call({NoName, 17}, 9).toInt32(), 0);
  EXPECT_EQ(command.call({NoName, 18}, 0).toInt32(), 4);
  EXPECT_EQ(service.call({NoName, 5}, u"0711/1").toText(), u"07111");
  EXPECT_TRUE(service.call({NoName, 13}, u"12").toBoolean());
  command.call({NoName, 11}, 1, 0, u"0711", automation::Missing{});
  service.call({NoName, 2}, u"x", u"", u"", u"", u"", u"", 1);
  EXPECT_EQ(told(), (Texts{u"dial 0711 on a free line (first line 1)", u"show number \"x\""}));
}

TEST_F(StandinClient, TakesCallsByNameOnlyWhenItTellsNoTypes) {
  auto settings = control.settings();
  settings.withoutTypes = true;
  control.set(settings);
  ASSERT_TRUE(control.startReady());
  const auto application = running();
  EXPECT_EQ(application.object().typeName(), u"Object");
  // The wrong place does not matter.
  const Object command = application.object().get({u"PhoneCommand", 5}).toObject();
  EXPECT_EQ(command.call({u"LineState", 1}, 0).toInt32(), 4);
}

TEST_F(StandinClient, TakesCallsThroughTheVirtualTable) {
  ASSERT_TRUE(control.startReady());
  windows::ComPtr<IUnknown> unknown;
  ASSERT_EQ(GetActiveObject(standin::ApplicationClassId, nullptr, unknown.receive()), S_OK);
  const auto application = unknown.as<standin::DualApplication>();
  ASSERT_TRUE(application);
  windows::ComPtr<IDispatch> result;
  ASSERT_EQ(application->get_PhoneCommand(result.receive()), S_OK);
  const auto command = result.as<standin::DualPhoneCommand>();
  ASSERT_TRUE(command);
  LONG state = 0;
  EXPECT_EQ(command->LineState(0, &state), S_OK);
  EXPECT_EQ(state, 4);
  windows::Variant lines;
  EXPECT_EQ(command->Lines(0, lines.receive()), S_OK);
  EXPECT_EQ(windows::valueOf(lines.get()).toArray().size(), 2u);
  VARIANT missing;
  missing.vt = VT_ERROR;
  missing.scode = DISP_E_PARAMNOTFOUND;
  EXPECT_EQ(command->Dial(0, 1, windows::Bstr(u"110").get(), missing), S_OK);
  EXPECT_EQ(command->Reserved25(), E_NOTIMPL);

  ASSERT_EQ(application->get_AuxiliaryService(result.receive()), S_OK);
  const auto service = result.as<standin::DualAuxiliaryService>();
  ASSERT_TRUE(service);
  VARIANT_BOOL number = VARIANT_FALSE;
  EXPECT_EQ(service->IsNumber(windows::Bstr(u"110").get(), &number), S_OK);
  EXPECT_EQ(number, VARIANT_TRUE);
  EXPECT_EQ(told(), (Texts{u"dial 110 on line 1"}));
}

TEST_F(StandinClient, PlaysAnIncomingCall) {
  ASSERT_TRUE(control.startReady(true));
  const auto command = running().phoneCommand();
  EXPECT_FALSE(control.connect());
  EXPECT_FALSE(control.endCall());
  EXPECT_TRUE(control.ring(u"0711 ü"));
  EXPECT_EQ(control.status(), u"running hidden, ringing: 0711 ü");
  EXPECT_EQ(command.lineState(), velnor::linestate::Signalling);
  command.pickUp();
  EXPECT_EQ(command.lineState(), velnor::linestate::Connected);
  EXPECT_TRUE(control.endCall());
  EXPECT_EQ(command.lineState(), 4);
  control.setLines({7});
  EXPECT_EQ(command.lines().toArray().at(0).toInt32(), 7);
  EXPECT_TRUE(control.ring(u"1"));
  EXPECT_FALSE(control.ring(u"2"));
}

TEST_F(StandinClient, DialsRemotely) {
  EXPECT_EQ(errorOf([&] { objects.running(velnor::ApplicationClass); }), CannotCreate);
  ASSERT_TRUE(control.startReady());
  const velnor::Remote first(objects.create(velnor::RemoteClass));
  const velnor::Remote second(objects.create(velnor::RemoteClass));
  EXPECT_NE(first.object(), second.object());
  first.directDial(u"0711");
  EXPECT_EQ(told(), (Texts{u"dial remotely 0711"}));
  EXPECT_EQ(running().object(), running().object());
  // A client that was killed is not mistaken for the one that runs.
  control.vanish();
  ASSERT_TRUE(control.startReady());
  velnor::Remote(objects.create(velnor::RemoteClass)).directDial(u"0712");
  EXPECT_EQ(told(), (Texts{u"dial remotely 0712"}));
}

TEST_F(StandinClient, IsStartedByComForTheRemoteControl) {
  control.setGaps({.window = false, .object = false, .service = true});
  const velnor::Remote remote(objects.create(velnor::RemoteClass));
  EXPECT_EQ(control.status(), u"running hidden, not in service");
  EXPECT_EQ(errorOf([&] { remote.directDial(u"0711"); }), static_cast<std::int32_t>(0x80010001));
}

TEST_F(StandinClient, RaisesWhatTheSimulatedOneRaises) {
  ASSERT_TRUE(control.startReady());
  const Object command = running().phoneCommand().object();
  EXPECT_EQ(errorOf([&] { command.call(u"NoSuchMember"); }), 438);
  EXPECT_EQ(errorOf([&] { command.call({u"Nameless", 1}); }), 438);
  EXPECT_EQ(errorOf([&] { command.call(u"LineState"); }), 450);
  EXPECT_EQ(errorOf([&] { command.call(u"LineState", u"x"); }), 13);
  control.setErrors(true);
  EXPECT_EQ(errorOf([&] { command.call(u"LineState", 0); }), 440);
  control.setErrors(false);
  EXPECT_EQ(command.call(u"LineState", 0).toInt32(), 4);
}

TEST_F(StandinClient, ItsDeathLeavesHoldersWithErrors) {
  ASSERT_TRUE(control.startReady());
  const auto application = running();
  const auto command = application.phoneCommand();
  control.vanish();
  EXPECT_EQ(control.status(), u"not running");
  EXPECT_EQ(errorOf([&] { command.lineState(); }), Unavailable);
  EXPECT_EQ(errorOf([&] { application.phoneCommand(); }), Unavailable);
  EXPECT_EQ(errorOf([&] { running(); }), CannotCreate);
  EXPECT_FALSE(processes.windowExists(WindowClass));

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
  EXPECT_EQ(errorOf([&] { running(); }), CannotCreate);
  EXPECT_EQ(control.status(), u"running, hanging");
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
  for (int i = 0; i < 200 && processes.windowExists(WindowClass); ++i) Sleep(5);
  EXPECT_FALSE(processes.windowExists(WindowClass));
  EXPECT_EQ(errorOf([&] { running(); }), CannotCreate);
  control.setGaps({});
  for (int i = 0; i < 200 && errorOf([&] { running(); }) != 0; ++i) Sleep(5);
  EXPECT_TRUE(running().phoneCommand());
  EXPECT_TRUE(processes.windowExists(WindowClass));
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
  const auto path = simulator::stringValue(u"C:\\other.exe");
  registry.write(RegistryRoot::LocalMachine, key, u"", path);
  EXPECT_NE(errorOf([&] { control.install(); }), 0);
  standin::unregisterClient();
  EXPECT_EQ(registry.read(RegistryRoot::LocalMachine, key, u"")->text, path.text);
  registry.deleteKey(RegistryRoot::LocalMachine, key.substr(0, key.rfind(u'\\')));
}

}  // namespace
