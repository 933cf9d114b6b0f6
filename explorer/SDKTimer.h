#pragma once

#include <cstdint>

namespace cxol {

/// The general timer: Outlook's windows are still being built when their events arrive, so toolbar
/// work is left to its ticks. The first one comes after the start-up interval, the later ones in
/// short order.

/// Milliseconds.
inline constexpr std::uint32_t StartupInterval = 12000;
inline constexpr std::uint32_t PollInterval = 300;

/// Starts the timer, replacing one that runs.
void StartTimer(std::uint32_t milliseconds) noexcept;
/// Does nothing when none runs.
void StopTimer() noexcept;

/// While suspended the ticks do nothing.
void SuspendTimer() noexcept;
void ResumeTimer() noexcept;

/// One tick. Finds nothing to do without a single host call.
void GeneralTick() noexcept;

}  // namespace cxol
