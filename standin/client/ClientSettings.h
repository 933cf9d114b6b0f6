#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/client/Client.h"

namespace standin {

/// What the client is set to do. Kept in the registry, where the client reads it when it starts and
/// when it is asked to reload.
struct ClientSettings {
  simulator::Client::Delays delays;
  simulator::Client::Gaps gaps;
  /// Asking for the phone command before the client is in service raises an error.
  bool raisesBeforeService = false;
  /// Every call is answered with an error.
  bool errors = false;
  /// Objects tell nothing of their types: their members have names only.
  bool withoutTypes = false;
  std::vector<std::int32_t> lines{1, 2};
  /// The file of lines that takes what the client is told; a temporary one at first.
  std::u16string journal = temporaryJournal();
  /// The file whose size is noted with each thing that the client is told; may be empty.
  std::u16string watched;

  static ClientSettings read();
  void write() const;
  /// Leaves nothing in the registry.
  static void clear();

  static std::u16string temporaryJournal();

  /// Enters into the journal what the client was told; gives the time that stands beside it.
  std::u16string journalTold(std::u16string_view line) const;
};

}  // namespace standin
