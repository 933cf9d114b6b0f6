#pragma once

#include <cstdint>
#include <exception>
#include <optional>
#include <string>
#include <utility>

#include "platform/automation.h"

namespace cxol {

/// The error that is being handled, as number and description. To be called inside a catch.
automation::Error currentError() noexcept;

/// Carries an operation on past failing steps. The last failure stays pending, through successful
/// steps too, until it is cleared: it can be asked for and logged at the operation's end. An
/// explorer's toolbar build and the look for the client tell by it why they have nothing in the
/// end.
class ResumeNext {
 public:
  /// Runs one step; false when it failed.
  template <class Step>
  bool operator()(Step&& step) noexcept {
    try {
      std::forward<Step>(step)();
      return true;
    } catch (...) {
      pending_.emplace(currentError());
      return false;
    }
  }

  bool pending() const noexcept { return pending_.has_value(); }
  /// 0 when nothing is pending.
  std::int32_t number() const noexcept { return pending_ ? pending_->number() : 0; }
  /// Empty when nothing is pending.
  std::u16string description() const { return pending_ ? pending_->description() : u""; }
  void clear() noexcept { pending_.reset(); }

 private:
  std::optional<automation::Error> pending_;
};

/// Runs an operation up to its first failure and hands that to `handler`, which must see to it that
/// nothing escapes (the trace writers never raise).
template <class Body, class Handler>
void trap(Body&& body, Handler&& handler) noexcept {
  try {
    std::forward<Body>(body)();
  } catch (...) {
    handler(currentError());
  }
}

/// Runs an operation up to its first failure and ends it quietly.
template <class Body>
void trapQuietly(Body&& body) noexcept {
  trap(std::forward<Body>(body), [](const automation::Error&) {});
}

}  // namespace cxol
