#include "windows/services/Clipboard.h"

#include <cstring>

#include "platform/automation.h"

namespace windows {
namespace {

[[noreturn]] void raiseCannotOpen() {
  constexpr std::int32_t CannotOpen = 521;
  throw automation::Error(CannotOpen, u"Can't open Clipboard");
}

/// A bitmap as the clipboard hands bitmaps of registered formats around: header and rows in one
/// block of memory; null when there is no memory for it.
HGLOBAL packed(HBITMAP section) {
  DIBSECTION data{};
  if (GetObjectW(section, sizeof data, &data) != sizeof data) return nullptr;
  const auto size = static_cast<std::size_t>(data.dsBm.bmWidthBytes * data.dsBm.bmHeight);
  const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, sizeof data.dsBmih + size);
  if (!memory) return nullptr;
  auto* block = static_cast<std::byte*>(GlobalLock(memory));
  std::memcpy(block, &data.dsBmih, sizeof data.dsBmih);
  std::memcpy(block + sizeof data.dsBmih, data.dsBm.bmBits, size);
  GlobalUnlock(memory);
  return memory;
}

/// On success the clipboard owns the memory.
bool put(const wchar_t* format, HGLOBAL memory) {
  if (memory && SetClipboardData(RegisterClipboardFormatW(format), memory)) return true;
  if (memory) GlobalFree(memory);
  return false;
}

bool put(HBITMAP bitmap) {
  const HANDLE copy = CopyImage(bitmap, IMAGE_BITMAP, 0, 0, 0);
  if (copy && SetClipboardData(CF_BITMAP, copy)) return true;
  if (copy) DeleteObject(copy);
  return false;
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
    : owner_(CreateWindowExW(0, L"STATIC", nullptr, WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, nullptr,
                             nullptr)) {
  if (owner_ && open(owner_, false)) return;
  if (owner_) DestroyWindow(owner_);
  raiseCannotOpen();
}

Clipboard::~Clipboard() {
  CloseClipboard();
  DestroyWindow(owner_);
}

void Clipboard::set(HBITMAP picture, HBITMAP mask) {
  // It takes data from the one who has emptied it. Closed in between it would be everybody's.
  EmptyClipboard();
  if (!put(L"Toolbar Button Face", packed(picture)) || !put(L"Toolbar Button Mask", packed(mask)) ||
      !put(picture)) {
    throw automation::Error(automation::ErrorNumber::OutOfMemory);
  }
}

}  // namespace windows
