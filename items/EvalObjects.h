#pragma once

#include <span>
#include <string>
#include <string_view>

#include "items/Helpers.h"
#include "platform/mapi_helper.h"
#include "platform/outlook.h"

namespace cxol {

/// Turns the persons that an item names into contact references: queries that the telephony client
/// understands. They are appended as they are found; the same person named twice gives two equal
/// ones. A failing host call ends a routine with what is appended so far.

/// The window on top: the item that an inspector shows, or an explorer that does not show the
/// Outbox, whose items are about to go away; neither of them in all other cases.
struct FrontWindow {
  outlook::Item item;
  outlook::Explorer explorer;
};

/// Raises what the host raises.
FrontWindow GetFrontWindow();

/// Appends the references of the current item: of every selected item of an explorer, or of the
/// item of an inspector.
void EvaluateCurrentItem(Texts& references) noexcept;

/// Appends the references of one item by its kind.
void EvaluateItem(const outlook::Item& item, Texts& references) noexcept;

/// Whether the explorer shows the default Outbox.
bool IsOutboxShown(const outlook::Explorer& explorer) noexcept;

/// The current appointment: that of the inspector, the first selected one of a calendar, or without
/// a selection the next one from today on (the calendar's first when there is none). May be
/// nothing.
outlook::Item GetCurrentAppointment(const FrontWindow& front) noexcept;

/// A search by an e-mail address; none for an empty one.
void AddEmailSearch(std::u16string_view address, Texts& references);

/// The direct record of an Outlook contact.
void AddContactRecord(const outlook::Item& contact, Texts& references) noexcept;

/// The direct records of the contacts among an item's links.
void AddLinkedContacts(const outlook::Links& links, Texts& references) noexcept;

/// Searches for every address of the four lists, one list after the other.
void AddRecipientSearches(std::span<const platform::MapiHelper::TextList, 4> lists,
                          Texts& references);

/// Searches for the addresses of a mail's sender; the result is the first address.
std::u16string AddSenderSearch(const outlook::MailItem& mail, Texts& references) noexcept;

}  // namespace cxol
