#include <gtest/gtest.h>

#include <algorithm>

#include "explorer/OlCmdEvents.h"
#include "explorer/SDKTimer.h"
#include "tests/Once.h"
#include "tests/World.h"

namespace tests {
namespace {

using cxol::globals;

const Texts ExplorerTags = {u"CxCbDial", u"CxBtDial", u"CxBtDrop", u"CxBtVelnor", u"CxBtAction"};

class ExplorerTest : public testing::Test {
 protected:
  void type(std::u16string_view text) { world.host->typeInto(1, u"CxCbDial", text); }

  World world;
};

TEST_F(ExplorerTest, TheToolbarComesWithTheTimerAfterTwentySeconds) {
  world.start();
  world.machine.advance(20'000);
  EXPECT_EQ(world.tagsOf(1, Product), std::nullopt);
  world.forget();
  world.machine.advance(100);
  const Texts lines = {u"Debug:   Explorer Toolbar initialization: InitFromTimer()",
                       u"Debug:   onNewExplorer...",
                       u"Debug:   InitVelnorBarExplorer...",
                       u"Debug:   Create new command bar.",
                       u"Debug:   ...done.",
                       u"Debug:   ...done!"};
  EXPECT_EQ(world.trace(), lines);
  EXPECT_EQ(world.tagsOf(1, Product), ExplorerTags);
  const auto bar = *world.bar(1, Product);
  EXPECT_TRUE(bar.visible);
  EXPECT_EQ(bar.position, office::BarPosition::Top);
  const struct {
    const char16_t* tag;
    const char16_t* caption;
    const char16_t* tooltip;
    const char16_t* picture;
    bool beginGroup;
  } controls[] = {
      {u"CxCbDial", u"&Dial", u"Enter phone number or name. Press Enter to start the call", u"",
       false},
      {u"CxBtDial", u"Dial", u"Dial, accept call", u"dial", true},
      {u"CxBtDrop", u"Hang up", u"Disconnect call", u"drop", false},
      {u"CxBtVelnor", u"Velnor ", u"Call manager", u"velnor", true},
      {u"CxBtAction", u"Actions", u"Actions", u"action", true},
  };
  for (const auto& expected : controls) {
    const auto control = world.control(1, expected.tag);
    EXPECT_EQ(control.caption, expected.caption);
    EXPECT_EQ(control.tooltip, expected.tooltip);
    EXPECT_EQ(control.picture, expected.picture);
    EXPECT_EQ(control.beginGroup, expected.beginGroup);
    EXPECT_EQ(control.onAction, u"!<VelnorOutlookCOMAddIn.Connect>");
    EXPECT_EQ(control.parameter, u"32420.1") << "the second of the day";
    EXPECT_TRUE(control.visible);
  }
  EXPECT_EQ(world.control(1, u"CxCbDial").width, 150);
  EXPECT_EQ(world.control(1, u"CxBtAction").width, 100);
}

TEST_F(ExplorerTest, ASelectionBringsTheToolbarAtOnceAndNamesTheItemLater) {
  world.addContact(u"Meier");
  const std::pair<std::u16string, std::u16string> captions[] = {
      {u"Wolfeschlegelsteinhausen", u"Wolfeschlegelstei..."},
      {u"Wolfeschlegelsteinha", u"Wolfeschlegelsteinha"},
      {u"Wolfeschlegelstein, A", u"Wolfeschlegelstei..."},
      // A character of two units goes as a whole, the first of them and the last.
      {u"Wolfeschlegelste\U00010000, Anna", u"Wolfeschlegelste..."},
      {u"Wolfeschlegelste\U0010FFFF, Anna", u"Wolfeschlegelste..."},
      {u"Wolfeschlegels, \U00010000, Anna", u"Wolfeschlegels, ..."},
      {u"Wolfeschlegelste\uD7FF, Anna", u"Wolfeschlegelste\uD7FF..."}};
  for (const auto& [name, shown] : captions) world.addContact(name);
  world.start();
  world.select(u"Contacts", u"Meier");
  EXPECT_EQ(world.tagsOf(1, Product), ExplorerTags);
  EXPECT_EQ(world.control(1, u"CxBtAction").caption, u"Actions");
  world.machine.advance(399);
  EXPECT_EQ(world.control(1, u"CxBtAction").caption, u"Actions");
  world.machine.advance(1);
  EXPECT_EQ(world.control(1, u"CxBtAction").caption, u"Meier");
  for (const auto& [name, shown] : captions) {
    world.select(u"Contacts", name);
    world.machine.advance(400);
    EXPECT_EQ(world.control(1, u"CxBtAction").caption, shown);
  }
}

TEST_F(ExplorerTest, SeveralSelectionsInShortOrderCountOnce) {
  for (const char16_t* id : {u"a", u"b", u"c"}) world.addContact(id);
  world.start();
  world.host->switchFolder(1, u"Contacts");
  world.machine.advance(1'000);
  world.forget();
  for (const char16_t* id : {u"a", u"b", u"c"}) {
    world.select(u"Contacts", id);
    world.machine.advance(100);
  }
  world.machine.advance(299);
  EXPECT_TRUE(world.trace().empty());
  world.machine.advance(1);
  EXPECT_EQ(world.trace(), Texts{u"Debug:   Set title of action button to: c"});
  // The same item again is no change.
  world.select(u"Contacts", u"c");
  world.machine.advance(1'000);
  EXPECT_EQ(world.trace().size(), 1u);
}

TEST_F(ExplorerTest, SelectionsCanBeIgnored) {
  world.option(AddInKey, u"IgnoreSelChange", 1);
  world.addContact(u"Meier");
  world.start();
  world.select(u"Contacts", u"Meier");
  world.machine.advance(1'000);
  EXPECT_EQ(world.control(1, u"CxBtAction").caption, u"Actions");
}

TEST_F(ExplorerTest, BarsOfOtherNamesAndLayoutsAreTakenOver) {
  const struct {
    const char16_t* name;
    Texts tags;
  } cases[] = {
      {u"!!VELNOR_NEUTRAL!!", {}},
      {u"Velnor", {u"CxBtDial"}},
      {u"Ondaris Station 2/3", {u"CxBtAction", u"CxCbDial"}},
      {u"Ondaris Station 1", {u"CxBtDial", u"CxBtTransfer", u"Other"}},
      {u"Velnor ", {u"CxBtDrop", u"CxBtIncognito", u"CxBtPickup", u"CxBtCallInfo"}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(automation::Error(0, c.name).what());
    world.bars.explorers = {simulator::storedBar(c.name, c.tags)};
    const Once drawn(world.boundary, u"Clock", u"pumpMessages", [] {});
    world.startWithToolbar();
    EXPECT_EQ(drawn.count(), 1) << "new buttons are drawn at once";
    auto tags = *world.tagsOf(1, Product);
    EXPECT_EQ(world.window(1).bars.size(), 1u);
    std::ranges::sort(tags);
    auto expected = ExplorerTags;
    std::ranges::sort(expected);
    EXPECT_EQ(tags, expected);
    if (c.tags.size() == 3) {
      EXPECT_EQ(world.tagsOf(1, Product), ExplorerTags) << "emptied and rebuilt";
    }
    EXPECT_NE(world.control(1, u"CxBtDial").parameter, u"");
    world.stop();
  }
}

TEST_F(ExplorerTest, TheBarOutlivesOutlookHiddenAndIsFoundAgain) {
  world.startWithToolbar();
  world.stop();
  ASSERT_EQ(world.bars.explorers.size(), 1u);
  EXPECT_FALSE(world.bars.explorers[0].visible);
  // What the user made of a button stays.
  world.bars.explorers[0].controls[1].style = office::ButtonStyle{2};
  world.start();
  {
    const Once drawn(world.boundary, u"Clock", u"pumpMessages", [] {});
    world.machine.advance(25'000);
    EXPECT_FALSE(drawn.happened()) << "nothing new to draw";
  }
  EXPECT_TRUE(world.traced(u"Debug:   Re-use command bar Velnor "));
  EXPECT_EQ(world.tagsOf(1, Product), ExplorerTags);
  EXPECT_TRUE(world.bar(1, Product)->visible);
  EXPECT_EQ(world.control(1, ExplorerTags[1]).style, office::ButtonStyle{2});
  // Switched off by the user it goes for good, and each window lets go of it.
  world.host->openExplorer();
  world.machine.advance(25'000);
  world.forget();
  world.host->disconnectAddin();
  EXPECT_TRUE(world.traced(u"Debug:   Delete command bar: Velnor "));
  EXPECT_FALSE(world.traced(u"Warning: No explorer command bar found!"));
  EXPECT_EQ(world.bar(1, Product), std::nullopt);
}

TEST_F(ExplorerTest, AClickIsCarriedOutByOneWindowOnly) {
  world.startWithToolbar();
  world.startClient();
  const int second = world.host->openExplorer();
  // Both are built at the same moment by the clock, and yet bear different identities.
  world.machine.advance(25'000);
  world.forget();
  for (const int window : {1, second}) {
    world.host->activate(window);
    world.host->click(window, u"CxBtDrop");
  }
  EXPECT_EQ(world.machine.client.told().size(), 2u);
  EXPECT_EQ(world.count(u"Debug:   thisExplorer_Activate()"), 2u);
  world.forget();
  world.host->click(second, u"CxBtDial");
  EXPECT_EQ(world.count(u"Warning: BtDial_Click: Ctrl.parameter <> parameter => Exit Sub"), 1u);
}

TEST_F(ExplorerTest, OldButtonsThatStayAreNoneOfTheWindowsOwn) {
  world.bars.explorers = {simulator::storedBar(
      Product, {u"CxBtTransfer", u"CxBtIncognito", u"CxBtPickup", u"CxBtCallInfo"})};
  world.start();
  world.host->failMember(u"CommandBarButton", u"Delete");
  world.machine.advance(25'000);
  world.startClient();
  for (const auto& tag : world.bars.explorers.at(0).controls) world.host->click(1, tag.tag);
  EXPECT_EQ(world.told(), Texts{}) << "an earlier run has signed them";
  world.host->failMember(u"CommandBarButton", u"Parameter");
  for (const std::u16string name :
       {u"BtTransfer", u"BtIncognito", u"BtPickup", u"BtCallInfo", u"BtVelnor", u"BtAction"}) {
    world.host->click(1, u"Cx" + name);
    EXPECT_EQ(world.trace().back(), u"Error:   " + name + u"_Click: Automation error");
  }
  world.host->failMember(u"CommandBarComboBox", u"Parameter");
  type(u"0711");
  EXPECT_EQ(world.trace().back(), u"Error:   CbDial_Change: Automation error");
}

TEST_F(ExplorerTest, AFailingCommandIsNamedInTheTrace) {
  const struct {
    const char16_t* tag;
    const char16_t* member;
    const char16_t* line;
  } cases[] = {{u"CxBtDial", u"PickUp", u"Error:   BtDial_Click: Automation error"},
               {u"CxBtDrop", u"HangUp", u"Error:   BtDrop_Click: Automation error"}};
  world.startWithToolbar();
  world.startClient();
  world.machine.client.ring(u"0711");
  for (const auto& c : cases) {
    world.machine.client.failMember(c.member);
    world.host->click(1, c.tag);
    EXPECT_EQ(world.trace().back(), c.line);
  }
}

TEST_F(ExplorerTest, WindowsBuiltInTheSameMomentHaveTheirOwnIdentities) {
  world.start();
  for (int i = 0; i < 5; ++i) world.host->openExplorer();
  world.machine.advance(25'000);
  world.startClient();
  world.forget();
  world.host->click(1, u"CxBtDrop");
  EXPECT_EQ(world.machine.client.told().size(), 1u);
}

TEST_F(ExplorerTest, TheBarsAreLookedForAgainWhereOfficeIsNotReady) {
  class NotReady : public simulator::CrossingObserver {
   public:
    int call = 0;
    void before(const simulator::Crossing& crossing) override {
      if (crossing.member == u"CommandBars" && --call == 0) {
        throw automation::Error(automation::ErrorNumber::AutomationFailed);
      }
    }
  } notReady;
  // Seven looks, and once more to add a bar.
  for (const bool kept : {false, true}) {
    for (int call = 1; call <= 8; ++call) {
      SCOPED_TRACE(testing::Message() << (kept ? "kept bar, call " : "no bar yet, call ") << call);
      world.bars.explorers.clear();
      if (kept) world.bars.explorers = {simulator::storedBar(Product, ExplorerTags)};
      world.start();
      world.forget();
      notReady.call = call;
      world.boundary.setObserver(&notReady);
      world.machine.advance(21'000);
      world.boundary.setObserver(nullptr);
      EXPECT_EQ(world.window(1).bars.size(), 1u);
      EXPECT_EQ(world.tagsOf(1, Product), ExplorerTags);
      // Only the call that adds the bar can't be made up for by a later one of the same build.
      EXPECT_EQ(world.count(u"Error:   ...failed: Automation error (no active Explorer yet?)"),
                !kept && call == 8 ? 1u : 0u);
      world.stop();
    }
  }
}

TEST_F(ExplorerTest, WithoutBarsEachTickTriesAgain) {
  world.start();
  world.host->failMember(u"Explorer", u"CommandBars");
  world.machine.advance(21'000);
  EXPECT_EQ(world.count(u"Error:   ...failed: Automation error (no active Explorer yet?)"), 4u);
  world.host->restoreMember(u"Explorer", u"CommandBars");
  world.machine.advance(300);
  EXPECT_EQ(world.tagsOf(1, Product), ExplorerTags);
  // A window that is closed before gets none and is not tried for.
  const int second = world.host->openExplorer();
  world.host->close(second);
  world.machine.advance(21'000);
  EXPECT_EQ(world.count(u"Debug:   onNewExplorer..."), 6u);
}

TEST_F(ExplorerTest, AControlThatTakesNoTagDoesNotStay) {
  world.start();
  world.host->failMember(u"CommandBarComboBox", u"Tag");
  world.machine.advance(21'000);
  EXPECT_EQ(world.tagsOf(1, Product), Texts(ExplorerTags.begin() + 1, ExplorerTags.end()));
  world.host->restoreMember(u"CommandBarComboBox", u"Tag");
  // Closed before the tag is set.
  for (const char16_t* member : {u"Width", u"TooltipText"}) {
    world.host->disconnectAddin();
    const int window = world.host->openExplorer();
    world.host->connectAddin(*world.addin);
    Once closed(world.boundary, u"CommandBarComboBox", member, [&] { world.host->close(window); });
    world.machine.advance(21'000);
    ASSERT_TRUE(closed.happened());
    EXPECT_TRUE(world.window(1).bars.at(0).controls.empty());
  }
}

TEST_F(ExplorerTest, TheSelectionTimerTicksOnceAndLosesNoSelection) {
  for (const char16_t* id : {u"a", u"b"}) world.addContact(id);
  world.startWithToolbar();
  world.select(u"Contacts", u"a");
  {
    // Longer than the timer's interval.
    Once pumps(world.boundary, u"Explorer", u"Selection", [&] { world.machine.advance(1'000); });
    world.machine.advance(1'000);
    EXPECT_EQ(pumps.count(), 2) << "to tell whether the item is another one, and to name it";
  }
  world.select(u"Contacts", u"b");
  {
    Once selects(world.boundary, u"CommandBarButton", u"Caption",
                 [&] { world.select(u"Contacts", u"a"); });
    world.machine.advance(400);
    ASSERT_TRUE(selects.happened());
  }
  EXPECT_EQ(world.control(1, u"CxBtAction").caption, u"b");
  world.machine.advance(400);
  EXPECT_EQ(world.control(1, u"CxBtAction").caption, u"a");
}

TEST_F(ExplorerTest, TheDialButtonDialsASingleNumberAtOnce) {
  world.addContact(u"one", {{u"CallbackTelephoneNumber", u"030/1"}});
  world.addContact(u"two", {{u"HomeTelephoneNumber", u"2"}, {u"MobileTelephoneNumber", u"3"}});
  world.addContact(u"none");
  world.startWithToolbar();
  world.startClient();
  world.select(u"Contacts", u"two");
  world.host->click(1, u"CxBtDial");
  EXPECT_EQ(world.menu(), (Texts{u"Home: 2", u"Mobile: 3"}));
  world.select(u"Contacts", u"none");
  world.host->click(1, u"CxBtDial");
  EXPECT_EQ(world.menu(), Texts{u"[<No phone numbers>]"});
  EXPECT_TRUE(world.told().empty());
  world.forget();
  world.host->switchFolder(1, u"Inbox");
  world.host->click(1, u"CxBtDial");
  EXPECT_EQ(world.told(), Texts{u"show number \"\""}) << "nothing is selected";
}

TEST_F(ExplorerTest, ASingleNumberIsDialledWithoutAMenu) {
  world.addContact(u"one", {{u"HomeTelephoneNumber", u"030/1"}});
  world.startWithToolbar();
  world.startClient();
  world.select(u"Contacts", u"one");
  world.host->click(1, u"CxBtDial");
  EXPECT_TRUE(world.menu().empty());
  ASSERT_EQ(world.machine.client.told().size(), 1u);
  EXPECT_EQ(world.machine.client.told()[0].text, u"0301");
}

TEST_F(ExplorerTest, ButtonsReachTheClient) {
  world.addContact(u"Meier");
  world.startWithToolbar();
  world.host->click(1, u"CxBtDrop");
  EXPECT_EQ(world.trace().back(),
            u"Error:   GetVelnorPhoneCmdInservice() is Nothing in OlCmdEvents.BtDrop_Click(): ");
  world.host->click(1, u"CxBtVelnor");
  EXPECT_TRUE(world.machine.client.running());
  EXPECT_FALSE(world.machine.client.hidden());
  world.machine.advance(2'000);
  world.host->click(1, u"CxBtVelnor");
  EXPECT_EQ(world.told(), Texts{u"show number \"\""});
  world.machine.client.ring(u"0711");
  world.host->click(1, u"CxBtDial");
  EXPECT_TRUE(world.traced(u"Debug:   BtDial_Click: Signalling => Pickup"));
  world.host->click(1, u"CxBtDrop");
  world.select(u"Contacts", u"Meier");
  world.host->click(1, u"CxBtAction");
  const auto& told = world.machine.client.told();
  ASSERT_EQ(told.size(), 4u);
  EXPECT_EQ(told[1].kind, simulator::Told::Kind::PickUp);
  EXPECT_EQ(told[2].kind, simulator::Told::Kind::HangUp);
  EXPECT_EQ(told[3].line(),
            u"open actions \"books=outlook:store,folder Contacts\\nrecordid=Meier\" (1, 1)");
}

TEST_F(ExplorerTest, TheDialBoxDialsNumbersAndSearchesNames) {
  world.startWithToolbar();
  type(u"0711");
  EXPECT_EQ(world.trace().back(),
            u"Error:   GetVelnorPhoneCmdInservice() is Nothing in OlCmdEvents.CbDial_Change(): ");
  world.startClient();
  world.forget();
  type(u"   ");
  EXPECT_TRUE(world.trace().empty());
  type(u"  Meier ");
  type(u" 0711 12 ");
  EXPECT_EQ(world.told().front(), u"show number \"Meier\"");
  ASSERT_EQ(world.machine.client.told().size(), 2u);
  EXPECT_EQ(world.machine.client.told()[1].text, u"071112");
  // While a call is connected the number is offered instead.
  world.machine.client.connect();
  type(u"0800 1");
  EXPECT_EQ(world.told().back(), u"show number \"0800 1\"");
}

TEST_F(ExplorerTest, TicksDoNothingWhileAnInspectorIsEquippedOrATickRuns) {
  world.start();
  world.machine.advance(12'000);
  world.forget();
  cxol::SuspendTimer();
  world.machine.advance(30'000);
  EXPECT_TRUE(world.trace().empty());
  cxol::ResumeTimer();
  const Once ticks(world.boundary, u"Clock", u"pumpMessages", [] { cxol::GeneralTick(); });
  cxol::GeneralTick();
  EXPECT_EQ(world.count(u"Debug:   Time re-entered. Exit here."), 1u);
  EXPECT_EQ(world.tagsOf(1, Product), ExplorerTags);
}

TEST_F(ExplorerTest, WithoutTimersTheFirstSelectionStillBringsTheToolbar) {
  world.addContact(u"Meier");
  world.machine.timers.setExhausted(true);
  world.start();
  EXPECT_TRUE(world.traced(u"Error:   Failed to start timer."));
  world.select(u"Contacts", u"Meier");
  EXPECT_EQ(world.tagsOf(1, Product), ExplorerTags);
}

TEST_F(ExplorerTest, AHostThatFailsLeavesTheRestInPlace) {
  world.start();
  world.host->failMember(u"CommandBarControl", u"TooltipText");
  world.host->failMember(u"CommandBar", u"Position");
  world.machine.advance(25'000);
  EXPECT_EQ(world.tagsOf(1, Product), ExplorerTags);
  EXPECT_EQ(world.control(1, u"CxBtDial").tooltip, u"");
  EXPECT_EQ(world.control(1, u"CxBtDial").caption, u"Dial");
  world.host->failMember(u"Explorer", u"Selection");
  world.addContact(u"Meier");
  world.select(u"Contacts", u"Meier");
  world.machine.advance(1'000);
  EXPECT_TRUE(world.traced(u"Error:   onExplorerSelectionChange(): Automation error"));
}

TEST_F(ExplorerTest, InTheDevelopmentToolClosingAWindowStopsEverything) {
  world.machine.processes.setHostModuleName(u"vb6.exe");
  world.startWithToolbar();
  world.host->openExplorer();
  world.host->close(1);
  EXPECT_EQ(globals().TimerId, 0u);
  EXPECT_FALSE(globals().g_bMapiInitialized);
  EXPECT_TRUE(world.traced(
      u"Debug:   Running in the development environment: timers and MAPI helper stop now"));
}

TEST_F(ExplorerTest, ReleasesAreKnownByTheirVersions) {
  const struct {
    const char16_t* version;
    int year;
  } cases[] = {{u"9.0.0.2711", 2000},     {u"10.0.2627", 2002}, {u"11.0.5608", 2003},
               {u"12.0.4518.1014", 2007}, {u"13.0.0.0", 2009},  {u"14.0.4760", 0}};
  for (const auto& c : cases) {
    world.start(c.version);
    EXPECT_EQ(cxol::GetOutlookVersion(), c.year);
    world.stop();
  }
}

TEST_F(ExplorerTest, TenThousandSelectedItemsTakeLinearTime) {
  class Counter : public simulator::CrossingObserver {
   public:
    std::size_t calls = 0;
    void before(const simulator::Crossing&) override { ++calls; }
  } counter;
  for (int i = 0; i < 10'000; ++i) {
    world.addContact(automation::Value(i).toText());
  }
  world.startWithToolbar();
  world.startClient();
  world.host->switchFolder(1, u"Contacts");
  world.host->selectAll(1);
  world.machine.advance(1'000);
  world.boundary.setObserver(&counter);
  world.host->click(1, u"CxBtAction");
  world.boundary.setObserver(nullptr);
  EXPECT_LT(counter.calls, 10'000u * 12);
  ASSERT_EQ(world.machine.client.told().size(), 1u);
  EXPECT_GT(world.machine.client.told()[0].text.size(), 400'000u);
}

}  // namespace
}  // namespace tests
