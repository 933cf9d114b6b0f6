#pragma once

#include "platform/outlook.h"

namespace cxol {

/// What the general timer and `Connect` may ask of the wrapper of an inspector window.
class InspectorWrapper {
 public:
  virtual ~InspectorWrapper() = default;
  /// The inspector served; nothing once it is closed.
  virtual const outlook::Inspector& thisInspector() const noexcept = 0;
  /// Whether the toolbar is still missing.
  virtual bool NeedConnect() noexcept = 0;
  /// Builds the toolbar.
  virtual void Connect() noexcept = 0;
  /// Deletes or hides the toolbar and lets the inspector go.
  virtual void Deinit(bool deleteBar) noexcept = 0;
};

}  // namespace cxol
