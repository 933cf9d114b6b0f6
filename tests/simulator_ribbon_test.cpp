#include <gtest/gtest.h>

#include "simulator/data/Utf8.h"
#include "tests/HostTest.h"

namespace tests::outlook_host {
namespace {

using SimulatedRibbonTest = HostTest;

constexpr std::u16string_view Head =
    u"<customUI xmlns=\"http://schemas.microsoft.com/office/2006/01/customui\"";
std::u16string markup(std::u16string_view tab, std::u16string_view inside) {
  return std::u16string(Head) + u" onLoad=\"OnLoad\"><ribbon><tabs><tab idMso=\"" +
         std::u16string(tab) + u"\" >" + std::u16string(inside) +
         u"</tab></tabs><contextualTabs><tabSet idMso=\"TabSetTableTools\" visible=\"false\">"
         u"</tabSet></contextualTabs></ribbon></customUI>";
}
constexpr std::u16string_view Group =
    u"<group id=\"g\" label=\"R &amp; D\"><button id=\"b1\" label=\"Wählen\" onAction=\"Do\" "
    u"getImage=\"GetImage\" /><button id=\"b2\" label=\"Two\" onAction=\"Missing\"/></group>";

TEST_F(SimulatedRibbonTest, RibbonsAreAskedForOnceAKind) {
  for (const auto* name : {u"a", u"b"}) add(1, ObjectClass::Contact, name);
  add(3, ObjectClass::Note, u"note");
  addin.picture = std::make_shared<Picture>()->handle();
  addin.markup = markup(u"TabContact", Group);
  start(u"12.0.4518.1014");
  const int a = host->openItem(u"a");
  EXPECT_EQ(log, (Texts{u"ui Microsoft.Outlook.Contact", u"OnLoad IRibbonUI", u"GetImage b1"}));
  EXPECT_EQ(addin.context, u"Inspector");
  ASSERT_EQ(view(a).ribbon.size(), 1u);
  const RibbonGroupView group = view(a).ribbon[0];
  EXPECT_EQ(group.tab, u"TabContact");
  EXPECT_EQ(group.label, u"R & D");
  ASSERT_EQ(group.controls.size(), 2u);
  EXPECT_EQ(group.controls[0].tag, u"b1");
  EXPECT_EQ(group.controls[0].caption, u"Wählen");
  EXPECT_EQ(group.controls[0].picture, u"a face");
  EXPECT_TRUE(group.controls[0].showsPicture());
  EXPECT_FALSE(group.controls[1].showsPicture());
  EXPECT_EQ(view(a).hiddenTabSets, Texts{u"TabSetTableTools"});
  EXPECT_TRUE(view(a).ribbonProblems.empty());
  log.clear();
  const int b = host->openItem(u"b");
  host->openItem(u"note");
  EXPECT_EQ(log, Texts{u"GetImage b1"});

  log.clear();
  host->clickRibbon(a, u"Wählen");
  EXPECT_EQ(log, Texts{u"Do b1"});
  EXPECT_EQ(*host->activeWindow(), a);
  host->clickRibbon(b, u"b2");
  ASSERT_EQ(view(b).ribbonProblems.size(), 1u) << "a missing callback is told, not raised";
  EXPECT_THROW(host->clickRibbon(b, u"Three"), HostError);

  host->disconnectAddin();
  EXPECT_TRUE(view(a).ribbon.empty());
  host->connectAddin(addin);
  host->close(a);
  log.clear();
  host->openItem(u"a");
  EXPECT_EQ(log.front(), u"ui Microsoft.Outlook.Contact") << "a new add-in is asked anew";
}

TEST_F(SimulatedRibbonTest, RibbonsAreAskedForWhileTheWindowBeforeIsActive) {
  add(1, ObjectClass::Contact, u"contact");
  add(0, ObjectClass::Mail, u"mail");
  addin.onUi = [&] {
    const auto active = addin.application.activeInspector();
    log.push_back(u"active " + active.object().get(u"Caption").toText());
  };
  for (const bool early : {true, false}) {
    options.earlyRibbon = early;
    start(u"12.0.4518.1014");
    host->openItem(u"contact");
    log.clear();
    host->openItem(u"mail");
    EXPECT_EQ(log, (Texts{u"ui Microsoft.Outlook.Mail.Read",
                          early ? u"active contact - Microsoft Outlook"
                                : u"active mail - Microsoft Outlook"}));
    host->quit();
  }
}

TEST_F(SimulatedRibbonTest, AnAnswerStandsForTheSessionWhateverItIs) {
  for (const auto* name : {u"a", u"b"}) add(1, ObjectClass::Contact, name);
  for (const auto& answer : {std::u16string(), markup(u"TabTask", Group)}) {
    addin.markup = answer;
    start(u"12.0.4518.1014");
    const auto problems = view(host->openItem(u"a")).ribbonProblems;
    EXPECT_EQ(problems.empty(), answer.empty());
    addin.markup = markup(u"TabContact", Group);
    log.clear();
    const auto window = view(host->openItem(u"b"));
    EXPECT_EQ(log, Texts{}) << "asked again";
    EXPECT_TRUE(window.ribbon.empty());
    EXPECT_EQ(window.ribbonProblems, problems);
    host->quit();
    start(u"12.0.4518.1014");
    EXPECT_EQ(view(host->openItem(u"b")).ribbon.size(), 1u) << "another session";
    host->quit();
  }
}

TEST_F(SimulatedRibbonTest, RibbonIdsFollowTheItem) {
  const struct {
    ObjectClass kind;
    bool sent;
    const char16_t* id;
  } cases[] = {
      {ObjectClass::Mail, true, u"Mail.Read"},
      {ObjectClass::Mail, false, u"Mail.Compose"},
      {ObjectClass::Post, true, u"Post.Read"},
      {ObjectClass::Appointment, true, u"Appointment"},
      {ObjectClass::Task, true, u"Task"},
      {ObjectClass::Journal, true, u"Journal"},
      {ObjectClass::DistributionList, true, u"DistributionList"},
      {ObjectClass::MeetingRequest, true, u"MeetingRequest.Read"},
      {ObjectClass::MeetingResponseTentative, true, u"Response.Read"},
  };
  for (const auto& c : cases) {
    auto& item = add(
        0, c.kind,
        u"item " + Value(static_cast<std::int32_t>(c.kind)).toText() + (c.sent ? u"" : u" unsent"));
    if (!c.sent) item.properties[u"Sent"] = false;
  }
  start(u"12.0.4518.1014");
  for (std::size_t i = 0; i < std::size(cases); ++i) {
    host->openItem(mailbox.folders[0].items[i].id);
    EXPECT_EQ(log.back(), std::u16string(u"ui Microsoft.Outlook.") + cases[i].id);
  }
}

TEST_F(SimulatedRibbonTest, OfficeDropsMarkupThatIsNotPerfect) {
  const auto replaced = [](std::u16string text, std::u16string_view from, std::u16string_view to) {
    const auto at = text.find(from);
    if (at == text.npos) throw std::runtime_error("nothing to replace");
    return text.replace(at, from.size(), to);
  };
  const auto good = markup(u"TabContact", Group);
  const std::pair<std::u16string, const char*> cases[] = {
      {replaced(good, u"</group>", u""), "malformed"},
      {good.substr(0, good.size() - 5), "malformed"},
      {replaced(good, u"R &amp; D", u"R & D"), "not escaped"},
      {replaced(good, u"R &amp; D", u"R < D"), "not escaped"},
      {replaced(good, u"R &amp; D", std::u16string(u"R\0D", 3)), "character 0"},
      {replaced(good, u"2006/01", u"2009/07"), "customUI"},
      {replaced(good, u"TabContact", u"TabKontakt"), "unknown tab \"TabKontakt\""},
      {replaced(good, u"TabContact", u"TabReadMessage"), "unknown tab \"TabReadMessage\""},
      {replaced(good, u"TabSetTableTools", u"TabSetTools"), "unknown tab set"},
      {replaced(good, u"id=\"b2\"", u"id=\"b1\""), "twice"},
      {replaced(good, u"id=\"b2\"", u"id=\"b2\" id=\"b3\""), "twice"},
      {replaced(good, u"id=\"b2\"", u""), "no id"},
      {replaced(good, u"onAction", u"onaction"), "unknown attribute"},
      {replaced(good, u"<group", u"text<group"), "unexpected text"},
      {replaced(good, u"<tabs>", u"<idMso=\"qat\"><tabs>"), "malformed"},
      {good + good, "single root"},
      {u" ", "single root"},
  };
  add(1, ObjectClass::Contact, u"a");
  for (const auto& [text, problem] : cases) {
    addin.markup = text;
    start(u"12.0.4518.1014");
    const auto window = view(host->openItem(u"a"));
    EXPECT_TRUE(window.ribbon.empty()) << problem;
    EXPECT_TRUE(window.hiddenTabSets.empty()) << problem;
    ASSERT_EQ(window.ribbonProblems.size(), 1u) << problem << toUtf8(text);
    EXPECT_NE(toUtf8(window.ribbonProblems[0]).find(problem), std::string::npos)
        << toUtf8(window.ribbonProblems[0]) << " instead of " << problem;
    host->quit();
  }
}

}  // namespace
}  // namespace tests::outlook_host
