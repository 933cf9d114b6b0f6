#include <gtest/gtest.h>

#include <algorithm>

#include "tests/Once.h"
#include "tests/World.h"

namespace tests {
namespace {

using cxol::globals;

const Texts InspectorTags = {u"CxBtDial", u"CxBtDrop", u"CxBtAction"};

class InspectorTest : public testing::Test {
 protected:
  void startWithContacts() {
    for (const char16_t* id : {u"Meier", u"Smith"}) {
      world.addContact(id, {{u"HomeTelephoneNumber", u"030 1"}});
    }
    world.start();
    world.forget();
  }
  bool anyTrace(std::u16string_view start) const {
    const auto trace = world.trace();
    return std::ranges::any_of(trace, [&](const auto& line) { return line.starts_with(start); });
  }

  World world;
};

TEST_F(InspectorTest, AContactGetsItsToolbar) {
  startWithContacts();
  const int window = world.host->openItem(u"Meier");
  EXPECT_EQ(world.tagsOf(window, Product), InspectorTags);
  const auto bar = *world.bar(window, Product);
  EXPECT_TRUE(bar.visible);
  EXPECT_EQ(bar.position, office::BarPosition::Top);
  const struct {
    const char16_t* tag;
    const char16_t* caption;
    const char16_t* tooltip;
    const char16_t* picture;
    bool beginGroup;
  } buttons[] = {
      {u"CxBtDial", u"Dial", u"Dial, accept call", u"dial", true},
      {u"CxBtDrop", u"Hang up", u"Disconnect call", u"drop", false},
      {u"CxBtAction", u"Actions", u"Actions", u"action", true},
  };
  for (const auto& expected : buttons) {
    const auto button = world.control(window, expected.tag);
    EXPECT_EQ(button.caption, expected.caption);
    EXPECT_EQ(button.tooltip, expected.tooltip);
    EXPECT_EQ(button.picture, expected.picture);
    EXPECT_EQ(button.beginGroup, expected.beginGroup);
    EXPECT_EQ(button.style, office::ButtonStyle::Icon);
    EXPECT_TRUE(button.visible);
    EXPECT_EQ(button.onAction, u"!<VelnorOutlookCOMAddIn.Connect>");
  }
  const Texts expected = {u"Debug:   myOlInspectors_NewInspector...",
                          u"Debug:   Create CommandBar instead of Ribbon",
                          u"Debug:   Create inspector",
                          u"Debug:   CBAddVelnorBarInspector...",
                          u"Debug:   Create new inspector commandbar: Velnor ",
                          u"Debug:   Test for transfer button to detect V2",
                          u"Debug:   Create button CxBtDial",
                          u"Debug:   Configure button CxBtDial",
                          u"Debug:   Create button CxBtDrop",
                          u"Debug:   Configure button CxBtDrop",
                          u"Debug:   Create button CxBtAction",
                          u"Debug:   Configure button CxBtAction",
                          u"Debug:   ...done.",
                          u"Debug:   ...done!",
                          u"Debug:   Inspector toolbar already connected!"};
  auto trace = world.trace();
  std::erase_if(trace, [](const auto& line) { return line.find(u"xplorer") != line.npos; });
  EXPECT_EQ(trace, expected);
  EXPECT_FALSE(globals().g_bCreatingInspector);
}

TEST_F(InspectorTest, NotesAndWordMailsGetNone) {
  world.options.wordIsMailEditor = true;
  world.add(u"Notes", ObjectClass::Note, u"note");
  world.add(u"Inbox", ObjectClass::Mail, u"mail").wordMail = true;
  world.start();
  const int note = world.host->openItem(u"note");
  EXPECT_TRUE(
      world.traced(u"Debug:   Current item is of type 'olNote': do not create inspector "
                   u"toolbar, just return 'true'."));
  EXPECT_FALSE(world.traced(u"Error:   Failed to connect inspector toolbar!"));
  EXPECT_TRUE(world.window(note).bars.empty());
  EXPECT_EQ(globals().g_colInspectors.count(), 1);
  const int mail = world.host->openItem(u"mail");
  EXPECT_TRUE(
      world.traced(u"Warning: No Velnor Inspector created because Word is used as Email-Editor."));
  EXPECT_TRUE(world.window(mail).bars.empty());
}

TEST_F(InspectorTest, SwitchedOffByTheSettingNothingHappens) {
  world.option(AddInKey, u"ShowInspectorToolBar", 0);
  startWithContacts();
  const int window = world.host->openItem(u"Meier");
  world.machine.advance(20'000);
  EXPECT_TRUE(world.window(window).bars.empty());
  EXPECT_FALSE(anyTrace(u"Debug:   myOlInspectors"));
}

TEST_F(InspectorTest, FoundBarsAreTakenOver) {
  const struct {
    const char16_t* name;
    Texts tags;
    const char16_t* line;
  } cases[] = {
      {u"!!VELNOR_NEUTRAL!!", InspectorTags, u"Debug:   1. Tag = CxBtDial"},
      {u"Ondaris Station 1", {u"CxBtDrop"}, u"Debug:   Try to create button CxBtDial"},
      {u"Ondaris Station 2",
       {u"CxBtDial", u"CxBtDrop", u"CxBtIncognito"},
       u"Debug:   Delete button CxBtIcognito"},
      {u"Ondaris Station 2/3",
       {u"x", u"CxBtTransfer", u"CxBtDial"},
       u"Debug:   Transfer button detected, delete all buttons now!"},
      // Its test button goes with the others: the dial button is a new one.
      {u"Ondaris Station 2", {u"CxBtTransfer", u"x"}, u"Debug:   Create button CxBtDial"},
      {u"Velnor", {u"CxBtDial", u"CxBtAction"}, u"Debug:   Create button CxBtDrop"},
      {u"Velnor", InspectorTags, u"Debug:   3. Tag = CxBtAction"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(automation::Error(0, c.line).what());
    world.bars.inspectors = {simulator::storedBar(c.name, c.tags)};
    world.mailbox.folders[1].items.clear();
    startWithContacts();
    const Once drawn(world.boundary, u"Clock", u"pumpMessages", [] {});
    const int window = world.host->openItem(u"Meier");
    EXPECT_EQ(drawn.count(), c.tags == InspectorTags ? 0 : 1) << "new buttons are drawn at once";
    EXPECT_TRUE(world.traced(u"Debug:   Re-use inspector commandbar: " + std::u16string(c.name)));
    EXPECT_TRUE(world.traced(c.line));
    EXPECT_EQ(world.window(window).bars.size(), 1u);
    auto tags = *world.tagsOf(window, Product);
    std::ranges::sort(tags);
    auto expected = InspectorTags;
    std::ranges::sort(expected);
    EXPECT_EQ(tags, expected);
    world.stop();
  }
}

TEST_F(InspectorTest, AProtectedBarIsReplaced) {
  auto bar = simulator::storedBar(u"Velnor", {u"CxBtDrop"});
  bar.refusesControls = true;
  world.bars.inspectors = {bar};
  startWithContacts();
  const Once drawn(world.boundary, u"Clock", u"pumpMessages", [] {});
  const int window = world.host->openItem(u"Meier");
  EXPECT_EQ(drawn.count(), 2) << "without the old bar, and with the new buttons";
  EXPECT_TRUE(world.traced(
      u"Debug:   Create new inspector commandbar, because re-use not possible: Velnor "));
  EXPECT_EQ(world.tagsOf(window, Product), InspectorTags);
}

TEST_F(InspectorTest, AnEmptyBarIsWaitedForUpToTwentyBuilds) {
  auto bar = simulator::storedBar(Product, {u"CxBtDial", u"CxBtDrop", u"CxBtAction"});
  bar.emptyActivations = 1'000;
  world.bars.inspectors = {bar};
  startWithContacts();
  const int window = world.host->openItem(u"Meier");
  // One build when the window is new, one at its first activation.
  EXPECT_EQ(world.count(u"Error:   Failed to connect inspector toolbar!"), 2u);
  for (int build = 3; build < 20; ++build) {
    // Buttons that can't be counted are none.
    if (build == 10) world.host->failMember(u"CommandBar", u"Controls");
    world.host->activate(window);
    world.host->restoreMember(u"CommandBar", u"Controls");
    EXPECT_EQ(world.trace().end()[-2], u"Debug:   No Buttons found after " +
                                           automation::Value(build).toText() +
                                           u" retries. Exit now.");
  }
  world.host->activate(window);
  EXPECT_TRUE(
      world.traced(u"Debug:   No Buttons found after 20 retries. Continue anyway, re-create "
                   u"commandbar if necessary."));
  EXPECT_EQ(world.tagsOf(window, Product), InspectorTags);
  EXPECT_EQ(world.control(window, u"CxBtDial").picture, u"dial");
  world.forget();
  world.host->activate(window);
  EXPECT_EQ(world.trace(), Texts{u"Debug:   Inspector toolbar already connected!"});
}

TEST_F(InspectorTest, ABarThatOfficeFillsInTimeIsUsedAsItIs) {
  auto bar = simulator::storedBar(Product, InspectorTags);
  bar.emptyActivations = 3;
  world.bars.inspectors = {bar};
  startWithContacts();
  const int window = world.host->openItem(u"Meier");
  for (int i = 0; i < 4; ++i) world.host->activate(window);
  EXPECT_TRUE(world.traced(u"Debug:   3 Buttons found:"));
  EXPECT_FALSE(world.traced(u"Debug:   Create button CxBtDial"));
  EXPECT_EQ(world.tagsOf(window, Product), InspectorTags);
}

TEST_F(InspectorTest, TheTimerKeepsTryingToo) {
  auto bar = simulator::storedBar(Product, {});
  world.bars.inspectors = {bar};
  startWithContacts();
  const int window = world.host->openItem(u"Meier");
  world.machine.advance(12'000 + 20 * 300);
  EXPECT_EQ(world.tagsOf(window, Product), InspectorTags);
}

TEST_F(InspectorTest, AnActivationInTheMiddleOfABuildIsPassedOver) {
  startWithContacts();
  int activations = 0;
  world.host->setControlsAddHook([&](int window) {
    if (activations++ == 0) world.host->activate(window);
  });
  const int window = world.host->openItem(u"Meier");
  EXPECT_TRUE(world.traced(u"Debug:   OlEvents.Connect() reentered!"));
  EXPECT_EQ(world.tagsOf(window, Product), InspectorTags);
  EXPECT_FALSE(globals().g_colInspectors.item(1)->NeedConnect());
}

TEST_F(InspectorTest, AFailingBuildIsLoggedAndTriedAgain) {
  startWithContacts();
  world.host->failMember(u"CommandBarControl", u"BeginGroup");
  const int window = world.host->openItem(u"Meier");
  EXPECT_TRUE(world.traced(u"Error:   ...failed: Automation error"));
  EXPECT_TRUE(world.traced(u"Error:   Failed to connect inspector toolbar!"));
  EXPECT_EQ(world.tagsOf(window, Product), Texts{}) << "no half-made button is left to pile up";
  world.host->restoreMember(u"CommandBarControl", u"BeginGroup");
  world.machine.advance(12'000 + 20 * 300);
  EXPECT_EQ(world.tagsOf(window, Product), InspectorTags);
}

TEST_F(InspectorTest, ABlankButtonDoesNotOutliveItsBuild) {
  const Texts drop = {u"CxBtDrop"};
  const struct {
    const char* why;
    Texts found;
    std::function<void()> trouble;
    Texts left;
  } cases[] = {
      {"no control can be found, so that each build tests the bar anew", drop,
       [&] { world.host->failMember(u"CommandBar", u"FindControl"); }, drop},
      {"a new button takes no tag", drop,
       [&] { world.host->failMember(u"CommandBarButton", u"Tag"); }, drop},
      {"a button fails when it has its tag",
       {},
       [&] { world.host->failMember(u"CommandBarButton", u"OnAction"); },
       {u"CxBtDial"}},
  };
  startWithContacts();
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    world.bars.inspectors.clear();
    if (!c.found.empty()) world.bars.inspectors = {simulator::storedBar(Product, c.found)};
    c.trouble();
    const int window = world.host->openItem(u"Meier");
    world.machine.advance(42'000);
    EXPECT_EQ(world.tagsOf(window, Product), c.left);
    world.host->close(window);
    for (const auto member : {u"Tag", u"OnAction"}) {
      world.host->restoreMember(u"CommandBarButton", member);
    }
    world.host->restoreMember(u"CommandBar", u"FindControl");
  }
}

TEST_F(InspectorTest, AWindowClosedBeforeAButtonHasItsTagLeavesNone) {
  for (const char16_t* member : {u"Style", u"BeginGroup", u"Caption"}) {
    world.bars.inspectors.clear();
    world.mailbox.folders[1].items.clear();
    startWithContacts();
    Once closed(world.boundary, u"CommandBarButton", member, [&] { world.host->close(2); });
    world.host->openItem(u"Meier");
    ASSERT_TRUE(closed.happened());
    ASSERT_EQ(world.bars.inspectors.size(), 1u);
    EXPECT_TRUE(world.bars.inspectors[0].controls.empty());
    world.stop();
  }
}

TEST_F(InspectorTest, ADialButtonThatComesLateLeavesTheTestButtonToNobody) {
  world.bars.inspectors = {simulator::storedBar(Product, {u"CxBtDial"})};
  startWithContacts();
  world.host->failMember(u"CommandBar", u"FindControl");
  world.host->setControlsAddHook(
      [&](int) { world.host->restoreMember(u"CommandBar", u"FindControl"); });
  const int window = world.host->openItem(u"Meier");
  EXPECT_EQ(world.tagsOf(window, Product), InspectorTags);
  EXPECT_TRUE(world.traced(u"Debug:   Create button CxBtDrop"));
}

TEST_F(InspectorTest, ABuildInTheMiddleOfAClickLeavesTheClickItsIdentity) {
  startWithContacts();
  world.startClient();
  // The third button can't be added: the window has two that work, and is built again.
  int added = 0;
  world.host->setControlsAddHook([&](int) {
    if (++added > 2) throw automation::Error(automation::ErrorNumber::AutomationFailed);
  });
  const int window = world.host->openItem(u"Meier");
  const auto inspector = globals().g_colInspectors.item(1);
  ASSERT_TRUE(inspector->NeedConnect());
  world.forget();
  Once rebuilt(world.boundary, u"CommandBarButton", u"Parameter", [&] { inspector->Connect(); });
  world.host->click(window, u"CxBtDrop");
  ASSERT_TRUE(rebuilt.happened());
  EXPECT_EQ(world.told(), Texts{u"hang up"});
}

TEST_F(InspectorTest, AfterTheClockWasSetBackAClickIsStillForOneWindow) {
  startWithContacts();
  world.startClient();
  const auto moment = world.machine.clock.now();
  const int first = world.host->openItem(u"Meier");
  world.machine.advance(60'000);
  world.host->openExplorer();
  world.machine.advance(21'000);
  world.machine.clock.set(moment);
  const int second = world.host->openItem(u"Smith");
  for (const int window : {first, second}) {
    world.forget();
    world.host->click(window, u"CxBtDrop");
    EXPECT_EQ(world.told(), Texts{u"hang up"});
  }
}

TEST_F(InspectorTest, AClickIsCarriedOutByItsOwnWindow) {
  startWithContacts();
  world.startClient();
  const int first = world.host->openItem(u"Meier");
  const int second = world.host->openItem(u"Smith");
  world.forget();
  world.host->click(first, u"CxBtDrop");
  world.host->click(second, u"CxBtDrop");
  EXPECT_EQ(world.machine.client.told().size(), 2u);
  EXPECT_EQ(world.count(u"Debug:   clsVelnorCmd: Drop called"), 4u);
  world.forget();
  world.user.choice = u"Home";
  world.host->click(first, u"CxBtDial");
  EXPECT_EQ(world.count(u"Debug:   clsVelnorCmd: Ctrl is nothing and parameters are different"),
            1u);
  EXPECT_EQ(world.machine.client.told().size(), 1u);
}

TEST_F(InspectorTest, ClosingHidesTheBarAndSwitchingOffDeletesIt) {
  startWithContacts();
  const int first = world.host->openItem(u"Meier");
  world.forget();
  world.host->close(first);
  EXPECT_EQ(world.trace(), (Texts{u"Debug:   Close inspector", u"Debug:   DeInitVelnorBarInspector",
                                  u"Debug:   Hide inspector commandbar: Velnor "}));
  ASSERT_EQ(world.bars.inspectors.size(), 1u);
  EXPECT_FALSE(world.bars.inspectors[0].visible);
  const int second = world.host->openItem(u"Smith");
  EXPECT_EQ(globals().g_colInspectors.count(), 1) << "the closed window's wrapper is gone";
  EXPECT_TRUE(world.traced(u"Debug:   Destroy inspector"));
  world.host->disconnectAddin();
  EXPECT_TRUE(world.traced(u"Debug:   Delete inspector commandbar: Velnor "));
  EXPECT_EQ(world.bar(second, Product), std::nullopt);
  EXPECT_EQ(world.boundary.liveHandles(), 0u);
  // In the middle of a build nobody knows the bar yet but its own window, which hides it.
  world.host->close(second);
  world.host->connectAddin(*world.addin);
  Once switchesOff(world.boundary, u"Clock", u"pumpMessages",
                   [&] { world.host->disconnectAddin(); });
  const int third = world.host->openItem(u"Smith");
  ASSERT_TRUE(switchesOff.happened());
  EXPECT_FALSE(world.bar(third, Product).value().visible);
}

TEST_F(InspectorTest, AWindowWhoseCloseWasMissedIsPurged) {
  startWithContacts();
  world.addContact(u"Ibsen");
  const int kept = world.host->openItem(u"Meier");
  {
    class Deaf : public simulator::CrossingObserver {
      void before(const simulator::Crossing& crossing) override {
        if (crossing.owner == u"Inspector" && crossing.kind == simulator::Crossing::Kind::Connect)
          throw automation::Error(automation::ErrorNumber::AutomationFailed);
      }
    } deaf;
    world.boundary.setObserver(&deaf);
    world.host->close(world.host->openItem(u"Smith"));
    world.boundary.setObserver(nullptr);
  }
  ASSERT_EQ(globals().g_colInspectors.count(), 2);
  world.forget();
  world.host->openItem(u"Ibsen");
  EXPECT_EQ(globals().g_colInspectors.count(), 2);
  EXPECT_EQ(world.count(u"Debug:   Destroy inspector"), 1u);
  EXPECT_EQ(world.tagsOf(kept, Product), InspectorTags);
}

TEST_F(InspectorTest, AWindowThatOpensWhileAnotherDoesKeepsItsToolbar) {
  startWithContacts();
  int inner = 0;
  Once opens(world.boundary, u"Application", u"Version",
             [&] { inner = world.host->openItem(u"Smith"); });
  const int outer = world.host->openItem(u"Meier");
  for (const int window : {inner, outer}) EXPECT_TRUE(world.bar(window, Product)->visible);
  EXPECT_EQ(globals().g_colInspectors.count(), 2);
}

}  // namespace
}  // namespace tests
