#include "standin/client/program.h"

#include <algorithm>

#include "simulator/client/Client.h"
#include "windows/com/text.h"

namespace standin {

CommandLine::CommandLine() {
  int count = 0;
  LPWSTR* const words = CommandLineToArgvW(GetCommandLineW(), &count);
  for (int i = 1; words && i < count; ++i) words_.emplace_back(windows::utf16(words[i]));
  LocalFree(words);
}

bool CommandLine::has(std::u16string_view word) const {
  return std::any_of(words_.begin(), words_.end(),
                     [&](const auto& each) { return windows::sameName(each, word); });
}

bool CommandLine::hidden() const {
  return has(simulator::Client::HideParameter) || has(u"-Embedding");
}

std::u16string ownPath() {
  wchar_t path[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  return std::u16string(windows::utf16(path));
}

void takeMessages() {
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

}  // namespace standin
