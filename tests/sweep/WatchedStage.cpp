#include "tests/sweep/WatchedStage.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <utility>

#include "state/globals.h"

namespace sweep {
namespace {

using simulator::Told;

constexpr std::u16string_view Reentered = u"OlEvents.Connect() reentered!";

}  // namespace

void WatchedStage::act(const std::function<void()>& action) {
  const std::size_t before = dials();
  try {
    NativeStage::act(action);
  } catch (const automation::Error& error) {
    find(std::string("an error left an entry point: ") + error.what());
  }
  if (acting()) return;
  if (dials() > before + 1) find("one action dialled twice");
  if (holdsWhenOff()) find("switched off, yet objects of the host are held");
  if (std::exchange(released_, false)) world().addin.reset();
}

std::size_t WatchedStage::dials() {
  return static_cast<std::size_t>(
      std::ranges::count_if(machine().client.told(), [](const Told& told) {
        return told.kind == Told::Kind::Dial || told.kind == Told::Kind::DirectDial;
      }));
}

bool WatchedStage::holdsWhenOff() {
  return outlookRuns() && !host().addinConnected() && boundary().liveHandles() != 0;
}

bool WatchedStage::disturb(FaultKind kind) {
  // Outside of an action nobody would let go of an Outlook or an add-in that has ended.
  if (!acting()) return false;
  if (kind == FaultKind::TimerTick) {
    wait(400);
    return true;
  }
  try {
    return outlookRuns() && disturbOutlook(kind);
  } catch (const std::runtime_error&) {
    return false;
  }
}

bool WatchedStage::disturbOutlook(FaultKind kind) {
  const auto active = host().activeWindow();
  switch (kind) {
    case FaultKind::Activation: return active && (activate(*active), true);
    case FaultKind::SelectionChange: return selectFirst();
    case FaultKind::WindowClose: return active && (close(*active), true);
    case FaultKind::Quit: quitOutlook(); return true;
    case FaultKind::SwitchOff:
    case FaultKind::Release:
      if (!host().addinConnected()) return false;
      host().disconnectAddin();
      released_ = kind == FaultKind::Release;
      return true;
    default: return false;
  }
}

bool WatchedStage::selectFirst() {
  for (const simulator::WindowView& window : host().snapshot(0).windows) {
    if (window.kind != simulator::WindowKind::Explorer) continue;
    if (window.itemCount == 0) return false;
    host().selectAt(window.number, std::array<std::size_t, 1>{1});
    return true;
  }
  return false;
}

void WatchedStage::inspect(FaultInjector& injector) {
  injector.pause(true);
  if (machine().screen.anchor() && !injector.hit(u"hideAnchor")) find("the anchor is left shown");
  if (world().addin) inspectState();
  injector.pause(false);
  inspectWindows(injector);
}

void WatchedStage::inspectState() {
  const auto& state = cxol::globals();
  if (state.TimerBusy) find("TimerBusy is left set");
  if (state.g_bCreatingInspector && !hasRibbon()) find("g_bCreatingInspector is left set");
  reconnectInspectors();
}

void WatchedStage::reconnectInspectors() {
  const auto& written = machine().loggingLibrary.written();
  const std::size_t before = written.size();
  const auto& inspectors = cxol::globals().g_colInspectors;
  for (std::int32_t i = 1; i <= inspectors.count(); ++i) {
    const auto wrapper = inspectors.item(i);
    if (wrapper->NeedConnect()) wrapper->Connect();
  }
  const auto after = written.begin() + static_cast<std::ptrdiff_t>(before);
  if (std::any_of(after, written.end(), [](const auto& line) { return line.text == Reentered; })) {
    find("IsConnecting is left set");
  }
}

void WatchedStage::inspectWindows(FaultInjector& injector) {
  const bool on = world().addin && outlookRuns() && host().addinConnected();
  // The ribbon's version has no ticks once an inspector was open.
  if (!on || hasRibbon() || !injector.passing() || injector.hit(u"setTimer")) return;
  injector.pause(true);
  wait(21'000);
  injector.pause(false);
  const auto& explorers = cxol::globals().g_colExplorers;
  std::size_t served = 0;
  for (std::int32_t i = 1; i <= explorers.count(); ++i) {
    if (explorers.item(i)->thisExplorer()) ++served;
  }
  auto windows = host().snapshot(0).windows;
  std::erase_if(windows, [](const simulator::WindowView& window) {
    return window.kind != simulator::WindowKind::Explorer;
  });
  const auto isBare = [](const simulator::WindowView& window) { return window.bars.empty(); };
  if (served == windows.size() && std::ranges::any_of(windows, isBare)) {
    find("an explorer is left without a toolbar");
  }
  const auto& inspectors = cxol::globals().g_colInspectors;
  for (std::int32_t i = 1; i <= inspectors.count(); ++i) {
    const auto wrapper = inspectors.item(i);
    if (wrapper->thisInspector() && wrapper->NeedConnect()) {
      find("an inspector is left without its toolbar");
    }
  }
}

void WatchedStage::unload() {
  try {
    if (outlookRuns()) quitOutlook();
  } catch (const scenario::Mistake&) {
    // The fault has ended it already.
  }
  world().stop();
}

void WatchedStage::inspectBars(const FaultInjector& injector) {
  // What was added by a call that never answered can't be taken away again.
  if (!injector.passing() || injector.place() == "CommandBarControls.Add") return;
  for (const auto* kept : {&world().bars.explorers, &world().bars.inspectors}) {
    for (const auto& bar : *kept) {
      if (std::ranges::any_of(bar.controls, &std::u16string::empty,
                              &simulator::StoredControl::tag)) {
        find("a control without a tag is left on a bar");
      }
    }
  }
}

void WatchedStage::inspectAfterUnloading(const FaultInjector& injector) {
  inspectBars(injector);
  if (boundary().liveHandles() != 0) find("objects of the host are held after unloading");
  if (boundary().liveConnections() != 0) find("subscriptions are left after unloading");
  if (machine().timers.liveCount() != 0 && !injector.hit(u"killTimer")) {
    find("a timer is left after unloading");
  }
  if (machine().screen.anchor() && !injector.hit(u"hideAnchor")) {
    find("the anchor is left shown after unloading");
  }
  if (machine().mapiHelper.initialized() && !injector.hit(u"deinit") && !injector.hit(u"init")) {
    find("the MAPI helper is left initialized");
  }
}

}  // namespace sweep
