#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "standin/client/ClientSettings.h"
#include "standin/client/LineFile.h"

namespace standin {

/// Something that the client was told.
struct ToldLine {
  std::u16string text;
  std::u16string time;  ///< "14:05:09.042"
  /// Size of the watched file at that moment.
  std::uint64_t watchedSize = 0;
};

/// The hand of whoever plays the client, from another program. Works while the client hangs. One at
/// a time. At first and in the end the client is not installed, and nothing is set.
class ClientControl : public simulator::PlayedClient {
 public:
  /// `program` is the full path of the client's file. What was told before is not told again.
  explicit ClientControl(std::u16string program);
  ~ClientControl() override;
  ClientControl(const ClientControl&) = delete;
  ClientControl& operator=(const ClientControl&) = delete;

  // ---- The program on the machine.

  void install() override;
  void uninstall() override;
  /// Stays when somebody spoils the registration.
  bool installed() const override { return installed_; }
  bool running() const override;
  /// As the shell does, without waiting for anything but the process.
  void start(bool hidden);
  /// Returns when the stages are reached; false when they are not within 10 seconds.
  bool startReady(bool hidden = false) override;
  /// The process is gone when this returns.
  void vanish() override;
  std::u16string status() const override;
  /// Waits for a client that was just started by somebody else to take part.
  void settle() const;

  // ---- The telephone.

  bool ring(std::u16string_view number) override;
  bool connect() override;
  bool endCall() override;

  // ---- Trouble of the running client. False when none runs.

  bool hang(bool on, std::uint32_t milliseconds = 30000) override;
  bool freeze(bool on) override;
  /// The process ends in the middle of the next call of this member; empty for none.
  bool dieIn(std::u16string_view member);

  // ---- Settings: for the running client at once, and for all that are started later.

  const ClientSettings& settings() const { return settings_; }
  void set(const ClientSettings& settings);
  void setDelays(const simulator::Client::Delays& delays);
  void setGaps(const Gaps& gaps) override;
  void setErrors(bool on) override;
  void setLines(const std::vector<std::int32_t>& lines);
  /// Notes the size of this file, say of a trace, with everything that the client is told: so it
  /// can be seen what came first.
  void watch(const std::u16string& file);

  // ---- What it was told.

  /// Since the last time, also by a client that is gone meanwhile.
  std::vector<ToldLine> told();

 private:
  void apply();
  bool ask(std::u16string_view request) const;
  void launch(std::u16string_view arguments) const;

  std::u16string program_;
  bool installed_ = false;
  ClientSettings settings_;
  LineReader journal_;
};

}  // namespace standin
