#include "windows/services/Files.h"

#include "windows/com/Owner.h"
#include "windows/com/errors.h"
#include "windows/com/text.h"

namespace windows {
namespace {

using SHGetFolderPathA = HRESULT WINAPI(HWND, int folder, HANDLE token, DWORD flags, char* path);
using MakeSureDirectoryPathExists = BOOL WINAPI(const char* path);

/// The common program-files folder.
constexpr int CommonProgramFiles = 43;

[[noreturn]] void raiseFileError(DWORD code) {
  constexpr std::int32_t DeviceError = 57;
  constexpr std::int32_t PathNotFound = 76;
  switch (code) {
    case ERROR_FILE_NOT_FOUND: throw automation::Error(automation::ErrorNumber::FileNotFound);
    case ERROR_PATH_NOT_FOUND: throw automation::Error(PathNotFound, u"Path not found");
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
      throw automation::Error(automation::ErrorNumber::PermissionDenied);
    default: throw automation::Error(DeviceError, u"Device I/O error");
  }
}

}  // namespace

std::optional<std::u16string> Files::commonFilesFolder() {
  auto* get = shell_.find<SHGetFolderPathA>("SHGetFolderPathA");
  if (!get) get = shellFolders_.find<SHGetFolderPathA>("SHGetFolderPathA");
  char path[MAX_PATH] = {};
  if (!get || get(nullptr, CommonProgramFiles, nullptr, 0, path) != S_OK) return std::nullopt;
  path[MAX_PATH - 1] = '\0';
  return fromAnsi(path);
}

bool Files::makeSureDirectoryPathExists(std::u16string_view folder) {
  const std::string path = ansi(folder);
  // At each start but the first: two libraries need not be loaded.
  const DWORD attributes = GetFileAttributesA(path.c_str());
  if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
    return true;
  }
  constexpr char Name[] = "MakeSureDirectoryPathExists";
  auto* make = imageHelper_.find<MakeSureDirectoryPathExists>(Name);
  if (!make) make = debugHelper_.find<MakeSureDirectoryPathExists>(Name);
  // The system may copy longer ones beyond the end of its own buffer.
  if (path.size() >= MAX_PATH) return false;
  return make && make(path.c_str()) != FALSE;
}

void Files::append(std::u16string_view path, std::u16string_view text) {
  const KernelObject file = ownFile(CreateFileW(wide(std::u16string(path)), GENERIC_WRITE,
                                                FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                                OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file) raiseFileError(GetLastError());
  // A file may be larger than the low half of its size tells.
  LONG high = 0;
  const DWORD low = SetFilePointer(file.get(), 0, &high, FILE_END);
  if (low == INVALID_SET_FILE_POINTER && GetLastError() != NO_ERROR) raiseFileError(GetLastError());
  const std::string bytes = ansi(text);
  DWORD written = 0;
  if (!WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr)) {
    raiseFileError(GetLastError());
  }
  if (written != bytes.size()) raiseFileError(ERROR_HANDLE_DISK_FULL);
}

}  // namespace windows
