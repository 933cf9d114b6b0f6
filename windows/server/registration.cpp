#include "windows/server/registration.h"

#include <algorithm>

#include "infra/RegOp.h"
#include "infra/text.h"
#include "windows/com/errors.h"
#include "windows/com/text.h"
#include "windows/server/Module.h"
#include "windows/server/classes.h"
#include "windows/services/Registry.h"

namespace windows {
namespace {

using cxol::concat;
using cxol::RegOp;
using platform::RegistryRoot;

struct RegisteredClass {
  const CLSID& id;
  std::u16string_view progId;
};
constexpr RegisteredClass Classes[] = {{CLSID_Connect, ConnectProgId},
                                       {CLSID_VelnorCmds, VelnorCmdsProgId}};

/// The category of objects that offer IDispatch.
constexpr std::u16string_view AutomationObjects = u"{40FC6ED5-2438-11CF-A3DB-080036F12502}";

constexpr std::u16string_view AddinsKey = u"Software\\Microsoft\\Office\\Outlook\\Addins";
/// Connected, and loaded when Outlook starts.
constexpr std::int32_t LoadAtStart = 3;

std::u16string textOf(const GUID& id) {
  wchar_t text[40] = {};
  StringFromGUID2(id, text, static_cast<int>(std::size(text)));
  return std::u16string(utf16(text));
}

std::u16string classKey(const RegisteredClass& registered) {
  return concat(u"CLSID\\", textOf(registered.id));
}

void set(RegistryRoot root, std::u16string_view key, std::u16string_view name,
         const automation::Value& value) {
  Registry registry;
  RegOp(registry, root, key).setValue(name, value);
}

/// Whether there is such a key, be it one that may not even be opened.
bool isThere(RegistryRoot root, std::u16string_view key) {
  RegistryKey opened;
  const LONG status =
      RegOpenKeyExW(handleOf(root), wide(std::u16string(key)), 0, KEY_READ, opened.receive());
  return status != ERROR_FILE_NOT_FOUND && status != ERROR_PATH_NOT_FOUND;
}

/// False when it is still there.
bool remove(RegistryRoot root, std::u16string_view key) {
  Registry registry;
  RegOp(registry, root, key).deleteKey();
  return !isThere(root, key);
}

void registerClass(const RegisteredClass& registered) {
  const auto key = classKey(registered);
  const struct {
    std::u16string_view subkey;
    std::u16string_view name;
    std::u16string value;
  } rows[] = {
      {u"", u"", std::u16string(registered.progId)},
      {u"\\InprocServer32", u"", Module::path()},
      {u"\\InprocServer32", u"ThreadingModel", u"Apartment"},
      {u"\\ProgID", u"", std::u16string(registered.progId)},
      {u"\\TypeLib", u"", textOf(LIBID_VelnorOutlookCOMAddIn)},
      {u"\\VERSION", u"", u"1.0"},
      {u"\\Programmable", u"", u""},
      {u"\\Implemented Categories", u"", u""},
  };
  for (const auto& row : rows) {
    set(RegistryRoot::ClassesRoot, concat(key, row.subkey), row.name, row.value);
  }
  set(RegistryRoot::ClassesRoot, concat(key, u"\\Implemented Categories\\", AutomationObjects), u"",
      u"");
  set(RegistryRoot::ClassesRoot, registered.progId, u"", registered.progId);
  set(RegistryRoot::ClassesRoot, concat(registered.progId, u"\\CLSID"), u"", textOf(registered.id));
}

void registerLibrary() {
  auto path = Module::path();
  const HRESULT result = RegisterTypeLib(Module::typeLibrary().get(),
                                         reinterpret_cast<wchar_t*>(path.data()), nullptr);
  // Its own word for a refusal.
  check(result == TYPE_E_REGISTRYACCESS ? E_ACCESSDENIED : result);
}

bool removeLibrary() {
  UnRegisterTypeLib(LIBID_VelnorOutlookCOMAddIn, LibraryMajor, LibraryMinor, 0, SYS_WIN32);
  return !isThere(RegistryRoot::ClassesRoot,
                  concat(u"TypeLib\\", textOf(LIBID_VelnorOutlookCOMAddIn), u"\\1.0\\0\\win32"));
}

/// Whether COM finds the classes in this copy of the DLL.
bool isOwn(const RegisteredClass& registered) {
  Registry registry;
  const auto server =
      RegOp(registry, RegistryRoot::ClassesRoot, concat(classKey(registered), u"\\InprocServer32"))
          .value(u"");
  return server && server->isText() && sameName(server->toText(), Module::path());
}

void registerAddin() {
  const auto key = concat(AddinsKey, u"\\", ConnectProgId);
  set(RegistryRoot::CurrentUser, key, u"FriendlyName", u"Velnor Outlook AddIn");
  set(RegistryRoot::CurrentUser, key, u"Description", u"Velnor Outlook CTI Control");
  set(RegistryRoot::CurrentUser, key, u"LoadBehavior", LoadAtStart);
}

/// Deletes the keys that our entry's creation may have made, from the innermost on, as far as
/// nobody else has put anything there.
void removeEmptyParents() {
  Registry registry;
  std::u16string_view key = AddinsKey;
  constexpr std::u16string_view Keep = u"Software\\Microsoft";
  while (key.size() > Keep.size()) {
    const RegOp parent(registry, RegistryRoot::CurrentUser, key);
    if (!parent.valueNames().empty() || !parent.subkeyNames().empty()) return;
    parent.deleteKey();
    key = key.substr(0, key.rfind(u'\\'));
  }
}

}  // namespace

bool isRegistered() noexcept {
  bool registered = false;
  guardedQuietly([&] {
    Registry registry;
    registered =
        !RegOp(registry, RegistryRoot::ClassesRoot, classKey(Classes[0])).subkeyNames().empty();
  });
  return registered;
}

void registerServer() {
  try {
    for (const auto& registered : Classes) registerClass(registered);
    registerLibrary();
  } catch (const automation::Error& error) {
    // That part may have been done already, by somebody with the rights to.
    const bool refused =
        error.number() == static_cast<std::int32_t>(automation::ErrorNumber::PermissionDenied);
    if (!refused || !std::ranges::all_of(Classes, isOwn)) throw;
  }
  registerAddin();
}

void unregisterServer() {
  bool gone = remove(RegistryRoot::CurrentUser, concat(AddinsKey, u"\\", ConnectProgId));
  removeEmptyParents();
  gone &= removeLibrary();
  for (const auto& registered : Classes) {
    gone &= remove(RegistryRoot::ClassesRoot, registered.progId);
    gone &= remove(RegistryRoot::ClassesRoot, classKey(registered));
  }
  if (!gone) throw automation::Error(automation::ErrorNumber::PermissionDenied);
}

}  // namespace windows
