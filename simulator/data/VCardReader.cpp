// Why no library: of those in Debian that read both 2.1 and 3.0, KContacts brings Qt and
// evolution-data-server's libebook-contacts brings half a desktop, which costs more start-up time
// than a scenario may take; libvformat has had no upstream for years; libbelcard knows no 2.1. And
// none of them tells the line of a bad card or keeps the good cards around it.
#include "simulator/data/VCardReader.h"

#include <algorithm>
#include <optional>
#include <set>

#include "platform/conversions.h"
#include "simulator/data/Contact.h"
#include "simulator/data/JsonNode.h"
#include "simulator/data/TelephoneTypes.h"
#include "simulator/data/Utf8.h"
#include "simulator/data/VCardProperty.h"

namespace simulator {
namespace {

/// Collects the properties of one card into a contact.
class CardReader {
 public:
  CardReader(const CardText& card, std::vector<CardWarning>& warnings)
      : card_(card), warnings_(warnings) {}

  /// Raises CardError.
  MailboxItem read() {
    for (const CardLine& line : card_.lines) readProperty(parseProperty(line, card_.version));
    std::stable_partition(emails_.begin(), emails_.end(),
                          [](const auto& email) { return email.hasType("PREF"); });
    for (std::size_t i = 0; i < std::min(emails_.size(), EmailProperties.size()); ++i)
      set(EmailProperties[i], addressOf(emails_[i]));
    for (const std::size_t line : placeTelephones(contact_, telephones_))
      warnings_.push_back({line, "number left out: the contact has no property left for it"});
    if (!lastAndFirstKnown_) splitFullName();
    formContactNames(contact_);
    if (isNameless())
      throw CardError(card_.line, "it holds neither a name nor a company nor a number");
    return std::move(contact_);
  }

 private:
  void set(std::u16string_view property, std::u16string text) {
    // Names of several lines would tear menus and captions.
    if (property != u"Body") std::ranges::replace(text, u'\n', u' ');
    contact_.properties.insert_or_assign(std::u16string(property), std::move(text));
  }

  void setParts(const CardProperty& property, std::initializer_list<std::u16string_view> names) {
    const auto parts = property.parts();
    for (std::size_t i = 0; i < std::min(parts.size(), names.size()); ++i)
      set(names.begin()[i], parts[i]);
  }

  void readProperty(const CardProperty& property) {
    if (isTelephone(property)) telephones_.push_back(property);
    if (property.name == "EMAIL" && !property.hasType("X400") && !property.hasType("TLX"))
      emails_.push_back(property);
    if (property.name == "N") {
      setParts(property, {u"LastName", u"FirstName", u"MiddleName"});
      lastAndFirstKnown_ = !propertyText(contact_, u"LastName").empty() ||
                           !propertyText(contact_, u"FirstName").empty();
    }
    if (property.name == "FN") set(u"FullName", property.text());
    if (property.name == "ORG") setParts(property, {u"CompanyName", u"Department"});
    if (property.name == "TITLE") set(u"JobTitle", property.text());
    if (property.name == "NOTE") set(u"Body", property.text());
    const bool kind = property.name == "KIND" || property.name == "X-ADDRESSBOOKSERVER-KIND";
    if (kind && upperCase(property.value) == "GROUP")
      throw CardError(property.line, "it is a group, no contact");
  }

  static std::u16string addressOf(const CardProperty& email) {
    std::u16string address = email.text();
    if (upperCase(std::string_view(email.value).substr(0, 7)) == "MAILTO:") address.erase(0, 7);
    return address;
  }

  /// Web address books often write the full name alone.
  void splitFullName() {
    const std::u16string full = propertyText(contact_, u"FullName");
    if (full == propertyText(contact_, u"CompanyName")) return;  // a company's card
    if (const auto comma = full.find(u", "); comma != std::u16string::npos) {
      set(u"LastName", full.substr(0, comma));
      set(u"FirstName", full.substr(comma + 2));
    } else if (const auto blank = full.rfind(u' '); blank != std::u16string::npos) {
      set(u"LastName", full.substr(blank + 1));
      set(u"FirstName", full.substr(0, blank));
    } else {
      set(u"FirstName", full);
    }
  }

  bool isNameless() const {
    const auto filled = [this](std::u16string_view name) {
      return !propertyText(contact_, name).empty();
    };
    if (filled(u"FullName") || filled(u"CompanyName") || filled(u"Email1Address")) return false;
    return std::ranges::none_of(TelephoneProperties, [&](const auto& telephone) {
      return filled(automation::widen(telephone.name));
    });
  }

  const CardText& card_;
  std::vector<CardWarning>& warnings_;
  MailboxItem contact_ = emptyContact();
  std::vector<CardProperty> telephones_;
  std::vector<CardProperty> emails_;
  bool lastAndFirstKnown_ = false;
};

std::set<std::u16string> idsOf(const Mailbox& mailbox) {
  std::set<std::u16string> ids;
  for (const MailboxFolder& folder : mailbox.folders) {
    ids.insert(folder.id);
    for (const MailboxItem& item : folder.items) ids.insert(item.id);
  }
  return ids;
}

/// Numbers ids upwards and passes over those that are taken.
class FreeIds {
 public:
  explicit FreeIds(const Mailbox& mailbox) : taken_(idsOf(mailbox)) {}
  std::u16string next(std::u16string_view prefix) {
    for (;;) {
      std::u16string id = std::u16string(prefix) + automation::widen(std::to_string(++last_));
      if (taken_.insert(id).second) return id;
    }
  }

 private:
  std::set<std::u16string> taken_;
  int last_ = 0;
};

}  // namespace

ReadCards readCards(std::string_view bytes, std::string_view fileName) {
  CardFile file = splitCards(bytes);
  ReadCards result;
  for (const CardText& card : file.cards) {
    std::vector<CardWarning> warnings;
    try {
      result.contacts.push_back(CardReader(card, warnings).read());
      file.warnings.insert(file.warnings.end(), warnings.begin(), warnings.end());
    } catch (const CardError& error) {
      file.warnings.push_back({error.line, std::string("card skipped: ") + error.what()});
    }
  }
  std::ranges::stable_sort(file.warnings, {}, &CardWarning::line);
  for (const CardWarning& warning : file.warnings)
    result.warnings.push_back(std::string(fileName) + ": line " + std::to_string(warning.line) +
                              ": " + warning.text);
  return result;
}

ReadCards readCardFile(const std::string& path) {
  const auto bytes = readWholeFile(path);
  if (!bytes) throw InputError(path + ": can't be read");
  return readCards(*bytes, path);
}

void addContacts(Mailbox& mailbox, std::vector<MailboxItem> contacts) {
  FreeIds ids(mailbox);
  const auto holdsContacts = [](const MailboxFolder& folder) {
    return folder.itemType == outlook::ItemType::Contact;
  };
  auto folder = std::ranges::find_if(mailbox.folders, holdsContacts);
  if (folder == mailbox.folders.end()) {
    const auto store = mailbox.folders.empty() ? u"STORE" : mailbox.folders.front().storeId;
    mailbox.folders.push_back({.name = u"Contacts",
                               .id = ids.next(u"CARDS-"),
                               .storeId = store,
                               .itemType = outlook::ItemType::Contact,
                               .outbox = false,
                               .items = {}});
    folder = std::prev(mailbox.folders.end());
  }
  for (MailboxItem& contact : contacts) {
    contact.id = ids.next(u"CARD-");
    folder->items.push_back(std::move(contact));
  }
}

}  // namespace simulator
