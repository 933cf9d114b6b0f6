#pragma once

#include <bitset>
#include <cstddef>
#include <string_view>

namespace sweep {

/// What can go wrong in a call, or happen in the middle of it.
enum class FaultKind : std::size_t {
  AutomationError,
  MemberNotFound,
  ServerGone,
  /// The call is carried out, but its answer is an error.
  AnswerLost,
  NullObject,
  WrongType,
  Activation,
  SelectionChange,
  WindowClose,
  TimerTick,
  Quit,
  SwitchOff,
  /// Switched off, and released as soon as no call of it is under way.
  Release,
};
inline constexpr std::size_t FaultKinds = 13;

using KindSet = std::bitset<FaultKinds>;

constexpr std::size_t indexOf(FaultKind kind) {
  return static_cast<std::size_t>(kind);
}

constexpr bool isEvent(FaultKind kind) {
  return kind >= FaultKind::Activation;
}

constexpr std::string_view nameOf(FaultKind kind) {
  constexpr std::string_view Names[FaultKinds] = {
      "automation error", "member not found", "server gone",      "answer lost",  "null object",
      "wrong type",       "activation",       "selection change", "window close", "timer tick",
      "Outlook ends",     "add-in off",       "add-in released"};
  return Names[indexOf(kind)];
}

/// One fault of a run: at this crossing, which counts from 1, or from it on.
struct Fault {
  FaultKind kind = FaultKind::AutomationError;
  std::size_t crossing = 0;
  bool lasting = false;
};

}  // namespace sweep
