#include <gtest/gtest.h>

#include "client/CxDial.h"
#include "client/IsDialableNumber.h"
#include "client/OpenVelnorActionDialog.h"
#include "client/VelnorLocator.h"
#include "state/process.h"
#include "tests/Once.h"
#include "tests/World.h"

namespace tests {
namespace {

using cxol::CxDial;

constexpr std::u16string_view NotRunning = u"ActiveX component can't create object";
constexpr std::u16string_view Busy = u"The message filter indicated that the application is busy.";

/// The bridge to the client on a machine without an Outlook.
class ClientTest : public testing::Test {
 protected:
  std::int64_t elapsedBy(const std::function<void()>& operation) {
    const auto before = platform::serialMilliseconds(world.machine.clock.now());
    operation();
    return platform::serialMilliseconds(world.machine.clock.now()) - before;
  }
  void force(std::int32_t state) { world.machine.client.telephone().forceCurrentState(state); }

  World world;
  cxol::Process process{world.machine.platform()};
};

TEST_F(ClientTest, StartsTheClientFromItsRegisteredPath) {
  auto& machine = world.machine;
  machine.client.install(u"D:\\My Programs\\Velnor 3\\velnor.exe");
  cxol::ShellExecuteVelnorHiddenNoWait();
  ASSERT_EQ(machine.processes.started().size(), 1u);
  EXPECT_EQ(machine.processes.started()[0].file, u"\"D:\\My Programs\\Velnor 3\\velnor.exe\"");
  EXPECT_EQ(machine.processes.started()[0].folder, u"D:\\My Programs\\Velnor 3\\");
  EXPECT_EQ(machine.processes.started()[0].parameters, u"-hideOnStartup");
  EXPECT_TRUE(machine.client.hidden());
  cxol::ShellExecuteVelnor();
  EXPECT_EQ(machine.processes.started()[1].parameters, u"");
  EXPECT_TRUE(world.traced(u"Debug:   ShellExecuteVelnor"));
}

TEST_F(ClientTest, FindsThePathInWhatItsServerMayBeRegisteredAs) {
  using enum platform::RegistryType;
  constexpr std::u16string_view Path = u"D:\\My Programs\\velnor.exe";
  const struct {
    platform::RegistryType type;
    std::u16string_view value;
    std::u16string_view path;
    std::u16string_view folder = u"D:\\My Programs\\";
  } cases[] = {
      {String, Path, Path},
      {String, u"\"D:\\My Programs\\velnor.exe\"", Path},
      {String, u"\"D:\\My Programs\\velnor.exe\" -Embedding \"x\"", Path},
      {String, u"\"D:\\My Programs\\velnor.exe", Path},
      {String, u" D:\\My Programs\\velnor.exe /Automation -x.exe", Path},
      {String, u"D:\\My Programs\\VELNOR.EXE ", u"D:\\My Programs\\VELNOR.EXE"},
      {String, u"D:\\My Programs\\a.exec\\v.exe", u"D:\\My Programs\\a.exec\\v.exe",
       u"D:\\My Programs\\a.exec\\"},
      {String, u"D:\\My Programs\\velnor", u"D:\\My Programs\\velnor"},
      {String, u"velnor.exe", u"velnor.exe", u""},
      {ExpandString, u"%programs%\\velnor.exe -Embedding", Path},
      {ExpandString, u"\"%Programs%\\velnor.exe\"", Path},
      {ExpandString, u"D:\\%Unset%\\v.exe", u"D:\\%Unset%\\v.exe", u"D:\\%Unset%\\"},
      {String, u"%Programs%\\velnor.exe", u"%Programs%\\velnor.exe", u"%Programs%\\"},
  };
  auto& registry = world.machine.registry;
  registry.setVariable(u"Programs", u"D:\\My Programs");
  for (const auto& c : cases) {
    platform::RegistryValue stored{c.type, std::u16string(c.value) + u'\0', {}};
    registry.setRaw(RegistryRoot::ClassesRoot, simulator::Client::RegistryKey, u"", stored);
    EXPECT_EQ(cxol::ClientPath(), u"\"" + std::u16string(c.path) + u"\"");
    EXPECT_EQ(cxol::ClientDir(), c.folder);
  }
}

TEST_F(ClientTest, ToldThatItIsNotInstalled) {
  const std::u16string text = u"Velnor läßt sich nicht starten. Installieren Sie die Software neu.";
  world.machine.client.uninstall();
  const char16_t* const absentOr[] = {nullptr, u"", u" ", u"\"\" -Embedding"};
  for (const char16_t* value : absentOr) {
    if (value) {
      world.machine.registry.setString(RegistryRoot::ClassesRoot, simulator::Client::RegistryKey,
                                       u"", value);
    }
    EXPECT_EQ(cxol::ClientPath(), u"\"\"");
    EXPECT_EQ(cxol::ClientDir(), u"");
    world.forget();
    cxol::ShellExecuteVelnorWait();
    EXPECT_EQ(world.machine.screen.messageBoxes(), Texts{text});
    EXPECT_TRUE(world.traced(u"Error:   " + text));
  }
  EXPECT_TRUE(world.machine.processes.started().empty()) << "a shell may open a folder";
}

TEST_F(ClientTest, AStartFailsUpToTheResult32) {
  const std::pair<std::int32_t, std::u16string> answers[] = {
      {32, u"Velnor läßt sich nicht starten. Installieren Sie die Software neu."},
      {33, u"Timeout beim Warten auf Velnor"}};
  for (const auto& [result, box] : answers) {
    world.forget();
    const Once answer(world.boundary, u"Processes", u"shellExecute",
                      [code = result] { throw automation::Error(code, u""); });
    cxol::ShellExecuteVelnorWait();
    EXPECT_EQ(world.machine.screen.messageBoxes(), Texts{box});
  }
}

TEST_F(ClientTest, EachWaitEndsWithItsOwnMessage) {
  const struct {
    const char* why;
    simulator::Client::Gaps gaps;
    std::u16string_view box;
    std::int64_t atLeast;
    std::int64_t atMost;
  } cases[] = {
      {"no window", {true, false, false}, u"Timeout beim Warten auf Velnor", 20'040, 20'040},
      {"no object",
       {false, true, false},
       u"Timeout beim Warten auf Velnor.Application-Object",
       20'300,
       20'400},
      {"all well", {}, u"", 700, 760},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    world.machine.client.vanish();
    world.machine.client.setGaps(c.gaps);
    world.forget();
    const auto elapsed = elapsedBy([] { cxol::ShellExecuteVelnorWait(); });
    EXPECT_GE(elapsed, c.atLeast);
    EXPECT_LE(elapsed, c.atMost);
    EXPECT_EQ(world.machine.screen.messageBoxes(),
              c.box.empty() ? Texts{} : Texts{std::u16string(c.box)});
  }
  // A window is proof enough: no start, no wait, no question after the object.
  world.machine.client.startReady();
  world.machine.client.setGaps({false, true, false});
  EXPECT_EQ(elapsedBy([] { cxol::ShellExecuteVelnorWait(); }), 0);
}

TEST_F(ClientTest, AWaitThatMeetsMidnightEndsAtOnce) {
  world.machine.client.setGaps({true, false, false});
  world.machine.clock.set({2008, 3, 7, 23, 59, 58, 0});
  EXPECT_LE(elapsedBy([] { cxol::ShellExecuteVelnorWait(); }), 2'100);

  world.machine.client.startReady();
  world.machine.client.setGaps({false, false, true});
  world.machine.clock.set({2008, 3, 7, 23, 59, 58, 0});
  EXPECT_LE(elapsedBy([] { EXPECT_FALSE(cxol::GetVelnorPhoneCmdInservice()); }), 2'100);
  EXPECT_TRUE(
      world.traced(u"Warning: GetVelnorPhoneCmdInservice() not in service after 20 sec waiting!"));
}

TEST_F(ClientTest, ReadinessIsAnyAnswer) {
  world.startClient();
  for (const std::int32_t state : {0, 4, 128, -1}) {
    force(state);
    EXPECT_TRUE(cxol::GetVelnorPhoneCmdInservice()) << state;
  }
  // Errors are passed over: polling goes on until the client answers.
  world.machine.client.answerWithError(0);
  world.machine.client.failMember(u"LineState");
  EXPECT_EQ(elapsedBy([] { EXPECT_FALSE(cxol::GetVelnorPhoneCmdInservice()); }), 20'000);
}

TEST_F(ClientTest, CommandsNeverStartAClientThatDoesNotRun) {
  CxDial(u"0711");
  EXPECT_EQ(world.machine.processes.started().size(), 0u);
  const Texts expected = {
      u"Warning: InitK9TLog failed, use internal logging",
      u"Debug:   CxDial (0711)",
      u"Debug:   GetVelnorPhoneCmdInservice() entered...",
      std::u16string(u"Error:   ERROR in GetVelnorAuxSvc(): ") + std::u16string(NotRunning),
      u"Warning: GetVelnorPhoneCmdInservice() refused because GetVelnorAuxSvc() not found!",
      u"Error:   GetVelnorPhoneCmdInservice() is Nothing in CxDial(): "};
  EXPECT_EQ(world.trace(), expected);
}

TEST_F(ClientTest, DialsOnTheUsersFirstLineIfItIsUsable) {
  const struct {
    const char* why;
    std::optional<automation::Value> lines;
    std::int32_t state;
    const char16_t* told;
  } cases[] = {
      {"usable by bit 4", automation::Array{automation::Value(7)}, 4, u"dial 0711123 on line 7"},
      {"usable by bit 8", automation::Array{automation::Value(u"7")}, 8, u"dial 0711123 on line 7"},
      {"not usable: the client picks", automation::Array{automation::Value(7)}, 2,
       u"dial 0711123 (first line 7)"},
      {"no line", automation::Array{}, 4, u"dial 0711123"},
      {"no array", automation::Value(5), 4, u"dial 0711123"},
      {"nothing", automation::Value(), 4, u"dial 0711123"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    world.machine.client.vanish();
    world.startClient();
    world.forget();
    auto& client = world.machine.client;
    client.telephone().setLines({7});
    client.telephone().forceState(7, c.state);
    client.telephone().forceCurrentState(4);
    client.setLinesAnswer(c.lines);
    CxDial(u"0711/123");
    ASSERT_EQ(client.told().size(), 1u);
    const auto& told = client.told()[0];
    EXPECT_EQ(told.kind, simulator::Told::Kind::Dial);
    EXPECT_EQ(told.text, u"0711123") << "the client's conversion is what is dialled";
    const bool known = c.lines->isArray() && !c.lines->toArray().empty();
    EXPECT_EQ(told.firstLine, known ? 7 : 0);
    EXPECT_EQ(told.chosenLine, known && c.state != 2 ? 7 : 0);
    EXPECT_TRUE(world.traced(u"Debug:   CxDial (0711123): cmd.Dial()..."));
  }
}

TEST_F(ClientTest, OffersTheNumberInTheWindowWhileConnected) {
  world.startClient();
  world.option(AddInKey, u"DialRemote", 1);
  for (const std::int32_t state : {3, 19, 35}) {
    world.forget();
    force(state);
    CxDial(u" 0711 ");
    ASSERT_EQ(world.machine.client.told().size(), 1u);
    EXPECT_EQ(world.machine.client.told()[0].kind, simulator::Told::Kind::ShowNumber);
    EXPECT_EQ(world.machine.client.told()[0].text, u" 0711 ");
    EXPECT_TRUE(
        world.traced(u"Debug:   CxDial ( 0711 ): (cmd.linestate And LS_MASK) = "
                     u"LS_CONNECTED"));
  }
}

TEST_F(ClientTest, DialsThroughTheRemoteObjectWhenToldSo) {
  world.startClient();
  // Read at every dial: a change counts at once.
  CxDial(u"1");
  const Texts lines = {u"Debug:   CxDial (1)",
                       u"Debug:   GetVelnorPhoneCmdInservice() entered...",
                       u"Debug:   GetVelnorPhoneCmdInservice() ShellExecuteVelnorWait()...",
                       u"Debug:   GetVelnorPhoneCmdInservice() GetObject()...",
                       u"Debug:   GetVelnorPhoneCmdInservice() WaitForInService()...",
                       u"Debug:   CxDial (1): DialWithRemoteInterface = False",
                       u"Debug:   CxDial (1): cmd.Dial()..."};
  auto trace = world.trace();
  trace.erase(trace.begin());
  EXPECT_EQ(trace, lines);
  world.machine.client.endCall();
  world.option(AddInKey, u"DialRemote", 1);
  CxDial(u"0711/2");
  ASSERT_EQ(world.machine.client.told().size(), 2u);
  EXPECT_EQ(world.machine.client.told()[1].kind, simulator::Told::Kind::DirectDial);
  EXPECT_EQ(world.machine.client.told()[1].text, u"0711/2");
  EXPECT_TRUE(world.traced(u"Debug:   CxDial (0711/2): DialWithRemoteInterface = True"));
  EXPECT_EQ(world.machine.client.calls(u"Lines"), 1u) << "no line is chosen for the remote object";
}

TEST_F(ClientTest, AnyFailureOfACallIsOneLineInTheTrace) {
  for (const std::u16string_view member : {u"ConvertNumber", u"Lines", u"LineStateOf", u"Dial"}) {
    world.machine.client.vanish();
    world.startClient();
    world.forget();
    world.machine.client.failMember(member, automation::Error(-2147467259, u"Störung"));
    CxDial(u"0711");
    EXPECT_EQ(world.told(), Texts{});
    EXPECT_EQ(world.trace().back(), u"Error:   ERROR in CxDial(): Störung");
    EXPECT_EQ(world.machine.screen.messageBoxes(), Texts{});
    world.machine.client.restoreMember(member);
  }
  // The client is in service, and fails before the number is handed over.
  const struct {
    std::uint32_t remote;
    const char16_t *owner, *member, *line;
  } cases[] = {{0, u"PhoneCommand", u"LineState", u"CxDial (0711): GetVelnorAuxSvc = Nothing"},
               {1, u"Objects", u"create", u"CxDial (0711): GetVelnorRemote = Nothing"}};
  for (const auto& c : cases) {
    world.option(AddInKey, u"DialRemote", c.remote);
    const Once fails(world.boundary, c.owner, c.member, [&] {
      world.machine.client.failMember(u"AuxiliaryService");
      if (c.remote != 0) throw automation::Error(automation::ErrorNumber::AutomationFailed);
    });
    CxDial(u"0711");
    EXPECT_EQ(world.trace().back(), std::u16string(u"Error:   ") + c.line);
    world.machine.client.restoreMember(u"AuxiliaryService");
  }
  // The object is there, but does not give its service.
  world.machine.client.failMember(u"AuxiliaryService", automation::Error(-2147467259, u"Störung"));
  EXPECT_FALSE(cxol::GetVelnorAuxSvc());
  EXPECT_EQ(world.trace().back(), u"Error:   ERROR in GetVelnorAuxSvc(): Störung");
}

TEST_F(ClientTest, SurvivesAClientThatVanishesOrHangs) {
  world.startClient();
  auto command = cxol::GetVelnorPhoneCmdInservice();
  world.machine.client.vanish();
  EXPECT_THROW(command.hangUp(), automation::Error);
  world.startClient();
  world.machine.client.hang(true);
  CxDial(u"0711");
  EXPECT_EQ(world.told(), Texts{});
  world.machine.client.hang(false);
  CxDial(u"0711");
  EXPECT_EQ(world.machine.client.told().size(), 1u);
}

TEST_F(ClientTest, NothingIsStartedBesideAClientThatIsFrozen) {
  const struct {
    const char* why;
    void (*operation)();
  } cases[] = {
      {"show a number", [] { cxol::VelnorShowNumber(u"0711"); }},
      {"auxiliary service", [] { EXPECT_FALSE(cxol::GetVelnorAuxSvc()); }},
      {"phone commands", [] { EXPECT_FALSE(cxol::GetVelnorPhoneCmdInservice()); }},
      {"remote", [] { EXPECT_FALSE(cxol::GetVelnorRemote()); }},
      {"dial", [] { CxDial(u"0711"); }},
      {"start and wait", [] { cxol::ShellExecuteVelnorWait(); }},
  };
  world.startClient();
  world.machine.client.freeze(true);
  world.forget();
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    EXPECT_LE(elapsedBy(c.operation), simulator::Client::FrozenLook) << "one look";
    EXPECT_TRUE(world.machine.processes.started().empty());
    EXPECT_EQ(world.machine.screen.messageBoxes(), Texts{});
  }
  EXPECT_EQ(world.count(u"Error:   ERROR in GetVelnorRemote(): " + std::u16string(Busy)), 1u);
  world.machine.client.freeze(false);
  cxol::VelnorShowNumber(u"0711");
  EXPECT_EQ(world.told(), Texts{u"show number \"0711\""});
}

/// The client freezes as soon as somebody sleeps.
class FreezeInTheWait : public simulator::CrossingObserver {
 public:
  explicit FreezeInTheWait(World& world) : world_(world) { world_.boundary.setObserver(this); }
  ~FreezeInTheWait() override { world_.boundary.setObserver(nullptr); }
  void before(const simulator::Crossing& crossing) override {
    if (crossing.owner == u"Clock" && crossing.member == u"sleep")
      world_.machine.client.freeze(true);
  }

 private:
  World& world_;
};

TEST_F(ClientTest, AWaitForAClientThatFreezesEnds) {
  constexpr std::int64_t LimitAndOneLook = 20'000 + simulator::Client::FrozenLook;
  // While it comes up.
  {
    const FreezeInTheWait freeze(world);
    const auto elapsed = elapsedBy([] { cxol::ShellExecuteVelnorWait(); });
    EXPECT_GE(elapsed, 20'000);
    EXPECT_LE(elapsed, 400 + LimitAndOneLook);
    EXPECT_EQ(world.machine.screen.messageBoxes(),
              Texts{u"Timeout beim Warten auf Velnor.Application-Object"});
  }
  world.machine.client.vanish();
  // While it gets into service.
  world.machine.client.setGaps({false, false, true});
  world.startClient();
  const FreezeInTheWait freeze(world);
  const auto elapsed = elapsedBy([] { EXPECT_FALSE(cxol::GetVelnorPhoneCmdInservice()); });
  EXPECT_GE(elapsed, 20'000);
  EXPECT_LE(elapsed, LimitAndOneLook);
}

TEST_F(ClientTest, ShowsANumberOrStartsTheClient) {
  cxol::VelnorShowNumber(u"0711");
  ASSERT_EQ(world.machine.processes.started().size(), 1u);
  EXPECT_FALSE(world.machine.client.hidden());
  EXPECT_EQ(world.told(), Texts{}) << "a number for a client that must be started is dropped";
  world.machine.client.vanish();
  world.startClient();
  cxol::VelnorShowNumber(u"Meier");
  EXPECT_EQ(world.told(), Texts{u"show number \"Meier\""});
}

TEST_F(ClientTest, TheActionDialogGetsAllReferencesAtOnce) {
  world.startClient();
  cxol::Collection<std::u16string> references;
  cxol::OpenVelnorActionDialog(references, 1, 1);
  for (const char16_t* text : {u"a\nb", u"", u"c"}) references.add(text);
  cxol::OpenVelnorActionDialog(references, 1, 1);
  ASSERT_EQ(world.machine.client.told().size(), 2u);
  EXPECT_EQ(world.machine.client.told()[0].text, u"");
  EXPECT_EQ(world.machine.client.told()[1].text, u"a\nb\n\nc");
  EXPECT_EQ(world.machine.client.told()[1].code, 1);
  EXPECT_EQ(world.machine.client.told()[1].code2, 1);
  world.machine.client.vanish();
  cxol::OpenVelnorActionDialog(references, 1, 1);
  EXPECT_EQ(world.trace().back(),
            u"Error:   ERROR in OpenVelnorActionDialog(): Object variable or With block variable "
            u"not set");
}

TEST_F(ClientTest, TellsNumbersFromNames) {
  const struct {
    std::u16string_view text;
    bool dialable;
  } cases[] = {
      {u"", true},   {u"+49 (89) 123-456", true}, {u"Meier", false},   {u"i0049891234", true},
      {u"I9", true}, {u"0049/89.123 45#*", true}, {u"0049_89", false}, {u"١٢٣", false}};
  for (const auto& c : cases) {
    EXPECT_EQ(cxol::IsDialableNumber(c.text, {}), c.dialable);
  }
  // The client's word is final; without one the characters decide.
  world.startClient();
  const auto service = cxol::GetVelnorAuxSvc();
  world.machine.client.setIsNumber([](auto) { return false; });
  EXPECT_FALSE(cxol::IsDialableNumber(u"0815", service));
  world.machine.client.setIsNumber([](auto) { return true; });
  EXPECT_TRUE(cxol::IsDialableNumber(u"Meier", service));
  world.machine.client.failMember(u"IsNumber");
  EXPECT_TRUE(cxol::IsDialableNumber(u"0815", service));
  EXPECT_FALSE(cxol::IsDialableNumber(u"Meier", service));
}

}  // namespace
}  // namespace tests
