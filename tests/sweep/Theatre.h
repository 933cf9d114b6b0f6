#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "simulator/mailbox.h"
#include "tests/sweep/AlteredServices.h"
#include "tests/sweep/FaultInjector.h"
#include "tests/sweep/WatchedStage.h"

namespace sweep {

/// A scenario file and the mailbox in which it plays.
struct Piece {
  std::string name;
  std::string text;
  std::shared_ptr<const simulator::Mailbox> mailbox;
};

/// The scenario files of a folder, in the order of their names.
std::vector<Piece> piecesOf(const std::string& folder,
                            const std::shared_ptr<const simulator::Mailbox>& mailbox);

/// Plays lives of one scenario, one after the other, each in a world of its own. The add-in's code
/// and its globals stay the same.
class Theatre {
 public:
  /// The piece must outlive it.
  explicit Theatre(const Piece& piece) : piece_(piece) {}

  /// An injector for the world of the next life, which must outlive it.
  FaultInjector injector(std::optional<Fault> fault);
  /// Plays one life, from the add-in's loading to its unloading; without a reader there is no
  /// transcript of it.
  enum class Reader { None, Comparing };
  void play(FaultInjector& injector, Reader reader);

  // Of the last life, which must have been played.

  /// What the client was told, what the user was shown, and the trace.
  const std::vector<std::string>& transcript() const { return transcript_; }
  /// What must never be, whatever failed.
  const std::vector<std::string>& findings() const { return stage_->findings(); }
  /// What the scenario wanted and could not get; empty without a fault.
  const std::string& missed() const { return missed_; }

 private:
  void build();

  const Piece& piece_;
  std::unique_ptr<WatchedStage> stage_;
  std::optional<AlteredServices> services_;
  FaultInjector* injector_ = nullptr;
  std::vector<std::string> transcript_;
  std::string missed_;
};

}  // namespace sweep
