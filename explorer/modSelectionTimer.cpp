#include "explorer/modSelectionTimer.h"

#include "infra/errors.h"
#include "infra/runtime.h"
#include "platform/timers.h"
#include "state/globals.h"

namespace cxol {
namespace {

/// Milliseconds.
constexpr std::uint32_t Delay = 400;

void selectionTick() noexcept {
  trapQuietly([] {
    // The system's timer goes on until it is killed, and the handler may let messages through: once
    // it runs the timer must not tick again, and a selection that comes meanwhile arms it anew.
    const auto target = globals().SelTimerTarget;
    StopSelectionTimer();
    // After a disconnection there is nothing to look at.
    if (target && globals().g_olApp) target->onExplorerSelectionChange();
  });
}

}  // namespace

void StartSelectionTimer(std::shared_ptr<ExplorerWrapper> target) noexcept {
  trapQuietly([&] {
    auto& state = globals();
    if (state.g_bIgnoreSelChange) return;
    StopSelectionTimer();
    state.SelTimerTarget = std::move(target);
    state.SelTimerId = machine().timers.setTimer(Delay, [] { selectionTick(); });
  });
}

void StopSelectionTimer() noexcept {
  trapQuietly([] {
    auto& state = globals();
    // The wrapper may go away with this reference, and what that triggers must find none.
    const auto released = std::move(state.SelTimerTarget);
    state.SelTimerTarget.reset();
    if (state.SelTimerId == 0) return;
    machine().timers.killTimer(state.SelTimerId);
    state.SelTimerId = 0;
  });
}

}  // namespace cxol
