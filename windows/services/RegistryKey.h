#pragma once

#include "platform/registry.h"
#include "windows/com/Owner.h"

namespace windows {

inline HKEY handleOf(platform::RegistryRoot root) {
  switch (root) {
    case platform::RegistryRoot::ClassesRoot: return HKEY_CLASSES_ROOT;
    case platform::RegistryRoot::CurrentUser: return HKEY_CURRENT_USER;
    case platform::RegistryRoot::LocalMachine: break;
  }
  return HKEY_LOCAL_MACHINE;
}

struct CloseKey {
  void operator()(HKEY key) const noexcept { RegCloseKey(key); }
};
/// An open key, or nothing.
using RegistryKey = Owner<HKEY, CloseKey>;

}  // namespace windows
