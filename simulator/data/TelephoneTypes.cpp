#include "simulator/data/TelephoneTypes.h"

#include <algorithm>
#include <array>
#include <span>
#include <string_view>

#include "simulator/data/Contact.h"

namespace simulator {
namespace {

using Name = std::u16string_view;

constexpr Name Pager[] = {u"PagerNumber"};
constexpr Name Assistant[] = {u"AssistantTelephoneNumber"};
constexpr Name Callback[] = {u"CallbackTelephoneNumber"};
constexpr Name Company[] = {u"CompanyMainTelephoneNumber"};
constexpr Name Radio[] = {u"RadioTelephoneNumber"};
constexpr Name Isdn[] = {u"ISDNNumber"};
constexpr Name Car[] = {u"CarTelephoneNumber"};
constexpr Name Mobile[] = {u"MobileTelephoneNumber"};
constexpr Name Primary[] = {u"PrimaryTelephoneNumber"};
constexpr Name Work[] = {u"BusinessTelephoneNumber", u"Business2TelephoneNumber"};
constexpr Name Home[] = {u"HomeTelephoneNumber", u"Home2TelephoneNumber"};
constexpr Name Other[] = {u"OtherTelephoneNumber"};

/// Where numbers go whose own properties are taken: those first whose labels promise least.
constexpr Name Overflow[] = {u"OtherTelephoneNumber", u"PrimaryTelephoneNumber",
                             u"Home2TelephoneNumber", u"Business2TelephoneNumber"};

struct TypeRow {
  std::string_view type;
  std::span<const Name> properties;
};

/// The first row whose type a number has decides: a mobile at work is a mobile.
constexpr TypeRow TypeRows[] = {
    {"PAGER", Pager},   {"ASSISTANT", Assistant}, {"CALLBACK", Callback}, {"COMPANY", Company},
    {"RADIO", Radio},   {"ISDN", Isdn},           {"CAR", Car},           {"CELL", Mobile},
    {"MOBILE", Mobile}, {"IPHONE", Mobile},       {"MAIN", Primary},      {"WORK", Work},
    {"HOME", Home},
};

constexpr std::string_view NoTelephones[] = {"FAX",   "MODEM",  "BBS",      "TLX",
                                             "TELEX", "TTYTDD", "TEXTPHONE"};

bool isForSpeech(const CardProperty& card) {
  if (card.hasType("VOICE") || card.hasType("CELL")) return true;
  return std::ranges::none_of(NoTelephones, [&](auto type) { return card.hasType(type); });
}

std::span<const Name> propertiesFor(const CardProperty& card) {
  for (const TypeRow& row : TypeRows)
    if (card.hasType(row.type)) return row.properties;
  // Outlook writes the primary number with this type alone.
  const bool onlyPreferred = std::ranges::all_of(
      card.types, [](const auto& type) { return type == "PREF" || type == "VOICE"; });
  return card.hasType("PREF") && onlyPreferred ? Primary : Other;
}

/// A number that may stand as "tel:+49-30-23125001;ext=1".
std::u16string numberOf(const CardProperty& card) {
  std::u16string number = card.text();
  constexpr std::string_view Scheme = "TEL:";
  if (upperCase(std::string_view(card.value).substr(0, Scheme.size())) != Scheme) return number;
  number.erase(0, Scheme.size());
  return number.substr(0, number.find(u';'));
}

bool putIntoFree(MailboxItem& contact, std::span<const Name> properties,
                 const std::u16string& number) {
  for (const Name name : properties) {
    if (!propertyText(contact, name).empty()) continue;
    contact.properties.insert_or_assign(std::u16string(name), number);
    return true;
  }
  return false;
}

}  // namespace

bool isTelephone(const CardProperty& property) {
  return property.name == "TEL" || property.name == "X-MS-TEL";
}

std::vector<std::size_t> placeTelephones(MailboxItem& contact, std::vector<CardProperty> cards) {
  std::stable_partition(cards.begin(), cards.end(),
                        [](const auto& card) { return card.hasType("PREF"); });
  std::vector<const CardProperty*> displaced;
  for (const CardProperty& card : cards) {
    if (!isForSpeech(card)) continue;
    const std::u16string number = numberOf(card);
    if (number.empty()) continue;
    if (!putIntoFree(contact, propertiesFor(card), number)) displaced.push_back(&card);
  }
  // Only now, so that no number loses its own property to one of another type.
  std::vector<std::size_t> left;
  for (const CardProperty* card : displaced)
    if (!putIntoFree(contact, Overflow, numberOf(*card))) left.push_back(card->line);
  return left;
}

}  // namespace simulator
