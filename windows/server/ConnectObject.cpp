#include "windows/server/ConnectObject.h"

#include "windows/com/errors.h"
#include "windows/com/values.h"
#include "windows/server/Module.h"

namespace windows {

ConnectObject::ConnectObject()
    : process_(AddinProcess::acquire()),
      connect_(cxol::Connect::create()),
      extensibility_(*this),
      ribbon_(*this) {}

HRESULT ConnectObject::QueryInterface(REFIID iid, void** result) {
  if (!result) return E_POINTER;
  if (IsEqualIID(iid, IID_Extensibility)) {
    *result = &extensibility_;
  } else if (IsEqualIID(iid, IID_RibbonExtensibility)) {
    *result = &ribbon_;
  } else {
    return answer(iid, {&IID_IUnknown, &IID_IDispatch, &IID_DefaultConnect}, result);
  }
  AddRef();
  return S_OK;
}

HRESULT ConnectObject::GetTypeInfoCount(UINT* count) {
  if (!count) return E_POINTER;
  *count = 1;
  return S_OK;
}

HRESULT ConnectObject::GetTypeInfo(UINT index, LCID, ITypeInfo** info) {
  if (!info) return E_POINTER;
  *info = nullptr;
  if (index != 0) return DISP_E_BADINDEX;
  return guarded([&] {
    *info = Module::typeInfo(IID_DefaultConnect).detach();
    return S_OK;
  });
}

HRESULT ConnectObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
  return connectIdOf(ConnectFamily::Extensibility, names, count, ids);
}

HRESULT ConnectObject::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* params,
                              VARIANT* result, EXCEPINFO*, UINT*) {
  const ConnectCall call(*this);
  return connectInvoke(ConnectFamily::Extensibility, *connect_, id, flags, params, result);
}

HRESULT ConnectObject::OnLoad(IDispatch* ribbon) {
  const ConnectCall call(*this);
  guardedQuietly([&] { connect_->OnLoad(objectOf(ribbon)); });
  return S_OK;
}

HRESULT ConnectObject::GetImage(IDispatch* control, IDispatch** picture) {
  if (!picture) return E_POINTER;
  *picture = nullptr;
  const ConnectCall call(*this);
  guardedQuietly([&] { *picture = dispatchOf(connect_->GetImage(objectOf(control))).detach(); });
  return S_OK;
}

HRESULT ConnectObject::cmdCommonRibbonBttn(IDispatch* control) {
  const ConnectCall call(*this);
  guardedQuietly([&] { connect_->cmdCommonRibbonBttn(objectOf(control)); });
  return S_OK;
}

}  // namespace windows
