#include "standin/outlook/Pace.h"

#include "windows/com/api.h"

namespace standin {
namespace {

/// A timer that falls due at the end of a wait may come this much later.
constexpr std::uint32_t Grace = 25;

void deliverUntil(std::uint32_t end) {
  for (;;) {
    deliverMessages();
    const auto left = static_cast<std::int32_t>(end - GetTickCount());
    if (left <= 0) return;
    MsgWaitForMultipleObjects(0, nullptr, FALSE, static_cast<DWORD>(left), QS_ALLINPUT);
  }
}

}  // namespace

void deliverMessages() {
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

void Pace::wait(std::uint32_t milliseconds) {
  const std::uint32_t start = counting_ ? end_ : GetTickCount();
  counting_ = true;
  end_ = start + milliseconds;
  deliverUntil(end_ + Grace);
}

}  // namespace standin
