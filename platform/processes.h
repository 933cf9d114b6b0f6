#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace platform {

/// Processes and top-level windows.
class Processes {
 public:
  virtual ~Processes() = default;
  /// File name of the host process's executable, without its folder: "OUTLOOK.EXE".
  virtual std::u16string hostModuleName() = 0;
  /// Starts a file with the verb "open", shown normally and without an owner window. The result is
  /// greater than 32 on success. What becomes of an empty name depends on the shell.
  virtual std::int32_t shellExecute(std::u16string_view file, std::u16string_view parameters,
                                    std::u16string_view folder) = 0;
  /// Whether a top-level window of this class exists.
  virtual bool windowExists(std::u16string_view windowClass) = 0;
};

}  // namespace platform
