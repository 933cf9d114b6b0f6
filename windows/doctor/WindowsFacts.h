#pragma once

#include "platform/facts.h"
#include "platform/velnor.h"
#include "windows/services/Objects.h"

namespace windows {

/// The facts of this machine. COM must be initialized.
class WindowsFacts : public platform::Facts {
 public:
  std::optional<std::uint64_t> fileSize(std::u16string_view path) override;
  std::string lastBytes(std::u16string_view path, std::size_t most) override;
  std::u16string fromAnsi(std::string_view bytes) override;
  std::u16string findLibrary(std::u16string_view name) override;
  bool writable(std::u16string_view path) override;
  std::u16string commonFilesFolder() override;
  bool windowExists(std::u16string_view windowClass) override;
  platform::ObjectState object(std::u16string_view className,
                               std::u16string_view windowClass) override;
  std::u16string systemVersion() override;
  std::int32_t userLanguage() override;
};

/// Writes a file anew, in UTF-8 with its mark; false on failure.
bool writeText(std::u16string_view path, std::u16string_view text);

/// Takes away all that a file holds; false on failure. A file that is not there is empty.
bool emptyFile(std::u16string_view path);

}  // namespace windows
