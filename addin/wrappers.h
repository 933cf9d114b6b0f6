#pragma once

#include "platform/outlook.h"

namespace cxol {

/// The wrappers of the open windows: how they come and go. What raises here ends in the handlers
/// of `Connect`.

/// Gives an explorer its wrapper and drops wrappers of closed ones.
void AddExplorerWrapper(const outlook::Explorer& explorer);

/// Gives an inspector its wrapper, unless Word edits it, and drops wrappers of closed ones.
void AddInspectorWrapper(const outlook::Inspector& inspector);

/// Lets all wrappers go, the explorers' before the inspectors'.
void DeInitAllWrappers(bool deleteBars) noexcept;

/// Whether inspectors have command bars: before Outlook 2007.
bool UseCommandBars();

}  // namespace cxol
