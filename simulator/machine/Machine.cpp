#include "simulator/machine/Machine.h"

namespace simulator {

using platform::RegistryRoot;

Machine::Machine(Boundary& boundary) : boundary_(boundary) {
  registry.setString(RegistryRoot::CurrentUser,
                     u"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders",
                     u"Local AppData", LocalAppData);
  files.makeFolder(LocalAppData);
  files.makeFolder(u"C:\\Program Files\\Common Files");
}

}  // namespace simulator
