#pragma once

#include <array>
#include <cstddef>

#include "tests/sweep/Fault.h"
#include "tests/sweep/Theatre.h"

namespace sweep {

/// What was done, by kind.
struct Counts {
  std::array<std::size_t, FaultKinds> runs{};
  /// A lasting fault counts each time that it comes about.
  std::array<std::size_t, FaultKinds> faults{};
  std::size_t findings = 0;
};

/// All faults of one kind in one scenario.
struct Task {
  const Piece* piece = nullptr;
  FaultKind kind = FaultKind::AutomationError;
  bool lasting = false;
};

/// The kinds that make sense in this way: an Outlook that has ended can't end again.
std::vector<Task> tasksOf(const std::vector<Piece>& pieces);

/// Plays the scenario once for each crossing at which the fault can happen, or for `most` of them,
/// evenly spread; 0 for all. Every finding is a line on the standard error output.
void run(const Task& task, std::size_t most, Counts& counts);

/// Plays the scenario once with one fault and prints its transcript.
void show(const Piece& piece, const std::optional<Fault>& fault);

/// From now on a crash tells what was being played.
void installBreadcrumb();

}  // namespace sweep
