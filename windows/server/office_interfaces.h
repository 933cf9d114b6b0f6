#pragma once

#include "windows/com/api.h"

/// The two interfaces under which Office calls an add-in. They belong to Office and are declared
/// here for the compiler only: a registered type library must not contain them.
namespace windows {

/// {B65AD801-ABAF-11D0-BB8B-00A0C90F2744}
inline constexpr IID IID_Extensibility = {
    0xB65AD801, 0xABAF, 0x11D0, {0xBB, 0x8B, 0x00, 0xA0, 0xC9, 0x0F, 0x27, 0x44}};
/// {000C0396-0000-0000-C000-000000000046}
inline constexpr IID IID_RibbonExtensibility = {
    0x000C0396, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

/// IDTExtensibility2; the dispatch ids are 1 to 5 in this order.
struct Extensibility : public IDispatch {
  virtual HRESULT STDMETHODCALLTYPE OnConnection(IDispatch* application, LONG connectMode,
                                                 IDispatch* addInInst, SAFEARRAY** custom) = 0;
  virtual HRESULT STDMETHODCALLTYPE OnDisconnection(LONG removeMode, SAFEARRAY** custom) = 0;
  virtual HRESULT STDMETHODCALLTYPE OnAddInsUpdate(SAFEARRAY** custom) = 0;
  virtual HRESULT STDMETHODCALLTYPE OnStartupComplete(SAFEARRAY** custom) = 0;
  virtual HRESULT STDMETHODCALLTYPE OnBeginShutdown(SAFEARRAY** custom) = 0;
};

/// IRibbonExtensibility; the dispatch id is 1.
struct RibbonExtensibility : public IDispatch {
  virtual HRESULT STDMETHODCALLTYPE GetCustomUI(BSTR ribbonId, BSTR* markup) = 0;
};

}  // namespace windows
