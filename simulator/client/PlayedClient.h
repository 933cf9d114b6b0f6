#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace simulator {

enum class ClientState { Missing, Installed, Running, Hidden };

/// The telephony client and its telephone as whoever plays them has them in hand: those of a
/// simulated machine, or a program of its own. What gives false was refused and has changed
/// nothing.
class PlayedClient {
 public:
  virtual ~PlayedClient() = default;

  // ---- The program on the machine.

  virtual void install() = 0;
  /// Also ends it.
  virtual void uninstall() = 0;
  virtual bool installed() const = 0;
  virtual bool running() const = 0;
  /// Starts it, and all stages are reached at once; false when it does not come up.
  virtual bool startReady(bool hidden) = 0;
  /// The process is gone at once, its calls with it.
  virtual void vanish() = 0;
  /// A client that runs is ended first; false as of its start.
  bool setState(ClientState state) {
    vanish();
    if (state == ClientState::Missing) {
      uninstall();
      return true;
    }
    if (!installed()) install();
    return state == ClientState::Installed || startReady(state == ClientState::Hidden);
  }
  /// Of client and line, in a few words: "not running", "running hidden, connected: 0711 123".
  virtual std::u16string status() const = 0;

  // ---- The telephone. The client takes part in calls only while it is in service.

  /// A call comes in on the first idle line.
  virtual bool ring(std::u16string_view number) = 0;
  /// The incoming call is taken at the telephone, or the other side answers.
  virtual bool connect() = 0;
  /// The current call ends.
  virtual bool endCall() = 0;

  // ---- Trouble. Hanging and freezing end with the client, and are refused while none runs.

  /// While the client hangs each call takes this long and then raises the error of a busy server.
  virtual bool hang(bool on, std::uint32_t milliseconds = 30000) = 0;
  /// While the client is frozen it takes no calls and no messages at all.
  virtual bool freeze(bool on) = 0;
  /// Stages that a client never reaches. Each stands for itself, at once and until it is set again:
  /// a client that never shows its window may well register its object. While it is not in
  /// service the client has no phone command object.
  struct Gaps {
    bool window = false;
    bool object = false;
    bool service = false;
  };
  virtual void setGaps(const Gaps& gaps) = 0;
  /// Every call is answered with an error.
  virtual void setErrors(bool on) = 0;
};

}  // namespace simulator
