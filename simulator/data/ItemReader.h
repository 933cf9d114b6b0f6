#pragma once

#include <string>
#include <string_view>

#include "simulator/data/ItemKinds.h"
#include "simulator/data/JsonNode.h"
#include "simulator/mailbox.h"

namespace simulator {

/// What an item's defaults depend on.
struct ItemSurroundings {
  std::u16string user;          ///< the mailbox's user; may be empty
  const ItemKind& defaultKind;  ///< the kind of an item that names none
  bool outbox = false;
};

/// Reads one item of a mailbox file. The ids in links and associated appointment are taken as they
/// stand; an item without an id of its own has an empty one. Raises InputError.
MailboxItem readItem(const JsonNode& node, const ItemSurroundings& surroundings);

}  // namespace simulator
