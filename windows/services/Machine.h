#pragma once

#include "platform/platform.h"
#include "windows/services/Clock.h"
#include "windows/services/Files.h"
#include "windows/services/Language.h"
#include "windows/services/LoggingLibrary.h"
#include "windows/services/MapiHelper.h"
#include "windows/services/Objects.h"
#include "windows/services/Pictures.h"
#include "windows/services/Processes.h"
#include "windows/services/Registry.h"
#include "windows/services/Screen.h"
#include "windows/services/Timers.h"

namespace windows {

/// The services of this machine for one program. One at a time, for one thread; its end leaves no
/// window and no timer behind, and of the libraries only the maker's.
class Machine {
 public:
  /// `module` carries the resources.
  Machine(HINSTANCE module, std::vector<ServerWindow> serverWindows)
      : objects_(std::move(serverWindows)), pictures_(module), screen_(module) {}

  platform::Platform platform() {
    return {clock_,    files_,     language_, loggingLibrary_, mapiHelper_, objects_,
            pictures_, processes_, registry_, screen_,         timers_};
  }

 private:
  Clock clock_;
  Files files_;
  Language language_;
  LoggingLibrary loggingLibrary_;
  MapiHelper mapiHelper_;
  Objects objects_;
  Pictures pictures_;
  Processes processes_;
  Registry registry_;
  Screen screen_;
  Timers timers_;
};

}  // namespace windows
