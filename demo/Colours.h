#pragma once

#include <string>
#include <string_view>

namespace demo {

/// Whether the standard output is a terminal that shows colours and nobody has asked for none
/// (NO_COLOR).
bool coloursWanted();

/// A line of the transcript in the colour of what it tells.
std::string coloured(std::string_view line);

}  // namespace demo
