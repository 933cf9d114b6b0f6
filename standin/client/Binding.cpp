#include "standin/client/Binding.h"

#include "windows/com/Arguments.h"
#include "windows/com/Bstr.h"

namespace standin {

using automation::Access;
using automation::Value;

Binding::Binding(ObjectHost& host, automation::Object object, const IID& iid)
    : host_(host), object_(std::move(object)), type_(host.typeOf(iid)) {}

Value Binding::call(Access access, std::u16string_view member,
                    std::span<const Value> values) const {
  host_.enter(member);
  return object_.invoke(access, automation::Member(member), values);
}

HRESULT Binding::typeInfoCount(UINT* count) const {
  if (!count) return E_POINTER;
  *count = host_.tellsTypes() ? 1 : 0;
  return S_OK;
}

HRESULT Binding::typeInfo(UINT index, ITypeInfo** info) const {
  if (!info) return E_POINTER;
  *info = nullptr;
  if (!host_.tellsTypes()) return E_NOTIMPL;
  if (index != 0) return DISP_E_BADINDEX;
  *info = windows::ComPtr(type_).detach();
  return S_OK;
}

HRESULT Binding::idsOfNames(LPOLESTR* names, UINT count, DISPID* ids) const {
  return type_->GetIDsOfNames(names, count, ids);
}

HRESULT Binding::invoke(DISPID id, WORD flags, DISPPARAMS* params, VARIANT* result,
                        EXCEPINFO* exception) const {
  if (!params) return E_INVALIDARG;
  return windows::guarded([&]() -> HRESULT {
    windows::Bstr name;
    UINT count = 0;
    if (FAILED(type_->GetNames(id, name.receive(), 1, &count)) || count == 0) {
      return DISP_E_MEMBERNOTFOUND;
    }
    try {
      const bool puts = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
      const Value value =
          call(puts ? Access::Put : Access::Call, name.view(), windows::valuesOf(*params));
      if (!result) return S_OK;
      if (!value.isObject()) {
        *result = windows::variantOf(value).detach();
      } else {
        result->pdispVal = host_.exported(value.toObject()).detach();
        result->vt = VT_DISPATCH;
      }
      return S_OK;
    } catch (const automation::Error& error) {
      return windows::resultOf(error, exception);
    }
  });
}

}  // namespace standin
