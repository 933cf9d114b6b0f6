#pragma once

#include <cstdint>

namespace simulator {

/// Milliseconds since the machine was switched on; setting the wall clock does not touch them.
class Uptime {
 public:
  std::int64_t now() const { return now_; }
  void pass(std::uint32_t milliseconds) { now_ += milliseconds; }
  /// Does nothing when that moment has passed.
  void reach(std::int64_t moment) {
    if (moment > now_) now_ = moment;
  }

 private:
  std::int64_t now_ = 0;
};

}  // namespace simulator
