#include "windows/services/Timers.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "windows/com/EntryHold.h"
#include "windows/com/errors.h"

namespace windows {
namespace {
/// Windows hands a timer procedure nothing but the id.
Timers* current = nullptr;
}  // namespace

Timers::Timers() {
  current = this;
}

Timers::~Timers() {
  for (const auto& [id, tick] : ticks_) KillTimer(nullptr, id);
  if (current == this) current = nullptr;
  guardedQuietly([this] { dropPending(); });
}

std::uint32_t Timers::setTimer(std::uint32_t milliseconds, std::function<void()> tick) {
  auto shared = std::make_shared<std::function<void()>>(std::move(tick));
  const UINT_PTR id = SetTimer(nullptr, 0, milliseconds, &Timers::onTimer);
  if (id == 0) return 0;
  try {
    ticks_.insert_or_assign(id, std::move(shared));
  } catch (...) {
    KillTimer(nullptr, id);
    throw;
  }
  return static_cast<std::uint32_t>(id);
}

void Timers::killTimer(std::uint32_t id) {
  // A tick that is on its way finds nothing.
  if (ticks_.erase(id) == 0) return;
  KillTimer(nullptr, id);
  // The messages that are on their way at one time are few.
  constexpr std::size_t Remembered = 64;
  if (killed_.size() == Remembered) killed_.pop_front();
  killed_.push_back(id);
}

void Timers::onTimer(HWND, UINT, UINT_PTR id, DWORD) noexcept {
  guardedQuietly([id] {
    if (!current) return;
    const auto found = current->ticks_.find(id);
    if (found == current->ticks_.end()) return;
    const EntryHold hold;
    // The tick may kill its timer.
    const Tick tick = found->second;
    (*tick)();
  });
}

/// A message that is in the queue already would call into a module that may be gone by then. Only a
/// Windows 2000 without its updates needs this: since late 2002 the system itself drops a message
/// whose timer is no more, when it is dispatched.
void Timers::dropPending() const {
  auto* const ofThread = reinterpret_cast<HWND>(static_cast<INT_PTR>(-1));
  // Somebody else's timer that is due all the time must not keep us here.
  constexpr std::size_t Enough = 100;
  std::vector<MSG> others;
  std::optional<int> exitCode;
  MSG message;
  while (others.size() < Enough &&
         PeekMessageW(&message, ofThread, WM_TIMER, WM_TIMER, PM_REMOVE)) {
    // The end of the host's loop comes through every filter, and is taken away with it.
    if (message.message == WM_QUIT) {
      exitCode = static_cast<int>(message.wParam);
      continue;
    }
    // By id: the procedure may stand there in a form of the system's own.
    const bool ours =
        ticks_.contains(message.wParam) || std::ranges::count(killed_, message.wParam) != 0;
    if (!ours) others.push_back(message);
  }
  for (const MSG& other : others) {
    PostThreadMessageW(GetCurrentThreadId(), WM_TIMER, other.wParam, other.lParam);
  }
  if (exitCode) PostQuitMessage(*exitCode);
}

}  // namespace windows
