// An add-in that does nothing: what loading the least of add-ins costs, and leaves behind, is the
// measure for the real one.

#include "windows/com/ComBase.h"
#include "windows/com/errors.h"
#include "windows/com/text.h"
#include "windows/server/office_interfaces.h"
#include "windows/services/Registry.h"

namespace {

using platform::RegistryRoot;
using windows::IID_Extensibility;

constexpr CLSID ClassId = {
    0x6B1F0C52, 0x8A37, 0x4D0E, {0x93, 0x5C, 0x27, 0xE4, 0x51, 0x0B, 0xD6, 0x9A}};
constexpr std::u16string_view ClassKey =
    u"Software\\Classes\\CLSID\\{6B1F0C52-8A37-4D0E-935C-27E4510BD69A}";
constexpr std::u16string_view ProgIdKey = u"Software\\Classes\\VelnorIdleAddin.Connect";
constexpr std::u16string_view AddinKey =
    u"Software\\Microsoft\\Office\\Outlook\\Addins\\VelnorIdleAddin.Connect";
constexpr std::uint32_t LoadAtStart = 3;

HINSTANCE module = nullptr;

class IdleAddin : public windows::ComBase<windows::Extensibility> {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** result) override {
    return answer(iid, {&IID_IUnknown, &IID_IDispatch, &IID_Extensibility}, result);
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    *count = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return DISP_E_UNKNOWNNAME;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                                   UINT*) override {
    return DISP_E_MEMBERNOTFOUND;
  }
  HRESULT STDMETHODCALLTYPE OnConnection(IDispatch*, LONG, IDispatch*, SAFEARRAY**) override {
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE OnDisconnection(LONG, SAFEARRAY**) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE OnAddInsUpdate(SAFEARRAY**) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE OnStartupComplete(SAFEARRAY**) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE OnBeginShutdown(SAFEARRAY**) override { return S_OK; }
};

class Factory : public windows::ComBase<IClassFactory> {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** result) override {
    return answer(iid, {&IID_IUnknown, &IID_IClassFactory}, result);
  }
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** result) override {
    if (outer) return CLASS_E_NOAGGREGATION;
    return windows::make<IdleAddin>()->QueryInterface(iid, result);
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }
};

void setText(std::u16string_view key, std::u16string_view name, std::u16string_view text) {
  windows::Registry().write(RegistryRoot::LocalMachine, key, name, platform::stringValue(text));
}

void registerServer() {
  wchar_t path[MAX_PATH] = {};
  GetModuleFileNameW(module, path, MAX_PATH);
  const std::u16string server = std::u16string(ClassKey) + u"\\InprocServer32";
  setText(server, u"", windows::utf16(path));
  setText(server, u"ThreadingModel", u"Apartment");
  setText(std::u16string(ProgIdKey) + u"\\CLSID", u"", ClassKey.substr(ClassKey.rfind(u'\\') + 1));
  windows::Registry().write(RegistryRoot::CurrentUser, AddinKey, u"LoadBehavior",
                            platform::dwordValue(LoadAtStart));
}

}  // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
  if (reason == DLL_PROCESS_ATTACH) {
    module = instance;
    DisableThreadLibraryCalls(instance);
  }
  return TRUE;
}

STDAPI DllGetClassObject(REFCLSID classId, REFIID iid, void** result) {
  if (!IsEqualCLSID(classId, ClassId)) return CLASS_E_CLASSNOTAVAILABLE;
  return windows::make<Factory>()->QueryInterface(iid, result);
}

STDAPI DllCanUnloadNow() {
  return windows::LiveObjects::count() == 0 ? S_OK : S_FALSE;
}

STDAPI DllRegisterServer() {
  return windows::guarded([] {
    registerServer();
    return S_OK;
  });
}

STDAPI DllUnregisterServer() {
  return windows::guarded([] {
    windows::Registry registry;
    registry.deleteKey(RegistryRoot::LocalMachine, ClassKey);
    registry.deleteKey(RegistryRoot::LocalMachine, ProgIdKey);
    registry.deleteKey(RegistryRoot::CurrentUser, AddinKey);
    return S_OK;
  });
}
