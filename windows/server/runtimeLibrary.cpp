#include "windows/server/runtimeLibrary.h"

#include <array>
#include <cstddef>

#include "windows/com/api.h"

namespace __gnu_cxx {
/// The library's own: frees its reserve of memory for exceptions.
void __freeres();
}  // namespace __gnu_cxx

namespace windows {
namespace {

/// What the library was given, as long as there is room; more than it ever asks for.
template <class Item>
class Given {
 public:
  void add(Item item) noexcept {
    const auto place = static_cast<std::size_t>(InterlockedIncrement(&count_)) - 1;
    if (place < items_.size()) items_[place] = item;
  }
  template <class Release>
  void takeBack(Release release) noexcept {
    for (LONG i = 0; i < count_ && i < static_cast<LONG>(items_.size()); ++i) {
      release(items_[static_cast<std::size_t>(i)]);
    }
    count_ = 0;
  }

 private:
  std::array<Item, 16> items_{};
  LONG count_ = 0;
};

constinit Given<HANDLE> semaphores;
constinit Given<DWORD> threadSlots;

using CreateSemaphoreFunction = HANDLE WINAPI(SECURITY_ATTRIBUTES*, LONG, LONG, const wchar_t*);
using TlsAllocFunction = DWORD WINAPI();

HANDLE WINAPI makeSemaphore(SECURITY_ATTRIBUTES*, LONG initial, LONG maximum, const wchar_t*) {
  const HANDLE semaphore = CreateSemaphoreA(nullptr, initial, maximum, nullptr);
  if (semaphore) semaphores.add(semaphore);
  return semaphore;
}

DWORD WINAPI makeThreadSlot() {
  // By its name it would lead back here.
  auto* const address =
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("kernel32.dll"), "TlsAlloc"));
  const DWORD slot = reinterpret_cast<TlsAllocFunction*>(address)();
  if (slot != TLS_OUT_OF_INDEXES) threadSlots.add(slot);
  return slot;
}

}  // namespace

void releaseRuntimeLibrary() noexcept {
  semaphores.takeBack([](HANDLE semaphore) { CloseHandle(semaphore); });
  threadSlots.takeBack([](DWORD slot) { TlsFree(slot); });
  __gnu_cxx::__freeres();
}

// These stand in the place of the imports through which the library calls.
extern "C" {
extern CreateSemaphoreFunction* const importedCreateSemaphore __asm__("__imp__CreateSemaphoreW@16");
CreateSemaphoreFunction* const importedCreateSemaphore = &makeSemaphore;
extern TlsAllocFunction* const importedTlsAlloc __asm__("__imp__TlsAlloc@0");
TlsAllocFunction* const importedTlsAlloc = &makeThreadSlot;
}

}  // namespace windows
