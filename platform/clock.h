#pragma once

#include <cstdint>

namespace platform {

/// The local wall-clock time.
struct LocalTime {
  int year = 0;
  int month = 0;  ///< 1 to 12
  int day = 0;    ///< 1 to 31
  int hour = 0;
  int minute = 0;
  int second = 0;
  int millisecond = 0;
};

class Clock {
 public:
  virtual ~Clock() = default;
  virtual LocalTime localTime() = 0;
  /// Blocks the thread; no event and no timer is delivered meanwhile.
  virtual void sleep(std::uint32_t milliseconds) = 0;
  /// Delivers the messages that are pending for the thread, for 200 ms at most: some senders always
  /// have one more.
  virtual void pumpMessages() = 0;
};

/// Seconds since midnight with their fraction.
constexpr double secondsSinceMidnight(const LocalTime& time) {
  return (time.hour * 60 + time.minute) * 60 + time.second + time.millisecond / 1000.0;
}

/// Milliseconds since midnight.
constexpr std::int64_t millisecondsSinceMidnight(const LocalTime& time) {
  return ((time.hour * 60LL + time.minute) * 60 + time.second) * 1000 + time.millisecond;
}

/// Milliseconds of the calendar: for differences only.
constexpr std::int64_t serialMilliseconds(const LocalTime& time) {
  const int shifted = (time.month + 9) % 12;
  const int year = time.year - shifted / 10;
  const std::int64_t days =
      365 * year + year / 4 - year / 100 + year / 400 + (shifted * 306 + 5) / 10 + time.day - 1;
  return days * 86'400'000 + millisecondsSinceMidnight(time);
}

}  // namespace platform
