#include "standin/proof/Held.h"

#include <algorithm>
#include <array>

#include "standin/com/DispatchExport.h"
#include "windows/com/ComBase.h"

#include <psapi.h>

namespace proof {
namespace {

BOOL CALLBACK countWindow(HWND, LPARAM count) {
  ++*reinterpret_cast<int*>(count);
  return TRUE;
}

}  // namespace

std::size_t privateBytes() {
  PROCESS_MEMORY_COUNTERS memory{};
  GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof memory);
  return memory.PagefileUsage;
}

std::size_t heapBytes() {
  std::array<HANDLE, 64> heaps{};
  const DWORD count = std::min<DWORD>(GetProcessHeaps(heaps.size(), heaps.data()), heaps.size());
  std::size_t bytes = 0;
  for (DWORD i = 0; i < count; ++i) {
    PROCESS_HEAP_ENTRY entry{};
    while (HeapWalk(heaps[i], &entry))
      if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0) bytes += entry.cbData;
  }
  return bytes;
}

Held::Held(standin::Session& session)
    : exported(standin::DispatchExport::count()),
      objects(windows::LiveObjects::count()),
      sinks(session.running() ? session.host().sinkCount() : 0) {
  GetProcessHandleCount(GetCurrentProcess(), &handles);
  EnumThreadWindows(GetCurrentThreadId(), countWindow, reinterpret_cast<LPARAM>(&windows));
}

std::string Held::line() const {
  const std::string counted = handles != 0 ? "handles " + std::to_string(handles) + ", " : "";
  return counted + "kernel mark " + std::to_string(kernel) + ", USER mark " + std::to_string(user) +
         ", GDI mark " + std::to_string(gdi) + ", windows " + std::to_string(windows) +
         ", private KB " + std::to_string(privateBytes / 1024) + ", heap bytes " +
         std::to_string(heapBytes) + ", host objects held " + std::to_string(exported) +
         ", COM objects " + std::to_string(objects) + ", subscriptions " + std::to_string(sinks);
}

}  // namespace proof
