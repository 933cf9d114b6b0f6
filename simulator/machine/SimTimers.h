#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>

#include "platform/timers.h"
#include "simulator/Uptime.h"
#include "simulator/boundary.h"

namespace simulator {

/// Timers over virtual time. The shortest interval is 10 ms, as the system has it.
class SimTimers : public platform::Timers {
 public:
  SimTimers(Boundary& boundary, const Uptime& uptime) : boundary_(boundary), uptime_(uptime) {}

  /// 0 also when an observer fails it.
  std::uint32_t setTimer(std::uint32_t milliseconds, std::function<void()> tick) override;
  void killTimer(std::uint32_t id) override;

  // Not crossings: for the program that plays the machine.

  /// From now on the system has no timer left, or has some again.
  void setExhausted(bool exhausted) { exhausted_ = exhausted; }
  std::size_t liveCount() const { return timers_.size(); }
  /// When the next timer is due; nothing when none runs.
  std::optional<std::int64_t> nextDue() const;
  /// Fires the timer that is due first, if it is due now; false when there was none.
  bool fireFirst();
  /// Fires each timer that is due at the moment of the call once.
  void fireDue();

 private:
  struct Timer {
    std::uint32_t interval;
    std::int64_t due;
    // Shared, because a callback may kill its own timer.
    std::shared_ptr<const std::function<void()>> tick;
  };
  using Entry = std::map<std::uint32_t, Timer>::value_type;
  const Entry* first() const;
  void fire(std::uint32_t id);

  Boundary& boundary_;
  const Uptime& uptime_;
  std::map<std::uint32_t, Timer> timers_;
  std::uint32_t lastId_ = 0;
  bool exhausted_ = false;
};

}  // namespace simulator
