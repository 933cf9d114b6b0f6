#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/mapi_session.h"
#include "simulator/machine/LanguageServices.h"
#include "simulator/machine/MapiSession.h"
#include "simulator/machine/ansi.h"
#include "tests/SimulatedMachine.h"

namespace tests {
namespace {

using namespace std::string_view_literals;
using platform::LocalTime;
using platform::Point;
using platform::PopupEntry;

class SimulatedMachineTest : public SimulatedMachine {};

/// Fails every crossing of one service operation, named "Owner.operation".
class Saboteur : public simulator::CrossingObserver {
 public:
  std::u16string target;
  void before(const simulator::Crossing& crossing) override {
    const std::u16string name =
        std::u16string(crossing.owner) + u"." + std::u16string(crossing.member);
    if (name == target) throw Error(7, u"sabotage");
  }
};

// ---- Clock and timers.

TEST_F(SimulatedMachineTest, TimersFireInOrderAtTheirExactTimes) {
  std::vector<std::int64_t> slow;
  std::vector<std::int64_t> fast;
  noteTicks(300, slow);
  noteTicks(100, fast);
  machine.advance(299);
  EXPECT_EQ(fast, (std::vector<std::int64_t>{100, 200}));
  EXPECT_TRUE(slow.empty());
  machine.advance(1);
  EXPECT_EQ(slow, (std::vector<std::int64_t>{300}));
  EXPECT_EQ(fast.size(), 3u);
  EXPECT_EQ(elapsed(), 300);
}

TEST_F(SimulatedMachineTest, SleepHoldsTimersBackAndMissedTicksComeOnce) {
  std::vector<std::int64_t> ticks;
  noteTicks(100, ticks);
  on.clock.sleep(1050);
  EXPECT_TRUE(ticks.empty());
  on.clock.pumpMessages();
  on.clock.pumpMessages();
  EXPECT_EQ(ticks, (std::vector<std::int64_t>{1050}));
  machine.advance(100);
  EXPECT_EQ(ticks, (std::vector<std::int64_t>{1050, 1150})) << "armed again from the late tick";
}

TEST_F(SimulatedMachineTest, CallbacksMaySleepKillSetAndPump) {
  std::vector<std::int64_t> sleeper;
  std::vector<std::int64_t> victim;
  std::vector<std::int64_t> child;
  std::uint32_t own = 0;
  const std::uint32_t other = noteTicks(500, victim);
  own = noteTicks(400, sleeper, [&] {
    if (sleeper.size() == 1) {
      on.clock.sleep(1000);
      on.clock.pumpMessages();  // itself and the other one are overdue by now
      return;
    }
    on.timers.killTimer(other);
    on.timers.killTimer(own);
    noteTicks(50, child);
  });
  machine.advance(1500);
  EXPECT_EQ(sleeper, (std::vector<std::int64_t>{400, 1400}));
  EXPECT_EQ(victim, (std::vector<std::int64_t>{1400}));
  EXPECT_EQ(child, (std::vector<std::int64_t>{1450, 1500}));
  EXPECT_EQ(machine.timers.liveCount(), 1u);
}

TEST_F(SimulatedMachineTest, ATimerThatANestedLoopServedIsNotServedTwice) {
  std::vector<std::int64_t> outer;
  std::vector<std::int64_t> inner;
  noteTicks(100, outer, [&] { on.clock.pumpMessages(); });
  noteTicks(200, inner);
  on.clock.sleep(1000);
  on.clock.pumpMessages();
  EXPECT_EQ(outer, (std::vector<std::int64_t>{1000}));
  EXPECT_EQ(inner, (std::vector<std::int64_t>{1000}));
}

TEST_F(SimulatedMachineTest, TimersRunOut) {
  machine.timers.setExhausted(true);
  EXPECT_EQ(on.timers.setTimer(300, [] {}), 0u);
  machine.timers.setExhausted(false);
  EXPECT_NE(on.timers.setTimer(300, [] {}), 0u);
}

TEST_F(SimulatedMachineTest, TheDateRollsOverAtMidnightAndSettingTheClockLeavesTimersAlone) {
  bool ticked = false;
  on.timers.setTimer(400, [&] { ticked = true; });
  machine.clock.set({2008, 2, 28, 23, 59, 59, 900});
  on.clock.sleep(100);
  LocalTime time = on.clock.localTime();
  EXPECT_EQ(time.day, 29);
  EXPECT_EQ(platform::secondsSinceMidnight(time), 0.0);
  machine.clock.set({2008, 12, 31, 23, 59, 59, 999});
  machine.advance(300);
  EXPECT_TRUE(ticked);
  time = machine.clock.now();
  EXPECT_EQ(simulator::shortDate(1033, time), u"1/1/2009");
  EXPECT_EQ(time.millisecond, 299);
}

// ---- Texts, files, dates.

TEST(AnsiTest, IsWindows1252) {
  EXPECT_EQ(simulator::toAnsi(u"aÄß€\u2026\u0141\u0081\u0080\0!"sv),
            "a\xC4\xDF\x80\x85?\x81?\0!"sv);
  EXPECT_EQ(simulator::toAnsi(u"\U0001F600\xD800"), "???") << "one for each unit";
  std::string all;
  for (int byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);
  EXPECT_EQ(simulator::toAnsi(simulator::fromAnsi(all)), all);
}

TEST_F(SimulatedMachineTest, FilesNeedTheirFolders) {
  Texts heard;
  machine.files.setListener([&](auto path, auto text) {
    heard.push_back(std::u16string(path) + u": " + std::u16string(text));
  });
  EXPECT_EQ(errorOf([&] { on.files.append(u"C:\\Log\\a.txt", u"x"); }), 76);
  machine.files.setFoldersFail(true);
  EXPECT_FALSE(on.files.makeSureDirectoryPathExists(u"C:\\Log\\"));
  machine.files.setFoldersFail(false);
  EXPECT_TRUE(on.files.makeSureDirectoryPathExists(u"\\Log\\Deep\\left out"));
  EXPECT_TRUE(machine.files.folderExists(u"c:\\LOG\\deep"));
  EXPECT_FALSE(machine.files.folderExists(u"C:\\Log\\Deep\\left out"));
  on.files.append(u"C:\\Log\\a.txt", u"Ü\r\n");
  on.files.append(u"c:\\log\\A.TXT", u"\u0416");
  EXPECT_EQ(machine.files.bytes(u"C:\\Log\\a.txt"), "\xDC\r\n?");
  EXPECT_EQ(machine.files.paths(), Texts{u"C:\\Log\\a.txt"});

  machine.files.setWritesFail(true);
  EXPECT_EQ(errorOf([&] { on.files.append(u"C:\\Log\\a.txt", u"x"); }), 70);
  EXPECT_EQ(heard, (Texts{u"C:\\Log\\a.txt: Ü\r\n", u"c:\\log\\A.TXT: \u0416"}));

  for (const auto* folder : {u"", u"nowhere", u"\\\\server\\share\\", u"Z:\\Log\\"}) {
    EXPECT_FALSE(on.files.makeSureDirectoryPathExists(folder));
  }
  EXPECT_FALSE(on.files.makeSureDirectoryPathExists(u"C:\\Log\\a.txt\\below\\"));
}

TEST(DatesTest, AreWrittenAndReadInTheUsersFormat) {
  const LocalTime date{2008, 3, 7, 14, 5, 9, 42};
  const struct {
    std::int32_t langId;
    std::u16string_view text;
  } cases[] = {{1031, u"07.03.2008"}, {1033, u"3/7/2008"},   {1034, u"07/03/2008"},
               {1036, u"07/03/2008"}, {1040, u"07/03/2008"}, {1046, u"7/3/2008"},
               {2057, u"3/7/2008"}};
  for (const auto& c : cases) {
    EXPECT_EQ(simulator::shortDate(c.langId, date), c.text);
    const auto back = simulator::parseShortDate(c.langId, u" " + std::u16string(c.text) + u" ");
    ASSERT_TRUE(back) << c.langId;
    EXPECT_EQ(platform::serialMilliseconds(*back),
              platform::serialMilliseconds({2008, 3, 7, 0, 0, 0, 0}));
  }
  for (const auto* text : {u"", u"7.3.08", u"30.02.2008", u"07/03/2008", u"1.13.2008",
                           u"007.03.2008", u"7.3.2008 1", u"7.3.20081", u"7..2008"}) {
    EXPECT_FALSE(simulator::parseShortDate(1031, text));
  }
  EXPECT_TRUE(simulator::parseShortDate(1031, u"29.2.2008"));
}

// ---- Screen and pictures.

class Person : public simulator::ScreenUser {
 public:
  std::optional<int> choice;
  std::optional<int> popup(const std::vector<PopupEntry>&, Point) override { return choice; }
};

TEST_F(SimulatedMachineTest, APersonChoosesOnlyWhatAMenuOffers) {
  Person person;
  machine.screen.setUser(&person);
  std::vector<PopupEntry> menu(4);
  menu[0] = {1, u"dial", true, false, {}};
  menu[1] = {2, u"grey", false, false, {}};
  menu[2] = {3, u"", true, true, {}};
  menu[3] = {4, u"more", true, false, {{5, u"inner", true, false, {}}}};
  on.screen.showAnchor({1516, 946});
  for (const int id : {1, 5}) {
    person.choice = id;
    EXPECT_EQ(on.screen.trackPopup(menu, {-32, -32}), id);
  }
  for (const int id : {0, 2, 3, 4, 9}) {
    person.choice = id;
    EXPECT_FALSE(on.screen.trackPopup(menu, {-32, -32})) << id;
  }
  const auto& shown = machine.screen.popups().front();
  ASSERT_TRUE(shown.anchor);
  EXPECT_EQ(shown.anchor->x, 1516);
  EXPECT_EQ(shown.pixels.x, 99);
  EXPECT_EQ(shown.pixels.y, 61);
  EXPECT_EQ(shown.chosen, 1);
  on.screen.hideAnchor();
  machine.screen.setUser(nullptr);
  EXPECT_FALSE(on.screen.trackPopup(menu, {0, 0}));
  EXPECT_FALSE(machine.screen.popups().back().anchor);
  on.screen.messageBox(u"Hallo");
  EXPECT_EQ(machine.screen.messageBoxes(), Texts{u"Hallo"});
}

TEST_F(SimulatedMachineTest, FacesGoOverTheClipboard) {
  machine.pictures.failOverlays(1);
  EXPECT_NE(errorOf([&] { on.pictures.overlay(u"dial", u"blank"); }), 0);
  const platform::Face face = on.pictures.overlay(u"dial", u"blank");
  EXPECT_EQ(face.picture.typeName(), u"Picture");
  machine.pictures.copy(u"a text");
  machine.pictures.failClipboard(1);
  EXPECT_EQ(errorOf([&] { on.pictures.setClipboard(face); }), 521);
  EXPECT_EQ(machine.pictures.clipboardFace(), u"");
  EXPECT_EQ(machine.pictures.copied(), u"a text");
  on.pictures.setClipboard(face);
  EXPECT_EQ(machine.pictures.clipboardFace(), u"dial");
  EXPECT_EQ(machine.pictures.copied(), u"");
  on.pictures.setClipboard({face.picture, {}});
  EXPECT_EQ(machine.pictures.clipboardFace(), u"dial on a square");
  const auto other = on.pictures.overlay(u"drop", u"blank");
  EXPECT_EQ(errorOf([&] { on.pictures.setClipboard({face.picture, other.mask}); }), 5);

  EXPECT_EQ(on.pictures.icon(102).get(u"Name").toText(), u"icon 102");
  EXPECT_NE(errorOf([&] { on.pictures.icon(104); }), 0);
  EXPECT_NE(errorOf([&] { on.pictures.overlay(u"dail", u"blank"); }), 0);
  EXPECT_NE(errorOf([&] { on.pictures.overlay(u"dial", u"white"); }), 0);
}

TEST_F(SimulatedMachineTest, TheClipboardIsWaitedForAndNotForEver) {
  const platform::Face face = on.pictures.overlay(u"dial", u"blank");
  EXPECT_FALSE(on.pictures.awaitClipboard());
  const struct {
    std::uint32_t held;
    std::int64_t waited;
    std::int32_t error;
  } rows[] = {{5, 20, 0}, {20, 20, 0}, {100, 100, 0}, {480, 480, 0}, {481, 480, 521}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.held);
    machine.pictures.watchClipboard(row.held);
    on.pictures.setClipboard(face);
    EXPECT_EQ(machine.pictures.clipboardFace(), u"") << "taken";
    machine.pictures.watchClipboard(0);
    const auto before = platform::serialMilliseconds(machine.clock.now());
    EXPECT_EQ(errorOf([&] { on.pictures.setClipboard(face); }), row.error);
    EXPECT_EQ(platform::serialMilliseconds(machine.clock.now()) - before, row.waited);
    EXPECT_EQ(on.pictures.awaitClipboard(), row.error != 0);
  }
}

// ---- The maker's libraries.

TEST_F(SimulatedMachineTest, TheLoggingLibraryIsFoundOnlyOnceLoadedFromItsPath) {
  auto& library = machine.loggingLibrary;
  const auto create = [&](std::int32_t index) {
    return on.loggingLibrary.createLogger(index, u"Velnor", u"Mod", 7, 3, 35328, 1);
  };
  constexpr auto notThere = platform::LoggingLibrary::NotThere;
  EXPECT_EQ(create(0), notThere);
  library.setPresent(true);
  EXPECT_EQ(create(0), notThere) << "not loaded yet";
  on.loggingLibrary.load(u"C:\\Elsewhere\\K9tLogVB.dll");
  EXPECT_EQ(create(0), notThere);
  on.loggingLibrary.load(u"c:\\program files\\common files\\k9t\\k9tlogvb.dll");
  library.queueCreateStatus(-6);
  EXPECT_EQ(create(0), -6);
  EXPECT_EQ(create(1), 0);
  EXPECT_EQ(create(1), -6);
  EXPECT_EQ(on.loggingLibrary.write(1, 32, u"Schl\u0119cht\0 hidden"sv), 0);
  EXPECT_NE(on.loggingLibrary.write(0, 32, u"x"), 0);
  EXPECT_EQ(library.written().front().text, u"Schl?cht");
  EXPECT_EQ(library.created().front().settings, (std::vector<std::int32_t>{7, 3, 35328, 1}));
  library.lackExport(u"K9TLog_Write");
  EXPECT_EQ(errorOf([&] { on.loggingLibrary.write(1, 32, u"x"); }), 453);
  library.setPresent(false);
  on.loggingLibrary.load(simulator::SimLoggingLibrary::DefaultPath);
  EXPECT_EQ(create(2), notThere);
}

TEST_F(SimulatedMachineTest, TheMapiHelperTellsWhatTheMailboxKnows) {
  const automation::Object item = on.pictures.icon(101);
  simulator::MapiFacts facts;
  facts.name = u"Meier";
  facts.senderAddresses = {u"a@x", u"b@x"};
  facts.telephoneNames = {u"Meier"};
  facts.telephoneNumbers = {u"0711"};
  machine.mapiHelper.setFacts([&](const automation::Object& asked) {
    EXPECT_NE(asked.dispatch(), item.dispatch()) << "the item itself, not the add-in's handle";
    return asked == item ? &facts : nullptr;
  });
  machine.mapiHelper.setCurrentUser(u"Me");
  EXPECT_EQ(on.mapiHelper.name(item).count, 0) << "not initialized";
  EXPECT_EQ(machine.mapiHelper.callsWhileClosed(), 1u);
  machine.mapiHelper.setInitStatus(5);
  EXPECT_EQ(on.mapiHelper.init(), 5);
  EXPECT_EQ(on.mapiHelper.currentUser(), u"");
  machine.mapiHelper.setInitStatus(0);
  EXPECT_EQ(on.mapiHelper.init(), 0);
  EXPECT_GT(on.mapiHelper.name(item).count, 0);
  EXPECT_EQ(on.mapiHelper.receivedBy(item).count, 0);
  EXPECT_EQ(on.mapiHelper.sender(item).second, u"b@x");
  EXPECT_EQ(on.mapiHelper.telephoneNumbers(item).numbers, Texts{u"0711"});
  EXPECT_EQ(on.mapiHelper.sender(on.pictures.icon(102)).first, u"");
  EXPECT_EQ(on.mapiHelper.currentUser(), u"Me");
  machine.mapiHelper.lackExport(u"_MapiGetSender@12");
  EXPECT_EQ(errorOf([&] { on.mapiHelper.sender(item); }), 453);
  EXPECT_EQ(machine.mapiHelper.calls(u"_MapiGetSender@12"), 2u);
  on.mapiHelper.deinit();
  EXPECT_FALSE(machine.mapiHelper.initialized());
  machine.mapiHelper.setPresent(false);
  EXPECT_EQ(on.mapiHelper.init(), platform::MapiHelper::NotThere);
}

TEST_F(SimulatedMachineTest, FurtherClassesCanBeOffered) {
  using simulator::LanguageServices;
  using simulator::MapiSession;
  EXPECT_EQ(errorOf([&] { on.objects.create(LanguageServices::ClassName); }), 429);
  machine.objects.offer(LanguageServices::ClassName, [] {
    return std::make_shared<LanguageServices>([] { return Value(std::int32_t{1031}); })->handle();
  });
  const auto service = on.objects.create(u"borealogonum.brlanguageservices");
  EXPECT_EQ(service.call(u"GetCurrentUserLanguage").toInt32(), 1031);
  machine.objects.withdraw(LanguageServices::ClassName);
  EXPECT_EQ(errorOf([&] { on.objects.create(LanguageServices::ClassName); }), 429);

  auto state = std::make_shared<simulator::MapiSessionState>();
  state->senderOf = [](auto entry, auto store) {
    return entry == u"E" && store == u"S" ? std::optional(std::u16string(u"a@x")) : std::nullopt;
  };
  machine.objects.offer(MapiSession::ClassName,
                        [state] { return std::make_shared<MapiSession>(state)->handle(); });
  const mapi::Session session(on.objects.create(mapi::SessionClass));
  EXPECT_NE(errorOf([&] { session.getMessage(u"E", u"S"); }), 0) << "before the logon";
  EXPECT_NE(errorOf([&] { session.object().call(u"Logon", u"", u"", true, false); }), 0);
  session.logon();
  EXPECT_EQ(session.getMessage(u"E", u"S").senderAddress(), u"a@x");
  EXPECT_NE(errorOf([&] { session.getMessage(u"E", u"T"); }), 0);
  state->senderError = Error(80070005, u"secured");
  const auto message = session.getMessage(u"E", u"S");
  EXPECT_EQ(errorOf([&] { message.senderAddress(); }), 80070005);
  session.logoff();
  EXPECT_EQ(state->logoffs, 1);
}

// ---- The boundary around the services.

TEST_F(SimulatedMachineTest, ServicesTurnSabotageIntoTheirOwnFailures) {
  Saboteur saboteur;
  boundary.setObserver(&saboteur);
  machine.installClient();
  machine.client.startReady();
  const std::u16string key(Client::RegistryKey);
  const struct {
    std::u16string_view target;
    std::function<bool()> works;
  } cases[] = {
      {u"Registry.read",
       [&] { return on.registry.read(RegistryRoot::ClassesRoot, key, u"").has_value(); }},
      {u"Registry.subkeyNames",
       [&] { return !on.registry.subkeyNames(RegistryRoot::ClassesRoot, u"CLSID").empty(); }},
      {u"Registry.valueNames",
       [&] { return !on.registry.valueNames(RegistryRoot::ClassesRoot, key).empty(); }},
      {u"Files.commonFilesFolder", [&] { return on.files.commonFilesFolder().has_value(); }},
      {u"Files.makeSureDirectoryPathExists",
       [&] { return on.files.makeSureDirectoryPathExists(u"C:\\A\\"); }},
      {u"Processes.windowExists",
       [&] { return on.processes.windowExists(velnor::MainWindowClass); }},
      {u"Processes.shellExecute",
       [&] { return on.processes.shellExecute(Client::DefaultPath, u"", u"") > 32; }},
      {u"Timers.setTimer", [&] { return on.timers.setTimer(100, [] {}) != 0; }},
      {u"Objects.registered", [&] { return on.objects.registered(velnor::RemoteClass); }},
      {u"Registry.deleteValue",
       [&] { return on.registry.deleteValue(RegistryRoot::ClassesRoot, key, u""); }},
      {u"Registry.deleteKey",
       [&] { return on.registry.deleteKey(RegistryRoot::ClassesRoot, key); }},
  };
  for (const auto& c : cases) {
    saboteur.target = c.target;
    EXPECT_FALSE(c.works()) << automation::Error(0, std::u16string(c.target)).what();
    saboteur.target.clear();
    EXPECT_TRUE(c.works()) << automation::Error(0, std::u16string(c.target)).what();
  }
  saboteur.target = u"Files.append";
  EXPECT_EQ(errorOf([&] { on.files.append(u"C:\\A\\b", u"x"); }), 7);
  saboteur.target = u"Objects.running";
  EXPECT_EQ(runningError(), 7);
  boundary.setObserver(nullptr);
}

}  // namespace
}  // namespace tests
