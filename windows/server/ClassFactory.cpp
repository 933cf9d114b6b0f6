#include "windows/server/ClassFactory.h"

#include "windows/com/errors.h"
#include "windows/server/ConnectObject.h"
#include "windows/server/Module.h"
#include "windows/server/VelnorCmdsObject.h"

namespace windows {
namespace {

template <class Class>
HRESULT makeObject(REFIID iid, void** result) {
  return make<Class>()->QueryInterface(iid, result);
}

}  // namespace

HRESULT ClassFactory::QueryInterface(REFIID iid, void** result) {
  return answer(iid, {&IID_IUnknown, &IID_IClassFactory}, result);
}

HRESULT ClassFactory::CreateInstance(IUnknown* outer, REFIID iid, void** result) {
  if (!result) return E_POINTER;
  *result = nullptr;
  if (outer) return CLASS_E_NOAGGREGATION;
  return guarded([&] { return maker_(iid, result); });
}

HRESULT ClassFactory::LockServer(BOOL locked) {
  Module::lock(locked != FALSE);
  return S_OK;
}

ClassFactory::Maker makerOf(REFCLSID classId) {
  if (IsEqualCLSID(classId, CLSID_Connect)) return &makeObject<ConnectObject>;
  if (IsEqualCLSID(classId, CLSID_VelnorCmds)) return &makeObject<VelnorCmdsObject>;
  return nullptr;
}

}  // namespace windows
