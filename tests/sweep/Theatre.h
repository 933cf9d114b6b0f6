#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tests/sweep/FaultInjector.h"

namespace sweep {

/// One world in which lives of one scenario are played, one after the other.
class Theatre {
 public:
  virtual ~Theatre() = default;
  /// An injector for the theatre's world, which must outlive it.
  virtual FaultInjector injector(std::optional<Fault> fault) = 0;
  /// Plays one life, from the add-in's loading to its unloading.
  virtual void play(FaultInjector& injector) = 0;

  // Of the last life.

  /// What the client was told, what the user was shown, and the trace.
  virtual const std::vector<std::u16string>& transcript() const = 0;
  /// What must never be, whatever failed.
  virtual const std::vector<std::string>& findings() const = 0;
  /// What the scenario wanted and could not get; empty without a fault.
  virtual std::string missed() const = 0;
};

struct Piece {
  std::string name;
  std::function<std::unique_ptr<Theatre>()> build;
};

/// The scenarios of this program, and those of a folder of scenario files.
std::vector<Piece> ownPieces();
std::vector<Piece> samplePieces(const std::string& folder);

}  // namespace sweep
