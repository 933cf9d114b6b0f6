#pragma once

#include <string>
#include <string_view>

#include "doctor/traceMeanings.h"

namespace doctor {

/// One line of the trace file: "07.03.2008 14:05:09.042 Warning: text".
struct TraceLine {
  std::u16string_view time;
  /// "Error", "Warning" or "Debug".
  std::u16string_view level;
  std::u16string_view text;
};

/// Without time and level where the line has none: the rest of a text that went over lines.
TraceLine readTraceLine(std::u16string_view line);

/// Null for a text that the table does not have.
const TraceMeaning* meaningOf(std::u16string_view text);

/// The trace for reading: below each line its meaning, an empty line before each click; only
/// warnings and errors if so wanted. German in the first column of languages, else English.
std::u16string explainedTrace(std::u16string_view trace, std::size_t language, bool onlyProblems);

/// The trace without digits of numbers and names of persons and items. Fixed texts stay, with their
/// times; of what follows them stays what can't be personal.
std::u16string maskedTrace(std::u16string_view trace);

/// A report without the names of users' folders.
std::u16string maskedReport(std::u16string_view report);

}  // namespace doctor
