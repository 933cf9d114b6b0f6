#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

enum class ObjectState {
  None,
  Busy,  ///< its program takes no messages at present
  Runs,
};

/// What can be learnt of files and programs without starting or changing any. Nothing here raises.
class Facts {
 public:
  virtual ~Facts() = default;
  /// Nothing when there is no such file.
  virtual std::optional<std::uint64_t> fileSize(std::u16string_view path) = 0;
  /// The last bytes of a file, no more than `most`; empty when it can't be read.
  virtual std::string lastBytes(std::u16string_view path, std::size_t most) = 0;
  virtual std::u16string fromAnsi(std::string_view bytes) = 0;
  /// Full path of the library that a bare name finds; empty when there is none.
  virtual std::u16string findLibrary(std::u16string_view name) = 0;
  /// Whether a file could be made in a folder that ends in a backslash, or that folder be made.
  /// For a file that is there, whether it can be written to.
  virtual bool writable(std::u16string_view path) = 0;
  virtual std::u16string commonFilesFolder() = 0;
  /// Whether a top-level window of this class exists.
  virtual bool windowExists(std::u16string_view windowClass) = 0;
  /// Whether a running instance is known under this class name; `windowClass` is its window's.
  virtual ObjectState object(std::u16string_view className, std::u16string_view windowClass) = 0;
  /// As in "5.1.2600".
  virtual std::u16string systemVersion() = 0;
  virtual std::int32_t userLanguage() = 0;
};

}  // namespace platform
