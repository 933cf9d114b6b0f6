#pragma once

#include <functional>
#include <string_view>
#include <utility>

#include "simulator/boundary.h"

namespace tests {

/// Lets something happen once, when a call of this class and member is on its way back, or when
/// this operation of a service or this subscription begins. Must not outlive the boundary.
class Once : public simulator::CrossingObserver {
 public:
  Once(simulator::Boundary& boundary, std::u16string_view owner, std::u16string_view member,
       std::function<void()> action)
      : boundary_(boundary), owner_(owner), member_(member), action_(std::move(action)) {
    boundary_.setObserver(this);
  }
  ~Once() override { boundary_.setObserver(nullptr); }

  automation::Value around(const simulator::Crossing& crossing,
                           const std::function<automation::Value()>& proceed) override {
    auto answer = proceed();
    before(crossing);
    return answer;
  }
  void before(const simulator::Crossing& crossing) override {
    if (crossing.owner != owner_ || crossing.member != member_) return;
    if (++count_ == 1) action_();
  }
  bool happened() const { return count_ != 0; }
  /// How often there was such a call.
  int count() const { return count_; }

 private:
  simulator::Boundary& boundary_;
  std::u16string_view owner_;
  std::u16string_view member_;
  std::function<void()> action_;
  int count_ = 0;
};

}  // namespace tests
