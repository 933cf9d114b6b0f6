#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <vector>

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

/// Faults of one kind, each for once or from its crossing on.
struct Way {
  FaultKind kind = FaultKind::AutomationError;
  bool lasting = false;
};

/// Those that make sense: an Outlook that has ended can't end again. Nothing stands for all kinds.
std::vector<Way> waysOf(std::optional<FaultKind> kind);

/// Plays the scenario in each way once for each crossing at which the fault can happen, or for
/// `most` of them, evenly spread; 0 for all. Every finding is a line on the standard error output.
void run(const Piece& piece, std::span<const Way> ways, std::size_t most, Counts& counts);

/// Plays the scenario once with one fault and prints its transcript.
void show(const Piece& piece, const std::optional<Fault>& fault);

/// From now on a crash tells what was being played.
void installBreadcrumb();

}  // namespace sweep
