#include "simulator/mailbox.h"

#include "simulator/data/Contact.h"

namespace simulator {

std::u16string MailboxItem::title() const {
  if (kind != outlook::ObjectClass::Contact) return propertyText(*this, u"Subject");
  for (const auto* name : {u"LastNameAndFirstName", u"CompanyName", u"FullName"})
    if (auto text = propertyText(*this, name); !text.empty()) return text;
  return {};
}

const MailboxItem* Mailbox::find(std::u16string_view id) const {
  for (const MailboxFolder& folder : folders)
    for (const MailboxItem& item : folder.items)
      if (item.id == id) return &item;
  return nullptr;
}

}  // namespace simulator
