#pragma once

#include <atomic>
#include <cstdint>
#include <string>
#include <string_view>

#include "windows/com/api.h"

namespace standin {

/// The user copies a text.
void copyText(std::u16string_view text);
/// The text on the clipboard; empty when something else is there.
std::u16string copiedText();

/// Another program that opens the clipboard for a while whenever something new is on it, as remote
/// desktops and clipboard tools do; with a thread of its own.
class ClipboardWatch {
 public:
  explicit ClipboardWatch(std::uint32_t milliseconds);
  ~ClipboardWatch();
  ClipboardWatch(const ClipboardWatch&) = delete;
  ClipboardWatch& operator=(const ClipboardWatch&) = delete;

  /// Waits until it has seen what is new: whoever calls this first finds the clipboard taken.
  void catchUp() const;

 private:
  static DWORD WINAPI run(void* self) noexcept;
  void watch();

  const DWORD milliseconds_;
  std::atomic<DWORD> seen_;
  std::atomic<bool> ends_ = false;
  HANDLE thread_;
};

}  // namespace standin
