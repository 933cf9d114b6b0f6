#pragma once

#include <memory>

#include "state/process.h"
#include "windows/services/Machine.h"

namespace windows {

/// The add-in's life in this process: machine and process-wide state, from the first object to the
/// last. Each object of the DLL's classes holds it.
class AddinProcess {
 public:
  /// Begins it when no object holds it yet. Raises an error while objects of another thread hold
  /// it: Outlook's objects, timers and windows belong to that thread.
  static std::shared_ptr<AddinProcess> acquire();

  /// For `acquire` only.
  AddinProcess();

 private:
  Machine machine_;
  cxol::Process process_;
};

}  // namespace windows
