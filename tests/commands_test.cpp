#include <gtest/gtest.h>

#include <algorithm>

#include "client/clsVelnorCmds.h"
#include "ribbon/Form1.h"
#include "tests/World.h"

namespace tests {
namespace {

/// The commands behind every button, and the popup menus that they open. An inspector's toolbar is
/// the host that hands clicks to them without rules of its own.
class CommandsTest : public testing::Test {
 protected:
  void open(std::u16string_view item) {
    if (!world.host) world.start();
    window = world.host->openItem(item);
    world.forget();
  }
  void click(std::u16string_view tag) { world.host->click(window, tag); }

  World world;
  int window = 0;
};

TEST_F(CommandsTest, ChoosingANumberOfAContactDialsTheFirstEntryAsItStands) {
  world.addContact(u"Meier",
                   {{u"BusinessTelephoneNumber", u"030 1"}, {u"HomeTelephoneNumber", u"030 2"}});
  world.startClient();
  open(u"Meier");
  world.user.choice = u"Home";
  click(u"CxBtDial");
  EXPECT_EQ(world.menu(), (Texts{u"Work: 030 1", u"Home: 030 2"}));
  EXPECT_TRUE(world.traced(u"Debug:   callno_Click (1)"));
  EXPECT_TRUE(world.traced(u"Debug:   CxDial (Work: 030 1)"));
}

TEST_F(CommandsTest, ChoosingANumberOfAMailDialsIt) {
  auto& mail = world.add(u"Inbox", ObjectClass::Mail, u"mail");
  mail.mapi.telephoneNames = {u"Smith", u"Meier: home", u"Ibsen"};
  mail.mapi.telephoneNumbers = {u" 030 1 ", u"030 2", u"  "};
  world.startClient();
  open(u"mail");
  world.user.choice = u"Smith";
  click(u"CxBtDial");
  EXPECT_EQ(world.menu(),
            (Texts{u"Smith:  030 1 ", u"Meier: home: 030 2", u"Ibsen:   ", u"New 'Call' task"}));
  EXPECT_TRUE(world.traced(u"Debug:   CxDial (030 1)"));
  world.user.choice = u"Meier";
  click(u"CxBtDial");
  EXPECT_TRUE(world.traced(u"Debug:   CxDial (home: 030 2)")) << "all after the first colon";
  world.user.choice = u"Ibsen";
  click(u"CxBtDial");
  EXPECT_EQ(world.trace().back(), u"Warning: MenuNumbers_Click: No number found to dial!");
}

TEST_F(CommandsTest, WithoutNumbersTheMenuSaysSoAndOffersNothing) {
  world.add(u"Inbox", ObjectClass::Mail, u"mail");
  world.startClient();
  open(u"mail");
  world.user.choice = u"<No";
  click(u"CxBtDial");
  EXPECT_EQ(world.menu(), Texts{u"[<No phone numbers>]"});
  EXPECT_EQ(world.told(), Texts{});
}

TEST_F(CommandsTest, AnItemWithoutAMenuBringsTheClientUp) {
  world.add(u"Inbox", ObjectClass::MeetingCancellation, u"cancelled");
  world.startClient();
  open(u"cancelled");
  click(u"CxBtDial");
  EXPECT_EQ(world.menu(), Texts{});
  EXPECT_EQ(world.told(), Texts{u"show number \"\""});
}

TEST_F(CommandsTest, ASignallingCallIsPickedUpWithoutAMenu) {
  world.addContact(u"Meier", {{u"HomeTelephoneNumber", u"030 2"}});
  world.startClient();
  open(u"Meier");
  world.machine.client.ring(u"0711");
  click(u"CxBtDial");
  EXPECT_EQ(world.machine.client.told().back().kind, simulator::Told::Kind::PickUp);
  EXPECT_EQ(world.menu(), Texts{});
  EXPECT_TRUE(world.traced(u"Debug:   clsVelnorCmd: VelnorCmd call PickUp"));
  click(u"CxBtDrop");
  EXPECT_EQ(world.machine.client.told().back().kind, simulator::Told::Kind::HangUp);
  world.machine.client.failMember(u"HangUp");
  click(u"CxBtDrop");
  EXPECT_EQ(world.trace().back(), u"Error:   ERROR in clsVelnorCmds.Drop(): Automation error");
}

TEST_F(CommandsTest, ACallTaskNamesWhomToCall) {
  world.addContact(u"Meier");
  world.addContact(u"Smith");
  auto& mail = world.add(u"Inbox", ObjectClass::Mail, u"mail");
  mail.mapi.telephoneNames = {u"Office"};
  mail.mapi.telephoneNumbers = {u"030 1"};
  mail.links = {u"Meier", u"Smith"};
  world.startClient();
  open(u"mail");
  world.user.choice = u"Office";
  // Entries of the submenu come first for this user.
  class TaskUser : public simulator::ScreenUser {
    std::optional<int> popup(const std::vector<platform::PopupEntry>& menu,
                             platform::Point) override {
      return menu.back().entries.at(0).id;
    }
  } taskUser;
  world.machine.screen.setUser(&taskUser);
  click(u"CxBtDial");
  const auto top = world.host->snapshot().windows.front();
  EXPECT_NE(top.caption.find(u"Call: Meier, Smith, Tel. 030 1"), std::u16string::npos);
  world.host->activate(window);
  world.host->failMember(u"Application", u"CreateItem");
  click(u"CxBtDial");
  EXPECT_TRUE(world.traced(u"Error:   ERROR in MenuTaskNumbers_Click(): Automation error"));
  world.machine.screen.setUser(nullptr);
  EXPECT_EQ(world.told(), Texts{});
}

TEST_F(CommandsTest, ActionsOfAContactAreAMenu) {
  world.addContact(u"Meier",
                   {{u"BusinessTelephoneNumber", u"030 1"}, {u"MobileTelephoneNumber", u"0170"}});
  world.addContact(u"none");
  world.startClient();
  open(u"Meier");
  world.user.choice = u"Mobile";
  click(u"CxBtAction");
  EXPECT_EQ(world.menu(), (Texts{u"Work: 030 1", u"Mobile: 0170", u"-", u"Actions..."}));
  EXPECT_EQ(world.told(), Texts{u"show number \"0170\""});
  open(u"none");
  world.user.choice = u"Actions";
  click(u"CxBtAction");
  EXPECT_EQ(world.menu(), Texts{u"Actions..."});
  EXPECT_EQ(world.told(), Texts{u"open actions \"books=outlook:store,folder "
                                u"Contacts\\nrecordid=none\" (1, 1)"});
}

TEST_F(CommandsTest, TheActionsNameEachOfAContactsNumbers) {
  world.addContact(u"all", {{u"BusinessTelephoneNumber", u"1"},
                            {u"CompanyMainTelephoneNumber", u"2"},
                            {u"HomeTelephoneNumber", u"3"},
                            {u"MobileTelephoneNumber", u"4"},
                            {u"Business2TelephoneNumber", u"5"},
                            {u"Home2TelephoneNumber", u"6"},
                            {u"OtherTelephoneNumber", u"7"},
                            {u"AssistantTelephoneNumber", u"8"},
                            {u"PrimaryTelephoneNumber", u"9"},
                            {u"ISDNNumber", u"10"},
                            {u"RadioTelephoneNumber", u"11"},
                            {u"CarTelephoneNumber", u"12"},
                            {u"PagerNumber", u"13"},
                            {u"CallbackTelephoneNumber", u"14"}});
  world.startClient();
  open(u"all");
  world.user.choice = u"Return call";
  click(u"CxBtAction");
  EXPECT_EQ(world.menu().size(), 14u + 2);
  EXPECT_EQ(world.told(), Texts{u"show number \"14\""});
  click(u"CxBtDial");
  EXPECT_EQ(world.menu().size(), 13u) << "the menu to dial from holds no more";
}

TEST_F(CommandsTest, ActionsOfAnotherItemGoStraightToTheClient) {
  auto& mail = world.add(u"Inbox", ObjectClass::Mail, u"mail");
  mail.mapi.recipients[0] = {u"a@x", u"b@x"};
  world.startClient();
  open(u"mail");
  click(u"CxBtAction");
  EXPECT_EQ(world.menu(), Texts{});
  EXPECT_EQ(world.told(),
            Texts{u"open actions \"books=search\\nfield0=email\\nmatch0=a@x\\n\\nbooks=search"
                  u"\\nfield0=email\\nmatch0=b@x\" (1, 1)"});
}

TEST_F(CommandsTest, WithoutAClientTheLogNamesDialForAll) {
  world.addContact(u"Meier");
  open(u"Meier");
  click(u"CxBtDrop");
  EXPECT_EQ(world.trace().back(),
            u"Error:   GetVelnorPhoneCmdInservice() is Nothing in clsVelnorCmds.Dial(): ");
  click(u"CxBtDial");
  EXPECT_EQ(world.trace().back(),
            u"Error:   GetVelnorPhoneCmdInservice() is Nothing in clsVelnorCmds.Dial(): ");
  EXPECT_TRUE(world.machine.screen.messageBoxes().empty());
}

TEST_F(CommandsTest, TheMenuOpensUnderItsButton) {
  world.addContact(u"Meier", {{u"HomeTelephoneNumber", u"1"}});
  world.startClient();
  open(u"Meier");
  click(u"CxBtDial");
  const auto button = world.control(window, u"CxBtDial");
  ASSERT_EQ(world.machine.screen.popups().size(), 1u);
  const auto& popup = world.machine.screen.popups()[0];
  EXPECT_EQ(popup.anchor->x, button.left * 15 + 16);
  EXPECT_EQ(popup.anchor->y, (button.top + button.height) * 15 + 16);
  EXPECT_EQ(popup.position.x, -32);
  EXPECT_EQ(popup.position.y, -32);
  EXPECT_FALSE(world.machine.screen.anchor()) << "the anchor is off the screen again";
  EXPECT_TRUE(world.traced(u"Debug:   Form1 - ShowMenu before PopupMenu Left: " +
                           automation::Value(popup.anchor->x).toText() + u" Top: " +
                           automation::Value(popup.anchor->y).toText()));
  // Twips are 16 bits wide: a button too far out gets no menu, and nothing is left on the screen.
  world.machine.screen.setDotsPerInch(1);
  world.forget();
  click(u"CxBtDial");
  EXPECT_TRUE(world.machine.screen.popups().empty());
  EXPECT_FALSE(world.machine.screen.anchor());
  // Switched off under an open menu the add-in takes the anchor away at once.
  world.machine.screen.setDotsPerInch(96);
  world.user.whileOpen = [&] {
    world.host->disconnectAddin();
    EXPECT_FALSE(world.machine.screen.anchor());
  };
  click(u"CxBtDial");
  EXPECT_FALSE(world.host->addinConnected());
}

TEST_F(CommandsTest, PixelsOfEveryScreenAreConvertedAsAWhole) {
  world.addContact(u"Meier", {{u"HomeTelephoneNumber", u"1"}});
  world.startClient();
  world.start(u"12.0.4518.1014");
  const int mail = world.host->openItem(u"Meier");
  const struct {
    int dotsPerInch;
    platform::Point pointer;
    platform::Point anchor;
  } cases[] = {
      {96, {101, 33}, {1515, 495}},
      // Halves go to the even neighbour.
      {192, {101, 33}, {758, 248}},
      {192, {99, 31}, {742, 232}},
      {110, {101, 33}, {1322, 432}},
      {120, {2000, 1500}, {24'000, 18'000}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.dotsPerInch);
    world.machine.screen.setDotsPerInch(c.dotsPerInch);
    world.machine.screen.setCursor(c.pointer);
    world.host->clickRibbon(mail, u"IDS_WaehlenCombo");
    ASSERT_FALSE(world.machine.screen.popups().empty());
    const auto& anchor = world.machine.screen.popups().back().anchor;
    ASSERT_TRUE(anchor);
    EXPECT_EQ(anchor->x, c.anchor.x);
    EXPECT_EQ(anchor->y, c.anchor.y);
  }
}

TEST_F(CommandsTest, APictureThatFailsTwiceLeavesTheButtonAsItWas) {
  world.addContact(u"Meier");
  for (const auto& [failures, picture, error] :
       {std::tuple{1, u"dial", false}, std::tuple{2, u"", true}}) {
    open(u"Meier");
    world.host->close(window);
    world.bars.inspectors.clear();
    world.forget();
    world.machine.pictures.failOverlays(failures);
    window = world.host->openItem(u"Meier");
    EXPECT_EQ(world.control(window, u"CxBtDial").picture, picture);
    EXPECT_EQ(world.control(window, u"CxBtDrop").picture, u"drop");
    EXPECT_EQ(world.count(u"Warning: SetButtonImage failed: 'dial', try again one more time."), 1u);
    const auto trace = world.trace();
    EXPECT_EQ(
        std::ranges::any_of(
            trace, [](const auto& line) { return line.starts_with(u"Error:   SetButtonImage: "); }),
        error);
    world.host->close(window);
    world.bars.inspectors.clear();
  }
}

// Outlook 2000 takes faces from the clipboard only, which others watch; later versions leave it
// alone.
TEST_F(CommandsTest, NoButtonStaysBlankBesideAWatchedClipboard) {
  const struct {
    const char16_t* version;
    std::uint32_t held;
    int failures;
    const char16_t* copied;
    std::size_t warnings;
  } rows[] = {{u"9.0.0.3821", 0, 0, u"", 0},      {u"9.0.0.3821", 5, 0, u"", 0},
              {u"9.0.0.3821", 30, 0, u"", 0},     {u"9.0.0.3821", 100, 0, u"", 0},
              {u"9.0.0.3821", 30, 1, u"", 1},     {u"10.0.2627", 100, 9, u"a text", 0},
              {u"11.0.5608", 0, 9, u"a text", 0}, {u"12.0.4518.1014", 600'000, 0, u"a text", 0}};
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << row.held << " ms, warnings " << row.warnings);
    world.machine.pictures.copy(u"a text");
    world.machine.pictures.watchClipboard(row.held);
    world.machine.pictures.failClipboard(row.failures);
    world.start(row.version);
    world.machine.advance(21'000);
    for (const char16_t* name : {u"Dial", u"Drop", u"Velnor", u"Action"}) {
      auto picture = std::u16string(name);
      picture[0] = static_cast<char16_t>(picture[0] - u'A' + u'a');
      EXPECT_EQ(world.control(1, u"CxBt" + std::u16string(name)).picture, picture);
    }
    EXPECT_EQ(world.machine.pictures.copied(), row.copied);
    EXPECT_EQ(world.count(u"Warning: SetButtonImage failed: 'dial', try again one more time."),
              row.warnings);
    world.stop();
    world.bars.explorers.clear();
    world.forget();
    world.machine.pictures.failClipboard(0);
  }
}

}  // namespace
}  // namespace tests
