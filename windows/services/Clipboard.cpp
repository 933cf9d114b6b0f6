#include "windows/services/Clipboard.h"

#include "platform/automation.h"

namespace windows {
namespace {

[[noreturn]] void raiseCannotOpen() {
  constexpr std::int32_t CannotOpen = 521;
  throw automation::Error(CannotOpen, u"Can't open Clipboard");
}

}  // namespace

Clipboard::Clipboard()
    : owner_(CreateWindowExW(0, L"STATIC", nullptr, WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, nullptr,
                             nullptr)) {
  if (owner_ && OpenClipboard(owner_)) return;
  if (owner_) DestroyWindow(owner_);
  raiseCannotOpen();
}

Clipboard::~Clipboard() {
  CloseClipboard();
  DestroyWindow(owner_);
}

void Clipboard::clear() {
  EmptyClipboard();
}

void Clipboard::set(HBITMAP bitmap) {
  // It takes data from the one who has emptied it.
  clear();
  const HANDLE copy = CopyImage(bitmap, IMAGE_BITMAP, 0, 0, 0);
  // From here on the clipboard owns the copy.
  if (copy && SetClipboardData(CF_BITMAP, copy)) return;
  if (copy) DeleteObject(copy);
  throw automation::Error(automation::ErrorNumber::OutOfMemory);
}

}  // namespace windows
