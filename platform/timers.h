#pragma once

#include <cstdint>
#include <functional>

namespace platform {

/// Timers of the thread, without a window. Their callbacks run from the thread's message loop.
class Timers {
 public:
  virtual ~Timers() = default;
  /// Starts a periodic timer; its id, or 0 when the system has none left. `tick` must not throw;
  /// it may kill its own timer.
  virtual std::uint32_t setTimer(std::uint32_t milliseconds, std::function<void()> tick) = 0;
  virtual void killTimer(std::uint32_t id) = 0;
};

}  // namespace platform
