#include "windows/com/EntryHold.h"

#include "windows/com/ComBase.h"

namespace windows {
namespace {
EntryHold::Keeper currentKeeper = nullptr;
}

void EntryHold::setKeeper(Keeper keeper) noexcept {
  currentKeeper = keeper;
}

EntryHold::EntryHold() : kept_(currentKeeper ? currentKeeper() : nullptr) {
  LiveObjects::add();
}

EntryHold::~EntryHold() {
  kept_.reset();
  LiveObjects::remove();
}

}  // namespace windows
