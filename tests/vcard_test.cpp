// Address books as Outlook, telephones and web services write them.
#include <gtest/gtest.h>

#include <map>
#include <set>

#include "demo/import/VCardReader.h"
#include "platform/conversions.h"
#include "simulator/data/Contact.h"
#include "simulator/data/MailboxReader.h"

namespace demo {
namespace {

using simulator::InputError;
using simulator::MailboxItem;
using simulator::propertyText;
using simulator::readMailbox;

using Filled = std::map<std::u16string, std::u16string>;

/// The texts of a contact that are not empty, without those that only repeat others.
Filled filled(const MailboxItem& contact) {
  Filled texts;
  for (const auto& [name, value] : contact.properties)
    if (name != u"MessageClass" && name != u"Subject" && !value.toText().empty())
      texts[name] = value.toText();
  return texts;
}

ReadCards cards(const std::string& text) {
  return readCards(text, "a.vcf");
}

/// One card with these lines; its only contact.
MailboxItem card(const std::string& version, const std::string& lines) {
  const auto read = cards("BEGIN:VCARD\r\nVERSION:" + version + "\r\n" + lines + "END:VCARD\r\n");
  EXPECT_EQ(read.warnings, std::vector<std::string>{});
  return read.contacts.at(0);
}

TEST(VCardReader, ReadsACardAsOutlookWritesIt) {
  const auto contact = card("2.1",
                            "N;LANGUAGE=de;CHARSET=Windows-1252:M\xFCller;J\xFCrgen\r\n"
                            "FN;CHARSET=Windows-1252:Dr. J\xFCrgen M\xFCller\r\n"
                            "ORG:M\xFCller & S\xF6hne;Einkauf\r\n"
                            "NOTE;ENCODING=QUOTED-PRINTABLE;CHARSET=utf-8:Gr=C3=B6=\r\n"
                            "=C3=9Fe =3D 7=0D=0A=\r\n"
                            "\r\n"
                            "TEL;WORK;VOICE:030 23125 101\r\n"
                            "TEL;WORK;VOICE:030 23125 102\r\n"
                            "TEL;HOME;VOICE:030 23125 103\r\n"
                            "TEL;HOME;VOICE:030 23125 104\r\n"
                            "TEL;CELL;VOICE:030 23125 105\r\n"
                            "TEL;CAR;VOICE:030 23125 106\r\n"
                            "TEL;VOICE:030 23125 107\r\n"
                            "TEL;PREF:030 23125 108\r\n"
                            "TEL;PAGER:030 23125 109\r\n"
                            "TEL;ISDN:030 23125 110\r\n"
                            "TEL;WORK;FAX:030 23125 999\r\n"
                            "X-MS-TEL;VOICE;ASSISTANT:030 23125 111\r\n"
                            "X-MS-TEL;VOICE;CALLBACK:030 23125 112\r\n"
                            "X-MS-TEL;VOICE;COMPANY:030 23125 113\r\n"
                            "X-MS-TEL;VOICE;RADIO:030 23125 114\r\n"
                            "EMAIL;PREF;INTERNET:j@example.org\r\n"
                            "PHOTO;TYPE=JPEG;ENCODING=BASE64:\r\n"
                            " /9j/4AAQSkZJRgABAQ\r\n"
                            "\r\n");
  EXPECT_EQ(filled(contact), (Filled{{u"LastName", u"Müller"},
                                     {u"FirstName", u"Jürgen"},
                                     {u"LastNameAndFirstName", u"Müller, Jürgen"},
                                     {u"FullName", u"Dr. Jürgen Müller"},
                                     {u"CompanyName", u"Müller & Söhne"},
                                     {u"Department", u"Einkauf"},
                                     {u"Body", u"Größe = 7"},
                                     {u"Email1Address", u"j@example.org"},
                                     {u"BusinessTelephoneNumber", u"030 23125 101"},
                                     {u"Business2TelephoneNumber", u"030 23125 102"},
                                     {u"HomeTelephoneNumber", u"030 23125 103"},
                                     {u"Home2TelephoneNumber", u"030 23125 104"},
                                     {u"MobileTelephoneNumber", u"030 23125 105"},
                                     {u"CarTelephoneNumber", u"030 23125 106"},
                                     {u"OtherTelephoneNumber", u"030 23125 107"},
                                     {u"PrimaryTelephoneNumber", u"030 23125 108"},
                                     {u"PagerNumber", u"030 23125 109"},
                                     {u"ISDNNumber", u"030 23125 110"},
                                     {u"AssistantTelephoneNumber", u"030 23125 111"},
                                     {u"CallbackTelephoneNumber", u"030 23125 112"},
                                     {u"CompanyMainTelephoneNumber", u"030 23125 113"},
                                     {u"RadioTelephoneNumber", u"030 23125 114"}}));
}

TEST(VCardReader, UnderstandsTheFormsOfALine) {
  struct Row {
    const char *version, *lines;
    const char16_t *property, *text;
  };
  const Row rows[] = {
      {"3.0", "FN:A\r\n  long\r\n\t name\r\n", u"FullName", u"A long name"},
      {"2.1", "FN:A\r\n long name\r\n", u"FullName", u"A long name"},
      {"3.0", "FN:Smith\\, Sons\\; \\\\ Co\\nLtd\r\n", u"FullName", u"Smith, Sons; \\ Co Ltd"},
      {"3.0", "ORG:A\\;B\\, C;D\\\\;E\r\n", u"Department", u"D\\"},
      {"3.0", "ORG:A\\;B\\, C;D\r\n", u"CompanyName", u"A;B, C"},
      {"2.1", "ORG:C:\\new;D\r\n", u"CompanyName", u"C:\\new"},
      {"2.1", "N;QUOTED-PRINTABLE;CHARSET=ISO-8859-15:=A4uro=5C=3Bx;Jo\r\n", u"LastName",
       u"€uro;x"},
      {"2.1", "FN;ENCODING=QUOTED-PRINTABLE:a=b=4\r\n", u"FullName", u"a=b=4"},
      {"2.1", "FN;CHARSET=SHIFT_JIS;ENCODING=QUOTED-PRINTABLE:=93=8C=8B=9E\r\n", u"FullName",
       u"東京"},
      // The second byte of the first letter is a backslash's, that of the third a brace's.
      {"2.1", "ORG;CHARSET=SHIFT_JIS:\x95\x5C\x8E\xA6;\x83\x7D\r\n", u"CompanyName", u"表示"},
      {"2.1", "ORG;CHARSET=SHIFT_JIS:\x95\x5C\x8E\xA6;\x83\x7D\r\n", u"Department", u"マ"},
      {"3.0", "ORG:\r\nORG:One\r\nORG:Two;Sales\r\n", u"CompanyName", u"One"},
      {"3.0", "ORG:One\r\nORG:Two;Sales\r\n", u"Department", u""},
      {"3.0", "FN:Eva\r\nTEL;TYPE=work,\r\n  voice;X=\":\":\r\n 1\r\n", u"BusinessTelephoneNumber",
       u"1"},
      {"2.1", "FN;CHARSET=windows-1251;ENCODING=QUOTED-PRINTABLE:=C8=E2=E0=ED\r\n", u"FullName",
       u"Иван"},
      {"2.1", "FN:\xC3\x96l\r\n", u"FullName", u"Öl"},
      {"2.1", "FN:\xD6l \x80\r\n", u"FullName", u"Öl €"},
      {"3.0", "FN;CHARSET=UTF-8:\xD6l\r\n", u"FullName", u"Öl"},
      {"3.0", "FN:Eva\r\nitem1.TEL;type=pref:1\r\nitem1.X-ABLabel:_$!<Work>!$_\r\n",
       u"BusinessTelephoneNumber", u"1"},
      {"3.0", "FN:Eva\r\ntel ; type=Work , voice : 1 \r\n", u"BusinessTelephoneNumber", u"1"},
      {"3.0", "FN:Eva\r\nTEL;TYPE=WORK;TYPE=VOICE:1\r\n", u"BusinessTelephoneNumber", u"1"},
      {"4.0", "FN:Eva\r\nTEL;VALUE=uri;TYPE=\"voice,cell\":tel:+49-30-1;ext=5\r\n",
       u"MobileTelephoneNumber", u"+49-30-1 x5"},
      {"4.0", "FN;X-A=\"a:b;c\":Eva\r\n", u"FullName", u"Eva"},
      {"3.0", "FN:Eva\r\nEMAIL:a@a\r\nEMAIL;TYPE=PREF:mailto:b@b\r\n", u"Email1Address", u"b@b"},
      {"3.0", "N:Meier;Eva;Maria;Dr.;\r\n", u"LastNameAndFirstName", u"Meier, Eva Maria"},
      {"3.0", "N:Meier;Eva\r\n", u"FullName", u"Eva Meier"},
      {"3.0", "N:;;;;\r\nFN:Eva Maria Meier\r\n", u"LastNameAndFirstName", u"Meier, Eva Maria"},
      {"4.0", "FN:Meier, Eva\r\n", u"FirstName", u"Eva"},
      {"3.0", "FN:Smith Sons\r\nORG:Smith Sons\r\n", u"LastNameAndFirstName", u""},
      {"2.1", "FN:Eva\r\nAGENT:\r\nBEGIN:VCARD\r\nFN:Bob\r\nEND:VCARD\r\n", u"FullName", u"Eva"},
      {"2.1", "FN:Eva\r\nLOGO;BASE64:\r\nAAAA\r\nBBBB\r\nTITLE:Cook\r\n", u"JobTitle", u"Cook"},
  };
  for (const Row& row : rows)
    EXPECT_EQ(propertyText(card(row.version, row.lines), row.property), row.text) << row.lines;
}

TEST(VCardReader, PlacesNumbersByType) {
  struct Row {
    const char* lines;
    Filled numbers;
  };
  const Row rows[] = {
      {"TEL;TYPE=WORK,CELL:1\nTEL;TYPE=WORK:2\n",
       {{u"MobileTelephoneNumber", u"1"}, {u"BusinessTelephoneNumber", u"2"}}},
      {"TEL;WORK:1\nTEL;WORK;PREF:2\n",
       {{u"Business2TelephoneNumber", u"1"}, {u"BusinessTelephoneNumber", u"2"}}},
      {"TEL;WORK:1\nTEL;TYPE=work;PREF=1:2\n",
       {{u"Business2TelephoneNumber", u"1"}, {u"BusinessTelephoneNumber", u"2"}}},
      {"TEL;TYPE=MAIN:1\nTEL;X-ASSISTANT:2\nTEL;TYPE=X-EVOLUTION-CALLBACK:3\n",
       {{u"PrimaryTelephoneNumber", u"1"},
        {u"AssistantTelephoneNumber", u"2"},
        {u"CallbackTelephoneNumber", u"3"}}},
      {"TEL;TYPE=HOME,FAX:1\nTEL;MODEM:2\nTEL;TLX:3\nTEL;WORK;FAX;VOICE:4\n",
       {{u"BusinessTelephoneNumber", u"4"}}},
      // The second mobile must not take the place of the untyped number that follows.
      {"TEL;CELL:1\nTEL;CELL:2\nTEL:3\nTEL;X-Ferienhaus:4\nTEL;CELL:5\n",
       {{u"MobileTelephoneNumber", u"1"},
        {u"PrimaryTelephoneNumber", u"2"},
        {u"OtherTelephoneNumber", u"3"},
        {u"Home2TelephoneNumber", u"4"},
        {u"Business2TelephoneNumber", u"5"}}},
      {"TEL;TYPE=home;PREF=2:1\nTEL;TYPE=home;PREF=1:2\n",
       {{u"Home2TelephoneNumber", u"1"}, {u"HomeTelephoneNumber", u"2"}}},
      {"TEL;TYPE=PREF,VIDEO:1\n", {{u"OtherTelephoneNumber", u"1"}}},
      {"TEL;WORK:\nTEL;WORK: \nTEL;WORK:1\n", {{u"BusinessTelephoneNumber", u"1"}}},
      // Nothing can be told from this type, but that it is no telephone.
      {"TEL;FAX;VOICE:1\nTEL;TYPE=X-OTHERFAX:2\n", {}},
      {"TEL:tel:+49%2030;phone-context=x;EXT=5%206;a=b\nTEL;HOME:5%20;ext=6\n",
       {{u"OtherTelephoneNumber", u"+49 30 x5 6"}, {u"HomeTelephoneNumber", u"5%20;ext=6"}}},
  };
  for (const Row& row : rows) {
    Filled numbers = filled(card("3.0", std::string("FN:Eva\n") + row.lines));
    numbers.erase(u"FullName");
    numbers.erase(u"FirstName");
    numbers.erase(u"LastNameAndFirstName");
    EXPECT_EQ(numbers, row.numbers) << row.lines;
  }
}

TEST(VCardReader, LetsALabelDecideTheKind) {
  struct Row {
    const char *types, *label;
    const char16_t* property;  // null for a number that is left out
  };
  const Row rows[] = {
      {"type=HOME", "_$!<Mobile>!$_", u"MobileTelephoneNumber"},
      {"type=pref", "_$!<Work>!$_", u"BusinessTelephoneNumber"},
      {"type=WORK;type=pref", "_$!<Main>!$_", u"PrimaryTelephoneNumber"},
      {"type=VOICE", "_$!<AssistantPhone>!$_", u"AssistantTelephoneNumber"},
      {"type=VOICE", "_$!<HomeFAX>!$_", nullptr},
      {"type=CELL;type=VOICE", "Fax", nullptr},
      {"type=FAX;type=VOICE", "_$!<Other>!$_", nullptr},
      {"type=HOME", "_$!<Other>!$_", u"OtherTelephoneNumber"},
      {"type=HOME", "iPhone", u"MobileTelephoneNumber"},
      {"type=HOME", "work mobile", u"MobileTelephoneNumber"},
      {"type=HOME", "Pager", u"PagerNumber"},
      {"type=HOME", "Bricklayer", u"HomeTelephoneNumber"},
      {"type=HOME", "homework", u"HomeTelephoneNumber"},
      {"", "Office", u"BusinessTelephoneNumber"},
  };
  for (const Row& row : rows) {
    const auto contact = card("3.0", std::string("FN:Eva\nitem2.X-ABLabel:Car\nITEM1.TEL;") +
                                         row.types + ":1\nitem1.X-ABLabel:" + row.label + "\n");
    for (const auto& telephone : simulator::TelephoneProperties) {
      const auto name = automation::widen(telephone.name);
      const bool here = row.property && name == row.property;
      EXPECT_EQ(propertyText(contact, name), here ? u"1" : u"") << row.types << " " << row.label;
    }
  }
}

TEST(VCardReader, SkipsBadCardsAndKeepsTheGoodOnes) {
  struct Row {
    std::string text;
    std::vector<std::u16string> names;
    std::vector<std::string> warnings;
  };
  const std::string good = "BEGIN:VCARD\nVERSION:3.0\nFN:Good\nEND:VCARD\n";  // 4 lines
  const Row rows[] = {
      {"", {}, {"a.vcf: the file is empty"}},
      {"\xEF\xBB\xBF\r\n", {}, {"a.vcf: the file is empty"}},
      {"<html>\n</html>\n",
       {},
       {"a.vcf: this is no address book: no card begins in it (BEGIN:VCARD)"}},
      {"\xEF\xBB\xBF" + good + "\n\n" + good, {u"Good", u"Good"}, {}},
      {"begin : vcard\rfn:Mac\rend:vcard", {u"Mac"}, {}},
      {"BEGIN:VCARD\nX-A/B:1\n 2\nFN:Ann\nADR:;;Main St\nSpring\nfield\nTITLE:x\nEND:VCARD\n",
       {u"Ann"},
       {"a.vcf: line 2: line passed over: no property of the form NAME:VALUE",
        "a.vcf: line 6: line passed over: no property of the form NAME:VALUE"}},
      {"BEGIN:VCARD\nFN:Bad\n" + good,
       {u"Good"},
       {"a.vcf: line 1: card skipped: it has no END:VCARD"}},
      {good + "BEGIN:VCARD\nFN:Bad\n",
       {u"Good"},
       {"a.vcf: line 5: card skipped: it has no END:VCARD"}},
      {"hello\nworld\n" + good + "END:VCARD\n",
       {u"Good"},
       {"a.vcf: line 1: text outside of a card", "a.vcf: line 7: text outside of a card"}},
      {"BEGIN:VCARD\nVERSION:5.0\nFN:Bad\nEND:VCARD\n" + good,
       {u"Good"},
       {"a.vcf: line 1: card skipped: its version is not 2.1, 3.0 or 4.0"}},
      {"BEGIN:VCARD\nFN:Ann\nTITLE;CHARSET=KLINGON:Bad\nEND:VCARD\n",
       {u"Ann"},
       {"a.vcf: line 3: line passed over: unknown character set \"KLINGON\""}},
      {"BEGIN:VCARD\nN;CHARSET=K\xFF:Bad\nEND:VCARD\n" + good,
       {u"Good"},
       {"a.vcf: line 1: card skipped: it holds neither a name nor a company nor a number",
        "a.vcf: line 2: line passed over: unknown character set"}},
      {"BEGIN:VCARD\nVERSION:3.0\nTITLE:Nobody\nEND:VCARD\n" + good,
       {u"Good"},
       {"a.vcf: line 1: card skipped: it holds neither a name nor a company nor a number"}},
      {"BEGIN:VCARD\nFN:Team\nX-ADDRESSBOOKSERVER-KIND:group\nEND:VCARD\n" + good,
       {u"Good"},
       {"a.vcf: line 1: card skipped: it is a group, no contact"}},
      {"BEGIN:VCARD\nFN:Many\nTEL:1\nTEL:2\nTEL:3\nTEL:4\nTEL:5\nTEL:6\nTEL:7\nTEL:8\nTEL:9\nTEL:"
       "10\n"
       "TEL:11\nTEL:12\nTEL:13\nTEL:14\nTEL:15\nEND:VCARD\n",
       {u"Many"},
       {"a.vcf: line 17: number left out: 15, the contact has no property left for it"}},
  };
  for (const Row& row : rows) {
    const ReadCards read = cards(row.text);
    std::vector<std::u16string> names;
    for (const auto& contact : read.contacts) names.push_back(propertyText(contact, u"FullName"));
    EXPECT_EQ(names, row.names) << row.text;
    EXPECT_EQ(read.warnings, row.warnings) << row.text;
  }
  EXPECT_THROW(readCardFile("/no such/book.vcf"), InputError);
}

TEST(VCardReader, KnowsUtf16ByItsMark) {
  const std::u16string text =
      u"BEGIN:VCARD\r\nVERSION:2.1\r\nFN;CHARSET=ISO-8859-1:\u00D6l \u6771\r\nEND:VCARD\r\n";
  for (const bool little : {true, false}) {
    std::string bytes;
    for (const char16_t c : u"\uFEFF" + text) {
      bytes += static_cast<char>(little ? c & 0xFF : c >> 8);
      bytes += static_cast<char>(little ? c >> 8 : c & 0xFF);
    }
    const ReadCards read = cards(bytes);
    ASSERT_EQ(read.contacts.size(), 1u);
    EXPECT_EQ(propertyText(read.contacts[0], u"FullName"), u"\u00D6l \u6771");
  }
}

TEST(VCardReader, CountsWhatItLeavesOut) {
  const ReadCards read = cards(
      "BEGIN:VCARD\nFN:A\nTEL;FAX:1\nTEL;HOME;FAX;VOICE:2\nTEL;HOME:3\nTEL;HOME;FAX;VOICE:4\n"
      "END:VCARD\nBEGIN:VCARD\nEND:VCARD\nBEGIN:VCARD\nTEL;HOME;FAX;VOICE:5\nTEL:6\nEND:VCARD\n");
  EXPECT_EQ(read.summary(),
            "2 cards read, 1 skipped, 2 numbers left out (1 of them faxes and the like)");
  EXPECT_EQ(cards("BEGIN:VCARD\nFN:A\nEND:VCARD\n").summary(),
            "1 card read, 0 skipped, 0 numbers left out");
}

// Whatever is cut off or damaged, reading ends and never throws.
TEST(VCardReader, SurvivesDamage) {
  const std::string whole =
      "BEGIN:VCARD\r\nVERSION:2.1\r\nN;CHARSET=UTF-8;ENCODING=QUOTED-PRINTABLE:M=C3=BC=\r\n"
      "ller;\\;J\r\nTEL;WORK:1\r\n 2\r\nAGENT:\r\nBEGIN:VCARD\r\nEND:VCARD\r\nEND:VCARD\r\n";
  for (std::size_t i = 0; i < whole.size(); ++i) {
    for (const char c : {'=', '\\', '\n', ' ', ':', ';', '"', '\0', '\xFF'}) {
      std::string damaged = whole;
      damaged[i] = c;
      ASSERT_LE(cards(damaged).contacts.size(), 2u);
    }
    ASSERT_LE(cards(whole.substr(0, i)).contacts.size(), 1u);
    ASSERT_LE(cards(whole.substr(i)).contacts.size(), 1u);
  }
}

TEST(VCardReader, AddsContactsWithIdsOfTheirOwn) {
  auto mailbox = readMailbox(R"({"folders":[
      {"name":"Inbox","holds":"mail","store":"S","items":[{"id":"CARD-2"}]}]})",
                             "m.json");
  const auto read = cards("BEGIN:VCARD\nFN:One\nEND:VCARD\nBEGIN:VCARD\nFN:Two\nEND:VCARD\n");
  addContacts(mailbox, read.contacts);
  ASSERT_EQ(mailbox.folders.size(), 2u) << "a folder for contacts is made";
  EXPECT_EQ(mailbox.folders[1].itemType, outlook::ItemType::Contact);
  EXPECT_EQ(mailbox.folders[1].storeId, u"S");

  addContacts(mailbox, read.contacts);
  ASSERT_EQ(mailbox.folders.size(), 2u) << "and used again";
  std::set<std::u16string> ids{u"CARD-2", mailbox.folders[0].id, mailbox.folders[1].id};
  for (const auto& contact : mailbox.folders[1].items) ids.insert(contact.id);
  EXPECT_EQ(ids.size(), 7u);
}

}  // namespace
}  // namespace demo
