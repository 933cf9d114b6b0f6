#pragma once

#include "windows/server/connectMethods.h"
#include "windows/server/office_interfaces.h"

namespace windows {

class ConnectObject;

/// An interface of the `Connect` object that has dispatch ids of its own. Part of that object: has
/// its identity and its references.
template <class Interface, ConnectFamily Family>
class ConnectPart : public Interface {
 public:
  explicit ConnectPart(ConnectObject& owner) : owner_(owner) {}
  ConnectPart(const ConnectPart&) = delete;
  ConnectPart& operator=(const ConnectPart&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** result) override;
  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** info) override;
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                                          DISPID* ids) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* params,
                                   VARIANT* result, EXCEPINFO*, UINT*) override;

 protected:
  ConnectObject& owner_;
};

/// IDTExtensibility2
class ExtensibilityPart : public ConnectPart<Extensibility, ConnectFamily::Extensibility> {
 public:
  using ConnectPart::ConnectPart;
  HRESULT STDMETHODCALLTYPE OnConnection(IDispatch* application, LONG connectMode,
                                         IDispatch* addInInst, SAFEARRAY** custom) override;
  HRESULT STDMETHODCALLTYPE OnDisconnection(LONG removeMode, SAFEARRAY** custom) override;
  HRESULT STDMETHODCALLTYPE OnAddInsUpdate(SAFEARRAY** custom) override;
  HRESULT STDMETHODCALLTYPE OnStartupComplete(SAFEARRAY** custom) override;
  HRESULT STDMETHODCALLTYPE OnBeginShutdown(SAFEARRAY** custom) override;
};

/// IRibbonExtensibility
class RibbonPart : public ConnectPart<RibbonExtensibility, ConnectFamily::Ribbon> {
 public:
  using ConnectPart::ConnectPart;
  HRESULT STDMETHODCALLTYPE GetCustomUI(BSTR ribbonId, BSTR* markup) override;
};

}  // namespace windows
