#pragma once

#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "simulator/Uptime.h"
#include "simulator/client/Client.h"
#include "standin/client/ClientSettings.h"
#include "standin/client/RequestPipe.h"
#include "windows/com/ComPtr.h"
#include "windows/com/errors.h"

namespace standin {

/// The simulated client as a program of its own: it lives in real time, its objects go out over
/// COM, and other programs play the telephone and make trouble by requests. All on one thread.
class ClientServer {
 public:
  /// Starts the client. `ready` reaches all stages at once.
  ClientServer(RequestPipe& pipe, bool hidden, bool ready);

  const simulator::Client& client() const { return client_; }
  /// Lets the time pass that has passed, and carries out a request that waits. To be called often.
  void live();
  /// Carries out a request and gives its answer.
  std::u16string answer(std::u16string_view request);
  /// Ends the client.
  void end() { client_.vanish(); }

  /// The program must take no messages.
  bool frozen() const { return frozen_; }
  /// What happened lately, the latest last, for a person to read.
  const std::deque<std::u16string>& lately() const { return lately_; }
  /// To be told whenever window and registration are as the stage of the start asks.
  void setSettled(bool settled) { settled_ = settled; }

  /// What is done before the process ends in the middle of things.
  void setLastWill(std::function<void()> will) { lastWill_ = std::move(will); }

  /// The one application object, and new remote objects.
  windows::ComPtr<IDispatch> application();
  windows::ComPtr<IDispatch> newRemote();

 private:
  void applySettings();
  void describeTypes() const;
  void enter(std::u16string_view member);
  void note(const simulator::Told& told);
  void waitWhileHanging();
  void die();

  bool ring(std::u16string_view number);
  bool connect(std::u16string_view);
  bool endCall(std::u16string_view);
  bool hang(std::u16string_view milliseconds);
  bool freeze(std::u16string_view onOff);
  bool vanish(std::u16string_view);
  bool dieIn(std::u16string_view member);
  bool reload(std::u16string_view);
  bool show(std::u16string_view);
  bool quit(std::u16string_view);
  bool ready(std::u16string_view);
  struct Request;
  static const Request Requests[];

  RequestPipe& pipe_;
  const DWORD startedAt_ = GetTickCount();
  simulator::Uptime uptime_;
  simulator::Boundary boundary_;
  simulator::SimRegistry registry_{boundary_};
  simulator::Client client_{uptime_, registry_};
  ClientSettings settings_;
  windows::ComPtr<ITypeLib> types_;

  /// How long a call takes while the client hangs, in milliseconds.
  std::optional<DWORD> hangs_;
  bool frozen_ = false;
  bool settled_ = false;
  std::u16string dieIn_;
  std::function<void()> lastWill_;
  std::deque<std::u16string> lately_;
};

}  // namespace standin
