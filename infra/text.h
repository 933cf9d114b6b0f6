#pragma once

#include <string>
#include <string_view>

#include "platform/conversions.h"

/// Small text helpers of the logic. All comparisons are binary unless a name says otherwise.
namespace cxol {

/// Joins any number of texts with a single allocation.
template <class... Parts>
std::u16string concat(const Parts&... parts) {
  std::u16string result;
  result.reserve((std::u16string_view(parts).size() + ...));
  (result.append(std::u16string_view(parts)), ...);
  return result;
}

/// "True" or "False", as the trace writes them.
constexpr std::u16string_view boolText(bool value) {
  return value ? u"True" : u"False";
}

using automation::equalsIgnoringCase;

/// Without the blanks (and only blanks) at both ends.
std::u16string_view trimBlanks(std::u16string_view text);

/// The program of a command line: what stands in quotes at its beginning, or without quotes what
/// goes up to the first ".exe" that a blank or the end follows. A text without either is a path.
std::u16string_view programOf(std::u16string_view commandLine);

/// Every occurrence, found from left to right and not inside what was put in.
std::u16string replaceAll(std::u16string_view text, std::u16string_view what,
                          std::u16string_view with);

/// The same, finding `what` without regard to case.
std::u16string replaceAllIgnoringCase(std::u16string_view text, std::u16string_view what,
                                      std::u16string_view with);

}  // namespace cxol
