#pragma once

#include <cstdint>
#include <string_view>

#include "platform/clock.h"
#include "simulator/player/Stage.h"

namespace scenario {

/// A trace line as the logging library gets it: without level and time in its text.
Note traceOfLibrary(std::int32_t level, std::u16string_view text, const platform::LocalTime& now);

/// A trace line as it stands in the add-in's own file:
/// "07.03.2008 14:05:09.042 Warning: text" and a line end. Other text is taken as it is.
Note traceOfFile(std::u16string_view line);

}  // namespace scenario
