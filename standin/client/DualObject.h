#pragma once

#include "standin/client/Binding.h"
#include "windows/com/ComBase.h"

namespace standin {

/// A COM object with a dual interface over one of the client's objects.
template <class Interface>
class DualObject : public windows::ComBase<Interface> {
 public:
  DualObject(ObjectHost& host, automation::Object object)
      : binding_(host, std::move(object), __uuidof(Interface)) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** result) override {
    return this->answer(iid, {&IID_IUnknown, &IID_IDispatch, &__uuidof(Interface)}, result);
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    return binding_.typeInfoCount(count);
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID, ITypeInfo** info) override {
    return binding_.typeInfo(index, info);
  }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                                          DISPID* ids) override {
    return binding_.idsOfNames(names, count, ids);
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* params,
                                   VARIANT* result, EXCEPINFO* exception, UINT*) override {
    return binding_.invoke(id, flags, params, result, exception);
  }

 protected:
  const Binding& binding() const { return binding_; }

 private:
  const Binding binding_;
};

}  // namespace standin
