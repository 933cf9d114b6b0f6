#include "simulator/machine/SimClock.h"

#include "simulator/machine/dates.h"

namespace simulator {

SimClock::SimClock(Boundary& boundary, Uptime& uptime, SimTimers& timers)
    : boundary_(boundary), uptime_(uptime), timers_(timers) {
  set({2008, 3, 7, 9, 0, 0, 0});
}

platform::LocalTime SimClock::localTime() {
  boundary_.service(u"Clock", u"localTime");
  return now();
}

void SimClock::sleep(std::uint32_t milliseconds) {
  boundary_.service(u"Clock", u"sleep");
  uptime_.pass(milliseconds);
}

void SimClock::pumpMessages() {
  boundary_.service(u"Clock", u"pumpMessages");
  timers_.fireDue();
}

void SimClock::set(const platform::LocalTime& time) {
  offset_ = calendarMilliseconds(time) - uptime_.now();
}

platform::LocalTime SimClock::now() const {
  return fromCalendarMilliseconds(offset_ + uptime_.now());
}

void SimClock::advance(std::uint32_t milliseconds) {
  const std::int64_t target = uptime_.now() + milliseconds;
  for (auto due = timers_.nextDue(); due && *due <= target; due = timers_.nextDue()) {
    uptime_.reach(*due);
    timers_.fireFirst();
  }
  uptime_.reach(target);
}

}  // namespace simulator
