#pragma once

#include "platform/platform.h"
#include "simulator/boundary.h"

namespace sweep {

class FaultInjector;

/// The services of a machine, some of which answer null objects and values of a wrong kind when
/// the injector has it so. Machine and boundary must outlive it.
class AlteredServices {
 public:
  AlteredServices(const platform::Platform& machine, simulator::Boundary& boundary);
  ~AlteredServices();
  AlteredServices(const AlteredServices&) = delete;
  AlteredServices& operator=(const AlteredServices&) = delete;

  /// Null for none.
  void setInjector(FaultInjector* injector);
  platform::Platform platform();

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace sweep
