#pragma once

#include <memory>

#include "client/clsVelnorCmds.h"
#include "windows/com/ComBase.h"
#include "windows/server/AddinProcess.h"
#include "windows/server/classes.h"

namespace windows {

/// The class `clsVelnorCmds` for scripts and other programs. Every argument may be left out.
class VelnorCmdsObject : public ComBase<DefaultVelnorCmds> {
 public:
  VelnorCmdsObject();

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** result) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID, ITypeInfo** info) override;
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                                          DISPID* ids) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* params,
                                   VARIANT* result, EXCEPINFO* exception,
                                   UINT* badArgument) override;

  HRESULT STDMETHODCALLTYPE Dial(VARIANT ctrl, VARIANT parameter, VARIANT ribbonControl) override;
  HRESULT STDMETHODCALLTYPE Action(VARIANT ctrl, VARIANT parameter, VARIANT ribbonControl) override;
  HRESULT STDMETHODCALLTYPE Drop(VARIANT ctrl, VARIANT parameter) override;

 private:
  const std::shared_ptr<AddinProcess> process_;
  const ComPtr<ITypeInfo> info_;
  cxol::clsVelnorCmds commands_;
};

}  // namespace windows
