#include "simulator/data/ItemReader.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "platform/conversions.h"
#include "simulator/data/Contact.h"
#include "simulator/data/Date.h"

namespace simulator {
namespace {

constexpr std::string_view CommonKeys[] = {"kind",  "id",          "userProperties",
                                           "links", "attachments", "people"};

struct Person {
  std::u16string name;
  TextList addresses;
  TextList numbers;
};

TextList readTexts(const JsonNode& node) {
  TextList texts;
  for (const JsonNode& element : node.elements()) texts.push_back(element.text());
  return texts;
}

/// An address alone, or an object.
Person readPerson(const JsonNode& node, std::size_t mostAddresses) {
  if (node.isText()) return {node.text(), {node.text()}, {}};
  node.checkKeys({"name", "address", "addresses", "numbers"});
  Person person;
  if (const auto address = node.find("address")) {
    if (const auto more = node.find("addresses"))
      more->fail("expected \"address\" or \"addresses\", found both");
    person.addresses = {address->text()};
  }
  if (const auto addresses = node.find("addresses")) {
    person.addresses = readTexts(*addresses);
    if (person.addresses.size() > mostAddresses)
      addresses->failExpected(mostAddresses == 1 ? "one address" : "at most 2 addresses",
                              std::to_string(person.addresses.size()));
  }
  if (const auto numbers = node.find("numbers")) person.numbers = readTexts(*numbers);
  if (const auto name = node.find("name"))
    person.name = name->text();
  else if (!person.addresses.empty())
    person.name = person.addresses.front();
  else
    node.fail("expected \"name\" or \"address\", found neither");
  return person;
}

/// Reads one item, property by property.
class Reader {
 public:
  Reader(const JsonNode& node, const ItemSurroundings& surroundings)
      : node_(node), surroundings_(surroundings), kind_(kindOf(node, surroundings)) {}

  MailboxItem read() {
    checkKeys();
    if (kind_.objectClass == outlook::ObjectClass::Contact) item_ = emptyContact();
    item_.kind = kind_.objectClass;
    set(u"MessageClass", std::u16string(kind_.messageClass));
    readCommon();
    for (const ItemField& field : kind_.fields) readField(field);
    readPeople();
    for (const std::string_view key : kind_.specialKeys) readSpecial(key);
    finish();
    return std::move(item_);
  }

 private:
  static const ItemKind& kindOf(const JsonNode& node, const ItemSurroundings& surroundings) {
    const auto named = node.find("kind");
    if (!named) return surroundings.defaultKind;
    std::vector<std::string_view> words;
    for (const ItemKind& kind : itemKinds()) {
      if (automation::widen(kind.word) == named->text()) return kind;
      words.push_back(kind.word);
    }
    named->fail("unknown kind, expected " + wordList(words));
  }

  void checkKeys() const {
    std::vector<std::string_view> keys(std::begin(CommonKeys), std::end(CommonKeys));
    for (const ItemField& field : kind_.fields) keys.push_back(field.key);
    if (!kind_.sender.key.empty()) keys.push_back(kind_.sender.key);
    keys.insert(keys.end(), kind_.recipientKeys.begin(), kind_.recipientKeys.end());
    keys.insert(keys.end(), kind_.specialKeys.begin(), kind_.specialKeys.end());
    node_.checkKeys(keys);
  }

  void set(std::u16string_view property, automation::Value value) {
    item_.properties.insert_or_assign(std::u16string(property), std::move(value));
  }

  void readCommon() {
    if (const auto id = node_.find("id")) item_.id = id->filledText();
    if (const auto links = node_.find("links")) item_.links = readTexts(*links);
    if (const auto names = node_.find("attachments")) item_.attachments = readTexts(*names);
    const auto properties = node_.find("userProperties");
    if (!properties) return;
    for (const auto& [name, value] : properties->members())
      item_.userProperties[name] = value.text();
  }

  void readField(const ItemField& field) {
    const auto found = field.required ? node_.at(field.key) : node_.find(field.key);
    if (!found) return set(field.property, u"");
    if (field.type == FieldType::Text) return set(field.property, found->text());
    const auto date = normalizedDate(found->text());
    if (!date) found->failExpected("a date like 2008-03-07 or 2008-03-07T09:30", "another text");
    set(field.property, *date);
  }

  void addNumbers(const Person& person) {
    for (const std::u16string& number : person.numbers) {
      item_.mapi.telephoneNames.push_back(person.name);
      item_.mapi.telephoneNumbers.push_back(number);
    }
  }

  void readPeople() {
    MapiFacts& mapi = item_.mapi;
    if (!kind_.sender.key.empty()) {
      if (const auto sender = node_.find(kind_.sender.key)) {
        const Person person = readPerson(*sender, mapi.senderAddresses.size());
        mapi.name = person.name;
        std::ranges::copy(person.addresses, mapi.senderAddresses.begin());
        addNumbers(person);
      }
      set(kind_.sender.property, mapi.name);
    }
    for (std::size_t i = 0; i < kind_.recipientKeys.size(); ++i) readRecipients(i);
    if (const auto people = node_.find("people"))
      for (const JsonNode& person : people->elements()) addNumbers(readPerson(person, 1));
  }

  void readRecipients(std::size_t list) {
    const auto recipients = node_.find(kind_.recipientKeys[list]);
    std::u16string names;
    if (recipients) {
      for (const JsonNode& element : recipients->elements()) {
        const Person person = readPerson(element, 1);
        const bool hasAddress = !person.addresses.empty();
        item_.mapi.recipients[list].push_back(hasAddress ? person.addresses.front() : u"");
        addNumbers(person);
        names += (names.empty() ? u"" : u"; ") + person.name;
      }
    }
    constexpr std::u16string_view Properties[] = {u"To", u"CC", u"BCC"};
    if (list < std::size(Properties)) set(Properties[list], names);
    if (list == 0) item_.mapi.displayTo = names;
  }

  void readSpecial(std::string_view key) {
    const auto found = node_.find(key);
    if (key == "sent") set(u"Sent", found ? found->boolean() : !surroundings_.outbox);
    if (key == "received") readReceived(found);
    if (!found) return;
    if (key == "wordMail") item_.wordMail = found->boolean();
    if (key == "appointment") item_.associatedAppointment = found->filledText();
    if (key == "phones") readPhones(*found);
    if (key == "email") readEmail(*found);
  }

  /// True, false or the receiver's name.
  void readReceived(const std::optional<JsonNode>& node) {
    std::u16string& receivedBy = item_.mapi.receivedBy;
    if (node && node->isText()) {
      receivedBy = node->text();
    } else if (node && !node->isBoolean()) {
      node->failExpected("true, false or the receiver's name");
    } else if (node ? node->boolean() : isReceivedByDefault()) {
      receivedBy = surroundings_.user;
      // A received item must name somebody, or it would count as sent.
      if (receivedBy.empty()) receivedBy = u"Mailbox owner";
    }
    set(u"ReceivedByName", receivedBy);
  }

  /// An item that waits to be sent or was written by the mailbox's own user was not received.
  bool isReceivedByDefault() const {
    const auto sent = node_.find("sent");
    const bool isSent = sent ? sent->boolean() : !surroundings_.outbox;
    return isSent && (surroundings_.user.empty() || item_.mapi.name != surroundings_.user);
  }

  void readPhones(const JsonNode& node) {
    std::vector<std::string_view> allowed;
    for (const auto& telephone : TelephoneProperties) allowed.push_back(telephone.shortName);
    for (const auto& telephone : TelephoneProperties) allowed.push_back(telephone.name);
    node.checkKeys(allowed);
    for (const auto& telephone : TelephoneProperties) {
      const auto brief = node.find(telephone.shortName);
      const auto full = node.find(telephone.name);
      if (brief && full)
        full->fail("the number stands twice, also as \"" + std::string(telephone.shortName) + "\"");
      if (brief || full) set(automation::widen(telephone.name), (brief ? brief : full)->text());
    }
  }

  /// One address or a list.
  void readEmail(const JsonNode& node) {
    const TextList addresses = node.isText() ? TextList{node.text()} : readTexts(node);
    if (addresses.size() > EmailProperties.size())
      node.failExpected("at most " + std::to_string(EmailProperties.size()) + " addresses",
                        std::to_string(addresses.size()));
    for (std::size_t i = 0; i < addresses.size(); ++i) set(EmailProperties[i], addresses[i]);
  }

  /// What follows from the other properties.
  void finish() {
    using outlook::ObjectClass;
    switch (item_.kind) {
      case ObjectClass::Contact: formContactNames(item_); break;
      case ObjectClass::DistributionList: set(u"Subject", propertyText(item_, u"DLName")); break;
      case ObjectClass::Note: {
        const std::u16string body = propertyText(item_, u"Body");
        set(u"Subject", body.substr(0, body.find_first_of(u"\r\n")));
        break;
      }
      case ObjectClass::Appointment:
        if (propertyText(item_, u"End").empty()) set(u"End", propertyText(item_, u"Start"));
        break;
      default: break;
    }
  }

  const JsonNode& node_;
  const ItemSurroundings& surroundings_;
  const ItemKind& kind_;
  MailboxItem item_;
};

}  // namespace

MailboxItem readItem(const JsonNode& node, const ItemSurroundings& surroundings) {
  return Reader(node, surroundings).read();
}

}  // namespace simulator
