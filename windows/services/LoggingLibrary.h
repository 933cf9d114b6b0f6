#pragma once

#include <memory>

#include "platform/logging_library.h"
#include "windows/services/Library.h"

namespace windows {

/// The maker's logging library. It stays in the process: its loggers are never closed, and their
/// threads run until the process ends.
class LoggingLibrary : public platform::LoggingLibrary {
 public:
  void load(std::u16string_view path) override;
  std::int32_t createLogger(std::int32_t index, std::u16string_view product,
                            std::u16string_view module, std::int32_t p4, std::int32_t p5,
                            std::int32_t p6, std::int32_t p7) override;
  std::int32_t write(std::int32_t index, std::int32_t level, std::u16string_view text) override;

 private:
  Library& library();

  /// The one that was loaded from its full path.
  std::unique_ptr<Library> library_;
};

}  // namespace windows
