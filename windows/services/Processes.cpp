#include "windows/services/Processes.h"

#include "windows/com/text.h"

namespace windows {

std::u16string Processes::hostModuleName() {
  wchar_t path[MAX_PATH] = {};
  const DWORD length = GetModuleFileNameW(nullptr, path, MAX_PATH);
  const auto name = utf16(path, length);
  const auto backslash = name.rfind(u'\\');
  return std::u16string(backslash == std::u16string_view::npos ? name : name.substr(backslash + 1));
}

std::int32_t Processes::shellExecute(std::u16string_view file, std::u16string_view parameters,
                                     std::u16string_view folder) {
  const std::string arguments = ansi(parameters);
  const std::string place = ansi(folder);
  const std::string program = ansi(file);
  // The shell may copy longer ones to the stack, however large that is.
  if (program.size() > MAX_PATH + 1 || place.size() >= MAX_PATH) return SE_ERR_PNF;
  const auto result = ShellExecuteA(nullptr, "open", program.c_str(),
                                    arguments.empty() ? nullptr : arguments.c_str(),
                                    place.empty() ? nullptr : place.c_str(), SW_SHOWNORMAL);
  return static_cast<std::int32_t>(reinterpret_cast<INT_PTR>(result));
}

bool Processes::windowExists(std::u16string_view windowClass) {
  return FindWindowA(ansi(windowClass).c_str(), nullptr) != nullptr;
}

}  // namespace windows
