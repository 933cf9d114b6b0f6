#pragma once

#include <string_view>

#include "windows/com/api.h"

/// The classes and interfaces of the type library, as the library numbers them.
namespace windows {

inline constexpr GUID LIBID_VelnorOutlookCOMAddIn = {
    0x303DF69F, 0xDB02, 0x48B8, {0xB9, 0x32, 0x1D, 0xC3, 0x2C, 0x79, 0xBD, 0xCC}};
inline constexpr WORD LibraryMajor = 1;
inline constexpr WORD LibraryMinor = 0;

inline constexpr CLSID CLSID_Connect = {
    0x873C647F, 0x502B, 0x4863, {0x9F, 0x93, 0xA8, 0x3F, 0x43, 0xC0, 0xE1, 0x2B}};
inline constexpr CLSID CLSID_VelnorCmds = {
    0x2A15A0D6, 0xA49C, 0x44AC, {0xB7, 0x51, 0xB0, 0xC9, 0x7D, 0x0F, 0x24, 0x9F}};

inline constexpr IID IID_DefaultConnect = {
    0x978B2A01, 0x31A1, 0x4913, {0x95, 0x39, 0x41, 0x2E, 0x4E, 0x9B, 0xC7, 0xF1}};
inline constexpr IID IID_DefaultVelnorCmds = {
    0xBAC326BF, 0x8BB5, 0x44A7, {0xA3, 0xF1, 0x4D, 0x65, 0x3D, 0x46, 0x5A, 0x47}};

inline constexpr std::u16string_view ConnectProgId = u"VelnorOutlookCOMAddIn.Connect";
inline constexpr std::u16string_view VelnorCmdsProgId = u"VelnorOutlookCOMAddIn.clsVelnorCmds";

/// _Connect
struct DefaultConnect : public IDispatch {
  virtual HRESULT STDMETHODCALLTYPE OnLoad(IDispatch* ribbon) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetImage(IDispatch* control, IDispatch** picture) = 0;
  virtual HRESULT STDMETHODCALLTYPE cmdCommonRibbonBttn(IDispatch* control) = 0;
};

/// _clsVelnorCmds
struct DefaultVelnorCmds : public IDispatch {
  virtual HRESULT STDMETHODCALLTYPE Dial(VARIANT ctrl, VARIANT parameter,
                                         VARIANT ribbonControl) = 0;
  virtual HRESULT STDMETHODCALLTYPE Action(VARIANT ctrl, VARIANT parameter,
                                           VARIANT ribbonControl) = 0;
  virtual HRESULT STDMETHODCALLTYPE Drop(VARIANT ctrl, VARIANT parameter) = 0;
};

}  // namespace windows
