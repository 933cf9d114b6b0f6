#include "simulator/machine/SimTimers.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace simulator {

std::uint32_t SimTimers::setTimer(std::uint32_t milliseconds, std::function<void()> tick) {
  constexpr std::uint32_t Shortest = 10;
  try {
    boundary_.service(u"Timers", u"setTimer");
  } catch (const automation::Error&) {
    return 0;
  }
  if (exhausted_) return 0;
  const std::uint32_t interval = std::max(milliseconds, Shortest);
  timers_.emplace(++lastId_, Timer{interval, uptime_.now() + interval,
                                   std::make_shared<const std::function<void()>>(std::move(tick))});
  return lastId_;
}

void SimTimers::killTimer(std::uint32_t id) {
  boundary_.service(u"Timers", u"killTimer");
  timers_.erase(id);
}

const SimTimers::Entry* SimTimers::first() const {
  const auto found =
      std::ranges::min_element(timers_, {}, [](const Entry& entry) { return entry.second.due; });
  return found == timers_.end() ? nullptr : &*found;
}

std::optional<std::int64_t> SimTimers::nextDue() const {
  const Entry* entry = first();
  return entry ? std::optional(entry->second.due) : std::nullopt;
}

bool SimTimers::fireFirst() {
  const Entry* entry = first();
  if (!entry || entry->second.due > uptime_.now()) return false;
  fire(entry->first);
  return true;
}

void SimTimers::fireDue() {
  std::vector<std::pair<std::int64_t, std::uint32_t>> due;
  for (const auto& [id, timer] : timers_) {
    if (timer.due <= uptime_.now()) due.emplace_back(timer.due, id);
  }
  std::ranges::sort(due);
  for (const auto& [moment, id] : due) {
    // A callback may have killed it, or have let it fire in a message loop of its own.
    const auto found = timers_.find(id);
    if (found != timers_.end() && found->second.due == moment) fire(id);
  }
}

void SimTimers::fire(std::uint32_t id) {
  Timer& timer = timers_.at(id);
  timer.due = uptime_.now() + timer.interval;
  const auto tick = timer.tick;
  (*tick)();
}

}  // namespace simulator
