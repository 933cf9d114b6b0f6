#pragma once

#include <string>
#include <utility>
#include <vector>

#include "simulator/boundary.h"

namespace tests {

/// Counts the late-bound calls and subscriptions, for as long as it lives.
class HostCalls : public simulator::CrossingObserver {
 public:
  explicit HostCalls(simulator::Boundary& boundary) : boundary_(boundary) {
    boundary_.setObserver(this);
  }
  ~HostCalls() override { boundary_.setObserver(nullptr); }
  HostCalls(const HostCalls&) = delete;
  HostCalls& operator=(const HostCalls&) = delete;

  void before(const simulator::Crossing& crossing) override {
    if (crossing.kind == simulator::Crossing::Kind::Service) return;
    ++count_;
    if (named_)
      names_.push_back(std::u16string(crossing.owner) + u"." + std::u16string(crossing.member));
  }

  std::size_t count() const { return count_; }
  /// The count since the last time.
  std::size_t take() { return std::exchange(count_, 0); }
  /// From now on the calls are written down as well.
  void keepNames() { named_ = true; }
  const std::vector<std::u16string>& names() const { return names_; }

 private:
  simulator::Boundary& boundary_;
  std::size_t count_ = 0;
  bool named_ = false;
  std::vector<std::u16string> names_;
};

}  // namespace tests
