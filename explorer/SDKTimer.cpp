#include "explorer/SDKTimer.h"

#include "client/VelnorLocator.h"
#include "infra/modK9TLog.h"
#include "infra/runtime.h"
#include "platform/timers.h"
#include "state/globals.h"

namespace cxol {
namespace {

void connectInspectors(Globals& state) {
  // Counted anew at each step: a wrapper's work may deliver events that close windows.
  for (std::int32_t i = 1; i <= state.g_colInspectors.count(); ++i) {
    const auto wrapper = state.g_colInspectors.item(i);
    if (wrapper->NeedConnect()) wrapper->Connect();
  }
}

void initExplorers(Globals& state) {
  for (std::int32_t i = 1; i <= state.g_colExplorers.count(); ++i) {
    const auto wrapper = state.g_colExplorers.item(i);
    if (wrapper->MustInit()) wrapper->InitFromTimer();
  }
}

void poll(Globals& state) {
  struct Busy {
    explicit Busy(bool& f) : flag(f) { flag = true; }
    ~Busy() { flag = false; }
    bool& flag;
  } busy(state.TimerBusy);
  if (state.g_bShowInspectorToolBar) connectInspectors(state);
  initExplorers(state);
  // Nothing stops the timer of an add-in that the user switches off: it starts no client any more,
  // and the wrappers are gone by themselves.
  if (state.g_bStartWithOutlook && state.g_olApp) {
    state.g_bStartWithOutlook = false;
    ShellExecuteVelnorHiddenNoWait();
  }
}

}  // namespace

void StartTimer(std::uint32_t milliseconds) noexcept {
  trapQuietly([&] {
    StopTimer();
    auto& state = globals();
    state.TimerInterval = milliseconds;
    state.TimerId = machine().timers.setTimer(milliseconds, [] { GeneralTick(); });
    if (state.TimerId != 0) {
      LogDebug(u"Timer started successfully.");
    } else {
      LogError(u"Failed to start timer.");
    }
  });
}

void StopTimer() noexcept {
  trapQuietly([] {
    auto& state = globals();
    if (state.TimerId == 0) return;
    machine().timers.killTimer(state.TimerId);
    state.TimerId = 0;
    LogDebug(u"Timer stopped.");
  });
}

void SuspendTimer() noexcept {
  trapQuietly([] { globals().g_bCreatingInspector = true; });
}

void ResumeTimer() noexcept {
  trapQuietly([] { globals().g_bCreatingInspector = false; });
}

void GeneralTick() noexcept {
  trapQuietly([] {
    auto& state = globals();
    if (state.TimerInterval == StartupInterval) {
      StopTimer();
      return StartTimer(PollInterval);
    }
    if (state.g_bCreatingInspector) return;
    if (state.TimerBusy) return LogDebug(u"Time re-entered. Exit here.");
    poll(state);
  });
}

}  // namespace cxol
