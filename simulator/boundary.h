#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "platform/automation.h"

namespace simulator {

/// What crosses the boundary: a late-bound call or a call of a machine service.
struct Crossing {
  enum class Kind { Call, Connect, Service };
  Kind kind;
  /// Class of the object, or name of the service.
  std::u16string_view owner;
  /// Member, event interface id or service operation.
  std::u16string_view member;
  automation::Access access = automation::Access::Call;
};

/// Stands around every crossing: counts it, records it, fails it, or lets something else happen in
/// the middle of it.
class CrossingObserver {
 public:
  virtual ~CrossingObserver() = default;
  /// A late-bound call. May raise an error instead of proceeding, or answer something else.
  virtual automation::Value around(const Crossing& crossing,
                                   const std::function<automation::Value()>& proceed) {
    before(crossing);
    return proceed();
  }
  /// A subscription or a service call. May raise an error; a service that reports failures by its
  /// result turns the error into that.
  virtual void before(const Crossing&) {}
};

/// The line between the add-in and everything that it reaches. Each object that goes over to the
/// add-in does so as a handle of its own, so that the references that the add-in holds can be told
/// from the host's and counted. An object of which the add-in has no handle left ends its
/// subscriptions, as objects do that are made when they are asked for.
class Boundary {
 public:
  Boundary();
  ~Boundary();
  Boundary(const Boundary&) = delete;
  Boundary& operator=(const Boundary&) = delete;

  /// To the add-in: objects become handles, also inside arrays.
  automation::Object out(const automation::Object& object);
  automation::Value out(const automation::Value& value);
  /// From the add-in: handles become the objects behind them.
  static automation::Object in(const automation::Object& object);
  static automation::Value in(const automation::Value& value);

  /// Objects and subscriptions that the add-in holds at this moment.
  std::size_t liveHandles() const;
  std::size_t liveConnections() const;

  /// Null for none. Must outlive its time in office.
  void setObserver(CrossingObserver* observer);

  /// To be called by every operation of a simulated service before it does its work. Raises what
  /// the observer raises.
  void service(std::u16string_view owner, std::u16string_view operation);

  struct State;

 private:
  std::shared_ptr<State> state_;
};

}  // namespace simulator
