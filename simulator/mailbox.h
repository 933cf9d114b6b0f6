#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/automation.h"
#include "platform/outlook.h"

namespace simulator {

using TextList = std::vector<std::u16string>;

/// What the MAPI helper knows of an item.
struct MapiFacts {
  std::u16string name;        ///< sender's display name
  std::u16string displayTo;   ///< addressees
  std::u16string receivedBy;  ///< empty when the item was not received
  std::array<std::u16string, 2> senderAddresses;
  std::array<TextList, 4> recipients;
  TextList telephoneNames;  ///< runs in parallel with `telephoneNumbers`
  TextList telephoneNumbers;
};

/// One item of a mailbox. `properties` holds what the item's kind offers beyond the members that
/// the host computes (Class, EntryID, Parent, Links, Attachments, UserProperties).
struct MailboxItem {
  outlook::ObjectClass kind = outlook::ObjectClass::Mail;
  std::u16string id;  ///< the EntryID; unique in the mailbox
  std::map<std::u16string, automation::Value, std::less<>> properties;
  std::map<std::u16string, std::u16string, std::less<>> userProperties;
  TextList links;                        ///< ids of the linked items
  TextList attachments;                  ///< file names
  std::u16string associatedAppointment;  ///< id; for meeting items
  bool wordMail = false;                 ///< Word edits it, if Word is the mail editor
  MapiFacts mapi;

  /// The text that a list or a window's caption shows: the name of a contact, else the subject.
  std::u16string title() const;
};

struct MailboxFolder {
  std::u16string name;
  std::u16string id;       ///< the EntryID
  std::u16string storeId;  ///< the StoreID
  outlook::ItemType itemType = outlook::ItemType::Mail;
  bool outbox = false;  ///< the default Outbox
  std::vector<MailboxItem> items;
};

struct Mailbox {
  std::u16string user;  ///< the logged-on user, as the MAPI helper tells it; may be empty
  std::vector<MailboxFolder> folders;

  /// The item with this id; null when there is none.
  const MailboxItem* find(std::u16string_view id) const;
};

}  // namespace simulator
