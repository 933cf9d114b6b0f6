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

/// The hand of whoever plays the client, from another program: what simulator::Client offers to the
/// player of the simulated machine. Works while the client hangs. One at a time.
class ClientControl {
 public:
  /// `program` is the full path of the client's file. Settings start afresh, and what was told
  /// before is not told again.
  explicit ClientControl(std::u16string program);

  // ---- The program on the machine.

  void install();
  /// Also ends the client.
  void uninstall();
  bool installed() const;
  bool running() const;
  /// As the shell does, without waiting for anything but the process.
  void start(bool hidden);
  /// All stages at once; returns when they are reached. False when they are not within 10 seconds.
  bool startReady(bool hidden = false);
  /// The process is gone when this returns.
  void vanish();
  /// In a few words, as simulator::Client::status gives it.
  std::u16string status() const;

  // ---- The telephone. False when that is not possible.

  bool ring(std::u16string_view number);
  bool connect();
  bool endCall();

  // ---- Trouble of the running client. False when none runs.

  /// While the client hangs each call takes this long and then raises the error of a busy server.
  bool hang(bool on, std::uint32_t milliseconds = 30000);
  /// While the client is frozen it takes no calls and no messages at all.
  bool freeze(bool on);
  /// The process ends in the middle of the next call of this member; empty for none.
  bool dieIn(std::u16string_view member);

  // ---- Settings: for the running client at once, and for all that are started later.

  const ClientSettings& settings() const { return settings_; }
  void set(const ClientSettings& settings);
  void setDelays(const simulator::Client::Delays& delays);
  void setGaps(const simulator::Client::Gaps& gaps);
  void setErrors(bool on);
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
  ClientSettings settings_;
  LineReader journal_;
};

}  // namespace standin
