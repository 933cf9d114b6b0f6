#pragma once

#include <memory>

#include "addin/Connect.h"
#include "windows/com/ComBase.h"
#include "windows/com/EntryHold.h"
#include "windows/server/AddinProcess.h"
#include "windows/server/ConnectParts.h"
#include "windows/server/classes.h"

namespace windows {

/// The class `Connect` as Office sees it: the add-in's events and the ribbon's question by their
/// own interfaces and late-bound, the ribbon's callbacks by name. Its own dispatch interface knows
/// all of them. Nothing fails towards the host: an add-in that reports a failure is switched off.
class ConnectObject : public ComBase<DefaultConnect> {
 public:
  ConnectObject();

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** result) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID, ITypeInfo** info) override;
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                                          DISPID* ids) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* params,
                                   VARIANT* result, EXCEPINFO*, UINT*) override;

  HRESULT STDMETHODCALLTYPE OnLoad(IDispatch* ribbon) override;
  HRESULT STDMETHODCALLTYPE GetImage(IDispatch* control, IDispatch** picture) override;
  HRESULT STDMETHODCALLTYPE cmdCommonRibbonBttn(IDispatch* control) override;

  /// The logic, for the parts.
  cxol::Connect& connect() noexcept { return *connect_; }

 private:
  // In this order: the logic ends before the process.
  const std::shared_ptr<AddinProcess> process_;
  const std::shared_ptr<cxol::Connect> connect_;
  ExtensibilityPart extensibility_;
  RibbonPart ribbon_;
};

/// Stands in every call: the host may drop its last reference in the middle of it. The object goes
/// before the module's state does.
struct ConnectCall {
  explicit ConnectCall(ConnectObject& object) : self(&object) {}
  const EntryHold hold;
  const ComPtr<ConnectObject> self;
};

}  // namespace windows
