#pragma once

#include "platform/files.h"
#include "windows/services/Library.h"

namespace windows {

/// Folders and the ANSI text file. The folder functions are bound at their first call: older
/// systems have them in other libraries, or not at all.
class Files : public platform::Files {
 public:
  std::optional<std::u16string> commonFilesFolder() override;
  bool makeSureDirectoryPathExists(std::u16string_view folder) override;
  void append(std::u16string_view path, std::u16string_view text) override;

 private:
  Library shell_{"shell32.dll"};
  Library shellFolders_{"shfolder.dll"};
  Library imageHelper_{"imagehlp.dll"};
  Library debugHelper_{"dbghelp.dll"};
};

}  // namespace windows
