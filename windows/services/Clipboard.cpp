#include "windows/services/Clipboard.h"

#include <cstring>

#include "platform/automation.h"
#include "windows/services/graphics.h"

namespace windows {
namespace {

[[noreturn]] void raiseCannotOpen() {
  constexpr std::int32_t CannotOpen = 521;
  throw automation::Error(CannotOpen, u"Can't open Clipboard");
}

struct FreeMemory {
  void operator()(HGLOBAL memory) const noexcept { GlobalFree(memory); }
};
using Memory = Owner<HGLOBAL, FreeMemory>;

/// A bitmap as the clipboard hands bitmaps of registered formats around: header and rows in one
/// block of memory; null when there is no memory for it.
Memory packed(HBITMAP section) {
  DIBSECTION data{};
  if (GetObjectW(section, sizeof data, &data) != sizeof data) return {};
  const auto size = static_cast<std::size_t>(data.dsBm.bmWidthBytes * data.dsBm.bmHeight);
  auto memory = Memory::attach(GlobalAlloc(GMEM_MOVEABLE, sizeof data.dsBmih + size));
  if (!memory) return memory;
  auto* block = static_cast<std::byte*>(GlobalLock(memory.get()));
  std::memcpy(block, &data.dsBmih, sizeof data.dsBmih);
  std::memcpy(block + sizeof data.dsBmih, data.dsBm.bmBits, size);
  GlobalUnlock(memory.get());
  return memory;
}

/// On success the clipboard owns the data.
template <class Data>
bool put(UINT format, Data data) {
  if (!data || !SetClipboardData(format, data.get())) return false;
  data.detach();
  return true;
}

}  // namespace

std::optional<int> Clipboard::open(HWND owner, bool closeAgain) {
  constexpr int Tries = 25;
  constexpr DWORD MillisecondsApart = 20;
  for (int failed = 0; failed < Tries; ++failed) {
    if (failed != 0) Sleep(MillisecondsApart);
    if (!OpenClipboard(owner)) continue;
    if (closeAgain) CloseClipboard();
    return failed;
  }
  return std::nullopt;
}

Clipboard::Clipboard()
    : owner_(Window::attach(CreateWindowExW(0, L"STATIC", nullptr, WS_POPUP, 0, 0, 0, 0, nullptr,
                                            nullptr, nullptr, nullptr))) {
  if (!owner_ || !open(owner_.get(), false)) raiseCannotOpen();
}

Clipboard::~Clipboard() {
  CloseClipboard();
}

void Clipboard::set(HBITMAP picture, HBITMAP mask) {
  // It takes data from the one who has emptied it. Closed in between it would be everybody's.
  EmptyClipboard();
  auto copy = static_cast<HBITMAP>(CopyImage(picture, IMAGE_BITMAP, 0, 0, 0));
  if (!put(RegisterClipboardFormatW(L"Toolbar Button Face"), packed(picture)) ||
      !put(RegisterClipboardFormatW(L"Toolbar Button Mask"), packed(mask)) ||
      !put(CF_BITMAP, Bitmap::attach(copy))) {
    throw automation::Error(automation::ErrorNumber::OutOfMemory);
  }
}

}  // namespace windows
