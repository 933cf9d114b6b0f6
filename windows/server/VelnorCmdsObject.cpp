#include "windows/server/VelnorCmdsObject.h"

#include "windows/com/EntryHold.h"
#include "windows/com/errors.h"
#include "windows/com/values.h"
#include "windows/server/Module.h"

namespace windows {
namespace {

/// A null object for what a script gives in place of one.
automation::Object objectIn(const VARIANT& argument) {
  const auto value = valueOf(argument);
  if (value.isEmpty() || value.isMissing()) return {};
  return value.toObject();
}

std::u16string textIn(const VARIANT& argument) {
  const auto value = valueOf(argument);
  return value.isMissing() ? std::u16string() : value.toText();
}

}  // namespace

VelnorCmdsObject::VelnorCmdsObject()
    : process_(AddinProcess::acquire()), info_(Module::typeInfo(IID_DefaultVelnorCmds)) {}

HRESULT VelnorCmdsObject::QueryInterface(REFIID iid, void** result) {
  return answer(iid, {&IID_IUnknown, &IID_IDispatch, &IID_DefaultVelnorCmds}, result);
}

HRESULT VelnorCmdsObject::GetTypeInfoCount(UINT* count) {
  if (!count) return E_POINTER;
  *count = 1;
  return S_OK;
}

HRESULT VelnorCmdsObject::GetTypeInfo(UINT index, LCID, ITypeInfo** info) {
  if (!info) return E_POINTER;
  *info = nullptr;
  if (index != 0) return DISP_E_BADINDEX;
  *info = ComPtr(info_).detach();
  return S_OK;
}

HRESULT VelnorCmdsObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
  return info_->GetIDsOfNames(names, count, ids);
}

HRESULT VelnorCmdsObject::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* params,
                                 VARIANT* result, EXCEPINFO* exception, UINT* badArgument) {
  const EntryHold hold;
  const ComPtr<VelnorCmdsObject> self(this);
  return info_->Invoke(static_cast<DefaultVelnorCmds*>(this), id, flags, params, result, exception,
                       badArgument);
}

HRESULT VelnorCmdsObject::Dial(VARIANT ctrl, VARIANT parameter, VARIANT ribbonControl) {
  const EntryHold hold;
  const ComPtr<VelnorCmdsObject> self(this);
  return guarded([&] {
    commands_.Dial(office::CommandBarControl(objectIn(ctrl)), textIn(parameter),
                   office::RibbonControl(objectIn(ribbonControl)));
    return S_OK;
  });
}

HRESULT VelnorCmdsObject::Action(VARIANT ctrl, VARIANT parameter, VARIANT ribbonControl) {
  const EntryHold hold;
  const ComPtr<VelnorCmdsObject> self(this);
  return guarded([&] {
    commands_.Action(office::CommandBarControl(objectIn(ctrl)), textIn(parameter),
                     office::RibbonControl(objectIn(ribbonControl)));
    return S_OK;
  });
}

HRESULT VelnorCmdsObject::Drop(VARIANT ctrl, VARIANT parameter) {
  const EntryHold hold;
  const ComPtr<VelnorCmdsObject> self(this);
  return guarded([&] {
    commands_.Drop(office::CommandBarControl(objectIn(ctrl)), textIn(parameter));
    return S_OK;
  });
}

}  // namespace windows
