#pragma once

#include <memory>

namespace windows {

/// Stands in every entry into the module: a call, an event, a timer's tick. While it lives, the
/// module stays loaded and its state alive, even when the host lets go of everything in the middle
/// of the entry, as it may do while a box is up or a call is under way.
class [[nodiscard]] EntryHold {
 public:
  /// Gives what must live as long as an entry; may give nothing.
  using Keeper = std::shared_ptr<void> (*)();

  /// For a module whose state goes with its last object.
  static void setKeeper(Keeper keeper) noexcept;

  EntryHold();
  ~EntryHold();
  EntryHold(const EntryHold&) = delete;
  EntryHold& operator=(const EntryHold&) = delete;

 private:
  std::shared_ptr<void> kept_;
};

}  // namespace windows
