#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "tests/SimulatedMachine.h"

namespace tests {
namespace {

using simulator::Telephone;

constexpr std::int32_t BusyServer = static_cast<std::int32_t>(0x8001010A);

class SimulatedClientTest : public SimulatedMachine {};

TEST_F(SimulatedClientTest, TheShellStartsTheClientWhichGetsReadyStageByStage) {
  const std::u16string file = u"\"" + std::u16string(Client::DefaultPath) + u"\"";
  EXPECT_EQ(on.processes.shellExecute(file, u"-hideOnStartup", u"C:\\"), 2) << "not installed";
  machine.installClient();
  EXPECT_GT(on.processes.shellExecute(u"\"\"", u"", u""), 32) << "opens the current folder";
  EXPECT_FALSE(machine.client.running());
  EXPECT_GT(on.processes.shellExecute(file, u"-hideOnStartup", u"C:\\"), 32);
  EXPECT_TRUE(machine.client.hidden());
  EXPECT_EQ(machine.processes.started().size(), 3u);

  on.clock.sleep(299);
  EXPECT_FALSE(on.processes.windowExists(u"SfFrameOrView"));
  on.clock.sleep(1);
  EXPECT_TRUE(on.processes.windowExists(u"SfFrameOrView"));
  EXPECT_FALSE(on.processes.windowExists(u"Notepad"));
  EXPECT_EQ(runningError(), 429);
  EXPECT_EQ(errorOf([&] { on.objects.create(velnor::RemoteClass); }), 429);
  on.clock.sleep(400);
  EXPECT_FALSE(application().phoneCommand());
  machine.client.setRaisesBeforeService(true);
  EXPECT_NE(errorOf([&] { application().phoneCommand(); }), 0);
  EXPECT_EQ(machine.client.status(), u"running hidden, not in service");
  EXPECT_FALSE(machine.client.ring(u"0711"));
  on.clock.sleep(200);
  EXPECT_EQ(application().phoneCommand().lineState(), 4);

  EXPECT_GT(on.processes.shellExecute(file, u"", u"C:\\"), 32);
  EXPECT_FALSE(machine.client.hidden()) << "the one that runs comes to the front";
  EXPECT_EQ(application(), application());
}

TEST_F(SimulatedClientTest, StagesCanBeMissingEachForItself) {
  machine.client.startReady();
  machine.client.setGaps({.window = true});
  EXPECT_FALSE(on.processes.windowExists(velnor::MainWindowClass));
  EXPECT_EQ(runningError(), 0);
  machine.client.setGaps({.object = true});
  EXPECT_TRUE(on.processes.windowExists(velnor::MainWindowClass));
  EXPECT_EQ(runningError(), 429);
  machine.client.setGaps({.service = true});
  EXPECT_FALSE(application().phoneCommand());
  const velnor::Remote remote(on.objects.create(velnor::RemoteClass));
  EXPECT_NE(errorOf([&] { remote.directDial(u"0711"); }), 0) << "there is no service to dial with";
  machine.client.setGaps({});
  EXPECT_TRUE(application().phoneCommand());
}

TEST_F(SimulatedClientTest, CallsMoveTheLineStates) {
  Telephone& telephone = machine.client.telephone();
  EXPECT_FALSE(machine.client.ring(u"1")) << "nobody is there to hear it";
  machine.client.startReady();
  const velnor::PhoneCommand command = application().phoneCommand();
  EXPECT_FALSE(machine.client.connect());

  ASSERT_TRUE(machine.client.ring(u"0711 1"));
  EXPECT_EQ(command.lineState(), velnor::linestate::Signalling);
  EXPECT_EQ(machine.client.status(), u"running, ringing: 0711 1");
  command.pickUp();
  EXPECT_EQ(command.lineState() & velnor::linestate::Mask, velnor::linestate::Connected);
  ASSERT_TRUE(machine.client.ring(u"0711 2"));
  EXPECT_EQ(telephone.currentLine(), 2) << "the first idle line";
  EXPECT_FALSE(machine.client.ring(u"0711 3")) << "no line is idle";
  EXPECT_EQ(command.lineStateOf(1), 3);
  ASSERT_TRUE(machine.client.endCall());
  EXPECT_EQ(telephone.number(), u"0711 1") << "the other call goes on";
  command.hangUp();
  EXPECT_EQ(command.lineState(), 4);
  EXPECT_FALSE(machine.client.endCall());

  command.dial(1, 2, u"0711");
  EXPECT_EQ(command.lineStateOf(2), 1);
  EXPECT_EQ(command.lineStateOf(1), 4);
  ASSERT_TRUE(machine.client.connect());
  command.dial(2, 0, u"0712");
  EXPECT_EQ(telephone.currentLine(), 1) << "line 2 is taken";
  telephone.forceState(1, 35);
  EXPECT_EQ(command.lineState(), 35);
  EXPECT_EQ(command.lineStateOf(9), 0);
  telephone.forceState(1, std::nullopt);
  telephone.endAll();
  command.dial(2, 0, u"");
  EXPECT_EQ(telephone.state(), Telephone::State::Idle);
  command.dial(2, 0, u"0713");
  EXPECT_EQ(telephone.currentLine(), 2);
  EXPECT_EQ(told(), (Texts{u"pick up", u"hang up", u"dial 0711 on line 2 (first line 1)",
                           u"dial 0712 on a free line (first line 2)",
                           u"dial \"\" on a free line (first line 2)",
                           u"dial 0713 on a free line (first line 2)"}));
}

TEST_F(SimulatedClientTest, TheClientNotesWhatItIsTold) {
  machine.client.startReady(true);
  std::size_t heard = 0;
  machine.client.setListener([&](const simulator::Told&) { ++heard; });
  const velnor::AuxiliaryService service = application().auxiliaryService();
  service.showNumber(u"Meier \"B\"\n");
  EXPECT_FALSE(machine.client.hidden()) << "it has something to show";
  service.showActions(u"books=outlook:S,F\nrecordid=E", 1, 1);
  service.showCallInfo();
  velnor::Remote(on.objects.create(velnor::RemoteClass)).directDial(u"0711 12");
  EXPECT_EQ(machine.client.telephone().state(), Telephone::State::Dialling);
  const velnor::PhoneCommand command = application().phoneCommand();
  command.transfer();
  command.incognito();
  command.stop(1);
  EXPECT_TRUE(machine.client.running());
  command.stop(velnor::StopWithHost);
  EXPECT_FALSE(machine.client.running());
  EXPECT_EQ(told(), (Texts{u"show number \"Meier \\\"B\\\"\\n\"",
                           u"open actions \"books=outlook:S,F\\nrecordid=E\" (1, 1)",
                           u"show call info", u"dial remotely \"0711 12\"", u"transfer",
                           u"incognito", u"stop (1)", u"stop (13)"}));
  EXPECT_EQ(heard, told().size());
  EXPECT_EQ(errorOf([&] { command.hangUp(); }), 462);
}

TEST_F(SimulatedClientTest, TheClientAnswersByItsRules) {
  machine.client.startReady();
  const velnor::AuxiliaryService service = application().auxiliaryService();
  EXPECT_EQ(service.convertNumber(u"+49 (0)711/123-45 (0)"), u"+4971112345");
  machine.client.setConversion([](auto number) { return u"0" + std::u16string(number); });
  EXPECT_EQ(service.convertNumber(u"1 2"), u"01 2");
  EXPECT_TRUE(service.isNumber(u"+49 (89) 123-456/i#*.I"));
  EXPECT_FALSE(service.isNumber(u"0049_89"));
  machine.client.setIsNumber([](auto) { return false; });
  EXPECT_FALSE(service.isNumber(u"0815"));
  machine.client.failMember(u"IsNumber", Error(5, u"no"));
  EXPECT_EQ(errorOf([&] { service.isNumber(u"1"); }), 5);
  machine.client.restoreMember(u"IsNumber");
  EXPECT_EQ(errorOf([&] { service.isNumber(u"1"); }), 0);

  const velnor::PhoneCommand command = application().phoneCommand();
  ASSERT_EQ(command.lines().toArray().size(), 2u);
  EXPECT_EQ(command.lines().toArray()[1].toInt32(), 2);
  machine.client.telephone().setLines({});
  EXPECT_TRUE(command.lines().toArray().empty());
  machine.client.setLinesAnswer(Value(u"none"));
  EXPECT_FALSE(command.lines().isArray());
  EXPECT_EQ(machine.client.calls(u"Lines"), 4u);
  EXPECT_EQ(errorOf([&] { service.object().call(u"ShowNumber", u"1"); }), 450);
  EXPECT_EQ(errorOf([&] { service.object().call(u"PickUp", std::int32_t{0}); }), 438);
}

TEST_F(SimulatedClientTest, TheClientMakesTrouble) {
  machine.client.startReady();
  auto service = std::optional(application().auxiliaryService());
  machine.client.hang(true);
  EXPECT_EQ(errorOf([&] { service->isNumber(u"1"); }), BusyServer);
  EXPECT_EQ(elapsed(), 30000);
  machine.client.hang(false);
  machine.client.answerWithError(2);
  EXPECT_EQ(errorOf([&] { service->isNumber(u"1"); }), 440);
  EXPECT_EQ(errorOf([&] { application().phoneCommand(); }), 440);
  EXPECT_EQ(errorOf([&] { service->isNumber(u"1"); }), 0);
  machine.client.answerWithError(Client::EveryCall, Error(-1, u"always"));
  for (int i = 0; i < 3; ++i) EXPECT_EQ(errorOf([&] { service->isNumber(u"1"); }), -1);
  machine.client.answerWithError(0);

  machine.client.ring(u"0711");
  machine.client.hang(true);
  machine.client.vanish();
  EXPECT_EQ(errorOf([&] { service->isNumber(u"1"); }), 462);
  EXPECT_EQ(runningError(), 429);
  EXPECT_FALSE(on.processes.windowExists(velnor::MainWindowClass));
  machine.client.startReady();
  EXPECT_EQ(machine.client.status(), u"running") << "the new one neither hangs nor rings";
  EXPECT_EQ(errorOf([&] { service->isNumber(u"1"); }), 462) << "the old object stays dead";
}

TEST(MachineLifeTest, ObjectsOutliveTheMachineHarmlessly) {
  simulator::Boundary boundary;
  auto machine = std::make_unique<simulator::Machine>(boundary);
  machine->client.startReady();
  const auto held = machine->platform().objects.running(velnor::ApplicationClass);
  machine.reset();
  EXPECT_EQ(errorOf([&] { held.get(u"PhoneCommand"); }), 462);
  EXPECT_EQ(boundary.liveHandles(), 1u);
}

}  // namespace
}  // namespace tests
