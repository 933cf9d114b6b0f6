#pragma once

#include <memory>

#include "addin/Connect.h"
#include "windows/com/ComBase.h"
#include "windows/server/AddinProcess.h"
#include "windows/server/classes.h"
#include "windows/server/office_interfaces.h"

namespace windows {

class ConnectObject;

/// One interface of the `Connect` object and the late-bound calls that come through it. Each has
/// all methods, under dispatch ids of its own.
template <class Interface>
class ConnectFace : public Interface {
 public:
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID, ITypeInfo** info) override;
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                                          DISPID* ids) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* params,
                                   VARIANT* result, EXCEPINFO*, UINT*) override;
};

/// The class `Connect` as Office sees it: the add-in's events and the ribbon's question by their
/// own interfaces and late-bound, the ribbon's callbacks by name. Its own dispatch interface knows
/// all of them. Nothing fails towards the host: an add-in that reports a failure is switched off.
class ConnectObject : public ComBase<ConnectFace<DefaultConnect>>,
                      public ConnectFace<Extensibility>,
                      public ConnectFace<RibbonExtensibility> {
 public:
  ConnectObject();

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** result) override;
  ULONG STDMETHODCALLTYPE AddRef() override { return ComBase::AddRef(); }
  ULONG STDMETHODCALLTYPE Release() override { return ComBase::Release(); }

  HRESULT STDMETHODCALLTYPE OnConnection(IDispatch* application, LONG connectMode,
                                         IDispatch* addInInst, SAFEARRAY** custom) override;
  HRESULT STDMETHODCALLTYPE OnDisconnection(LONG removeMode, SAFEARRAY** custom) override;
  HRESULT STDMETHODCALLTYPE OnAddInsUpdate(SAFEARRAY** custom) override;
  HRESULT STDMETHODCALLTYPE OnStartupComplete(SAFEARRAY** custom) override;
  HRESULT STDMETHODCALLTYPE OnBeginShutdown(SAFEARRAY** custom) override;

  HRESULT STDMETHODCALLTYPE GetCustomUI(BSTR ribbonId, BSTR* markup) override;

  HRESULT STDMETHODCALLTYPE OnLoad(IDispatch* ribbon) override;
  HRESULT STDMETHODCALLTYPE GetImage(IDispatch* control, IDispatch** picture) override;
  HRESULT STDMETHODCALLTYPE cmdCommonRibbonBttn(IDispatch* control) override;

 private:
  template <class Interface>
  friend class ConnectFace;

  /// Every call of the logic: keeps it alive until it is done, and lets no error out.
  template <class Body>
  HRESULT carryOut(Body body);

  // In this order: the logic ends before the process.
  const std::shared_ptr<AddinProcess> process_;
  const std::shared_ptr<cxol::Connect> connect_;
};

}  // namespace windows
