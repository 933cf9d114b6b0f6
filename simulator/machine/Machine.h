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

  platform::Platform platform();
  /// Installs the client: its file and its registration.
  void installClient() { client.install(); }
  /// Lets time pass in the message loop.
  void advance(std::uint32_t milliseconds) { clock.advance(milliseconds); }

  static constexpr std::u16string_view LocalAppData =
      u"C:\\Documents and Settings\\User\\Local Settings\\Application Data";

 private:
  Uptime uptime_;

 public:
  SimTimers timers;
  SimClock clock;
  SimRegistry registry;
  SimFiles files;
  SimLanguage language;
  Client client;
  SimProcesses processes;
  SimObjects objects;
  SimScreen screen;
  SimPictures pictures;
  SimLoggingLibrary loggingLibrary;
  SimMapiHelper mapiHelper;
};

}  // namespace simulator
