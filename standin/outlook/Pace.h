#pragma once

#include <cstdint>

namespace standin {

/// Lets real time pass as a scenario counts it. Lines take no time there, so a wait that follows
/// another counts from where that one should have ended, not from where it did.
class Pace {
 public:
  /// Something was done just now: the next wait counts from here.
  void reset() { counting_ = false; }
  /// Delivers messages and timers for this long, and what falls due just then.
  void wait(std::uint32_t milliseconds);

 private:
  bool counting_ = false;
  std::uint32_t end_ = 0;  ///< of the last wait, as GetTickCount counts
};

/// Delivers the messages that are there.
void deliverMessages();

}  // namespace standin
