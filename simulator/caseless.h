#pragma once

#include <string>
#include <string_view>

namespace simulator {

/// Lower case of the letters of ASCII, Latin-1, Latin Extended-A, Greek and Cyrillic, everything
/// else as it is: how the machine compares keys, paths and class names, and a scenario what was
/// typed.
std::u16string folded(std::u16string_view text);

bool sameName(std::u16string_view a, std::u16string_view b);

}  // namespace simulator
