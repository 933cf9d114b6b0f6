#include "windows/doctor/WindowsFacts.h"

#include <algorithm>

#include "platform/conversions.h"
#include "windows/com/Owner.h"
#include "windows/com/errors.h"
#include "windows/com/text.h"
#include "windows/services/Files.h"
#include "windows/services/Processes.h"

namespace windows {
namespace {

KernelObject opened(std::u16string_view path, DWORD access, DWORD how, DWORD flags = 0) {
  return ownFile(CreateFileW(wide(std::u16string(path)), access,
                             FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, how,
                             FILE_ATTRIBUTE_NORMAL | flags, nullptr));
}

}  // namespace

std::optional<std::uint64_t> WindowsFacts::fileSize(std::u16string_view path) {
  WIN32_FIND_DATAW data{};
  const std::u16string name(path);
  // A pattern would find some file.
  if (name.find_first_of(u"*?") != name.npos) return std::nullopt;
  const HANDLE found = FindFirstFileW(wide(name), &data);
  if (found == INVALID_HANDLE_VALUE) return std::nullopt;
  FindClose(found);
  if (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) return std::nullopt;
  return static_cast<std::uint64_t>(data.nFileSizeHigh) << 32 | data.nFileSizeLow;
}

std::string WindowsFacts::lastBytes(std::u16string_view path, std::size_t most) {
  const KernelObject file = opened(path, GENERIC_READ, OPEN_EXISTING);
  const auto size = fileSize(path).value_or(0);
  if (!file || size == 0) return {};
  std::string bytes(static_cast<std::size_t>(std::min<std::uint64_t>(size, most)), '\0');
  const std::uint64_t start = size - bytes.size();
  LONG high = static_cast<LONG>(start >> 32);
  SetFilePointer(file.get(), static_cast<LONG>(start & 0xFFFFFFFF), &high, FILE_BEGIN);
  DWORD read = 0;
  if (!ReadFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr)) {
    read = 0;
  }
  bytes.resize(read);
  return bytes;
}

std::u16string WindowsFacts::fromAnsi(std::string_view bytes) {
  return windows::fromAnsi(bytes);
}

std::u16string WindowsFacts::findLibrary(std::u16string_view name) {
  wchar_t path[MAX_PATH] = {};
  const DWORD length =
      SearchPathW(nullptr, wide(std::u16string(name)), nullptr, MAX_PATH, path, nullptr);
  return length < MAX_PATH ? std::u16string(utf16(path, length)) : std::u16string();
}

bool WindowsFacts::writable(std::u16string_view path) {
  const bool file = !path.ends_with(u'\\');
  if (file && GetFileAttributesW(wide(std::u16string(path))) != INVALID_FILE_ATTRIBUTES) {
    return static_cast<bool>(opened(path, GENERIC_WRITE, OPEN_EXISTING));
  }
  // The nearest folder that is there decides.
  std::u16string folder(path.substr(0, path.rfind(u'\\') + 1));
  constexpr std::size_t Drive = 3;
  while (folder.size() > Drive) {
    const DWORD attributes = GetFileAttributesW(wide(folder.substr(0, folder.size() - 1)));
    if (attributes != INVALID_FILE_ATTRIBUTES) {
      // A file of this name is in the way.
      if ((attributes & FILE_ATTRIBUTE_DIRECTORY) == 0) return false;
      break;
    }
    folder.resize(folder.rfind(u'\\', folder.size() - 2) + 1);
  }
  return !folder.empty() && opened(folder + u"velnor-doctor.tmp", GENERIC_WRITE, CREATE_ALWAYS,
                                   FILE_FLAG_DELETE_ON_CLOSE);
}

std::u16string WindowsFacts::commonFilesFolder() {
  return Files().commonFilesFolder().value_or(u"");
}

bool WindowsFacts::windowExists(std::u16string_view windowClass) {
  return Processes().windowExists(windowClass);
}

platform::ObjectState WindowsFacts::object(std::u16string_view className,
                                           std::u16string_view windowClass) {
  Objects objects({{className, windowClass}});
  try {
    return objects.running(className) ? platform::ObjectState::Runs : platform::ObjectState::None;
  } catch (const automation::Error& error) {
    constexpr auto Busy = static_cast<std::int32_t>(automation::ErrorNumber::ServerBusy);
    return error.number() == Busy ? platform::ObjectState::Busy : platform::ObjectState::None;
  }
}

std::u16string WindowsFacts::systemVersion() {
  OSVERSIONINFOW version{};
  version.dwOSVersionInfoSize = sizeof version;
  GetVersionExW(&version);
  std::u16string text;
  for (const DWORD number :
       {version.dwMajorVersion, version.dwMinorVersion, version.dwBuildNumber}) {
    if (!text.empty()) text += u'.';
    text += automation::int32Text(static_cast<std::int32_t>(number));
  }
  return text;
}

std::int32_t WindowsFacts::userLanguage() {
  return GetUserDefaultLangID();
}

bool writeText(std::u16string_view path, std::u16string_view text) {
  std::string bytes = "\xEF\xBB\xBF";
  const int length = static_cast<int>(text.size());
  const auto* start = reinterpret_cast<const wchar_t*>(text.data());
  const int size = WideCharToMultiByte(CP_UTF8, 0, start, length, nullptr, 0, nullptr, nullptr);
  const std::size_t mark = bytes.size();
  bytes.resize(mark + static_cast<std::size_t>(size));
  WideCharToMultiByte(CP_UTF8, 0, start, length, bytes.data() + mark, size, nullptr, nullptr);
  const KernelObject file = opened(path, GENERIC_WRITE, CREATE_ALWAYS);
  DWORD written = 0;
  return file &&
         WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) &&
         written == bytes.size();
}

bool emptyFile(std::u16string_view path) {
  return opened(path, GENERIC_WRITE, TRUNCATE_EXISTING) || GetLastError() == ERROR_FILE_NOT_FOUND ||
         GetLastError() == ERROR_PATH_NOT_FOUND;
}

}  // namespace windows
