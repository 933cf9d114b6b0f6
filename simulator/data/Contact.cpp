#include "simulator/data/Contact.h"

#include "platform/conversions.h"
#include "simulator/data/ItemKinds.h"

namespace simulator {
namespace {

std::u16string joined(const std::u16string& left, std::u16string_view separator,
                      const std::u16string& right) {
  if (left.empty() || right.empty()) return left + right;
  return left + std::u16string(separator) + right;
}

void setIfEmpty(MailboxItem& item, std::u16string_view name, const std::u16string& text) {
  if (propertyText(item, name).empty()) item.properties[std::u16string(name)] = text;
}

}  // namespace

MailboxItem emptyContact() {
  MailboxItem contact;
  contact.kind = outlook::ObjectClass::Contact;
  for (const auto& telephone : TelephoneProperties)
    contact.properties[automation::widen(telephone.name)] = u"";
  for (const auto email : EmailProperties) contact.properties[std::u16string(email)] = u"";
  for (const auto* name :
       {u"FirstName", u"MiddleName", u"LastName", u"FullName", u"LastNameAndFirstName",
        u"CompanyName", u"Department", u"JobTitle", u"Subject", u"Body", u"BusinessFaxNumber",
        u"HomeFaxNumber", u"OtherFaxNumber"})
    contact.properties[name] = u"";
  contact.properties[u"MessageClass"] = kindOf(contact.kind)->messageClass;
  return contact;
}

void formContactNames(MailboxItem& contact) {
  const std::u16string given =
      joined(propertyText(contact, u"FirstName"), u" ", propertyText(contact, u"MiddleName"));
  const std::u16string last = propertyText(contact, u"LastName");
  setIfEmpty(contact, u"FullName", joined(given, u" ", last));
  setIfEmpty(contact, u"LastNameAndFirstName", joined(last, u", ", given));
  setIfEmpty(contact, u"Subject", propertyText(contact, u"FullName"));
}

std::u16string propertyText(const MailboxItem& item, std::u16string_view name) {
  const auto found = item.properties.find(name);
  return found == item.properties.end() ? std::u16string() : found->second.toText();
}

}  // namespace simulator
