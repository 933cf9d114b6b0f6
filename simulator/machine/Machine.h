#pragma once

#include "platform/platform.h"
#include "simulator/SimRegistry.h"
#include "simulator/Uptime.h"
#include "simulator/boundary.h"
#include "simulator/client/Client.h"
#include "simulator/machine/SimClock.h"
#include "simulator/machine/SimFiles.h"
#include "simulator/machine/SimLanguage.h"
#include "simulator/machine/SimLoggingLibrary.h"
#include "simulator/machine/SimMapiHelper.h"
#include "simulator/machine/SimObjects.h"
#include "simulator/machine/SimPictures.h"
#include "simulator/machine/SimProcesses.h"
#include "simulator/machine/SimScreen.h"
#include "simulator/machine/SimTimers.h"

namespace simulator {

/// A machine in memory: every service that the add-in's logic runs on, and the telephony client.
/// It is switched on at 9 o'clock on 7 March 2008, speaks American English, has the user's
/// "Local AppData" folder, the MAPI helper, no logging library, and a client that is not installed.
/// Members are public because each is a world of its own, and the program that plays the machine
/// needs them all. The boundary must outlive the machine.
class Machine {
 public:
  explicit Machine(Boundary& boundary);
  Machine(const Machine&) = delete;
  Machine& operator=(const Machine&) = delete;

  platform::Platform platform() {
    return {clock,    files,     language, loggingLibrary, mapiHelper, objects,
            pictures, processes, registry, screen,         timers};
  }
  /// Installs the client: its file and its registration.
  void installClient() { client.install(); }
  /// Lets time pass in the message loop.
  void advance(std::uint32_t milliseconds) { clock.advance(milliseconds); }

  static constexpr std::u16string_view LocalAppData =
      u"C:\\Documents and Settings\\User\\Local Settings\\Application Data";

 private:
  Boundary& boundary_;
  Uptime uptime_;

 public:
  SimTimers timers{boundary_, uptime_};
  SimClock clock{boundary_, uptime_, timers};
  SimRegistry registry{boundary_};
  SimFiles files{boundary_};
  SimLanguage language{boundary_};
  Client client{uptime_, registry};
  SimProcesses processes{boundary_, client};
  SimObjects objects{boundary_, client};
  SimScreen screen{boundary_};
  SimPictures pictures{boundary_, uptime_};
  SimLoggingLibrary loggingLibrary{boundary_};
  SimMapiHelper mapiHelper{boundary_};
};

}  // namespace simulator
