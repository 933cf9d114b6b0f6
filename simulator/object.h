#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/automation.h"

namespace simulator {

using automation::Value;
using Arguments = std::span<const Value>;

/// Argument `index`, or an omitted one when the caller gave fewer.
const Value& argument(Arguments args, std::size_t index);

/// Base of every object of the simulated host and client: event sources and identity.
class SimObject : public automation::Dispatch, public std::enable_shared_from_this<SimObject> {
 public:
  const void* identity() const override { return this; }
  automation::Connection connect(const automation::EventInterface& events,
                                 std::shared_ptr<automation::EventSink> sink) override;

  automation::Object handle() { return automation::Object(shared_from_this()); }
  std::size_t sinkCount() const { return sinks_->size(); }

 protected:
  /// The event interfaces that the object offers.
  virtual std::span<const automation::EventInterface* const> eventInterfaces() const { return {}; }
  /// Delivers an event to every sink that was connected when it began and still is when its turn
  /// comes. `args` may be changed by the sinks.
  void fire(const automation::EventInterface& events, std::int32_t id, std::vector<Value>& args);

 private:
  struct Subscription {
    std::u16string_view iid;
    std::shared_ptr<automation::EventSink> sink;
  };
  // Shared with the connections, which may outlive the object.
  using Sinks = std::vector<std::shared_ptr<Subscription>>;
  std::shared_ptr<Sinks> sinks_ = std::make_shared<Sinks>();
};

/// One member of a class of simulated objects. A missing function raises error 438.
template <class Self>
struct MemberRow {
  std::u16string_view name;
  /// Serves property reads and method calls alike, as late-bound callers mix them.
  Value (*read)(Self&, Arguments) = nullptr;
  void (*write)(Self&, const Value&) = nullptr;
};

/// A simulated object whose class offers `static std::span<const MemberRow<Self>> members()` and
/// `static constexpr std::u16string_view Name`.
template <class Self>
class TableObject : public SimObject {
 public:
  Value invoke(automation::Access access, const automation::Member& member,
               Arguments args) override {
    auto& self = static_cast<Self&>(*this);
    for (const MemberRow<Self>& row : Self::members()) {
      if (row.name != member.name) continue;
      if (access == automation::Access::Put) {
        if (!row.write || args.empty()) break;
        row.write(self, args.back());
        return {};
      }
      if (!row.read) break;
      return row.read(self, args);
    }
    throw automation::Error(automation::ErrorNumber::MemberNotFound);
  }
  std::u16string typeName() override { return std::u16string(Self::Name); }
};

}  // namespace simulator
