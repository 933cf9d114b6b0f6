#include <gtest/gtest.h>

#include "infra/modRes.h"
#include "ribbon/clsRibbon.h"
#include "tests/World.h"

namespace tests {
namespace {

constexpr std::u16string_view Outlook2007 = u"12.0.4518.1014";

class RibbonTest : public testing::Test {
 protected:
  World world;
};

TEST_F(RibbonTest, EveryKindHasItsTab) {
  auto& written = world.add(u"Inbox", ObjectClass::Mail, u"written");
  written.properties[u"Sent"] = false;
  auto& fax = world.add(u"Inbox", ObjectClass::Mail, u"fax");
  fax.properties[u"Sent"] = false;
  fax.properties[u"MessageClass"] = u"IPM.Note.K9T.FAX";
  world.add(u"Inbox", ObjectClass::Mail, u"read").properties[u"Sent"] = true;
  world.add(u"Inbox", ObjectClass::Post, u"post").properties[u"Sent"] = true;
  world.add(u"Calendar", ObjectClass::Appointment, u"date");
  world.add(u"Inbox", ObjectClass::MeetingRequest, u"request").associatedAppointment = u"date";
  world.add(u"Inbox", ObjectClass::MeetingResponseTentative, u"maybe").associatedAppointment =
      u"date";
  world.add(u"Inbox", ObjectClass::MeetingCancellation, u"cancelled").associatedAppointment =
      u"date";
  world.add(u"Tasks", ObjectClass::Task, u"task");
  world.add(u"Journal", ObjectClass::Journal, u"journal");
  world.addContact(u"Meier");
  const struct {
    const char16_t* item;
    std::u16string_view tab;
  } cases[] = {{u"written", u"TabNewMailMessage"},
               {u"fax", u"TabReadMessage"},
               {u"read", u"TabReadMessage"},
               {u"post", u"TabReadMessage"},
               {u"date", u"TabAppointment"},
               {u"request", u"TabReadMessage"},
               {u"maybe", u""},
               {u"cancelled", u""},
               {u"task", u"TabTask"},
               {u"journal", u""},
               {u"Meier", u"TabContact"}};
  for (const auto& c : cases) {
    SCOPED_TRACE(automation::Error(0, c.item).what());
    world.start(Outlook2007);
    world.host->openItem(c.item);
    cxol::clsRibbon ribbon;
    const auto markup = ribbon.GetRibbonDescription({});
    EXPECT_EQ(markup.empty(), c.tab.empty());
    const auto tab = u"<tab idMso=\"" + std::u16string(c.tab) + u"\" >";
    EXPECT_EQ(markup.find(tab) != std::u16string::npos, !c.tab.empty());
    world.stop();
  }
}

TEST_F(RibbonTest, TheMarkupIsWhatOfficeReads) {
  world.machine.language.setLangId(1031);
  world.addContact(u"Meier");
  world.start(Outlook2007);
  world.host->openItem(u"Meier");
  const std::u16string buttons =
      u"<button id=\"IDS_WaehlenCombo\" label=\"Wählen\" onAction=\"cmdCommonRibbonBttn\" "
      u"getImage=\"GetImage\" />"
      u"<button id=\"IDS_Auflegen\" label=\"Auflegen\" onAction=\"cmdCommonRibbonBttn\" "
      u"getImage=\"GetImage\" />"
      u"<button id=\"IDS_Aktionen\" label=\"Aktionen\" onAction=\"cmdCommonRibbonBttn\" "
      u"getImage=\"GetImage\"/>";
  const std::u16string start =
      u"<customUI xmlns=\"http://schemas.microsoft.com/office/2006/01/customui\" "
      u"loadImage=\"LoadImage\" onLoad=\"OnLoad\">";
  const std::u16string end =
      u"</group></tab></tabs><contextualTabs><tabSet idMso=\"TabSetTableTools\" "
      u"visible=\"false\"></tabSet></contextualTabs></ribbon></customUI>";
  using cxol::clsRibbon;
  EXPECT_EQ(clsRibbon().GetRibbonDescription({}),
            start +
                u"<ribbon><tabs><tab idMso=\"TabContact\" ><group "
                u"id=\"k9tBrandReadMessage\" label=\"Velnor\">" +
                buttons + end);
  EXPECT_EQ(clsRibbon(clsRibbon::Layout::OwnTab).GetRibbonDescription({}),
            start +
                u"<ribbon><tabs><tab id=\"K9TVelnor\" label=\"Velnor\"><group "
                u"id=\"k9tBrand\" label=\"Velnor\">" +
                buttons + end);
  EXPECT_EQ(clsRibbon(clsRibbon::Layout::QuickAccess).GetRibbonDescription({}),
            start + u"<ribbon startFromScratch=\"true\"><idMso=\"qat\">" + buttons +
                u"</ribbon></customUI>");
  EXPECT_EQ(clsRibbon(clsRibbon::Layout{7}).GetRibbonDescription({}), start);
}

TEST_F(RibbonTest, TheGroupIsShownAndItsButtonsWork) {
  world.addContact(u"Meier", {{u"HomeTelephoneNumber", u"030 1"}});
  world.start(Outlook2007);
  world.startClient();
  const int window = world.host->openItem(u"Meier");
  EXPECT_TRUE(world.traced(u"Debug:   Create Ribbon instead of CommandBar"));
  EXPECT_TRUE(cxol::globals().g_bCreatingInspector) << "the timer stays suspended";
  const auto view = world.window(window);
  EXPECT_TRUE(view.ribbonProblems.empty());
  ASSERT_EQ(view.ribbon.size(), 1u);
  EXPECT_EQ(view.ribbon[0].tab, u"TabContact");
  ASSERT_EQ(view.ribbon[0].controls.size(), 3u);
  const std::u16string_view labels[] = {u"Dial", u"Hang up", u"Actions"};
  const std::u16string_view pictures[] = {u"icon 101", u"icon 102", u"icon 103"};
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(view.ribbon[0].controls[i].caption, labels[i]);
    EXPECT_EQ(view.ribbon[0].controls[i].picture, pictures[i]);
  }
  EXPECT_EQ(view.hiddenTabSets, Texts{u"TabSetTableTools"});

  world.forget();
  world.machine.screen.setCursor({100, 40});
  world.user.choice = u"Home";
  world.host->clickRibbon(window, u"Dial");
  EXPECT_TRUE(
      world.traced(u"Debug:   Ribbon - ButtonHandler called with control.id = IDS_WaehlenCombo"));
  EXPECT_TRUE(
      world.traced(u"Debug:   Form1 - ShowMenuRibbon before PopupMenu Left: 1500 Top: 600"));
  world.host->clickRibbon(window, u"Hang up");
  world.user.choice = u"Home";
  world.host->clickRibbon(window, u"Actions");
  const auto& told = world.machine.client.told();
  ASSERT_EQ(told.size(), 3u);
  EXPECT_EQ(told[0].kind, simulator::Told::Kind::Dial);
  EXPECT_EQ(told[1].kind, simulator::Told::Kind::HangUp);
  EXPECT_EQ(told[2].kind, simulator::Told::Kind::ShowNumber);
}

TEST_F(RibbonTest, TheMarkupFitsTheWindowThatItIsAskedFor) {
  world.addContact(u"Meier");
  world.add(u"Inbox", ObjectClass::Mail, u"read").properties[u"Sent"] = true;
  auto& written = world.add(u"Inbox", ObjectClass::Mail, u"written");
  written.properties[u"Sent"] = false;
  world.add(u"Tasks", ObjectClass::Task, u"task");
  world.add(u"Inbox", ObjectClass::MeetingCancellation, u"cancelled");
  world.add(u"Inbox", ObjectClass::MeetingResponseNegative, u"declined");
  world.add(u"Contacts", ObjectClass::DistributionList, u"list");
  world.add(u"Journal", ObjectClass::Journal, u"journal");
  const struct {
    const char16_t* item;
    std::u16string_view tab;
  } windows[] = {{u"Meier", u"TabContact"},          {u"journal", u""},
                 {u"read", u"TabReadMessage"},       {u"list", u""},
                 {u"written", u"TabNewMailMessage"}, {u"cancelled", u""},
                 {u"declined", u"TabReadMessage"},   {u"task", u"TabTask"}};
  for (const bool early : {true, false}) {
    world.options.earlyRibbon = early;
    world.bars.inspectors = {simulator::storedBar(u"Ondaris Station 2")};
    world.start(Outlook2007);
    for (const auto& each : windows) {
      SCOPED_TRACE(automation::Error(early, each.item).what());
      const auto window = world.window(world.host->openItem(each.item));
      EXPECT_EQ(window.ribbonProblems, Texts{});
      ASSERT_EQ(window.ribbon.size(), each.tab.empty() ? 0u : 1u);
      if (each.tab.empty()) continue;
      EXPECT_EQ(window.ribbon[0].tab, each.tab);
      EXPECT_EQ(window.bars.size(), 0u) << "its own old bar is gone";
    }
    // The last of those that fit; where none does, the current one.
    const auto markupFor = [](std::u16string_view kind) {
      return cxol::clsRibbon().GetRibbonDescription(u"Microsoft.Outlook." + std::u16string(kind));
    };
    const struct {
      std::u16string_view kind;
      std::u16string_view tab;
    } asked[] = {{u"Contact", u"TabContact"},
                 {u"Mail.Read", u"TabReadMessage"},
                 {u"RSS", u"TabReadMessage"},
                 {u"Mail.Compose", u"TabNewMailMessage"},
                 {u"Post.Read", u"TabTask"},
                 {u"Appointment", u"TabTask"},
                 {u"Of a later Outlook", u"TabTask"},
                 {u"MeetingRequest.Send", u"TabNewMailMessage"},
                 {u"Resend", u"TabNewMailMessage"},
                 {u"Response.Compose", u"TabNewMailMessage"},
                 {u"Response.CounterPropose", u"TabNewMailMessage"},
                 {u"Sharing.Compose", u"TabNewMailMessage"},
                 {u"Report", u"TabReadMessage"},
                 {u"Sharing.Read", u"TabReadMessage"}};
    for (const auto& each : asked) {
      const auto tab = u"<tab idMso=\"" + std::u16string(each.tab) + u"\" >";
      EXPECT_NE(markupFor(each.kind).find(tab), std::u16string::npos);
    }
    EXPECT_EQ(markupFor(u"Journal"), u"");
    world.stop();
  }
}

TEST_F(RibbonTest, WithoutACurrentInspectorTheTraceCountsThem) {
  for (const char16_t* id : {u"Meier", u"Smith"}) world.addContact(id);
  world.start(Outlook2007);
  world.forget();
  EXPECT_FALSE(cxol::clsRibbon().GetCurrentInspector());
  EXPECT_EQ(world.trace(), Texts{}) << "no window is no error";
  for (const char16_t* id : {u"Meier", u"Smith"}) world.host->openItem(id);
  world.host->failMember(u"Application", u"ActiveInspector");
  EXPECT_FALSE(cxol::clsRibbon().GetCurrentInspector());
  EXPECT_EQ(world.trace().back(),
            u"Error:   clsRibbon.GetCurrentInspector - Inspector.Count: 2 Automation error");
  world.host->failMember(u"Inspectors", u"Count");
  EXPECT_FALSE(cxol::clsRibbon().GetCurrentInspector());
  EXPECT_EQ(world.trace().back(),
            u"Error:   clsRibbon.GetCurrentInspector - Inspector.Count: 0 Automation error");
}

TEST_F(RibbonTest, OldBarsGoFromTheInspectorOnly) {
  world.addContact(u"Meier");
  world.bars.inspectors = {simulator::storedBar(u"Ondaris Station 2", {u"CxBtDial"}),
                           simulator::storedBar(u"!!VELNOR_NEUTRAL!!"),
                           simulator::storedBar(u"Somebody else's")};
  world.bars.explorers = {simulator::storedBar(Product, {u"CxBtDial"})};
  world.start(Outlook2007);
  const int window = world.host->openItem(u"Meier");
  ASSERT_EQ(world.window(window).bars.size(), 1u);
  EXPECT_EQ(world.window(window).bars[0].name, u"Somebody else's");
  EXPECT_EQ(world.window(1).bars.size(), 1u);
  EXPECT_TRUE(world.traced(
      u"Debug:   Ribbon -  look for CommandBar to delete g_brand3: Ondaris Station 2"));
  EXPECT_TRUE(world.traced(u"Debug:   Ribbon - CommandBar Ondaris Station 2 deleted"));
  EXPECT_TRUE(world.traced(u"Debug:   Ribbon -  look for CommandBar to delete !!VELNOR_NEUTRAL!!"));
  EXPECT_EQ(world.count(u"Debug:   Ribbon - No CommandBar found"), 4u);
}

TEST_F(RibbonTest, FailuresEndInTheTraceWithoutAGroup) {
  world.addContact(u"Meier");
  world.add(u"Inbox", ObjectClass::Mail, u"mail");
  world.start(Outlook2007);
  world.host->failMember(u"MailItem", u"Sent");
  EXPECT_EQ(world.window(world.host->openItem(u"mail")).ribbon.at(0).tab, u"TabReadMessage");
  EXPECT_TRUE(world.traced(u"Error:   clsRibbon.IsNewMailItem - Automation error"));
  world.host->failMember(u"Inspector", u"CurrentItem");
  const int window = world.host->openItem(u"Meier");
  EXPECT_TRUE(world.window(window).ribbon.empty());
  EXPECT_TRUE(world.traced(u"Error:   clsRibbon.GetRibbonDescription - Automation error"));
}

}  // namespace
}  // namespace tests
