#pragma once

#include <array>
#include <span>
#include <string_view>

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

/// What a mailbox file may say of an item of one kind, beyond what every item has.
struct ItemKind {
  std::string_view word;
  outlook::ObjectClass objectClass;
  std::u16string_view messageClass;
  std::span<const ItemField> fields;
  std::string_view senderKey;          ///< empty when the kind has no sender
  std::u16string_view senderProperty;  ///< takes the sender's name
  /// Keys of the recipients, in the order of the MAPI helper's lists; empty when it has none.
  std::span<const std::string_view> recipientKeys;
  std::span<const std::string_view> specialKeys;  ///< keys with a meaning of their own
};

std::span<const ItemKind> itemKinds();

/// The kinds of items that a folder may hold, by their words.
struct FolderKind {
  std::string_view word;
  outlook::ItemType itemType;
};

inline constexpr std::array<FolderKind, 7> FolderKinds{{
    {"mail", outlook::ItemType::Mail},
    {"appointment", outlook::ItemType::Appointment},
    {"contact", outlook::ItemType::Contact},
    {"task", outlook::ItemType::Task},
    {"journal", outlook::ItemType::Journal},
    {"note", outlook::ItemType::Note},
    {"post", outlook::ItemType::Post},
}};

}  // namespace simulator
