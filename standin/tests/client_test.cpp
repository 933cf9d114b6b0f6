// The stand-in client at work: found, started and told what to do from another process.

#include "standin/client/names.h"
#include "standin/client/registration.h"
#include "standin/tests/ClientFixture.h"
#include "windows/com/Bstr.h"
#include "windows/com/ComObject.h"
#include "windows/com/Variant.h"
#include "windows/com/errors.h"
#include "windows/com/values.h"
#include "windows/services/Registry.h"

namespace standin::tests {
namespace {

TEST_F(StandinClient, IsFoundByTheShellAndItsStagesComeOneAfterTheOther) {
  EXPECT_EQ(control.status(), u"not running");
  EXPECT_EQ(errorOf([&] { running(); }), CannotCreate);
  control.setDelays({150, 400, 700});
  windows::Registry registry;
  const auto path = registry.read(RegistryRoot::ClassesRoot, simulator::Client::RegistryKey, u"");
  ASSERT_TRUE(path);
  const std::u16string file = u"\"" + platform::textOf(path) + u"\"";
  const DWORD start = GetTickCount();
  ASSERT_GT(processes.shellExecute(file, u"-hideOnStartup", u""), 32);

  // Each is looked for again and again; the time is taken when it was there.
  const auto reached = [start](const auto& condition) {
    while (!condition() && GetTickCount() - start < 10000) Sleep(5);
    return GetTickCount() - start;
  };
  EXPECT_GE(reached([&] { return processes.windowExists(velnor::MainWindowClass); }), 150u);
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

}  // namespace
}  // namespace standin::tests
