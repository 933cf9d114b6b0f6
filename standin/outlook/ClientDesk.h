#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/player/Stage.h"
#include "standin/client/ClientControl.h"

namespace standin {

/// The scenario's hand on the telephony client's stand-in. What can't be done raises Mistake. At
/// first the client is not installed; in the end it is neither.
class ClientDesk {
 public:
  /// `program` is the stand-in's file; empty for a machine that never has a client.
  explicit ClientDesk(const std::u16string& program);
  ~ClientDesk();
  ClientDesk(const ClientDesk&) = delete;
  ClientDesk& operator=(const ClientDesk&) = delete;

  bool available() const { return control_.has_value(); }
  void setState(scenario::ClientState state);
  void setGap(scenario::ClientGap gap);
  void setErrors(bool on);
  void hang(bool on);
  void freeze(bool on);
  void vanish();
  void ring(std::u16string_view number);
  void connectCall();
  void endCall();

  /// Waits for a client that was just started by somebody else to take part.
  void settle();
  std::u16string status() const;
  /// With each thing that the client is told goes the size of this file.
  void watch(const std::u16string& file);
  /// What the client was told since the last call.
  std::vector<ToldLine> told();

 private:
  ClientControl& control();
  ClientControl& runningControl();

  std::optional<ClientControl> control_;
  std::u16string programName_;
  /// Stays when a scenario spoils the registration.
  bool installed_ = false;
};

}  // namespace standin
