// Mailbox files: what they may say, and what their mistakes are answered with.
#include <gtest/gtest.h>

#include <map>
#include <set>

#include "simulator/data/Contact.h"
#include "simulator/data/MailboxReader.h"
#include "simulator/data/Utf8.h"

namespace simulator {
namespace {

using outlook::ObjectClass;
using Texts = std::map<std::u16string, std::u16string>;

std::string errorOf(const std::string& json) {
  try {
    readMailbox(json, "m.json");
  } catch (const InputError& error) {
    return error.what();
  }
  return "no error";
}

std::string inFolder(const std::string& kind, const std::string& items) {
  return R"({"user":"Anna","folders":[{"name":"F","holds":")" + kind + R"(","items":[)" + items +
         "]}]}";
}

MailboxItem itemOf(const std::string& kind, const std::string& item) {
  return readMailbox(inFolder(kind, item), "m.json").folders.at(0).items.at(0);
}

const MailboxItem& named(const Mailbox& mailbox, std::u16string_view id) {
  if (const auto* item = mailbox.find(id)) return *item;
  throw std::runtime_error("no such item");
}

/// The texts of a contact that are not empty, without those that only repeat others.
Texts filled(const MailboxItem& contact) {
  Texts texts;
  for (const auto& [name, value] : contact.properties)
    if (name != u"MessageClass" && name != u"Subject" && !value.toText().empty())
      texts[name] = value.toText();
  return texts;
}

TEST(MailboxReader, NamesPlaceAndExpectationOfEveryMistake) {
  struct Row {
    std::string json, message;
  };
  const Row rows[] = {
      {"{\n  \"user\": \"\xC3\x84nne\" x\n}",
       "m.json: line 2, column 18: invalid literal; last read: '\"\xC3\x84nne\" x'; expected '}'"},
      {"", "m.json: line 1, column 1: unexpected end of input; expected '[', '{', or a literal"},
      {"{\"user\": \xC3\x84}", "m.json: line 1, column 10: unexpected character"},
      {"{\"user\": \"\xC3\"}", "m.json: line 1, column 12: the file is not in UTF-8"},
      {"{\"user\": 1e999}", "m.json: a number is too large"},
      {"[]", "m.json: /: expected object, found list"},
      {"{}", "m.json: /: expected key \"folders\", found none"},
      {R"({"folders":[],"owner":"x"})", "m.json: /owner: unknown key, expected user or folders"},
      {R"({"folders":{}})", "m.json: /folders: expected list, found object"},
      {R"({"folders":[{"holds":"mail"}]})",
       "m.json: /folders/0: expected key \"name\", found none"},
      {R"({"folders":[{"name":7,"holds":"mail"}]})",
       "m.json: /folders/0/name: expected text, found number"},
      {R"({"folders":[{"name":"","holds":"mail"}]})",
       "m.json: /folders/0/name: expected text, found empty text"},
      {R"({"folders":[{"name":"F","holds":"mails"}]})",
       "m.json: /folders/0/holds: unknown kind of items, expected mail, appointment, contact, "
       "task, journal, note or post"},
      {R"({"folders":[{"name":"A","holds":"mail","outbox":true},)"
       R"({"name":"B","holds":"mail","outbox":true}]})",
       "m.json: /folders/1/outbox: a mailbox has one outbox, expected no second"},
      {R"({"folders":[{"name":"A","holds":"mail","outbox":1}]})",
       "m.json: /folders/0/outbox: expected true or false, found number"},
      {inFolder("mail", R"({},{"subject":"a","to":[],"subject":"b"})"),
       "m.json: /folders/0/items/1/subject: this key stands twice here"},
      {R"({"folders":[{"name":"A","items":[[],{}]},{"na/me":1,"x":{"name":2},"na\u002Fme":3}]})",
       "m.json: /folders/1/na~1me: this key stands twice here"},
      {inFolder("mail", R"({"kind":"letter"})"),
       "m.json: /folders/0/items/0/kind: unknown kind, expected mail, post, contact, distribution "
       "list, appointment, task, journal, note, meeting request, meeting cancellation, meeting "
       "response accepted, meeting response declined or meeting response tentative"},
      {inFolder("task", R"({"phones":{}})"),
       "m.json: /folders/0/items/0/phones: unknown key, expected kind, id, userProperties, links, "
       "attachments, people, subject, start, due or body"},
      {inFolder("contact", R"({"phones":{"work":true}})"),
       "m.json: /folders/0/items/0/phones/work: expected text, found true or false"},
      {inFolder("contact", R"({"phones":{"work":"1","BusinessTelephoneNumber":"2"}})"),
       "m.json: /folders/0/items/0/phones/BusinessTelephoneNumber: the number stands twice, also "
       "as \"work\""},
      {inFolder("contact", R"({"email":["a","b","c","d"]})"),
       "m.json: /folders/0/items/0/email: expected at most 3 addresses, found 4"},
      {inFolder("appointment", R"({"subject":"x"})"),
       "m.json: /folders/0/items/0: expected key \"start\", found none"},
      {inFolder("appointment", R"({"start":"2008-02-30"})"),
       "m.json: /folders/0/items/0/start: expected a date like 2008-03-07 or 2008-03-07T09:30, "
       "found "
       "another text"},
      {inFolder("mail", R"({"sender":{"name":"x","addresses":["a","b","c"]}})"),
       "m.json: /folders/0/items/0/sender/addresses: expected at most 2 addresses, found 3"},
      {inFolder("mail", R"({"to":[{"name":"x","addresses":["a","b"]}]})"),
       "m.json: /folders/0/items/0/to/0/addresses: expected one address, found 2"},
      {inFolder("mail", R"({"to":[{"numbers":["1"]}]})"),
       "m.json: /folders/0/items/0/to/0: expected \"name\" or \"address\", found neither"},
      {inFolder("mail", R"({"sender":{"address":"a","addresses":["b"]}})"),
       "m.json: /folders/0/items/0/sender/addresses: expected \"address\" or \"addresses\", found "
       "both"},
      {inFolder("mail", R"({"received":null})"),
       "m.json: /folders/0/items/0/received: expected true, false or the receiver's name, found "
       "null"},
      {inFolder("mail", R"({"userProperties":{"a/b~":1}})"),
       "m.json: /folders/0/items/0/userProperties/a~1b~0: expected text, found number"},
      {inFolder("note", R"({"id":"n","body":""},{"id":"n","body":""})"),
       "m.json: /folders/0/items/1/id: this id is taken already, expected one of its own"},
      {inFolder("task", R"({"id":"a"},{"links":["a","b"]})"),
       "m.json: /folders/0/items/1/links/1: expected the id of an item, but no item has this id"},
      {inFolder("task", R"({"links":["FOLDER-1"]})"),
       "m.json: /folders/0/items/0/links/0: expected the id of an item, but no item has this id"},
      {inFolder("task", R"({"id":"a"},{"kind":"meeting request","appointment":"a"})"),
       "m.json: /folders/0/items/1/appointment: expected the id of an appointment, but no "
       "appointment has this id"},
  };
  for (const Row& row : rows) EXPECT_EQ(errorOf(row.json), row.message) << row.json;
  EXPECT_THROW(readMailboxFile("/no such/mailbox.json"), InputError);
}

TEST(MailboxReader, GivesEveryContactAllItsProperties) {
  const auto contact = itemOf("contact", R"({"firstName":"Zo\u00eb","lastName":"Meier",
      "phones":{"work":"1","CarTelephoneNumber":"2"}})");
  EXPECT_EQ(filled(contact), (Texts{{u"FirstName", u"Zoë"},
                                    {u"LastName", u"Meier"},
                                    {u"FullName", u"Zoë Meier"},
                                    {u"LastNameAndFirstName", u"Meier, Zoë"},
                                    {u"BusinessTelephoneNumber", u"1"},
                                    {u"CarTelephoneNumber", u"2"}}));
  // Those without a number can be read all the same, as in Outlook.
  EXPECT_EQ(contact.properties.at(u"CallbackTelephoneNumber").toText(), u"");
}

TEST(MailboxReader, TitlesItemsAsListsShowThem) {
  struct Row {
    const char *kind, *item;
    std::u16string title;
  };
  const Row rows[] = {
      {"contact", R"({"firstName":"Eva","lastName":"Meier","company":"C"})", u"Meier, Eva"},
      {"contact", R"({"fullName":"Eva Meier","company":"C & D"})", u"C & D"},
      {"contact", R"({"fullName":"Eva Meier"})", u"Eva Meier"},
      {"contact", R"({"fullName":"E","lastNameAndFirstName":"Meier, E"})", u"Meier, E"},
      {"contact", R"({})", u""},
      {"contact", R"({"kind":"distribution list","name":"Team"})", u"Team"},
      {"mail", R"({"subject":"\ud83d\ude00 Offer"})", u"\U0001F600 Offer"},
      {"note", R"({"body":"First\r\nSecond"})", u"First"},
  };
  for (const Row& row : rows) EXPECT_EQ(itemOf(row.kind, row.item).title(), row.title) << row.item;
}

TEST(MailboxReader, TellsTheMapiHelperOfThePeopleOnAMail) {
  const auto mail = itemOf("mail", R"({
    "sender": {"name":"John","addresses":["j@a","j@b"],"numbers":["1","2"]},
    "to": [{"name":"Eva","address":"e@a","numbers":["3"]}, "x@a", {"name":"No address"}],
    "cc": ["c@a"], "bcc": ["b@a"], "others": ["o@a"],
    "people": [{"name":"Secretary","numbers":["4"]}]})");
  const MapiFacts& mapi = mail.mapi;
  EXPECT_EQ(mapi.name, u"John");
  EXPECT_EQ(mapi.displayTo, u"Eva; x@a; No address");
  EXPECT_EQ(mapi.receivedBy, u"Anna");
  EXPECT_EQ(mapi.senderAddresses, (std::array<std::u16string, 2>{u"j@a", u"j@b"}));
  EXPECT_EQ(mapi.recipients,
            (std::array<TextList, 4>{TextList{u"e@a", u"x@a", u""}, {u"c@a"}, {u"b@a"}, {u"o@a"}}));
  EXPECT_EQ(mapi.telephoneNames, (TextList{u"John", u"John", u"Eva", u"Secretary"}));
  EXPECT_EQ(mapi.telephoneNumbers, (TextList{u"1", u"2", u"3", u"4"}));
  // What Outlook itself shows without the helper.
  EXPECT_EQ(propertyText(mail, u"SenderName"), u"John");
  EXPECT_EQ(propertyText(mail, u"ReceivedByName"), u"Anna");
  EXPECT_EQ(propertyText(mail, u"To"), u"Eva; x@a; No address");
}

TEST(MailboxReader, KnowsReceivedFromSentMails) {
  struct Row {
    const char *folder, *mail;
    std::u16string receivedBy;
    bool sent;
  };
  const char* const plain = R"({"user":"Anna","folders":[{"name":"F","holds":"mail","items":[)";
  const char* const outbox =
      R"({"user":"Anna","folders":[{"name":"F","holds":"mail","outbox":true,"items":[)";
  const char* const nobody = R"({"folders":[{"name":"F","holds":"mail","items":[)";
  const Row rows[] = {
      {plain, R"({})", u"Anna", true},
      {plain, R"({"sender":{"name":"Anna"}})", u"", true},
      {plain, R"({"received":true,"sender":{"name":"Anna"}})", u"Anna", true},
      {plain, R"({"received":"Eva"})", u"Eva", true},
      {plain, R"({"received":false})", u"", true},
      {plain, R"({"sent":false})", u"", false},
      {outbox, R"({})", u"", false},
      {nobody, R"({})", u"Mailbox owner", true},
  };
  for (const Row& row : rows) {
    const auto mailbox = readMailbox(std::string(row.folder) + row.mail + "]}]}", "m.json");
    const MailboxItem& mail = mailbox.folders.at(0).items.at(0);
    EXPECT_EQ(mail.mapi.receivedBy, row.receivedBy) << row.mail;
    EXPECT_EQ(mail.properties.at(u"Sent").toBoolean(), row.sent) << row.mail;
  }
}

TEST(MailboxReader, AcceptsTheCustomaryFormsOfADate) {
  struct Row {
    const char* date;
    std::u16string start;  // empty: refused
  };
  const Row rows[] = {
      {"2008-02-29", u"2008-02-29T00:00:00"},
      {"2008-03-07T09:30", u"2008-03-07T09:30:00"},
      {"2008-03-07 23:59:59", u"2008-03-07T23:59:59"},
      {"2007-02-29", u""},
      {"2008-03-07T24:00", u""},
      {"2008-03-07T09:60", u""},
      {"2008-3-7", u""},
      {"07.03.2008", u""},
      {"2008-03-07T", u""},
      {"2008-03-07T09:30Z", u""},
      {"", u""},
  };
  for (const Row& row : rows) {
    const std::string item = std::string(R"({"start":")") + row.date + "\"}";
    if (row.start.empty()) {
      EXPECT_NE(errorOf(inFolder("appointment", item)), "no error") << row.date;
      continue;
    }
    const auto appointment = itemOf("appointment", item);
    EXPECT_EQ(propertyText(appointment, u"Start"), row.start);
    EXPECT_EQ(propertyText(appointment, u"End"), row.start);
  }
}

TEST(MailboxReader, GeneratedIdsGiveWayToThoseOfTheFile) {
  const auto mailbox = readMailbox(R"({"folders":[
      {"name":"A","holds":"note","items":[{"body":"1"},{"body":"2","id":"ITEM-1-1"}]},
      {"name":"B","holds":"note","store":"S","id":"ITEM-2-1","items":[{"body":"3"}]}]})",
                                   "m.json");
  EXPECT_EQ(mailbox.folders[0].id, u"FOLDER-1");
  EXPECT_EQ(mailbox.folders[0].storeId, u"STORE");
  EXPECT_EQ(mailbox.folders[0].items[0].id, u"ITEM-1-1b");
  EXPECT_EQ(mailbox.folders[1].storeId, u"S");
  EXPECT_EQ(mailbox.folders[1].items[0].id, u"ITEM-2-1b");
}

TEST(MailboxReader, ReadsTheSampleMailbox) {
  const Mailbox mailbox = readMailboxFile(PROJECT_DIR "/samples/mailbox.json");
  EXPECT_EQ(mailbox.user, u"Anna Berger");
  std::set<ObjectClass> kinds;
  for (const auto& folder : mailbox.folders)
    for (const auto& item : folder.items) kinds.insert(item.kind);
  EXPECT_EQ(kinds.size(), 13u) << "an item of every kind";

  std::map<std::size_t, int> contactsByNumbers;
  for (const auto& contact : mailbox.folders.at(1).items) {
    if (contact.kind != ObjectClass::Contact) continue;
    std::size_t numbers = 0;
    for (const auto& telephone : TelephoneProperties)
      numbers += !propertyText(contact, *fromUtf8(telephone.name)).empty();
    ++contactsByNumbers[numbers];
  }
  EXPECT_EQ(contactsByNumbers[14], 1);
  EXPECT_EQ(contactsByNumbers[0], 1);
  EXPECT_GE(contactsByNumbers[1], 1);

  EXPECT_EQ(named(mailbox, u"request").associatedAppointment, u"appointment-budget");
  EXPECT_EQ(named(mailbox, u"mail-sent").mapi.receivedBy, u"");
  EXPECT_EQ(named(mailbox, u"mail-smith").mapi.telephoneNumbers.size(), 3u);
  EXPECT_TRUE(named(mailbox, u"mail-html").wordMail);
  EXPECT_TRUE(named(mailbox, u"mail-caller")
                  .userProperties.at(u"CxCallerData")
                  .starts_with(u"1=Müller\r\n2=Jürgen\r\n"));
}

TEST(MailboxReader, ReadsTheExampleOfTheDocument) {
  const std::string document = readWholeFile(PROJECT_DIR "/docs/mailbox.md").value();
  const std::string fence = "```json\n";
  const auto begin = document.find(fence) + fence.size();
  const auto example = document.substr(begin, document.find("```", begin) - begin);
  const Mailbox mailbox = readMailbox(example, "docs/mailbox.md");
  EXPECT_EQ(named(mailbox, u"meier").title(), u"Meier, Hans");
  EXPECT_EQ(propertyText(named(mailbox, u"meier"), u"CarTelephoneNumber"), u"030 23125 231");
  EXPECT_EQ(named(mailbox, u"ITEM-2-2").kind, ObjectClass::MeetingRequest);
}

}  // namespace
}  // namespace simulator
