#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "demo/import/VCardProperty.h"
#include "simulator/mailbox.h"

namespace demo {

/// What became of the numbers of a card that its contact does not have.
struct LeftOutNumbers {
  struct Number {
    std::size_t line = 0;
    std::u16string text;
  };
  std::vector<Number> homeless;  ///< no property was left for them
  std::size_t notForSpeech = 0;  ///< faxes, modems and the like
};

/// Puts the telephone numbers of a card into the properties of a contact, by their types. Preferred
/// numbers come first, then the order of the card. Numbers whose own properties are taken go to
/// other free ones.
LeftOutNumbers placeTelephones(simulator::MailboxItem& contact, std::vector<CardProperty> cards);

/// Whether the property holds a telephone number.
bool isTelephone(const CardProperty& property);

/// Gives a number the kind that a label of Apple's names, "_$!<HomeFAX>!$_" or in plain words; one
/// that names none is passed over.
void applyLabel(CardProperty& telephone, std::u16string_view label);

}  // namespace demo
