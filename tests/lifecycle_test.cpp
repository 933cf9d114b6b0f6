#include <gtest/gtest.h>

#include <algorithm>

#include "simulator/machine/LanguageServices.h"
#include "tests/World.h"

namespace tests {
namespace {

using cxol::globals;

class LifecycleTest : public testing::Test {
 protected:
  World world;
};

TEST_F(LifecycleTest, TellsItsWholeLifeInTheTrace) {
  world.start();
  world.machine.advance(13'000);
  world.stop();
  const Texts expected = {
      u"Warning: InitK9TLog failed, use internal logging",
      u"Debug:   ############################## AddinInstance_Initialize "
      u"##############################",
      u"Debug:   UseMapi = True",
      u"Debug:   Start Velnor with Outlook = False",
      u"Debug:   Terminate Velnor with Outlook = False",
      u"Debug:   Ignore selection change events = False",
      u"Debug:   AddinInstance_OnConnection, ConnectMode = 1",
      u"Debug:   AddinInstance_OnStartupComplete",
      u"Debug:   Handle g_olApp.ActiveExplorer in AddinInstance_OnStartupComplete",
      u"Debug:   myOlExplorers_NewExplorer...",
      u"Debug:   MAPI_Init()",
      u"Debug:   Class_Initialize: Explorer",
      u"Debug:   ...done!",
      u"Debug:   Timer started successfully.",
      u"Debug:   Timer stopped.",
      u"Debug:   Timer started successfully.",
      u"Debug:   thisExplorer_Close",
      u"Debug:   DeInitVelnorBarExplorer, deleteBar = False",
      u"Warning: No explorer command bar found!",
      u"Debug:   AddinInstance_OnBeginShutdown",
      u"Debug:   Timer stopped.",
      u"Debug:   AddinInstance_OnDisconnection, RemoveMode = 0",
      u"Debug:   MAPI_Deinit()",
      u"Debug:   DeInitVelnorBarExplorer, deleteBar = False",
      u"Warning: No explorer command bar found!",
      u"Debug:   Class_Terminate: Explorer",
      u"Debug:   AddinInstance_Terminate",
  };
  auto trace = world.trace();
  std::erase(trace, u"Debug:   thisExplorer_Activate()");
  EXPECT_EQ(trace, expected);
}

TEST_F(LifecycleTest, SettingsAreReadOnceWithTheirDefaults) {
  using platform::dwordValue;
  using platform::stringValue;
  platform::RegistryValue binary;
  binary.type = platform::RegistryType::Binary;
  binary.bytes.assign(9, std::byte{0xAB});
  platform::RegistryValue noNul;
  noNul.type = platform::RegistryType::String;
  noNul.text = u"0";
  const struct {
    const char* why;
    platform::RegistryValue value;
    /// With the default true of the option read here.
    bool result;
    bool warned;
  } cases[] = {
      {"zero", dwordValue(0), false, false},
      {"any other number", dwordValue(0xFFFFFFFF), true, false},
      {"text zero", stringValue(u" 0.0 "), false, false},
      {"text number", stringValue(u"2"), true, false},
      {"word", stringValue(u"no"), true, true},
      {"empty", stringValue(u""), true, true},
      {"long binary", binary, true, true},
      {"text without its NUL", noNul, false, false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    world.machine.registry.setRaw(RegistryRoot::CurrentUser, AddInKey, u"UseMapi", c.value);
    world.start();
    EXPECT_EQ(globals().g_bUseMapi, c.result);
    const auto trace = world.trace();
    EXPECT_EQ(std::ranges::any_of(trace,
                                  [](const auto& line) {
                                    return line.starts_with(
                                        u"Warning: HKEY_CURRENT_USER\\Software"
                                        u"\\K9T\\CXComAddIn\\UseMapi ");
                                  }),
              c.warned);
    world.stop();
    world.forget();
  }
}

TEST_F(LifecycleTest, AMachineWideOnCountsForUsersWhoHaveNotSaidOn) {
  const struct {
    std::optional<std::uint32_t> user;
    std::optional<std::uint32_t> machine;
    bool result;
  } cases[] = {{{}, {}, false}, {0, 1, true}, {1, 0, true}, {{}, 1, true}, {0, 0, false}};
  for (const auto& c : cases) {
    world.machine.registry.removeKey(RegistryRoot::CurrentUser, AddInKey);
    world.machine.registry.removeKey(RegistryRoot::LocalMachine, AddInKey);
    if (c.user) world.option(AddInKey, u"IgnoreSelChange", *c.user);
    if (c.machine) {
      world.machine.registry.setDword(RegistryRoot::LocalMachine, AddInKey, u"IgnoreSelChange",
                                      *c.machine);
    }
    world.start();
    EXPECT_EQ(globals().g_bIgnoreSelChange, c.result);
    world.stop();
  }
}

TEST_F(LifecycleTest, SwitchedOnInARunningOutlookItStartsAtOnce) {
  world.start();
  world.host->disconnectAddin();
  EXPECT_TRUE(world.traced(u"Debug:   AddinInstance_OnDisconnection, RemoveMode = 1"));
  EXPECT_EQ(globals().g_colExplorers.count(), 0);
  EXPECT_EQ(world.boundary.liveHandles(), 0u);
  // Nothing told the timer to stop; it finds nothing to do, and ends with the add-in.
  EXPECT_EQ(world.machine.timers.liveCount(), 1u);
  world.machine.advance(60'000);
  world.forget();
  world.host->connectAddin(*world.addin);
  EXPECT_TRUE(world.traced(u"Debug:   AddinInstance_OnConnection, ConnectMode = 0"));
  EXPECT_TRUE(world.traced(u"Debug:   AddinInstance_OnStartupComplete"));
  EXPECT_EQ(globals().g_colExplorers.count(), 1);
  EXPECT_EQ(globals().TimerInterval, 12'000u);
  world.host->disconnectAddin();
  world.addin.reset();
  EXPECT_EQ(world.machine.timers.liveCount(), 0u);
}

TEST_F(LifecycleTest, StartsTheClientOnceWithOutlook) {
  world.option(ClientKey, u"StartWithOutlook", 1);
  world.start();
  world.machine.advance(12'200);
  EXPECT_TRUE(world.machine.processes.started().empty());
  world.machine.advance(200);
  EXPECT_TRUE(world.machine.client.hidden());
  world.machine.client.vanish();
  world.machine.advance(5'000);
  EXPECT_EQ(world.machine.processes.started().size(), 1u);
}

TEST_F(LifecycleTest, SwitchedOffItStartsAndTracesNothingMore) {
  world.option(ClientKey, u"StartWithOutlook", 1);
  world.addContact(u"Meier");
  world.start();
  world.select(u"Contacts", u"Meier");
  // Somebody else holds the add-in, so that its timers go on.
  world.host->disconnectAddin();
  world.forget();
  world.machine.advance(60'000);
  EXPECT_TRUE(world.machine.processes.started().empty());
  EXPECT_EQ(world.trace(), (Texts{u"Debug:   Class_Terminate: Explorer", u"Debug:   Timer stopped.",
                                  u"Debug:   Timer started successfully."}));
}

TEST_F(LifecycleTest, EndsTheClientWithTheLastExplorer) {
  for (const std::u16string_view version : {u"9.0.0.2711", u"11.0.5608", u"12.0.4518.1014"}) {
    world.option(ClientKey, u"StopWithOutlook", 1);
    world.addContact(u"Meier");
    world.start(version);
    world.startClient();
    world.host->openItem(u"Meier");
    const int second = world.host->openExplorer();
    world.host->close(1);
    EXPECT_TRUE(world.machine.client.running());
    world.host->close(second);
    EXPECT_FALSE(world.machine.client.running());
    EXPECT_EQ(world.machine.client.told().back().code, 13);
    world.stop();
  }
}

TEST_F(LifecycleTest, APurgeThatOverrunsCostsTheNewWindowItsWrapper) {
  world.addContact(u"Meier");
  world.start();
  world.host->openItem(u"Meier");
  const int second = world.host->openExplorer();
  world.host->close(1);
  world.host->close(second);
  ASSERT_EQ(globals().g_colExplorers.count(), 2);
  world.forget();
  world.host->openExplorer();
  EXPECT_TRUE(world.traced(u"Error:   ...failed: Subscript out of range"));
  EXPECT_EQ(globals().g_colExplorers.count(), 1) << "one stale wrapper is left, the new one lost";
  // The next window finds one stale wrapper, which is the last, and gets its own.
  world.host->openExplorer();
  EXPECT_EQ(globals().g_colExplorers.count(), 1);
}

TEST_F(LifecycleTest, LanguagesAreChosenInTheirOrder) {
  const std::u16string_view key = u"Software\\K9T\\Localization\\LangID";
  const std::u16string_view application =
      u"Software\\K9T\\Localization\\LangID\\Applications\\OUTLOOK.EXE";
  const struct {
    std::uint32_t applicationId;
    std::uint32_t userId;
    std::int32_t systemId;
    std::u16string_view actions;
  } cases[] = {
      {0, 0, 1031, u"Aktionen"},     {0, 0, 3079, u"Actions"}, {0, 1031, 1033, u"Aktionen"},
      {1040, 1031, 1033, u"Azioni"}, {0, 0, 1036, u"Actions"}, {0, 0, 1034, u"Acciones"},
      {0, 0, 1046, u"Ações"},        {0, 0, 2070, u"Actions"}, {0, 0, 0, u"Actions"}};
  for (const auto& c : cases) {
    world.machine.registry.setDword(RegistryRoot::CurrentUser, application, u"LangID",
                                    c.applicationId);
    world.machine.registry.setDword(RegistryRoot::CurrentUser, key, u"LangID", c.userId);
    world.machine.language.setLangId(c.systemId);
    world.startWithToolbar();
    EXPECT_EQ(world.control(1, u"CxBtAction").tooltip, c.actions);
    EXPECT_EQ(globals().g_product,
              c.actions == u"Actions" && c.systemId != 1036 ? u"Velnor " : u"Velnor");
    world.stop();
    world.bars = {};
  }
  // The company's own service counts before the user's setting.
  world.machine.objects.offer(u"BoreaLogonUM.BRLanguageServices", [] {
    return std::make_shared<simulator::LanguageServices>(
               [] { return automation::Value(std::int32_t{1034}); })
        ->handle();
  });
  world.machine.registry.setDword(RegistryRoot::CurrentUser, key, u"LangID", 1031);
  world.startWithToolbar();
  EXPECT_EQ(world.control(1, u"CxBtAction").tooltip, u"Acciones");
}

TEST_F(LifecycleTest, AThousandLivesLeaveNothingBehind) {
  world.addContact(u"Meier", {{u"HomeTelephoneNumber", u"1"}});
  for (int life = 0; life < 1'000; ++life) {
    world.start(life % 2 == 0 ? u"11.0.5608" : u"12.0.4518.1014");
    world.select(u"Contacts", u"Meier");
    world.host->openItem(u"Meier");
    world.machine.advance(13'000);
    if (life % 3 == 0) world.host->disconnectAddin();
    world.stop();
    ASSERT_EQ(world.boundary.liveHandles(), 0u) << life;
    ASSERT_EQ(world.boundary.liveConnections(), 0u) << life;
    ASSERT_EQ(world.machine.timers.liveCount(), 0u) << life;
  }
}

}  // namespace
}  // namespace tests
