#pragma once

#include <cstdint>
#include <string_view>

namespace platform {

/// The maker's logging library. Its functions are bound at their first call.
class LoggingLibrary {
 public:
  /// The status of a logger for which there is no library, or one without the function. Most
  /// machines have none, where an error would cost each start its way.
  static constexpr std::int32_t NotThere = -1;

  virtual ~LoggingLibrary() = default;
  /// Loads the library from its full path, so that later calls find it. A failure is not reported.
  virtual void load(std::u16string_view path) = 0;
  /// `K9TLog_CreateLogger`: 0 when created, -6 when the index is taken, `NotThere` or another one.
  virtual std::int32_t createLogger(std::int32_t index, std::u16string_view product,
                                    std::u16string_view module, std::int32_t p4, std::int32_t p5,
                                    std::int32_t p6, std::int32_t p7) = 0;
  /// `K9TLog_Write`: 0 when written. Raises error 53 when no library was loaded and 453 when it
  /// lacks the function.
  virtual std::int32_t write(std::int32_t index, std::int32_t level, std::u16string_view text) = 0;
};

}  // namespace platform
