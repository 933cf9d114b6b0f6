#pragma once

#include "simulator/player/LineSource.h"

namespace demo {

/// Lines that a person types, with editing, a history and completion of the command words.
class Terminal : public scenario::LineSource {
 public:
  Terminal();
  std::optional<scenario::SourceLine> next(bool menuOpen) override;
  bool typed() const override { return true; }
};

}  // namespace demo
