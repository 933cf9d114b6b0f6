#include "simulator/object.h"

#include <algorithm>

namespace simulator {

const Value& argument(Arguments args, std::size_t index) {
  static const Value omitted{automation::Missing{}};
  return index < args.size() ? args[index] : omitted;
}

automation::Connection SimObject::connect(const automation::EventInterface& events,
                                          std::shared_ptr<automation::EventSink> sink) {
  const auto offered = eventInterfaces();
  const bool known = std::ranges::any_of(
      offered, [&](const automation::EventInterface* own) { return own->iid == events.iid; });
  if (!known) throw automation::Error(automation::ErrorNumber::AutomationFailed);
  auto entry = std::make_shared<Subscription>(Subscription{events.iid, std::move(sink)});
  sinks_->push_back(entry);
  return automation::Connection([sinks = sinks_, entry] { std::erase(*sinks, entry); });
}

void SimObject::fire(const automation::EventInterface& events, std::int32_t id,
                     std::vector<Value>& args) {
  const auto self = shared_from_this();
  const Sinks connected = *sinks_;
  for (const auto& entry : connected) {
    if (entry->iid != events.iid) continue;
    if (std::ranges::find(*sinks_, entry) == sinks_->end()) continue;
    entry->sink->onEvent(id, args);
  }
}

}  // namespace simulator
