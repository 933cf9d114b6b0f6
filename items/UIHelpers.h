#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "items/Helpers.h"
#include "platform/outlook.h"
#include "state/MenuForm.h"

namespace cxol {

/// The one current item (the inspector's, or the first selected one of an explorer that does not
/// show the Outbox), its numbers and captions. No routine here shows or logs anything, and only
/// `GetContactName` raises what the host does.

/// Nothing when there is no current item.
outlook::Item GetCurrentItem() noexcept;

/// The current item when it is a contact, else nothing.
outlook::ContactItem GetCurrentContact() noexcept;

/// Appends the 14 telephone numbers of a contact with their labels, business numbers first. Empty
/// numbers are appended too; a number that can't be read is missing while its label is there.
void GetContactPhoneNumbers(const outlook::ContactItem& contact, Texts& labels,
                            Texts& numbers) noexcept;

/// Fills a menu's entries with the numbers that are not empty and their labels, as many as it
/// holds; the entries left are invisible. The result is the numbers shown.
std::vector<std::u16string> FillNumbers(std::span<MenuItem> menu, const Texts& labels,
                                        const Texts& numbers);

/// A filled menu of numbers and the numbers that it offers, without the empty ones.
struct NumberMenu {
  MenuForm::Popup popup;
  std::vector<std::u16string> numbers;
};

/// Fills the hidden form's menu with the numbers of the current item: those of a contact, or of the
/// other kinds the number in the subject and those of the people on the item. Nothing without an
/// item or for a kind that has no menu; the menus are left as they were then.
std::optional<NumberMenu> FillNumberMenu() noexcept;

/// Safe as a menu or button caption: " & " becomes " && ". An ampersand without blanks around it is
/// left as it is.
std::u16string EscapeCaption(std::u16string_view text);

/// What follows "Tel." and one further character in a subject, up to the first "[": empty without
/// a "Tel.". Blanks stay.
std::u16string GetNumberFromSubject(std::u16string_view text);

/// The name of a contact, as read: last name first, else the company's, else the full name.
std::u16string GetContactName(const outlook::ContactItem& contact);

/// The short text that names the current item on the action button.
std::u16string GetItemCaption() noexcept;

}  // namespace cxol
