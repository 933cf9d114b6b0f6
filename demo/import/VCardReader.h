#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/mailbox.h"

namespace demo {

/// What a vCard file gives.
struct ReadCards {
  std::vector<simulator::MailboxItem> contacts;  ///< their ids are still empty
  /// "FILE: line N: ...", UTF-8, in the order of the lines. A bad line is passed over; a card that
  /// has nothing left, or is no contact, is skipped.
  std::vector<std::string> warnings;
  std::size_t skipped = 0;         ///< cards
  std::size_t numbersLeftOut = 0;  ///< faxes and the like included
  std::size_t faxes = 0;           ///< so many of those

  /// "12 cards read, 1 skipped, 3 numbers left out (2 of them faxes and the like)"
  std::string summary() const;
};

/// Reads the contacts of a vCard file, versions 2.1, 3.0 and 4.0.
ReadCards readCards(std::string_view bytes, std::string_view fileName);

/// The same from a file; raises InputError when it can't be read.
ReadCards readCardFile(const std::string& path);

/// Adds contacts to the mailbox's first folder of contacts, which is made if there is none, and
/// gives them ids that nothing in the mailbox has.
void addContacts(simulator::Mailbox& mailbox, std::vector<simulator::MailboxItem> contacts);

}  // namespace demo
