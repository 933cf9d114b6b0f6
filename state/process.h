#pragma once

#include <memory>

#include "infra/runtime.h"
#include "platform/platform.h"
#include "state/globals.h"

namespace cxol {

/// The life of the add-in in its host process, from the first object that the host creates to the
/// last one that it releases. Owns all process-wide state; its end stops what still runs and
/// returns the process to the state before the add-in was loaded. One at a time.
class Process {
 public:
  /// The services must outlive the process.
  explicit Process(const platform::Platform& services);
  ~Process();
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

 private:
  Runtime runtime_;
  std::unique_ptr<Globals> globals_;
};

}  // namespace cxol
