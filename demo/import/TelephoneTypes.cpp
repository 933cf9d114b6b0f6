#include "demo/import/TelephoneTypes.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <span>
#include <string_view>
#include <utility>

#include "simulator/caseless.h"
#include "simulator/data/Contact.h"
#include "simulator/data/Utf8.h"

namespace demo {
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
constexpr Name Overflow[] = {u"OtherTelephoneNumber",       u"PrimaryTelephoneNumber",
                             u"Home2TelephoneNumber",       u"Business2TelephoneNumber",
                             u"HomeTelephoneNumber",        u"BusinessTelephoneNumber",
                             u"MobileTelephoneNumber",      u"CallbackTelephoneNumber",
                             u"CarTelephoneNumber",         u"RadioTelephoneNumber",
                             u"CompanyMainTelephoneNumber", u"ISDNNumber",
                             u"AssistantTelephoneNumber",   u"PagerNumber"};

struct TypeRow {
  std::string_view type;
  std::span<const Name> properties;
};

/// The first row whose type a number has decides: a mobile at work is a mobile.
constexpr TypeRow TypeRows[] = {
    {"PAGER", Pager},   {"ASSISTANT", Assistant}, {"CALLBACK", Callback}, {"COMPANY", Company},
    {"RADIO", Radio},   {"ISDN", Isdn},           {"CAR", Car},           {"CELL", Mobile},
    {"MOBILE", Mobile}, {"IPHONE", Mobile},       {"MAIN", Primary},      {"WORK", Work},
    {"BUSINESS", Work}, {"OFFICE", Work},         {"HOME", Home},
};

constexpr std::string_view NoTelephones[] = {"MODEM", "BBS", "TLX", "TELEX", "TTYTDD", "TEXTPHONE"};

/// "FAX", and what programs make of it: "HOMEFAX".
bool isFaxType(std::string_view type) {
  return type.find("FAX") != std::string_view::npos;
}

bool isFax(const CardProperty& card) {
  return std::ranges::any_of(card.types, isFaxType);
}

const TypeRow* rowOf(const CardProperty& card) {
  const auto* const found =
      std::ranges::find_if(TypeRows, [&](const auto& row) { return card.hasType(row.type); });
  return found == std::end(TypeRows) ? nullptr : found;
}

/// A fax that speaks, too, is worth its own label, but never "Other".
bool isForSpeech(const CardProperty& card) {
  if (card.hasType("VOICE") || card.hasType("CELL")) return !isFax(card) || rowOf(card);
  return !isFax(card) &&
         std::ranges::none_of(NoTelephones, [&](auto type) { return card.hasType(type); });
}

std::span<const Name> propertiesFor(const CardProperty& card) {
  if (const TypeRow* row = rowOf(card)) return row->properties;
  // Outlook writes the primary number with this type alone.
  const bool onlyPreferred = std::ranges::all_of(
      card.types, [](const auto& type) { return type == "PREF" || type == "VOICE"; });
  return card.hasType("PREF") && onlyPreferred ? Primary : Other;
}

/// "%20" is a blank. Only ASCII is written so in a telephone number.
std::u16string withoutPercents(std::u16string_view text) {
  std::u16string plain;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const std::string digits =
        text[i] == u'%' ? simulator::toUtf8(text.substr(i + 1, 2)) : std::string();
    unsigned code = 0;
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), code, 16);
    const bool whole = digits.size() == 2 && read.ptr == digits.data() + 2;
    plain += whole && code >= 0x20 && code < 0x7F ? static_cast<char16_t>(code) : text[i];
    if (whole && code >= 0x20 && code < 0x7F) i += 2;
  }
  return plain;
}

/// A number that may stand as "tel:+49-30-23125001;ext=1", which Outlook writes with an x.
std::u16string numberOf(const CardProperty& card) {
  std::u16string number = card.text();
  constexpr std::u16string_view Scheme = u"tel:";
  constexpr std::u16string_view Extension = u";ext=";
  if (!simulator::sameName(number.substr(0, Scheme.size()), Scheme)) return number;
  number.erase(0, Scheme.size());
  std::u16string extension;
  if (const auto at = simulator::folded(number).find(Extension); at != std::u16string::npos) {
    extension = number.substr(at + Extension.size());
    extension = u" x" + extension.substr(0, extension.find(u';'));
  }
  return withoutPercents(number.substr(0, number.find(u';')) + extension);
}

/// "_$!<AssistantPhone>!$_" is ASSISTANT, PHONE, and "Home fax" is HOME, FAX.
std::vector<std::string> wordsOf(std::u16string_view label) {
  const auto isUpper = [](char16_t c) { return c >= u'A' && c <= u'Z'; };
  const auto isLower = [](char16_t c) { return c >= u'a' && c <= u'z'; };
  std::vector<std::string> words;
  char16_t before = u' ';
  for (const char16_t c : label) {
    if (isUpper(c) || isLower(c)) {
      if (!(isUpper(before) || isLower(before)) || (isUpper(c) && isLower(before)))
        words.emplace_back();
      words.back() += static_cast<char>(c & ~0x20);
    }
    before = c;
  }
  return words;
}

bool namesKind(const std::string& word) {
  return word == "OTHER" || isFaxType(word) ||
         std::ranges::any_of(TypeRows, [&](const auto& row) { return row.type == word; });
}

bool putIntoFree(simulator::MailboxItem& contact, std::span<const Name> properties,
                 const std::u16string& number) {
  for (const Name name : properties) {
    if (!simulator::propertyText(contact, name).empty()) continue;
    contact.properties.insert_or_assign(std::u16string(name), number);
    return true;
  }
  return false;
}

}  // namespace

bool isTelephone(const CardProperty& property) {
  return property.name == "TEL" || property.name == "X-MS-TEL";
}

void applyLabel(CardProperty& telephone, std::u16string_view label) {
  std::vector<std::string> words = wordsOf(label);
  // "iPhone" is one word all the same.
  if (words.size() == 2 && words[0] + words[1] == "IPHONE") words = {"IPHONE"};
  if (std::ranges::none_of(words, namesKind)) return;
  for (std::string& type : telephone.types)
    if (type == "PREF" || isFaxType(type)) words.push_back(std::move(type));
  telephone.types = std::move(words);
}

LeftOutNumbers placeTelephones(simulator::MailboxItem& contact, std::vector<CardProperty> cards) {
  std::stable_partition(cards.begin(), cards.end(),
                        [](const auto& card) { return card.hasType("PREF"); });
  LeftOutNumbers left;
  std::vector<const CardProperty*> displaced;
  for (const CardProperty& card : cards) {
    const std::u16string number = numberOf(card);
    if (number.empty()) continue;
    if (!isForSpeech(card))
      ++left.notForSpeech;
    else if (!putIntoFree(contact, propertiesFor(card), number))
      displaced.push_back(&card);
  }
  // Only now, so that no number loses its own property to one of another type.
  for (const CardProperty* card : displaced) {
    const std::u16string number = numberOf(*card);
    if (isFax(*card) || !putIntoFree(contact, Overflow, number))
      left.homeless.push_back({card->line, number});
  }
  return left;
}

}  // namespace demo
