#pragma once

#include <array>
#include <string_view>

#include "simulator/mailbox.h"

namespace simulator {

/// A telephone property of a contact and the short name that mailbox files may use for it.
struct TelephoneProperty {
  std::string_view shortName;
  std::string_view name;
};

inline constexpr std::array<TelephoneProperty, 14> TelephoneProperties{{
    {"work", "BusinessTelephoneNumber"},
    {"work2", "Business2TelephoneNumber"},
    {"company", "CompanyMainTelephoneNumber"},
    {"home", "HomeTelephoneNumber"},
    {"home2", "Home2TelephoneNumber"},
    {"mobile", "MobileTelephoneNumber"},
    {"other", "OtherTelephoneNumber"},
    {"primary", "PrimaryTelephoneNumber"},
    {"assistant", "AssistantTelephoneNumber"},
    {"isdn", "ISDNNumber"},
    {"radio", "RadioTelephoneNumber"},
    {"car", "CarTelephoneNumber"},
    {"pager", "PagerNumber"},
    {"callback", "CallbackTelephoneNumber"},
}};

inline constexpr std::array<std::u16string_view, 3> EmailProperties{
    u"Email1Address", u"Email2Address", u"Email3Address"};

/// A contact that has every property of its kind, all of them empty.
MailboxItem emptyContact();

/// Forms the full name and the name with the last name first from last, first and middle name
/// where they have not been set, and the subject, which is the full name.
void formContactNames(MailboxItem& contact);

/// A text property of an item; empty when the item lacks it.
std::u16string propertyText(const MailboxItem& item, std::u16string_view name);

}  // namespace simulator
