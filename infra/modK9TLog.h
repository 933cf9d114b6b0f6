#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "infra/errors.h"
#include "infra/text.h"

namespace cxol {

/// The four writers of the trace. They go to the maker's logging library or, when that can't create
/// a logger, to the internal file. None ever raises. The two debug writers are the same.
void LogError(std::u16string_view text) noexcept;
void LogWarning(std::u16string_view text) noexcept;
void LogDebug(std::u16string_view text) noexcept;
void LogDebug2(std::u16string_view text) noexcept;

/// Chooses the route of the trace, once in the life of the process.
void InitK9TLog();

/// Registers a logger with the library; false when the index has one already or the library fails.
/// An index that the library has given away already is counted up.
bool LogCreateLogger(std::int32_t index, std::u16string_view product, std::u16string_view module,
                     std::int32_t p4, std::int32_t p5, std::int32_t p6, std::int32_t p7) noexcept;

/// Hands one line to the library; true when it was written.
bool LogWrite(std::int32_t index, std::u16string_view text, std::int32_t level) noexcept;

/// The maker's folder below the common program files, with a backslash at its end.
std::u16string GetCommonK9TFolder();

/// Loads the library from its full path, once in the life of the process.
void RetryDllLoad();

/// Runs an operation up to its first failure, which is logged at error level as `prefix` and the
/// error's description.
template <class Body>
void trapAndLog(std::u16string_view prefix, Body&& body) noexcept {
  trap(std::forward<Body>(body),
       [&](const automation::Error& error) { LogError(concat(prefix, error.description())); });
}

}  // namespace cxol
