#include "windows/services/Registry.h"

#include <span>
#include <utility>

#include "windows/com/errors.h"
#include "windows/com/text.h"

namespace windows {
namespace {

using platform::RegistryRoot;
using platform::RegistryType;
using platform::RegistryValue;

/// An open key, or nothing when it can't be opened.
RegistryKey openKey(HKEY parent, const std::u16string& path, REGSAM access) {
  RegistryKey key;
  RegOpenKeyExW(parent, wide(path), 0, access, key.receive());
  return key;
}

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
    const auto key = openKey(parent, name, KEY_READ);
    if (!key) return false;
    for (const auto& subkey : names(key.get(), false)) deleteTree(key.get(), subkey);
  }
  return RegDeleteKeyW(parent, wide(name)) == ERROR_SUCCESS;
}

}  // namespace

std::optional<RegistryValue> Registry::read(RegistryRoot root, std::u16string_view key,
                                            std::u16string_view name) {
  // A held key would stick to one of the two that are merged there.
  HeldKeys passing;
  const auto stored =
      (root == RegistryRoot::ClassesRoot ? passing : heldKeys_).read(root, key, name);
  if (!stored) return std::nullopt;
  RegistryValue value;
  value.type = static_cast<RegistryType>(stored->type);
  if (isText(stored->type)) {
    value.text = fromAnsi(stored->bytes);
  } else {
    const auto bytes = std::as_bytes(std::span(stored->bytes));
    value.bytes.assign(bytes.begin(), bytes.end());
  }
  return value;
}

void Registry::write(RegistryRoot root, std::u16string_view key, std::u16string_view name,
                     const RegistryValue& value) {
  RegistryKey opened;
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
  const auto opened = openKey(handleOf(root), std::u16string(key), KEY_SET_VALUE);
  return opened && RegDeleteValueW(opened.get(), wide(std::u16string(name))) == ERROR_SUCCESS;
}

bool Registry::deleteKey(RegistryRoot root, std::u16string_view key) {
  // An empty path is the whole root.
  return !key.empty() && deleteTree(handleOf(root), std::u16string(key));
}

std::vector<std::u16string> Registry::valueNames(RegistryRoot root, std::u16string_view key) {
  const auto opened = openKey(handleOf(root), std::u16string(key), KEY_READ);
  return opened ? names(opened.get(), true) : std::vector<std::u16string>();
}

std::u16string Registry::expanded(const std::u16string& text) {
  // The size counts the final NUL.
  std::u16string result(ExpandEnvironmentStringsW(wide(text), nullptr, 0), u'\0');
  const DWORD size = ExpandEnvironmentStringsW(
      wide(text), reinterpret_cast<wchar_t*>(result.data()), static_cast<DWORD>(result.size()));
  if (size == 0 || size > result.size()) return text;
  result.resize(size - 1);
  return result;
}

std::vector<std::u16string> Registry::subkeyNames(RegistryRoot root, std::u16string_view key) {
  const auto opened = openKey(handleOf(root), std::u16string(key), KEY_READ);
  return opened ? names(opened.get(), false) : std::vector<std::u16string>();
}

}  // namespace windows
