// Why no library: of those in Debian that read both 2.1 and 3.0, KContacts brings Qt and
// evolution-data-server's libebook-contacts brings half a desktop, which costs more start-up time
// than a scenario may take; libvformat has had no upstream for years; libbelcard knows no 2.1. And
// none of them tells the line of a bad card or keeps the good cards around it.
#include "demo/import/VCardReader.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

#include "demo/import/TelephoneTypes.h"
#include "demo/import/VCardLines.h"
#include "platform/conversions.h"
#include "simulator/data/Contact.h"
#include "simulator/data/JsonNode.h"
#include "simulator/data/Utf8.h"
#include "simulator/player/Text.h"

namespace demo {
namespace {

using simulator::EmailProperties;
using simulator::InputError;
using simulator::Mailbox;
using simulator::MailboxFolder;
using simulator::MailboxItem;
using simulator::propertyText;
using simulator::TelephoneProperties;

/// Collects the properties of one card into a contact.
class CardReader {
 public:
  CardReader(const CardText& card, ReadCards& result, std::vector<CardWarning>& warnings)
      : card_(card), result_(result), warnings_(warnings) {}

  /// Raises CardError.
  MailboxItem read() {
    for (const CardProperty& property : card_.properties) {
      if (isGroup(property)) throw CardError("it is a group, no contact");
      try {
        readProperty(property);
      } catch (const CardError& error) {
        warnings_.push_back({property.line, std::string("line passed over: ") + error.what()});
      }
    }
    std::stable_partition(emails_.begin(), emails_.end(),
                          [](const auto& email) { return email.hasType("PREF"); });
    for (std::size_t i = 0; i < std::min(emails_.size(), EmailProperties.size()); ++i)
      set(EmailProperties[i], addressOf(emails_[i]));
    placeNumbers();
    if (!lastAndFirstKnown_) splitFullName();
    simulator::formContactNames(contact_);
    if (isNameless()) throw CardError("it holds neither a name nor a company nor a number");
    return std::move(contact_);
  }

 private:
  static bool isGroup(const CardProperty& property) {
    const bool kind = property.name == "KIND" || property.name == "X-ADDRESSBOOKSERVER-KIND";
    return kind && upperCase(property.value) == "GROUP";
  }

  void placeNumbers() {
    for (CardProperty& telephone : telephones_)
      if (const auto label = labels_.find(telephone.group);
          label != labels_.end() && !telephone.group.empty())
        applyLabel(telephone, label->second);
    const LeftOutNumbers left = placeTelephones(contact_, telephones_);
    for (const auto& number : left.homeless)
      warnings_.push_back({number.line, "number left out: " + scenario::oneLine(number.text) +
                                            ", the contact has no property left for it"});
    result_.numbersLeftOut += left.homeless.size() + left.notForSpeech;
    result_.faxes += left.notForSpeech;
  }

  void set(std::u16string_view property, std::u16string text) {
    // Names of several lines would tear menus and captions.
    if (property != u"Body") std::ranges::replace(text, u'\n', u' ');
    if (!text.empty()) filled_.insert(property);
    contact_.properties.insert_or_assign(std::u16string(property), std::move(text));
  }

  bool has(std::u16string_view property) const { return filled_.contains(property); }

  /// A card may have a property twice, the first of which is the one that counts.
  void setFirst(const CardProperty& property, std::u16string_view name) {
    if (!has(name)) set(name, property.text());
  }

  void setFirstParts(const CardProperty& property,
                     std::initializer_list<std::u16string_view> names) {
    if (std::ranges::any_of(names, [this](auto name) { return has(name); })) return;
    const auto parts = property.parts();
    for (std::size_t i = 0; i < std::min(parts.size(), names.size()); ++i)
      set(names.begin()[i], parts[i]);
  }

  void readProperty(const CardProperty& property) {
    if (property.name == "X-ABLABEL") labels_.emplace(property.group, property.text());
    if (isTelephone(property) && !property.text().empty()) telephones_.push_back(property);
    if (property.name == "EMAIL" && !property.hasType("X400") && !property.hasType("TLX") &&
        !property.text().empty())
      emails_.push_back(property);
    if (property.name == "N") {
      setFirstParts(property, {u"LastName", u"FirstName", u"MiddleName"});
      lastAndFirstKnown_ = has(u"LastName") || has(u"FirstName");
    }
    if (property.name == "FN") setFirst(property, u"FullName");
    if (property.name == "ORG") setFirstParts(property, {u"CompanyName", u"Department"});
    if (property.name == "TITLE") setFirst(property, u"JobTitle");
    if (property.name == "NOTE") setFirst(property, u"Body");
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
  ReadCards& result_;
  std::vector<CardWarning>& warnings_;
  MailboxItem contact_ = simulator::emptyContact();
  /// What a line of the card has given; the names are constants.
  std::set<std::u16string_view> filled_;
  std::map<std::string, std::u16string> labels_;  // by group
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

std::string ReadCards::summary() const {
  const auto counted = [](std::size_t count, const std::string& thing) {
    return std::to_string(count) + " " + thing + (count == 1 ? "" : "s");
  };
  std::string text = counted(contacts.size(), "card") + " read, " + std::to_string(skipped) +
                     " skipped, " + counted(numbersLeftOut, "number") + " left out";
  if (faxes > 0) text += " (" + std::to_string(faxes) + " of them faxes and the like)";
  return text;
}

ReadCards readCards(std::string_view bytes, std::string_view fileName) {
  const std::string file(fileName);
  ReadCards result;
  CardFile split = splitCards(bytes);
  result.skipped = split.skipped;
  if (split.cards.empty() && split.skipped == 0) {
    using namespace std::string_view_literals;
    constexpr auto Nothing = " \t\r\n\0\xEF\xBB\xBF\xFF\xFE"sv;  // and marks of an encoding
    const bool empty = bytes.find_first_not_of(Nothing) == std::string_view::npos;
    result.warnings.push_back(file + (empty ? ": the file is empty"
                                            : ": this is no address book: no card begins in it "
                                              "(BEGIN:VCARD)"));
    return result;
  }
  for (const CardText& card : split.cards) {
    try {
      result.contacts.push_back(CardReader(card, result, split.warnings).read());
    } catch (const CardError& error) {
      ++result.skipped;
      split.warnings.push_back({card.line, std::string("card skipped: ") + error.what()});
    }
  }
  std::ranges::stable_sort(split.warnings, {}, &CardWarning::line);
  for (const CardWarning& warning : split.warnings)
    result.warnings.push_back(file + ": line " + std::to_string(warning.line) + ": " +
                              warning.text);
  return result;
}

ReadCards readCardFile(const std::string& path) {
  const auto bytes = simulator::readWholeFile(path);
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

}  // namespace demo
