#pragma once

#include <utility>

#include "platform/registry.h"
#include "windows/com/api.h"

namespace windows {

inline HKEY handleOf(platform::RegistryRoot root) {
  switch (root) {
    case platform::RegistryRoot::ClassesRoot: return HKEY_CLASSES_ROOT;
    case platform::RegistryRoot::CurrentUser: return HKEY_CURRENT_USER;
    case platform::RegistryRoot::LocalMachine: break;
  }
  return HKEY_LOCAL_MACHINE;
}

/// An open key, or nothing; closed in the end.
class RegistryKey {
 public:
  RegistryKey() = default;
  RegistryKey(RegistryKey&& other) noexcept : key_(std::exchange(other.key_, nullptr)) {}
  RegistryKey& operator=(RegistryKey other) noexcept {
    std::swap(key_, other.key_);
    return *this;
  }
  ~RegistryKey() {
    if (key_) RegCloseKey(key_);
  }

  explicit operator bool() const noexcept { return key_ != nullptr; }
  HKEY get() const noexcept { return key_; }
  /// For a function that opens a key and leaves this alone when it fails. Must hold none.
  HKEY* receive() noexcept { return &key_; }

 private:
  HKEY key_ = nullptr;
};

}  // namespace windows
