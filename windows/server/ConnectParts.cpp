#include "windows/server/ConnectParts.h"

#include "windows/com/Bstr.h"
#include "windows/com/errors.h"
#include "windows/com/values.h"
#include "windows/server/ConnectObject.h"

namespace windows {

template <class Interface, ConnectFamily Family>
HRESULT ConnectPart<Interface, Family>::QueryInterface(REFIID iid, void** result) {
  return owner_.QueryInterface(iid, result);
}

template <class Interface, ConnectFamily Family>
ULONG ConnectPart<Interface, Family>::AddRef() {
  return owner_.AddRef();
}

template <class Interface, ConnectFamily Family>
ULONG ConnectPart<Interface, Family>::Release() {
  return owner_.Release();
}

template <class Interface, ConnectFamily Family>
HRESULT ConnectPart<Interface, Family>::GetTypeInfoCount(UINT* count) {
  if (!count) return E_POINTER;
  *count = 0;
  return S_OK;
}

template <class Interface, ConnectFamily Family>
HRESULT ConnectPart<Interface, Family>::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
  if (info) *info = nullptr;
  return E_NOTIMPL;
}

template <class Interface, ConnectFamily Family>
HRESULT ConnectPart<Interface, Family>::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                                                      DISPID* ids) {
  return connectIdOf(Family, names, count, ids);
}

template <class Interface, ConnectFamily Family>
HRESULT ConnectPart<Interface, Family>::Invoke(DISPID id, REFIID, LCID, WORD flags,
                                               DISPPARAMS* params, VARIANT* result, EXCEPINFO*,
                                               UINT*) {
  const ConnectCall call(owner_);
  return connectInvoke(Family, owner_.connect(), id, flags, params, result);
}

template class ConnectPart<Extensibility, ConnectFamily::Extensibility>;
template class ConnectPart<RibbonExtensibility, ConnectFamily::Ribbon>;

HRESULT ExtensibilityPart::OnConnection(IDispatch* application, LONG connectMode,
                                        IDispatch* addInInst, SAFEARRAY**) {
  const ConnectCall call(owner_);
  guardedQuietly([&] {
    owner_.connect().AddinInstance_OnConnection(objectOf(application), connectMode,
                                                objectOf(addInInst));
  });
  return S_OK;
}

HRESULT ExtensibilityPart::OnDisconnection(LONG removeMode, SAFEARRAY**) {
  const ConnectCall call(owner_);
  owner_.connect().AddinInstance_OnDisconnection(removeMode);
  return S_OK;
}

HRESULT ExtensibilityPart::OnAddInsUpdate(SAFEARRAY**) {
  return S_OK;
}

HRESULT ExtensibilityPart::OnStartupComplete(SAFEARRAY**) {
  const ConnectCall call(owner_);
  owner_.connect().AddinInstance_OnStartupComplete();
  return S_OK;
}

HRESULT ExtensibilityPart::OnBeginShutdown(SAFEARRAY**) {
  const ConnectCall call(owner_);
  owner_.connect().AddinInstance_OnBeginShutdown();
  return S_OK;
}

HRESULT RibbonPart::GetCustomUI(BSTR ribbonId, BSTR* markup) {
  if (!markup) return E_POINTER;
  *markup = nullptr;
  const ConnectCall call(owner_);
  return guarded([&] {
    const auto id = utf16(ribbonId, SysStringLen(ribbonId));
    *markup = Bstr(owner_.connect().IRibbonExtensibility_GetCustomUI(id)).detach();
    return S_OK;
  });
}

}  // namespace windows
