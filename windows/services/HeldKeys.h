#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/registry.h"
#include "windows/services/RegistryKey.h"

namespace windows {

/// Reads values, as ANSI text, and keeps the keys open until its own end: asked for again, a value
/// costs one call in place of four. A key that was absent or has been deleted is looked for anew
/// each time, so that nothing of what others write is missed.
class HeldKeys {
 public:
  struct Stored {
    DWORD type = REG_NONE;
    /// Exactly as many as are stored.
    std::string bytes;
  };
  /// Nothing when key or value is absent or can't be read.
  std::optional<Stored> read(platform::RegistryRoot root, std::u16string_view path,
                             std::u16string_view name);

 private:
  struct Held {
    platform::RegistryRoot root;
    std::u16string path;
    RegistryKey key;
    /// Of the value that was read last, which is likely to be read again; at first a number's.
    DWORD size = sizeof(DWORD);
  };
  Held& held(platform::RegistryRoot root, std::u16string_view path);

  std::vector<Held> keys_;
};

}  // namespace windows
