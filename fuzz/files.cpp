// The files that the simulated host reads.
#include "demo/import/VCardReader.h"
#include "fuzz/Input.h"
#include "fuzz/check.h"
#include "fuzz/targets.h"
#include "simulator/data/MailboxReader.h"
#include "simulator/data/Utf8.h"

namespace fuzz {

void mailbox(const std::uint8_t* data, std::size_t size) {
  try {
    const auto mailbox = simulator::readMailbox(Input(data, size).rest(), "fuzz");
    for (const auto& folder : mailbox.folders) {
      for (const auto& item : folder.items) check(!item.id.empty(), "every item has an id");
    }
  } catch (const simulator::InputError& error) {
    const std::string_view what = error.what();
    check(what.starts_with("fuzz: "), "an error names its file");
    check(simulator::fromUtf8(what).has_value(), "an error is UTF-8");
  }
}

void vcard(const std::uint8_t* data, std::size_t size) {
  auto read = demo::readCards(Input(data, size).rest(), "fuzz");
  for (const auto& warning : read.warnings) {
    check(simulator::fromUtf8(warning).has_value(), "a warning is UTF-8");
  }
  simulator::Mailbox mailbox;
  const auto count = read.contacts.size();
  demo::addContacts(mailbox, std::move(read.contacts));
  std::size_t added = 0;
  for (const auto& folder : mailbox.folders) added += folder.items.size();
  check(added == count, "every card is a contact");
}

}  // namespace fuzz
