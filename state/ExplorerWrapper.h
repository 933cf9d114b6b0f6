#pragma once

#include "platform/outlook.h"

namespace cxol {

/// What the timers and `Connect` may ask of the wrapper of an explorer window.
class ExplorerWrapper {
 public:
  virtual ~ExplorerWrapper() = default;
  /// The explorer served; nothing once it is closed.
  virtual const outlook::Explorer& thisExplorer() const noexcept = 0;
  /// Starts the delivery of the explorer's events; an explorer that is nothing ends it. Raises what
  /// the host raises.
  virtual void setThisExplorer(const outlook::Explorer& explorer) = 0;
  /// Whether the toolbar is still missing and the window old enough to take it.
  virtual bool MustInit() noexcept = 0;
  virtual void InitFromTimer() noexcept = 0;
  virtual void onExplorerSelectionChange() noexcept = 0;
  /// Deletes or hides the toolbar and releases what belongs to it.
  virtual void DeInitVelnorBarExplorer(bool deleteBar) noexcept = 0;
};

}  // namespace cxol
