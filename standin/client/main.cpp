// A program that plays the telephony client for the add-in: README.md in this folder tells how.

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "standin/client/ClassOffers.h"
#include "standin/client/ClientWindow.h"
#include "standin/client/names.h"
#include "standin/client/registration.h"
#include "windows/com/errors.h"
#include "windows/com/text.h"

namespace {

using standin::ClientServer;

/// COM of the one thread that has objects.
struct Apartment {
  Apartment() { windows::check(CoInitialize(nullptr)); }
  ~Apartment() { CoUninitialize(); }
};

class CommandLine {
 public:
  CommandLine() {
    int count = 0;
    LPWSTR* const words = CommandLineToArgvW(GetCommandLineW(), &count);
    for (int i = 1; words && i < count; ++i) words_.emplace_back(windows::utf16(words[i]));
    LocalFree(words);
  }
  bool has(std::u16string_view word) const {
    return std::any_of(words_.begin(), words_.end(),
                       [&](const auto& each) { return windows::sameName(each, word); });
  }

 private:
  std::vector<std::u16string> words_;
};

std::u16string ownPath() {
  wchar_t path[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  return std::u16string(windows::utf16(path));
}

/// There, as long as it is wanted.
template <class Thing>
void keep(std::unique_ptr<Thing>& thing, bool wanted, ClientServer& server) {
  if (wanted && !thing) thing = std::make_unique<Thing>(server);
  if (!wanted) thing.reset();
}

void takeMessages() {
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

/// Until the client ends.
void run(ClientServer& server, const standin::RequestPipe& pipe) {
  constexpr DWORD Tick = 10;
  std::unique_ptr<standin::ClientWindow> window;
  std::unique_ptr<standin::ClassOffers> offers;
  server.setLastWill([&] {
    if (offers) offers->withdrawClasses();
  });
  while (server.client().running()) {
    keep(window, server.client().hasWindow(), server);
    keep(offers, server.client().hasObject(), server);
    server.setSettled(true);
    if (window) window->refresh();
    const HANDLE waiting = pipe.waiting();
    const DWORD messages = server.frozen() ? 0 : QS_ALLINPUT;
    MsgWaitForMultipleObjects(1, &waiting, FALSE, Tick, messages);
    server.live();
    if (!server.frozen()) takeMessages();
  }
}

int start(const CommandLine& line) {
  // COM's own starts show nothing.
  const bool hidden = line.has(simulator::Client::HideParameter) || line.has(u"-Embedding");
  standin::RequestPipe pipe;
  if (!pipe.owned()) {
    if (!hidden) standin::request(standin::ShowRequest);
    return 0;
  }
  const Apartment apartment;
  ClientServer server(pipe, hidden, line.has(standin::ReadyArgument));
  run(server, pipe);
  return 0;
}

}  // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
  return SUCCEEDED(windows::guarded([] {
    const CommandLine line;
    if (line.has(standin::UnregisterArgument)) {
      standin::unregisterClient();
    } else if (line.has(standin::RegisterArgument)) {
      standin::registerClient(ownPath());
    } else {
      start(line);
    }
    return S_OK;
  }))
             ? 0
             : 1;
}
