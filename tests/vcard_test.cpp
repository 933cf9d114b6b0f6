// Address books as Outlook, telephones and web services write them.
#include <gtest/gtest.h>

#include <map>
#include <set>

#include "simulator/data/Contact.h"
#include "simulator/data/MailboxReader.h"
#include "simulator/data/VCardReader.h"

namespace simulator {
namespace {

using Texts = std::map<std::u16string, std::u16string>;

/// The texts of a contact that are not empty, without those that only repeat others.
Texts filled(const MailboxItem& contact) {
  Texts texts;
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
  EXPECT_EQ(filled(contact), (Texts{{u"LastName", u"Müller"},
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
      {"2.1", "N;QUOTED-PRINTABLE;CHARSET=ISO-8859-15:=A4uro=3Bx;Jo\r\n", u"LastName", u"€uro;x"},
      {"2.1", "FN;ENCODING=QUOTED-PRINTABLE:a=b=4\r\n", u"FullName", u"a=b=4"},
      {"2.1", "FN;CHARSET=SHIFT_JIS;ENCODING=QUOTED-PRINTABLE:=93=8C=8B=9E\r\n", u"FullName",
       u"東京"},
      {"2.1", "FN;CHARSET=windows-1251;ENCODING=QUOTED-PRINTABLE:=C8=E2=E0=ED\r\n", u"FullName",
       u"Иван"},
      {"2.1", "FN:\xC3\x96l\r\n", u"FullName", u"Öl"},
      {"2.1", "FN:\xD6l \x80\r\n", u"FullName", u"Öl €"},
      {"3.0", "FN;CHARSET=UTF-8:\xD6l\r\n", u"FullName", u"Öl"},
      {"3.0", "FN:Eva\r\nitem1.TEL;type=pref:1\r\nitem1.X-ABLabel:_$!<Work>!$_\r\n",
       u"PrimaryTelephoneNumber", u"1"},
      {"3.0", "FN:Eva\r\ntel ; type=Work , voice : 1 \r\n", u"BusinessTelephoneNumber", u"1"},
      {"3.0", "FN:Eva\r\nTEL;TYPE=WORK;TYPE=VOICE:1\r\n", u"BusinessTelephoneNumber", u"1"},
      {"4.0", "FN:Eva\r\nTEL;VALUE=uri;TYPE=\"voice,cell\":tel:+49-30-1;ext=5\r\n",
       u"MobileTelephoneNumber", u"+49-30-1"},
      {"4.0", "FN;X-A=\"a:b;c\":Eva\r\n", u"FullName", u"Eva"},
      {"3.0", "FN:Eva\r\nEMAIL:a@a\r\nEMAIL;TYPE=PREF:mailto:b@b\r\n", u"Email1Address", u"b@b"},
      {"3.0", "N:Meier;Eva;Maria;Dr.;\r\n", u"LastNameAndFirstName", u"Meier, Eva Maria"},
      {"3.0", "N:Meier;Eva\r\n", u"FullName", u"Eva Meier"},
      {"3.0", "N:;;;;\r\nFN:Eva Maria Meier\r\n", u"LastNameAndFirstName", u"Meier, Eva Maria"},
      {"4.0", "FN:Meier, Eva\r\n", u"FirstName", u"Eva"},
      {"3.0", "FN:Smith Sons\r\nORG:Smith Sons\r\n", u"LastNameAndFirstName", u""},
      {"2.1", "FN:Eva\r\nAGENT:\r\nBEGIN:VCARD\r\nFN:Bob\r\nEND:VCARD\r\n", u"FullName", u"Eva"},
      {"2.1", "FN:Eva\r\nLOGO;BASE64:\r\nAAAA\r\nBBBB\r\nFN:Adam\r\n", u"FullName", u"Adam"},
  };
  for (const Row& row : rows)
    EXPECT_EQ(propertyText(card(row.version, row.lines), row.property), row.text) << row.lines;
}

TEST(VCardReader, PlacesNumbersByType) {
  struct Row {
    const char* lines;
    Texts numbers;
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
  };
  for (const Row& row : rows) {
    Texts numbers = filled(card("3.0", std::string("FN:Eva\n") + row.lines));
    numbers.erase(u"FullName");
    numbers.erase(u"FirstName");
    numbers.erase(u"LastNameAndFirstName");
    EXPECT_EQ(numbers, row.numbers) << row.lines;
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
      {"", {}, {}},
      {"\xEF\xBB\xBF" + good + "\n\n" + good, {u"Good", u"Good"}, {}},
      {"begin : vcard\rfn:Mac\rend:vcard", {u"Mac"}, {}},
      {good + "BEGIN:VCARD\nFN:Bad\nnonsense\nEND:VCARD\n" + good,
       {u"Good", u"Good"},
       {"a.vcf: line 7: card skipped: no property of the form NAME:VALUE"}},
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
      {"BEGIN:VCARD\nFN;CHARSET=KLINGON:Bad\nEND:VCARD\n" + good,
       {u"Good"},
       {"a.vcf: line 2: card skipped: unknown character set \"KLINGON\""}},
      {"BEGIN:VCARD\nFN;CHARSET=K\xFF:Bad\nEND:VCARD\n" + good,
       {u"Good"},
       {"a.vcf: line 2: card skipped: unknown character set"}},
      {"BEGIN:VCARD\nVERSION:3.0\nTITLE:Nobody\nEND:VCARD\n" + good,
       {u"Good"},
       {"a.vcf: line 1: card skipped: it holds neither a name nor a company nor a number"}},
      {"BEGIN:VCARD\nFN:Team\nX-ADDRESSBOOKSERVER-KIND:group\nEND:VCARD\n" + good,
       {u"Good"},
       {"a.vcf: line 3: card skipped: it is a group, no contact"}},
      {"BEGIN:VCARD\nFN:Many\nTEL:1\nTEL:2\nTEL:3\nTEL:4\nTEL:5\nEND:VCARD\n",
       {u"Many"},
       {"a.vcf: line 7: number left out: the contact has no property left for it"}},
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
}  // namespace simulator
