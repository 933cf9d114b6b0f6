#include "windows/com/ComBase.h"

namespace windows {
namespace {
LONG liveObjects = 0;
}

long LiveObjects::count() noexcept {
  return InterlockedCompareExchange(&liveObjects, 0, 0);
}
void LiveObjects::add() noexcept {
  InterlockedIncrement(&liveObjects);
}
void LiveObjects::remove() noexcept {
  InterlockedDecrement(&liveObjects);
}

}  // namespace windows
