// A program that plays the telephony client for the add-in: README.md in this folder tells how.

#include <memory>

#include "standin/client/ClassOffers.h"
#include "standin/client/ClientServer.h"
#include "standin/client/ClientWindow.h"
#include "standin/client/names.h"
#include "standin/client/program.h"

namespace {

using standin::ClientServer;

/// There, as long as it is wanted.
template <class Thing>
void keep(std::unique_ptr<Thing>& thing, bool wanted, ClientServer& server) {
  if (wanted && !thing) thing = std::make_unique<Thing>(server);
  if (!wanted) thing.reset();
}

/// The stand-in's objects, offered for as long as they live.
struct Offers : standin::ClassOffers {
  explicit Offers(ClientServer& server) {
    offerRunning(standin::ApplicationClassId, server.application().get());
    offerClass(standin::ApplicationClassId, [&server] { return server.application(); });
    offerClass(standin::RemoteClassId, [&server] { return server.newRemote(); });
  }
};

/// Until the client ends.
void run(ClientServer& server, const standin::RequestPipe& pipe) {
  constexpr DWORD Tick = 10;
  std::unique_ptr<standin::ClientWindow> window;
  std::unique_ptr<Offers> offers;
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
    if (!server.frozen()) standin::takeMessages();
  }
}

}  // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
  return standin::runClient([](const standin::CommandLine& line, standin::RequestPipe& pipe) {
    ClientServer server(pipe, line.hidden(), line.has(standin::ReadyArgument));
    run(server, pipe);
  });
}
