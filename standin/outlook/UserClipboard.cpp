#include "standin/outlook/UserClipboard.h"

#include <cstring>

#include "windows/com/errors.h"
#include "windows/com/text.h"
#include "windows/services/Clipboard.h"

namespace standin {

void copyText(std::u16string_view text) {
  windows::Clipboard clipboard;
  EmptyClipboard();
  const std::size_t bytes = text.size() * sizeof(char16_t);
  const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, bytes + sizeof(char16_t));
  if (!memory) windows::check(E_OUTOFMEMORY);
  std::memcpy(GlobalLock(memory), text.data(), bytes);
  GlobalUnlock(memory);
  SetClipboardData(CF_UNICODETEXT, memory);
}

std::u16string copiedText() {
  windows::Clipboard clipboard;
  const HANDLE memory = GetClipboardData(CF_UNICODETEXT);
  const auto* text = static_cast<const wchar_t*>(memory ? GlobalLock(memory) : nullptr);
  if (!text) return {};
  std::u16string copied(windows::utf16(text));
  GlobalUnlock(memory);
  return copied;
}

ClipboardWatch::ClipboardWatch(std::uint32_t milliseconds)
    : milliseconds_(milliseconds),
      seen_(GetClipboardSequenceNumber()),
      thread_(CreateThread(nullptr, 0, run, this, 0, nullptr)) {
  if (!thread_) windows::check(E_OUTOFMEMORY);
}

ClipboardWatch::~ClipboardWatch() {
  ends_ = true;
  WaitForSingleObject(thread_, INFINITE);
  CloseHandle(thread_);
}

DWORD WINAPI ClipboardWatch::run(void* self) noexcept {
  static_cast<ClipboardWatch*>(self)->watch();
  return 0;
}

void ClipboardWatch::watch() {
  const HWND window = CreateWindowExW(0, L"STATIC", nullptr, WS_POPUP, 0, 0, 0, 0, nullptr, nullptr,
                                      nullptr, nullptr);
  while (!ends_) {
    if (seen_ == GetClipboardSequenceNumber()) {
      Sleep(1);
    } else if (OpenClipboard(window)) {
      seen_ = GetClipboardSequenceNumber();
      Sleep(milliseconds_);
      CloseClipboard();
    } else {
      Sleep(0);
    }
  }
  DestroyWindow(window);
}

void ClipboardWatch::catchUp() const {
  constexpr int Patience = 1000;
  for (int i = 0; i < Patience && seen_ != GetClipboardSequenceNumber(); ++i) Sleep(1);
}

}  // namespace standin
