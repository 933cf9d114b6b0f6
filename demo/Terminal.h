#pragma once

#include <memory>
#include <string>

#include "simulator/player/LineSource.h"
#include "simulator/player/Player.h"

namespace demo {

/// Lines that a person types at the program's terminal: with editing, a history that lasts from one
/// run to the next in the user's state folder, the Tab key that completes, and Ctrl-C that throws
/// the line away.
class Terminal : public scenario::LineSource {
 public:
  /// The player, whose world the Tab key looks at, must outlive the terminal.
  Terminal(scenario::Player& player, bool colours);
  ~Terminal() override;

  std::optional<scenario::SourceLine> next(bool menuOpen) override;
  bool typed() const override { return true; }

 private:
  struct Editor;
  std::unique_ptr<Editor> editor_;
};

}  // namespace demo
