#pragma once

#include <string>

#include "platform/registry.h"

namespace standin {

/// One add-in in the user's list of Outlook's add-ins.
class AddinEntry {
 public:
  AddinEntry(platform::Registry& registry, std::u16string progId);

  const std::u16string& progId() const { return progId_; }
  /// False when the add-in is not in the list.
  bool exists() const;
  bool loadsAtStart() const;
  /// Keeps what became of the add-in, as Outlook does: one that is switched off, or can't be
  /// loaded, is not loaded at the next start either.
  void keepConnected(bool connected);

 private:
  std::uint32_t loadBehavior() const;

  platform::Registry& registry_;
  std::u16string progId_;
  std::u16string key_;
};

}  // namespace standin
