#pragma once

#include "windows/com/ComBase.h"

namespace windows {

/// Makes the objects of one class.
class ClassFactory : public ComBase<IClassFactory> {
 public:
  /// Makes an object and asks it for an interface.
  using Maker = HRESULT (*)(REFIID iid, void** result);

  explicit ClassFactory(Maker maker) : maker_(maker) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** result) override;
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** result) override;
  HRESULT STDMETHODCALLTYPE LockServer(BOOL locked) override;

 private:
  const Maker maker_;
};

/// The maker of a class of this module; null for a class that it does not have.
ClassFactory::Maker makerOf(REFCLSID classId);

}  // namespace windows
