#pragma once

#include <cstdint>

#include "platform/clock.h"
#include "simulator/boundary.h"
#include "simulator/machine/SimTimers.h"

namespace simulator {

/// A virtual clock. Time passes only when someone sleeps or lets it pass, and costs nothing. The
/// services of this class pass an observer's error through.
class SimClock : public platform::Clock {
 public:
  SimClock(Boundary& boundary, Uptime& uptime, SimTimers& timers);

  platform::LocalTime localTime() override;
  /// Fires no timer.
  void sleep(std::uint32_t milliseconds) override;
  /// Fires each timer that is due at this moment once.
  void pumpMessages() override;

  // Not crossings: for the program that plays the machine.

  /// Sets the wall clock; timers and everything else that waits are not disturbed.
  void set(const platform::LocalTime& time);
  platform::LocalTime now() const;
  /// Lets time pass in the message loop: every timer fires at its exact time, in order. A timer
  /// that missed several of its times, because a callback slept, fires once for all of them.
  /// Callbacks may sleep, may set and kill timers, and may call this again.
  void advance(std::uint32_t milliseconds);

 private:
  Boundary& boundary_;
  Uptime& uptime_;
  SimTimers& timers_;
  std::int64_t offset_ = 0;  // milliseconds from the start of the machine's calendar to its boot
};

}  // namespace simulator
