#pragma once

#include <string>
#include <string_view>

namespace cxol {

/// The internal trace file, used when the logging library is not there.

/// Whether the registry switches the file on: the value is the text "1".
bool IsLogFileEnabled();

/// The folder of the trace file with a backslash at its end. Makes it at the first call.
std::u16string GetLogFolder();

/// Full path of the trace file, computed once in the life of the process.
const std::u16string& GetLogFileName();

/// Appends one line: local time, the level's prefix, the text. The file is opened and closed for
/// each line, so that nothing is lost when the host is killed. Swallows every failure.
void WriteTraceLine(std::u16string_view prefix, std::u16string_view text) noexcept;

}  // namespace cxol
