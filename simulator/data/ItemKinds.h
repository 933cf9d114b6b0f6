#pragma once

#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "platform/outlook.h"

namespace simulator {

enum class FieldType { Text, Date };

/// One key of an item in a mailbox file and the property of the item that it sets.
struct ItemField {
  std::string_view key;
  std::u16string_view property;
  FieldType type = FieldType::Text;
  bool required = false;
};

/// Who sent an item; empty in kinds that have no sender.
struct ItemSender {
  std::string_view key;
  std::u16string_view property;  ///< takes the name
};

/// Ids of the ribbons that its inspectors have; empty for none.
struct ItemRibbon {
  std::u16string_view id = {};
  std::u16string_view unsentId = id;
};

/// Items of one kind: what Outlook makes of them, and what a mailbox file may say of one, beyond
/// what every item has.
struct ItemKind {
  std::string_view word;
  outlook::ObjectClass objectClass;
  /// Of the kinds that folders hold and of which new items can be made.
  std::optional<outlook::ItemType> itemType;
  std::u16string_view typeName;
  std::u16string_view messageClass;
  ItemRibbon ribbon;
  std::span<const ItemField> fields;
  std::span<const std::string_view> specialKeys = {};  ///< keys with a meaning of their own
  ItemSender sender = {};
  /// Keys of the recipients, in the order of the MAPI helper's lists; empty when it has none.
  std::span<const std::string_view> recipientKeys = {};
};

std::span<const ItemKind> itemKinds();

/// The kinds that have an item type, in the order of these.
std::vector<const ItemKind*> folderKinds();

/// Null when there is none.
const ItemKind* kindOf(outlook::ObjectClass objectClass);
const ItemKind* kindOf(outlook::ItemType type);

}  // namespace simulator
