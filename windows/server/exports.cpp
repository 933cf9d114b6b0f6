// The functions that COM calls in a DLL.

#include "windows/com/errors.h"
#include "windows/server/ClassFactory.h"
#include "windows/server/Module.h"
#include "windows/server/registration.h"
#include "windows/server/runtimeLibrary.h"

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID processEnds) {
  if (reason == DLL_PROCESS_DETACH && !processEnds) windows::releaseRuntimeLibrary();
  if (reason == DLL_PROCESS_ATTACH) {
    windows::Module::setInstance(instance);
    DisableThreadLibraryCalls(instance);
  }
  return TRUE;
}

STDAPI DllGetClassObject(REFCLSID classId, REFIID iid, void** result) {
  if (!result) return E_POINTER;
  *result = nullptr;
  const auto maker = windows::makerOf(classId);
  if (!maker) return CLASS_E_CLASSNOTAVAILABLE;
  return windows::guarded(
      [&] { return windows::make<windows::ClassFactory>(maker)->QueryInterface(iid, result); });
}

STDAPI DllCanUnloadNow() {
  return windows::Module::canUnload() ? S_OK : S_FALSE;
}

STDAPI DllRegisterServer() {
  const bool before = windows::isRegistered();
  const HRESULT result = windows::guarded([] {
    windows::registerServer();
    return S_OK;
  });
  // Half a registration is worse than none, but what was there before may be in use.
  if (FAILED(result) && !before) windows::guardedQuietly([] { windows::unregisterServer(); });
  return result;
}

STDAPI DllUnregisterServer() {
  return windows::guarded([] {
    windows::unregisterServer();
    return S_OK;
  });
}
