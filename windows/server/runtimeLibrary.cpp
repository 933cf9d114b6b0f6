#include "windows/server/runtimeLibrary.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

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
    takenBack_ = true;
    for (const Item& item : items_) {
      if (item != Item{}) release(item);
    }
  }
  /// The library gives an item back itself. False for one that was taken back before.
  bool returned(Item item) noexcept {
    const auto found = std::ranges::find(items_, item);
    if (item == Item{} || found == items_.end()) return true;
    *found = {};
    return !takenBack_;
  }

 private:
  std::array<Item, 16> items_{};
  LONG count_ = 0;
  bool takenBack_ = false;
};

constinit Given<HANDLE> semaphores;
/// Each slot and 1, as the first one is 0.
constinit Given<DWORD> threadSlots;

/// A function of the system that its name would lead back here.
template <class Function>
Function* systemFunction(const char* name) noexcept {
  return reinterpret_cast<Function*>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"kernel32.dll"), name)));
}

using CreateSemaphoreFunction = HANDLE WINAPI(SECURITY_ATTRIBUTES*, LONG, LONG, const wchar_t*);
using CloseHandleFunction = BOOL WINAPI(HANDLE);
using TlsAllocFunction = DWORD WINAPI();
using GetModuleHandleFunction = HMODULE WINAPI(const char*);

HANDLE WINAPI makeSemaphore(SECURITY_ATTRIBUTES*, LONG initial, LONG maximum, const wchar_t*) {
  const HANDLE semaphore = CreateSemaphoreA(nullptr, initial, maximum, nullptr);
  if (semaphore) semaphores.add(semaphore);
  return semaphore;
}

/// The library closes some of its semaphores when its own objects end, after they were taken back.
/// By then the host may have been given the same handle.
BOOL WINAPI closeHandle(HANDLE handle) {
  if (!semaphores.returned(handle)) return TRUE;
  return systemFunction<CloseHandleFunction>("CloseHandle")(handle);
}

DWORD WINAPI makeThreadSlot() {
  const DWORD slot = systemFunction<TlsAllocFunction>("TlsAlloc")();
  if (slot != TLS_OUT_OF_INDEXES) threadSlots.add(slot + 1);
  return slot;
}

/// Another module of the process may have brought the library as a DLL. The compiler's start code
/// would then register there what is needed to catch exceptions, where our own copy of the library
/// does not look: the first exception would end the host.
HMODULE WINAPI findModule(const char* name) {
  constexpr std::string_view SharedLibrary = "libgcc_s_dw2-1.dll";
  if (name && name == SharedLibrary) return nullptr;
  return systemFunction<GetModuleHandleFunction>("GetModuleHandleA")(name);
}

}  // namespace

void releaseRuntimeLibrary() noexcept {
  semaphores.takeBack(
      [](HANDLE semaphore) { systemFunction<CloseHandleFunction>("CloseHandle")(semaphore); });
  threadSlots.takeBack([](DWORD slot) { TlsFree(slot - 1); });
  __gnu_cxx::__freeres();
}

// These stand in the place of the imports through which the library and the start code call.
extern "C" {
extern CreateSemaphoreFunction* const importedCreateSemaphore __asm__("__imp__CreateSemaphoreW@16");
CreateSemaphoreFunction* const importedCreateSemaphore = &makeSemaphore;
extern TlsAllocFunction* const importedTlsAlloc __asm__("__imp__TlsAlloc@0");
TlsAllocFunction* const importedTlsAlloc = &makeThreadSlot;
extern CloseHandleFunction* const importedCloseHandle __asm__("__imp__CloseHandle@4");
CloseHandleFunction* const importedCloseHandle = &closeHandle;
extern GetModuleHandleFunction* const importedGetModuleHandle __asm__("__imp__GetModuleHandleA@4");
GetModuleHandleFunction* const importedGetModuleHandle = &findModule;
}

}  // namespace windows
