#include "standin/client/registration.h"

#include <array>

#include "platform/velnor.h"
#include "standin/client/names.h"
#include "windows/com/ComPtr.h"
#include "windows/com/errors.h"
#include "windows/com/text.h"
#include "windows/services/Registry.h"

namespace standin {
namespace {

using platform::RegistryRoot;

struct RegisteredClass {
  const CLSID& id;
  std::u16string_view className;
};
constexpr std::array<RegisteredClass, 2> Classes{
    {{ApplicationClassId, velnor::ApplicationClass}, {RemoteClassId, velnor::RemoteClass}}};

/// Where COM looks for every user's classes.
constexpr std::u16string_view MachineClasses = u"Software\\Classes\\";

std::u16string textOf(const GUID& id) {
  wchar_t text[40] = {};
  StringFromGUID2(id, text, static_cast<int>(std::size(text)));
  return std::u16string(windows::utf16(text));
}

std::u16string classKey(const CLSID& id) {
  return std::u16string(MachineClasses) + u"CLSID\\" + textOf(id);
}

std::u16string nameKey(std::u16string_view className) {
  return std::u16string(MachineClasses) + std::u16string(className);
}

std::u16string read(const std::u16string& key) {
  return platform::textOf(windows::Registry().read(RegistryRoot::LocalMachine, key, u""));
}

/// A client that is not this program may be installed on a machine: it stays as it is.
bool belongsToAnother() {
  const std::u16string key = classKey(ApplicationClassId);
  return !read(key + u"\\LocalServer32").empty() &&
         !windows::sameName(read(key + u"\\TypeLib"), textOf(TypeLibraryId));
}

void set(const std::u16string& key, std::u16string_view text) {
  windows::Registry().write(RegistryRoot::LocalMachine, key, u"", platform::stringValue(text));
}

}  // namespace

void registerClient(const std::u16string& path) {
  if (belongsToAnother()) throw automation::Error(automation::ErrorNumber::PermissionDenied);
  for (const auto& [id, className] : Classes) {
    const std::u16string key = classKey(id);
    set(key, className);
    set(key + u"\\LocalServer32", path);
    set(key + u"\\ProgID", className);
    set(key + u"\\TypeLib", textOf(TypeLibraryId));
    set(nameKey(className), className);
    set(nameKey(className) + u"\\CLSID", textOf(id));
  }
  windows::ComPtr<ITypeLib> library;
  // Objects without type information are known by their members' names.
  if (FAILED(LoadTypeLibEx(windows::wide(path), REGKIND_NONE, library.receive()))) return;
  auto text = path;
  windows::check(RegisterTypeLib(library.get(), reinterpret_cast<wchar_t*>(text.data()), nullptr));
}

void unregisterClient() {
  if (belongsToAnother()) return;
  UnRegisterTypeLib(TypeLibraryId, 1, 0, LANG_NEUTRAL, SYS_WIN32);
  windows::Registry registry;
  for (const auto& [id, className] : Classes) {
    registry.deleteKey(RegistryRoot::LocalMachine, classKey(id));
    registry.deleteKey(RegistryRoot::LocalMachine, nameKey(className));
  }
}

}  // namespace standin
