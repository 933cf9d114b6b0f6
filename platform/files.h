#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace platform {

class Files {
 public:
  virtual ~Files() = default;
  /// The common program-files folder without a final backslash; nothing when the system does not
  /// tell it.
  virtual std::optional<std::u16string> commonFilesFolder() = 0;
  /// Makes every missing folder of a path that ends in a backslash; false on failure.
  virtual bool makeSureDirectoryPathExists(std::u16string_view folder) = 0;
  /// Opens the file, creating it when missing, writes the text at its end in the ANSI code page
  /// and closes it; raises an error on failure.
  virtual void append(std::u16string_view path, std::u16string_view text) = 0;
};

}  // namespace platform
