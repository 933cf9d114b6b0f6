#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/player/Player.h"

namespace demo {

/// What the Tab key offers.
struct Completion {
  std::size_t from = 0;             ///< where the word begins that a candidate replaces, in bytes
  std::vector<std::string> offers;  ///< UTF-8, texts in their quotation marks
};

/// What may stand at the end of the line typed so far: command words, the words of the command's
/// arguments, and what is there to be named: buttons, folders, items, windows, entries of a menu.
Completion complete(scenario::Player& player, std::string_view typed);

/// The beginning that all of the texts share; ASCII letters in any case, as the first has them.
std::string sharedBeginning(const std::vector<std::string>& texts);

}  // namespace demo
