#include "windows/services/HeldKeys.h"

#include "windows/com/text.h"

namespace windows {
namespace {

using platform::RegistryRoot;

/// Reads into a buffer of exactly the stored size: where there is room, Windows puts a missing NUL
/// behind a text. `size` is a guess before and what is stored afterwards.
LONG query(HKEY key, const char* name, DWORD& size, HeldKeys::Stored& stored) {
  LONG status = ERROR_MORE_DATA;
  // Somebody may change the value between two looks, but hardly each time.
  for (int looks = 0; looks < 5; ++looks) {
    stored.bytes.resize(size);
    const DWORD room = size;
    status = RegQueryValueExA(key, name, nullptr, &stored.type,
                              reinterpret_cast<BYTE*>(stored.bytes.data()), &size);
    if (status != ERROR_MORE_DATA && (status != ERROR_SUCCESS || size == room)) break;
  }
  return status;
}

}  // namespace

HeldKeys::Held& HeldKeys::held(RegistryRoot root, std::u16string_view path) {
  for (Held& held : keys_) {
    if (held.root == root && held.path == path) return held;
  }
  return keys_.emplace_back(Held{root, std::u16string(path), {}});
}

std::optional<HeldKeys::Stored> HeldKeys::read(RegistryRoot root, std::u16string_view path,
                                               std::u16string_view name) {
  Held& place = held(root, path);
  const std::string ansiName = ansi(name);
  // A key that was held may have been deleted, and made anew, since it was opened.
  for (bool opened = false; !opened;) {
    if (!place.key) {
      opened = true;
      if (RegOpenKeyExA(handleOf(root), ansi(path).c_str(), 0, KEY_READ, place.key.receive()) !=
          ERROR_SUCCESS)
        return std::nullopt;
    }
    Stored stored;
    DWORD size = place.size;
    const LONG status = query(place.key.get(), ansiName.c_str(), size, stored);
    if (status == ERROR_SUCCESS) {
      place.size = size;
      return stored;
    }
    if (status == ERROR_FILE_NOT_FOUND) return std::nullopt;
    place.key = {};
  }
  return std::nullopt;
}

}  // namespace windows
