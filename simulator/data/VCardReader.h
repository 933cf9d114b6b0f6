#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "simulator/mailbox.h"

namespace simulator {

/// What a vCard file gives.
struct ReadCards {
  std::vector<MailboxItem> contacts;  ///< their ids are still empty
  /// "FILE: line N: ...", UTF-8, in the order of the lines; a card with a mistake is skipped.
  std::vector<std::string> warnings;
};

/// Reads the contacts of a vCard file, versions 2.1, 3.0 and 4.0.
ReadCards readCards(std::string_view bytes, std::string_view fileName);

/// The same from a file; raises InputError when it can't be read.
ReadCards readCardFile(const std::string& path);

/// Adds contacts to the mailbox's first folder of contacts, which is made if there is none, and
/// gives them ids that nothing in the mailbox has.
void addContacts(Mailbox& mailbox, std::vector<MailboxItem> contacts);

}  // namespace simulator
