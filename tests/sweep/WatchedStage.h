#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/player/NativeStage.h"
#include "tests/sweep/FaultInjector.h"

namespace sweep {

/// A simulated world that can be disturbed in the middle of what is done in it, and that looks
/// after every action of the user, and at the end, for what must never be, whatever failed.
class WatchedStage : public scenario::NativeStage {
 public:
  using NativeStage::NativeStage;

  /// What was found so far.
  const std::vector<std::string>& findings() const { return findings_; }

  /// What happens in the middle of a call; false when it can't happen now.
  bool disturb(FaultKind kind);

  // To be called in this order when a scenario has been played to its end.

  /// The add-in's state as the scenario has left it; given time, each window has its toolbar.
  void inspect(FaultInjector& injector);
  /// Outlook ends, if it has not yet, and the add-in with it.
  void unload();
  void inspectAfterUnloading(const FaultInjector& injector);

 private:
  void act(const std::function<void()>& action) override;
  bool disturbOutlook(FaultKind kind);
  bool selectFirst();
  std::size_t dials();
  /// The version that has a ribbon builds no toolbars for items.
  bool hasRibbon() { return world().options.version.starts_with(u"12."); }
  /// Switched off, and what it was given is still held.
  bool holdsWhenOff();
  void inspectState();
  void reconnectInspectors();
  void inspectWindows(FaultInjector& injector);
  void inspectBars(const FaultInjector& injector);
  void find(std::string_view what) { findings_.emplace_back(what); }

  std::vector<std::string> findings_;
  /// A fault has released the add-in.
  bool released_ = false;
};

}  // namespace sweep
