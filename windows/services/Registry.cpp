#include "windows/services/Registry.h"

#include <cstring>

#include "windows/com/errors.h"
#include "windows/com/text.h"

namespace windows {
namespace {

using platform::RegistryRoot;
using platform::RegistryType;
using platform::RegistryValue;

HKEY handleOf(RegistryRoot root) {
  switch (root) {
    case RegistryRoot::ClassesRoot: return HKEY_CLASSES_ROOT;
    case RegistryRoot::CurrentUser: return HKEY_CURRENT_USER;
    case RegistryRoot::LocalMachine: break;
  }
  return HKEY_LOCAL_MACHINE;
}

/// An open key, or nothing when it can't be opened.
class Key {
 public:
  Key() = default;
  Key(RegistryRoot root, std::u16string_view path, REGSAM access) {
    if (RegOpenKeyExW(handleOf(root), wide(std::u16string(path)), 0, access, receive()) !=
        ERROR_SUCCESS) {
      key_ = nullptr;
    }
  }
  ~Key() {
    if (key_) RegCloseKey(key_);
  }
  Key(const Key&) = delete;
  Key& operator=(const Key&) = delete;

  explicit operator bool() const noexcept { return key_ != nullptr; }
  HKEY get() const noexcept { return key_; }
  HKEY* receive() noexcept { return &key_; }

 private:
  HKEY key_ = nullptr;
};

bool isText(DWORD type) {
  return type == REG_SZ || type == REG_EXPAND_SZ || type == REG_MULTI_SZ;
}

template <class Character>
const BYTE* bytesOf(const Character* data) {
  return reinterpret_cast<const BYTE*>(data);
}

std::vector<std::u16string> names(HKEY key, bool ofValues) {
  std::vector<std::u16string> result;
  // The longest name that Windows allows, and its NUL.
  std::u16string buffer(16384, u'\0');
  for (DWORD index = 0;; ++index) {
    auto* text = reinterpret_cast<wchar_t*>(buffer.data());
    auto length = static_cast<DWORD>(buffer.size());
    const LONG status =
        ofValues ? RegEnumValueW(key, index, text, &length, nullptr, nullptr, nullptr, nullptr)
                 : RegEnumKeyExW(key, index, text, &length, nullptr, nullptr, nullptr, nullptr);
    if (status != ERROR_SUCCESS) return result;
    result.push_back(buffer.substr(0, length));
  }
}

/// Windows deletes keys without subkeys only.
bool deleteTree(HKEY parent, const std::u16string& name) {
  {
    Key key;
    if (RegOpenKeyExW(parent, wide(name), 0, KEY_READ, key.receive()) != ERROR_SUCCESS) {
      return false;
    }
    for (const auto& subkey : names(key.get(), false)) deleteTree(key.get(), subkey);
  }
  return RegDeleteKeyW(parent, wide(name)) == ERROR_SUCCESS;
}

}  // namespace

std::optional<RegistryValue> Registry::read(RegistryRoot root, std::u16string_view key,
                                            std::u16string_view name) {
  Key opened;
  if (RegOpenKeyExA(handleOf(root), ansi(key).c_str(), 0, KEY_READ, opened.receive()) !=
      ERROR_SUCCESS) {
    return std::nullopt;
  }
  const std::string ansiName = ansi(name);
  DWORD type = REG_NONE;
  DWORD size = 0;
  if (RegQueryValueExA(opened.get(), ansiName.c_str(), nullptr, &type, nullptr, &size) !=
      ERROR_SUCCESS) {
    return std::nullopt;
  }
  // Exactly the stored size: Windows puts a missing NUL behind a text where there is room.
  std::string data(size, '\0');
  if (RegQueryValueExA(opened.get(), ansiName.c_str(), nullptr, &type,
                       reinterpret_cast<BYTE*>(data.data()), &size) != ERROR_SUCCESS) {
    return std::nullopt;
  }
  data.resize(size);
  RegistryValue value;
  value.type = static_cast<RegistryType>(type);
  if (isText(type)) {
    value.text = fromAnsi(data);
  } else {
    value.bytes.resize(data.size());
    if (!data.empty()) std::memcpy(value.bytes.data(), data.data(), data.size());
  }
  return value;
}

void Registry::write(RegistryRoot root, std::u16string_view key, std::u16string_view name,
                     const RegistryValue& value) {
  Key opened;
  const LONG created =
      RegCreateKeyExW(handleOf(root), wide(std::u16string(key)), 0, nullptr,
                      REG_OPTION_NON_VOLATILE, KEY_WRITE, nullptr, opened.receive(), nullptr);
  check(HRESULT_FROM_WIN32(static_cast<DWORD>(created)));
  const auto type = static_cast<DWORD>(value.type);
  const bool text = isText(type);
  const BYTE* data = text ? bytesOf(value.text.data()) : bytesOf(value.bytes.data());
  const std::size_t size = text ? value.text.size() * sizeof(char16_t) : value.bytes.size();
  const LONG written = RegSetValueExW(opened.get(), wide(std::u16string(name)), 0, type, data,
                                      static_cast<DWORD>(size));
  check(HRESULT_FROM_WIN32(static_cast<DWORD>(written)));
}

bool Registry::deleteValue(RegistryRoot root, std::u16string_view key, std::u16string_view name) {
  const Key opened(root, key, KEY_SET_VALUE);
  return opened && RegDeleteValueW(opened.get(), wide(std::u16string(name))) == ERROR_SUCCESS;
}

bool Registry::deleteKey(RegistryRoot root, std::u16string_view key) {
  // An empty path is the whole root.
  return !key.empty() && deleteTree(handleOf(root), std::u16string(key));
}

std::vector<std::u16string> Registry::valueNames(RegistryRoot root, std::u16string_view key) {
  const Key opened(root, key, KEY_READ);
  return opened ? names(opened.get(), true) : std::vector<std::u16string>();
}

std::vector<std::u16string> Registry::subkeyNames(RegistryRoot root, std::u16string_view key) {
  const Key opened(root, key, KEY_READ);
  return opened ? names(opened.get(), false) : std::vector<std::u16string>();
}

}  // namespace windows
