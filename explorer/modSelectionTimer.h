#pragma once

#include <memory>

#include "state/ExplorerWrapper.h"

namespace cxol {

/// The selection timer: several selection changes in short order are handled once, 400 ms after the
/// last one, for the explorer that changed last.

/// Arms the timer for an explorer, replacing an earlier one; does nothing while the setting says
/// that selection changes are ignored.
void StartSelectionTimer(std::shared_ptr<ExplorerWrapper> target) noexcept;
void StopSelectionTimer() noexcept;

}  // namespace cxol
