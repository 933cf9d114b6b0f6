#include "windows/services/Clock.h"

#include "windows/com/api.h"

namespace windows {

platform::LocalTime Clock::localTime() {
  SYSTEMTIME now;
  GetLocalTime(&now);
  return {now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond, now.wMilliseconds};
}

void Clock::sleep(std::uint32_t milliseconds) {
  Sleep(milliseconds);
}

void Clock::pumpMessages() {
  // A window that never validates its paint always has one more message, and so has a timer that is
  // slower than its own interval.
  constexpr DWORD LongestPass = 200;
  const DWORD start = GetTickCount();
  MSG message;
  while (GetTickCount() - start < LongestPass && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    if (message.message == WM_QUIT) {
      // The host's own loop must see it.
      PostQuitMessage(static_cast<int>(message.wParam));
      return;
    }
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

}  // namespace windows
