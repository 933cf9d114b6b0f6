#include "windows/server/Module.h"

#include "windows/com/ComBase.h"
#include "windows/com/errors.h"
#include "windows/com/text.h"

namespace windows {
namespace {
HINSTANCE moduleInstance = nullptr;
LONG locks = 0;
}  // namespace

HINSTANCE Module::instance() noexcept {
  return moduleInstance;
}

void Module::setInstance(HINSTANCE instance) noexcept {
  moduleInstance = instance;
}

std::u16string Module::path() {
  wchar_t path[MAX_PATH] = {};
  const DWORD length = GetModuleFileNameW(moduleInstance, path, MAX_PATH);
  return std::u16string(utf16(path, length));
}

ComPtr<ITypeLib> Module::typeLibrary() {
  ComPtr<ITypeLib> library;
  check(LoadTypeLibEx(wide(path()), REGKIND_NONE, library.receive()));
  return library;
}

ComPtr<ITypeInfo> Module::typeInfo(REFIID iid) {
  ComPtr<ITypeInfo> info;
  check(typeLibrary()->GetTypeInfoOfGuid(iid, info.receive()));
  return info;
}

void Module::lock(bool locked) noexcept {
  if (locked) {
    InterlockedIncrement(&locks);
  } else {
    InterlockedDecrement(&locks);
  }
}

bool Module::canUnload() noexcept {
  return LiveObjects::count() == 0 && InterlockedCompareExchange(&locks, 0, 0) == 0;
}

}  // namespace windows
