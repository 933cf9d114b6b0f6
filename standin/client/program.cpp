#include "standin/client/program.h"

#include <algorithm>
#include <cstdio>

#include "simulator/client/Client.h"
#include "standin/client/names.h"
#include "standin/client/registration.h"
#include "windows/com/errors.h"
#include "windows/com/text.h"

namespace standin {
namespace {

/// COM of the one thread that has objects.
struct Apartment {
  Apartment() { windows::check(CoInitialize(nullptr)); }
  ~Apartment() { CoUninitialize(); }
  Apartment(const Apartment&) = delete;
  Apartment& operator=(const Apartment&) = delete;
};

void start(const CommandLine& line,
           const std::function<void(const CommandLine&, RequestPipe&)>& serve) {
  RequestPipe pipe;
  if (!pipe.owned()) {
    if (!line.hidden()) request(ShowRequest);
    return;
  }
  const Apartment apartment;
  serve(line, pipe);
}

}  // namespace

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

int runClient(const std::function<void(const CommandLine&, RequestPipe&)>& serve) {
  try {
    const CommandLine line;
    if (line.has(UnregisterArgument)) {
      unregisterClient();
    } else if (line.has(RegisterArgument)) {
      registerClient(ownPath());
    } else {
      start(line, serve);
    }
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
}

}  // namespace standin
