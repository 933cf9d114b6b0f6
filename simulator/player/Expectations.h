#pragma once

#include <span>
#include <string>

#include "simulator/player/Line.h"
#include "simulator/player/Player.h"

namespace scenario {

/// How an expectation came out, with the texts for its report.
struct Verdict {
  bool held = false;
  std::string expected;
  std::string found;
};

/// Judges what follows the word "expect". Raises Mistake when the line does not say what to expect.
Verdict judge(Player& player, Arguments& args);

/// One line for each kind of expectation.
std::span<const std::string> expectationHelp();

}  // namespace scenario
