#include <gtest/gtest.h>

#include <algorithm>

#include "infra/modRes.h"
#include "items/CCallerData.h"
#include "items/EvalObjects.h"
#include "items/UIHelpers.h"
#include "simulator/machine/MapiSession.h"
#include "tests/World.h"

namespace tests {
namespace {

std::u16string search(std::u16string_view address) {
  return u"books=search\nfield0=email\nmatch0=" + std::u16string(address);
}

std::u16string record(std::u16string_view id) {
  return u"books=outlook:store,folder Contacts\nrecordid=" + std::u16string(id);
}

class ItemsTest : public testing::Test {
 protected:
  Texts references() const {
    cxol::Texts found;
    cxol::EvaluateCurrentItem(found);
    return {found.begin(), found.end()};
  }
  /// What the number menu offers for the selected item; nothing when there is no menu.
  std::optional<Texts> menuOf(std::u16string_view folder, std::u16string_view item) {
    world.select(folder, item);
    const auto menu = cxol::FillNumberMenu();
    if (!menu) return std::nullopt;
    const auto& form = *cxol::globals().g_frmMenus;
    Texts captions;
    for (const auto& entry :
         menu->popup == cxol::MenuForm::Popup::MenuPhone ? form.callno : form.MenuNumbers) {
      if (entry.visible) captions.push_back((entry.enabled ? u"" : u"off ") + entry.caption);
    }
    return captions;
  }

  World world;
};

TEST_F(ItemsTest, EveryKindNamesItsPersons) {
  world.addContact(u"Meier");
  world.addContact(u"Smith").links = {u"Meier", u"Meier", u"Note"};
  world.add(u"Notes", ObjectClass::Note, u"Note");
  auto& received = world.add(u"Inbox", ObjectClass::Mail, u"received");
  received.mapi.receivedBy = u"me";
  received.mapi.senderAddresses = {u"a@x", u""};
  received.mapi.recipients = {Texts{u"b@x", u""}, Texts{u"c@x"}, Texts{}, Texts{u"b@x"}};
  received.links = {u"Meier"};
  received.attachments = {u"card.vcf"};
  auto facts = received.mapi;
  facts.receivedBy.clear();
  world.add(u"Inbox", ObjectClass::Mail, u"sent").mapi = facts;
  auto& appointment = world.add(u"Calendar", ObjectClass::Appointment, u"review");
  appointment.properties[u"Start"] = u"2008-03-08T10:00";
  appointment.mapi.recipients = {Texts{u"d@x"}, Texts{}, Texts{}, Texts{}};
  appointment.links = {u"Meier"};
  world.add(u"Inbox", ObjectClass::MeetingRequest, u"request").associatedAppointment = u"review";
  world.add(u"Inbox", ObjectClass::MeetingResponseTentative, u"maybe").associatedAppointment =
      u"review";
  world.add(u"Inbox", ObjectClass::MeetingCancellation, u"cancelled").associatedAppointment =
      u"review";
  for (const auto& [folder, kind, id] : {std::tuple{u"Inbox", ObjectClass::Post, u"post"},
                                         {u"Tasks", ObjectClass::Task, u"task"},
                                         {u"Journal", ObjectClass::Journal, u"journal"}}) {
    world.add(folder, kind, id).links = {u"Smith"};
  }
  world.start();
  const struct {
    const char16_t* folder;
    const char16_t* item;
    Texts expected;
  } cases[] = {
      {u"Inbox",
       u"received",
       {search(u"a@x"), search(u"b@x"), search(u"c@x"), search(u"b@x"), record(u"Meier")}},
      {u"Inbox", u"sent", {search(u"b@x"), search(u"c@x"), search(u"b@x"), search(u"a@x")}},
      {u"Calendar", u"review", {search(u"d@x"), record(u"Meier")}},
      {u"Inbox", u"request", {search(u"d@x")}},
      {u"Inbox", u"maybe", {search(u"d@x")}},
      {u"Inbox", u"cancelled", {}},
      {u"Contacts", u"Smith", {record(u"Smith"), record(u"Meier"), record(u"Meier")}},
      {u"Inbox", u"post", {record(u"Smith")}},
      {u"Tasks", u"task", {record(u"Smith")}},
      {u"Journal", u"journal", {record(u"Smith")}},
      {u"Notes", u"Note", {}},
  };
  for (const auto& c : cases) {
    world.select(c.folder, c.item);
    EXPECT_EQ(references(), c.expected) << automation::Error(0, c.item).what();
  }
}

TEST_F(ItemsTest, AMeetingWithoutAnAppointmentNamesNobody) {
  world.add(u"Inbox", ObjectClass::MeetingRequest, u"request");
  world.start();
  world.select(u"Inbox", u"request");
  EXPECT_EQ(references(), Texts{});
  EXPECT_EQ(world.machine.mapiHelper.calls(u"_MapiGetRecipients@20"), 0u);
}

TEST_F(ItemsTest, ANumberIsFoundInASubjectWhateverLanguageWroteIt) {
  world.start();
  const Texts languages = {u"DE", u"EN", u"FR", u"IT", u"ES", u"PT"};
  for (const auto& writer : languages) {
    cxol::SetLanguage(writer);
    const auto subject = cxol::GetResString(301) + u"Meier" + cxol::GetResString(302) + u"0711 1";
    for (const auto& reader : languages) {
      cxol::SetLanguage(reader);
      EXPECT_EQ(cxol::GetNumberFromSubject(subject), u"0711 1");
    }
  }
}

TEST_F(ItemsTest, WithoutTheHelperMailsAndAppointmentsNameNobody) {
  world.option(AddInKey, u"UseMapi", 0);
  world.addContact(u"Meier");
  world.add(u"Inbox", ObjectClass::Mail, u"mail").links = {u"Meier"};
  world.add(u"Calendar", ObjectClass::Appointment, u"date").links = {u"Meier"};
  world.start();
  world.select(u"Inbox", u"mail");
  EXPECT_EQ(references(), Texts{});
  world.select(u"Calendar", u"date");
  EXPECT_EQ(references(), Texts{});
  world.select(u"Contacts", u"Meier");
  EXPECT_EQ(references(), Texts{record(u"Meier")});
  EXPECT_EQ(world.machine.mapiHelper.calls(u"_MapiInit@0"), 0u);
}

TEST_F(ItemsTest, ASelectionIsEvaluatedInItsOrder) {
  for (const char16_t* id : {u"Meier", u"Smith", u"Ibsen"}) world.addContact(id);
  world.start();
  world.host->switchFolder(1, u"Contacts");
  const Texts chosen = {u"Smith", u"Ibsen", u"Meier"};
  world.host->select(1, chosen);
  EXPECT_EQ(references(), (Texts{record(u"Smith"), record(u"Ibsen"), record(u"Meier")}));
  world.host->failMember(u"Explorer", u"CurrentFolder");
  EXPECT_EQ(references().size(), 3u) << "a folder that can't be told is not the Outbox";
}

TEST_F(ItemsTest, TheOutboxIsLeftAloneButNotItsOpenMails) {
  auto& mail = world.add(u"Outbox", ObjectClass::Mail, u"mail");
  mail.mapi.recipients[0] = {u"b@x"};
  world.start();
  world.select(u"Outbox", u"mail");
  EXPECT_EQ(references(), Texts{});
  EXPECT_FALSE(cxol::GetCurrentItem());
  world.host->openItem(u"mail");
  EXPECT_EQ(references(), Texts{search(u"b@x")});
  // The Outbox's id is asked for once in the life of the process.
  EXPECT_EQ(cxol::globals().g_sOutboxEntryID, u"folder Outbox");
}

TEST_F(ItemsTest, ACalendarWithoutASelectionMeansItsNextAppointment) {
  const auto addAppointment = [&](std::u16string_view id, std::u16string_view start) {
    auto& appointment = world.add(u"Calendar", ObjectClass::Appointment, id);
    appointment.properties[u"Start"] = start;
    // A series that began then, of which the first appointment alone counts.
    if (id == u"past") appointment.properties[u"IsRecurring"] = true;
    appointment.mapi.recipients[0] = {std::u16string(id)};
  };
  addAppointment(u"later", u"2008-03-09T10:00");
  addAppointment(u"today", u"2008-03-07T08:00");
  addAppointment(u"past", u"2008-03-01T10:00");
  world.addContact(u"Meier");
  for (const std::int32_t language : {1033, 1031, 1046}) {
    world.machine.language.setLangId(language);
    world.start();
    world.host->switchFolder(1, u"Calendar");
    EXPECT_EQ(references(), Texts{search(u"today")}) << language;
    EXPECT_EQ(cxol::GetItemCaption(), cxol::GetResString(201));
    const auto current = [] { return cxol::GetCurrentAppointment(cxol::GetFrontWindow()); };
    world.select(u"Calendar", u"past");
    EXPECT_EQ(current().entryId(), u"past") << "a selected one comes before the next";
    world.host->switchFolder(1, u"Inbox");
    EXPECT_EQ(references(), Texts{}) << "only calendars have a next item";
    world.host->openItem(u"Meier");
    EXPECT_FALSE(current()) << "an open contact is none";
    world.stop();
  }
  world.machine.clock.set({2008, 4, 1, 9, 0, 0, 0});
  world.start();
  world.host->switchFolder(1, u"Calendar");
  EXPECT_EQ(references(), Texts{search(u"past")}) << "the folder's first one when none is to come";
}

TEST_F(ItemsTest, TheMessagingSessionServesWhereTheHelperDoesNot) {
  world.option(AddInKey, u"UseMapi", 0);
  world.add(u"Inbox", ObjectClass::Mail, u"mail");
  world.start();
  world.select(u"Inbox", u"mail");
  const outlook::MailItem mail(cxol::GetCurrentItem().object());
  cxol::Texts found;
  EXPECT_EQ(cxol::AddSenderSearch(mail, found), u"") << "there is no such session here";

  auto state = std::make_shared<simulator::MapiSessionState>();
  state->senderOf = [](auto entryId, auto storeId) -> std::optional<std::u16string> {
    return std::u16string(entryId) + u"@" + std::u16string(storeId);
  };
  world.machine.objects.offer(simulator::MapiSession::ClassName, [&] {
    return std::make_shared<simulator::MapiSession>(state)->handle();
  });
  EXPECT_EQ(cxol::AddSenderSearch(mail, found), u"mail@store");
  EXPECT_EQ(Texts(found.begin(), found.end()), Texts{search(u"mail@store")});
  EXPECT_EQ(state->logoffs, 1);
  // Refused for security reasons it is left as it is; any other failure logs off.
  state->senderError = automation::Error(80070005, u"refused");
  EXPECT_EQ(cxol::AddSenderSearch(mail, found), u"");
  EXPECT_EQ(world.trace().back(), u"Error:   Security activated");
  EXPECT_EQ(state->logoffs, 1);
  state->senderError = automation::Error(-2147024891, u"access denied");
  EXPECT_EQ(cxol::AddSenderSearch(mail, found), u"");
  EXPECT_EQ(state->logoffs, 2);
  EXPECT_EQ(found.count(), 1);
}

TEST_F(ItemsTest, HelperFailuresEndQuietly) {
  auto& mail = world.add(u"Inbox", ObjectClass::Mail, u"mail");
  mail.mapi.receivedBy = u"me";
  mail.mapi.senderAddresses[0] = u"a@x";
  mail.mapi.recipients[0] = {u"b@x"};
  mail.links = {u"Meier"};
  world.addContact(u"Meier");
  world.machine.mapiHelper.lackExport(u"_MapiGetRecipients@20");
  world.start();
  world.select(u"Inbox", u"mail");
  EXPECT_EQ(references(), (Texts{search(u"a@x"), record(u"Meier")}));
  world.stop();
  for (const bool missing : {true, false}) {
    world.machine.mapiHelper.setPresent(!missing);
    world.machine.mapiHelper.setInitStatus(missing ? 0 : 5);
    world.forget();
    world.start();
    EXPECT_EQ(world.count(u"Debug:   MAPI_Init()"), 1u);
    EXPECT_TRUE(world.traced(u"Debug:   ...done!")) << "the window gets its wrapper all the same";
    world.select(u"Inbox", u"mail");
    EXPECT_EQ(references(), Texts{});
    world.stop();
  }
}

TEST_F(ItemsTest, ContactNumbersComeInTheirFixedOrder) {
  world.addContact(u"all", {{u"CallbackTelephoneNumber", u"14"},
                            {u"PagerNumber", u"13"},
                            {u"CarTelephoneNumber", u"12"},
                            {u"RadioTelephoneNumber", u"11"},
                            {u"ISDNNumber", u"10"},
                            {u"PrimaryTelephoneNumber", u"9"},
                            {u"AssistantTelephoneNumber", u"8"},
                            {u"OtherTelephoneNumber", u"7"},
                            {u"Home2TelephoneNumber", u"6"},
                            {u"Business2TelephoneNumber", u"5"},
                            {u"MobileTelephoneNumber", u"4"},
                            {u"HomeTelephoneNumber", u"3"},
                            {u"CompanyMainTelephoneNumber", u"2"},
                            {u"BusinessTelephoneNumber", u"1"}});
  world.addContact(u"two",
                   {{u"MobileTelephoneNumber", u" 0170 "}, {u"HomeTelephoneNumber", u"0711"}});
  world.addContact(u"none", {{u"BusinessFaxNumber", u"0711 99"}});
  world.start();
  EXPECT_EQ(menuOf(u"Contacts", u"all"),
            (Texts{u"Work: 1", u"Company switchboard: 2", u"Home: 3", u"Mobile: 4", u"Work 2: 5",
                   u"Home 2: 6", u"Other: 7", u"Assistant: 8", u"Main: 9", u"ISDN phone number: 10",
                   u"Radio pager: 11", u"Car: 12", u"Pager: 13"}));
  EXPECT_EQ(cxol::FillNumberMenu()->numbers.size(), 13u) << "the menu has no place for another";
  EXPECT_EQ(menuOf(u"Contacts", u"two"), (Texts{u"Home: 0711", u"Mobile:  0170 "}));
  EXPECT_EQ(menuOf(u"Contacts", u"none"), Texts{u"off <No phone numbers>"});
}

TEST_F(ItemsTest, OtherKindsOfferTheirSubjectAndTheirPeople) {
  world.machine.mapiHelper.setCurrentUser(u"Me");
  auto& mail = world.add(u"Inbox", ObjectClass::Mail, u"mail");
  mail.properties[u"Subject"] = u"Tel. 0711 1 [Smith & Sons]";
  mail.mapi.telephoneNames = {u"Smith & Sons", u"Me", u"Empty", u"R&D"};
  mail.mapi.telephoneNumbers = {u"0711 2", u"0711 3", u"", u"0711 4"};
  mail.userProperties[u"CxCallerData"] = u"1=Smith\r\n20=0711 5\r\n21=0711 7\r\n22=0711 6\r\n";
  auto& own = world.add(u"Inbox", ObjectClass::Mail, u"own");
  own.userProperties[u"CxCallerData"] = u"1=Berger\r\n2=Anna\r\n20=0711 5\r\n";
  auto& fewer = world.add(u"Inbox", ObjectClass::Mail, u"fewer");
  fewer.mapi.telephoneNames = {u"Meier", u"Smith"};
  fewer.mapi.telephoneNumbers = {u"1"};
  world.add(u"Inbox", ObjectClass::Mail, u"none");
  world.add(u"Tasks", ObjectClass::Task, u"Tel. 1");
  world.add(u"Calendar", ObjectClass::Appointment, u"call Tel. 2[x]");
  world.add(u"Journal", ObjectClass::Journal, u"Tel. 3");
  world.add(u"Inbox", ObjectClass::MeetingRequest, u"Tel. 4");
  world.add(u"Notes", ObjectClass::Note, u"Tel. 5");
  world.start();
  EXPECT_EQ(menuOf(u"Inbox", u"mail"),
            (Texts{u"Caller: 0711 1 ", u"Smith && Sons: 0711 2", u"R&D: 0711 4", u" Smith: 0711 5",
                   u" Smith: 0711 6", u" Smith: 0711 7"}));
  EXPECT_EQ(menuOf(u"Inbox", u"own"), Texts{u"Anna Berger: 0711 5"});
  world.machine.mapiHelper.setCurrentUser(u"Anna Berger");
  EXPECT_EQ(menuOf(u"Inbox", u"own"), Texts{u"off <No phone numbers>"});
  EXPECT_EQ(menuOf(u"Inbox", u"none"), Texts{u"off <No phone numbers>"});
  EXPECT_EQ(menuOf(u"Inbox", u"fewer"), Texts{u"Meier: 1"});
  EXPECT_EQ(menuOf(u"Tasks", u"Tel. 1"), Texts{u"Task: 1"});
  EXPECT_EQ(menuOf(u"Calendar", u"call Tel. 2[x]"), Texts{u"Appointment: 2"});
  EXPECT_EQ(menuOf(u"Journal", u"Tel. 3"), Texts{u"Journal: 3"});
  EXPECT_EQ(menuOf(u"Inbox", u"Tel. 4"), Texts{u"Meeting request: 4"});
  EXPECT_EQ(menuOf(u"Notes", u"Tel. 5"), std::nullopt);
}

TEST_F(ItemsTest, TheActionButtonNamesTheItem) {
  world.addContact(u"Meier & Co");
  auto& company = world.addContact(u"Person");
  company.properties[u"LastNameAndFirstName"] = u"";
  company.properties[u"CompanyName"] = u"Smith&Sons & Partner";
  auto& full = world.addContact(u"Full");
  full.properties[u"LastNameAndFirstName"] = u"";
  auto& received = world.add(u"Inbox", ObjectClass::Mail, u"received");
  received.mapi.receivedBy = u"I";
  received.mapi.name = u"Sender & Co";
  auto& sent = world.add(u"Inbox", ObjectClass::Mail, u"sent");
  sent.mapi.displayTo = u"Everybody";
  world.add(u"Inbox", ObjectClass::Post, u"a & b");
  world.add(u"Calendar", ObjectClass::Appointment, u"review");
  world.add(u"Tasks", ObjectClass::Task, u"task");
  world.add(u"Journal", ObjectClass::Journal, u"journal");
  world.add(u"Notes", ObjectClass::Note, u"note");
  world.add(u"Inbox", ObjectClass::MeetingRequest, u"request");
  world.add(u"Inbox", ObjectClass::MeetingCancellation, u"cancelled");
  world.start();
  const struct {
    const char16_t* folder;
    const char16_t* item;
    std::u16string_view caption;
  } cases[] = {{u"Contacts", u"Meier & Co", u"Meier && Co"},
               {u"Contacts", u"Person", u"Smith&Sons && Partner"},
               {u"Contacts", u"Full", u"Full"},
               {u"Inbox", u"received", u"Sender & Co"},
               {u"Inbox", u"sent", u"Everybody"},
               {u"Inbox", u"a & b", u"a & b"},
               {u"Calendar", u"review", u"review"},
               {u"Tasks", u"task", u"Task"},
               {u"Journal", u"journal", u"Journal"},
               {u"Notes", u"note", u"?"},
               {u"Inbox", u"request", u"Meeting request"},
               {u"Inbox", u"cancelled", u""}};
  for (const auto& c : cases) {
    world.select(c.folder, c.item);
    EXPECT_EQ(cxol::GetItemCaption(), c.caption);
  }
}

TEST_F(ItemsTest, CallerRecordsAreReadPairByPair) {
  const struct {
    const char* why;
    std::u16string_view record;
    std::u16string_view fullName;
    std::u16string_view business;
    std::u16string_view home;
  } cases[] = {
      {"whole", u"1=Smith\r\n2=John\r\n20=+49 711 1\r\n", u"John Smith", u"+49 711 1", u""},
      {"the last pair needs its separator", u"1=Smith;2=John", u" Smith", u"", u""},
      {"keys are trimmed, values are not", u" 21 = 0711 2\n\n", u" ", u"", u" 0711 2"},
      {"two equal signs are none", u"1=a=b\r\n", u" ", u"", u""},
      {"no separator at all", u"1=Smith", u" ", u"", u""},
      {"the first separator kind alone counts", u"1=a;b\r\n20=1;2\r\n", u" a;b", u"1;2", u""},
      {"tabs", u"20=1\t21=2\t", u" ", u"1", u"2"},
      {"later pairs win, unknown keys do not matter", u"1=a;1=b;99=c;", u" b", u"", u""},
      {"an empty value empties the field", u"1=a;1=;", u" ", u"", u""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    cxol::CCallerData caller;
    caller.Parse(c.record);
    EXPECT_EQ(caller.FullName(), c.fullName);
    EXPECT_EQ(caller.PhoneBusiness(), c.business);
    EXPECT_EQ(caller.PhonePrivate(), c.home);
  }
}

TEST_F(ItemsTest, NumbersInSubjects) {
  world.start();
  const struct {
    std::u16string_view subject;
    std::u16string_view number;
  } cases[] = {{u"Tel. 0711 123 [Smith]", u"0711 123 "},
               {u"call Tel. 1 Tel. 2", u"1 Tel. 2"},
               {u"Tel.123", u"23"},
               {u"Tel.", u""},
               {u"Tel. ", u""},
               {u"Tel. [x]", u""},
               {u"tel. 1", u""},
               {u"", u""}};
  for (const auto& c : cases) EXPECT_EQ(cxol::GetNumberFromSubject(c.subject), c.number);
  EXPECT_EQ(cxol::EscapeCaption(u"a & b&c & d &"), u"a && b&c && d &");
  const std::u16string odd = u"\xD800 Tel. \xDC00";
  EXPECT_EQ(cxol::GetNumberFromSubject(odd), u"\xDC00");
}

TEST_F(ItemsTest, OddTextsPassThroughUnharmed) {
  const std::u16string lone = u"\xD800";
  const std::u16string nul(u"a\0b", 3);
  const std::u16string endless(100'000, u'9');
  for (const auto& odd : {lone, nul, endless}) {
    World other;
    other.addContact(u"one", {{u"HomeTelephoneNumber", odd}}).properties[u"FullName"] = odd;
    auto& named = other.addContact(u"two");
    named.properties[u"LastNameAndFirstName"] = odd + odd;
    auto& mail = other.add(u"Inbox", ObjectClass::Mail, u"mail");
    mail.properties[u"Subject"] = u"Tel. " + odd;
    mail.userProperties[u"CxCallerData"] = u"1=" + odd + u";20=" + odd + u";";
    mail.mapi.receivedBy = odd;
    mail.mapi.senderAddresses[0] = odd;
    other.startWithToolbar();
    other.startClient();
    other.select(u"Contacts", u"one");
    other.host->click(1, u"CxBtDial");
    ASSERT_EQ(other.machine.client.told().size(), 1u);
    EXPECT_EQ(other.machine.client.told()[0].text, odd);
    other.select(u"Contacts", u"two");
    other.machine.advance(400);
    EXPECT_LE(other.control(1, u"CxBtAction").caption.size(), 20u);
    other.select(u"Inbox", u"mail");
    other.host->click(1, u"CxBtDial");
    EXPECT_EQ(other.menu().front(), u"Caller: " + odd);
    EXPECT_EQ(other.menu()[1], u" " + odd + u": " + odd);
    other.host->click(1, u"CxBtAction");
    EXPECT_EQ(other.machine.client.told().back().text, search(odd));
  }
}

}  // namespace
}  // namespace tests
