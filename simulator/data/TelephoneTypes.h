#pragma once

#include <string>
#include <vector>

#include "simulator/data/VCardProperty.h"
#include "simulator/mailbox.h"

namespace simulator {

/// Puts the telephone numbers of a card into the properties of a contact, by their types. Faxes,
/// modems and the like are left out. Preferred numbers come first, then the order of the card.
/// Numbers whose own properties are taken go to other free ones; returned are the lines of those
/// for which nothing was left.
std::vector<std::size_t> placeTelephones(MailboxItem& contact, std::vector<CardProperty> cards);

/// Whether the property holds a telephone number.
bool isTelephone(const CardProperty& property);

}  // namespace simulator
