#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "simulator/boundary.h"
#include "tests/sweep/Fault.h"

namespace sweep {

/// An object of a class that nobody asked for.
automation::Object stranger(simulator::Boundary& boundary);

/// Counts the crossings of a run and lets its fault happen at one of them, or from that one on.
/// Without a fault it records what could happen at each crossing.
class FaultInjector : public simulator::CrossingObserver {
 public:
  /// Lets an event of this kind happen; false when nothing of the kind is possible now.
  using Disturb = std::function<bool(FaultKind)>;

  FaultInjector(std::optional<Fault> fault, simulator::Boundary& boundary, Disturb disturb)
      : fault_(fault), boundary_(boundary), disturb_(std::move(disturb)) {}

  automation::Value around(const simulator::Crossing& crossing,
                           const std::function<automation::Value()>& proceed) override;
  void before(const simulator::Crossing& crossing) override;

  /// While paused nothing is counted and nothing happens.
  void pause(bool on) { paused_ = on; }
  /// Asked by a service that can answer something else: what it is to answer now.
  std::optional<FaultKind> takeAlteration();

  std::size_t crossings() const { return count_; }
  /// How often the fault came about.
  std::size_t injected() const { return injected_; }
  /// Owner and member of the first crossing that was faulted.
  const std::string& place() const { return place_; }
  /// Kinds by crossing, from 0; recorded without a fault only.
  const std::vector<KindSet>& possible() const { return possible_; }
  /// Whether the fault hit this operation of a service.
  bool hit(std::u16string_view operation) const { return hitOperation_ == operation; }
  /// Whether a single call failed, was interrupted, or answered nothing: what comes after it can
  /// make up for it.
  bool passing() const {
    return !fault_ || (!fault_->lasting && fault_->kind != FaultKind::WrongType);
  }
  /// More crossings than any run can need: the run is caught in a loop.
  static constexpr std::size_t Endless = 2'000'000;

 private:
  /// Counts; true when the fault may happen here.
  bool arrives(const simulator::Crossing& crossing);
  void mark(const simulator::Crossing& crossing);
  void deliver(const simulator::Crossing& crossing);
  void record(KindSet kinds);
  [[noreturn]] void raise(const simulator::Crossing& crossing);
  automation::Value altered(const simulator::Crossing& crossing, automation::Value answer);

  std::optional<Fault> fault_;
  simulator::Boundary& boundary_;
  Disturb disturb_;
  bool paused_ = false;
  bool delivering_ = false;
  std::size_t count_ = 0;
  std::size_t injected_ = 0;
  std::string place_;
  std::u16string hitOperation_;
  std::optional<FaultKind> alteration_;
  std::vector<KindSet> possible_;
};

}  // namespace sweep
