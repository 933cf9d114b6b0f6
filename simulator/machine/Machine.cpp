#include "simulator/machine/Machine.h"

namespace simulator {

using platform::RegistryRoot;

Machine::Machine(Boundary& boundary)
    : timers(boundary, uptime_),
      clock(boundary, uptime_, timers),
      registry(boundary),
      files(boundary),
      language(boundary),
      client(uptime_, registry),
      processes(boundary, client),
      objects(boundary, client),
      screen(boundary),
      pictures(boundary, uptime_),
      loggingLibrary(boundary),
      mapiHelper(boundary) {
  registry.setString(RegistryRoot::CurrentUser,
                     u"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders",
                     u"Local AppData", LocalAppData);
  files.makeFolder(LocalAppData);
  files.makeFolder(u"C:\\Program Files\\Common Files");
}

platform::Platform Machine::platform() {
  return {clock,    files,     language, loggingLibrary, mapiHelper, objects,
          pictures, processes, registry, screen,         timers};
}

}  // namespace simulator
