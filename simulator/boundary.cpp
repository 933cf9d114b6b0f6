#include "simulator/boundary.h"

#include <map>
#include <vector>

namespace simulator {

using automation::Object;
using automation::Value;

namespace {

/// An object as the add-in has it: there as long as the add-in holds a handle of it, and gone with
/// the last one, whoever holds the object on the other side.
struct Held {};

}  // namespace

struct Boundary::State {
  std::map<const void*, std::weak_ptr<Held>> held;
  std::size_t handles = 0;
  std::size_t connections = 0;
  CrossingObserver* observer = nullptr;
};

namespace {

Object outObject(const std::shared_ptr<Boundary::State>& state, const Object& object);
Value outValue(const std::shared_ptr<Boundary::State>& state, const Value& value);

/// Puts the handles of this crossing into what a sink of the add-in receives. A subscription does
/// not keep its source: one that the add-in has let go tells it nothing any more.
class OutgoingSink : public automation::EventSink {
 public:
  OutgoingSink(std::shared_ptr<Boundary::State> state, std::weak_ptr<Held> source,
               std::shared_ptr<automation::EventSink> sink)
      : state_(std::move(state)), source_(std::move(source)), sink_(std::move(sink)) {}

  void onEvent(std::int32_t id, std::span<Value> args) noexcept override {
    if (source_.expired()) return;
    std::vector<Value> wrapped;
    wrapped.reserve(args.size());
    for (const Value& value : args) wrapped.push_back(outValue(state_, value));
    sink_->onEvent(id, wrapped);
    // Flags by reference go back to the source.
    for (std::size_t i = 0; i < args.size(); ++i) {
      if (!args[i].isObject()) args[i] = wrapped[i];
    }
  }

 private:
  std::shared_ptr<Boundary::State> state_;
  const std::weak_ptr<Held> source_;
  std::shared_ptr<automation::EventSink> sink_;
};

class Handle : public automation::Dispatch {
 public:
  Handle(std::shared_ptr<Boundary::State> state, std::shared_ptr<Dispatch> inner)
      : state_(std::move(state)), inner_(std::move(inner)), held_(hold()) {
    ++state_->handles;
  }
  ~Handle() override {
    --state_->handles;
    if (held_.use_count() == 1) state_->held.erase(inner_->identity());
  }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;

  Value invoke(automation::Access access, const automation::Member& member,
               std::span<const Value> args) override {
    const auto proceed = [&] {
      std::vector<Value> inside;
      inside.reserve(args.size());
      for (const Value& value : args) inside.push_back(Boundary::in(value));
      return outValue(state_, inner_->invoke(access, member, inside));
    };
    if (!state_->observer) return proceed();
    const std::u16string owner = inner_->typeName();
    return state_->observer->around({Crossing::Kind::Call, owner, member.name, access}, proceed);
  }

  std::u16string typeName() override {
    if (state_->observer) {
      const std::u16string owner = inner_->typeName();
      state_->observer->before({Crossing::Kind::Call, owner, u"TypeName", automation::Access::Get});
    }
    return inner_->typeName();
  }

  const void* identity() const override { return inner_->identity(); }

  automation::Connection connect(const automation::EventInterface& events,
                                 std::shared_ptr<automation::EventSink> sink) override {
    if (state_->observer) {
      const std::u16string owner = inner_->typeName();
      state_->observer->before({Crossing::Kind::Connect, owner, events.iid});
    }
    auto inner = std::make_shared<automation::Connection>(
        inner_->connect(events, std::make_shared<OutgoingSink>(state_, held_, std::move(sink))));
    ++state_->connections;
    return automation::Connection([state = state_, inner] {
      inner->close();
      --state->connections;
    });
  }

  const std::shared_ptr<Dispatch>& inner() const { return inner_; }

 private:
  std::shared_ptr<Held> hold() const {
    auto& known = state_->held[inner_->identity()];
    auto held = known.lock();
    if (!held) known = held = std::make_shared<Held>();
    return held;
  }

  std::shared_ptr<Boundary::State> state_;
  std::shared_ptr<Dispatch> inner_;
  std::shared_ptr<Held> held_;
};

Object outObject(const std::shared_ptr<Boundary::State>& state, const Object& object) {
  if (!object) return {};
  // What the add-in handed over itself comes back as it was.
  if (dynamic_cast<const Handle*>(object.dispatch().get())) return object;
  return Object(std::make_shared<Handle>(state, object.dispatch()));
}

Value outValue(const std::shared_ptr<Boundary::State>& state, const Value& value) {
  if (const auto* object = std::get_if<Object>(&value.data())) return outObject(state, *object);
  if (const auto* array = std::get_if<automation::Array>(&value.data())) {
    automation::Array wrapped;
    wrapped.reserve(array->size());
    for (const Value& element : *array) wrapped.push_back(outValue(state, element));
    return wrapped;
  }
  return value;
}

}  // namespace

Boundary::Boundary() : state_(std::make_shared<State>()) {}

Boundary::~Boundary() {
  state_->observer = nullptr;
}

Object Boundary::out(const Object& object) {
  return outObject(state_, object);
}

Value Boundary::out(const Value& value) {
  return outValue(state_, value);
}

Object Boundary::in(const Object& object) {
  if (const auto* own = dynamic_cast<const Handle*>(object.dispatch().get())) {
    return Object(own->inner());
  }
  return object;
}

Value Boundary::in(const Value& value) {
  if (const auto* object = std::get_if<Object>(&value.data())) return in(*object);
  return value;
}

std::size_t Boundary::liveHandles() const {
  return state_->handles;
}

std::size_t Boundary::liveConnections() const {
  return state_->connections;
}

void Boundary::setObserver(CrossingObserver* observer) {
  state_->observer = observer;
}

void Boundary::service(std::u16string_view owner, std::u16string_view operation) {
  if (state_->observer) state_->observer->before({Crossing::Kind::Service, owner, operation});
}

}  // namespace simulator
