#pragma once

#include "windows/com/api.h"

/// The interfaces of the type library, member by member. What only fills a place answers that it
/// is not there.
namespace standin {

#define STANDIN_FILLER(name)                 \
  virtual HRESULT STDMETHODCALLTYPE name() { \
    return E_NOTIMPL;                        \
  }

struct DualApplication : IDispatch {
  STANDIN_FILLER(Reserved1)
  virtual HRESULT STDMETHODCALLTYPE get_PhoneCommand(IDispatch** command) = 0;
  STANDIN_FILLER(Reserved3)
  STANDIN_FILLER(Reserved4)
  virtual HRESULT STDMETHODCALLTYPE get_AuxiliaryService(IDispatch** service) = 0;
};

struct DualPhoneCommand : IDispatch {
  STANDIN_FILLER(Reserved1)
  STANDIN_FILLER(Reserved2)
  STANDIN_FILLER(Reserved3)
  STANDIN_FILLER(Reserved4)
  STANDIN_FILLER(Reserved5)
  STANDIN_FILLER(Reserved6)
  STANDIN_FILLER(Reserved7)
  STANDIN_FILLER(Reserved8)
  STANDIN_FILLER(Reserved9)
  STANDIN_FILLER(Reserved10)
  virtual HRESULT STDMETHODCALLTYPE Dial(LONG firstLine, LONG chosenLine, BSTR number,
                                         VARIANT option) = 0;
  STANDIN_FILLER(Reserved12)
  virtual HRESULT STDMETHODCALLTYPE HangUp(LONG line) = 0;
  virtual HRESULT STDMETHODCALLTYPE PickUp(LONG line) = 0;
  virtual HRESULT STDMETHODCALLTYPE Transfer(LONG line) = 0;
  STANDIN_FILLER(Reserved16)
  virtual HRESULT STDMETHODCALLTYPE LineStateOf(LONG line, LONG* state) = 0;
  virtual HRESULT STDMETHODCALLTYPE LineState(LONG line, LONG* state) = 0;
  STANDIN_FILLER(Reserved19)
  STANDIN_FILLER(Reserved20)
  STANDIN_FILLER(Reserved21)
  virtual HRESULT STDMETHODCALLTYPE Stop(LONG code) = 0;
  STANDIN_FILLER(Reserved23)
  virtual HRESULT STDMETHODCALLTYPE Incognito(LONG line) = 0;
  STANDIN_FILLER(Reserved25)
  virtual HRESULT STDMETHODCALLTYPE Lines(LONG kind, VARIANT* lines) = 0;
};

struct DualAuxiliaryService : IDispatch {
  STANDIN_FILLER(Reserved1)
  virtual HRESULT STDMETHODCALLTYPE ShowNumber(BSTR number, BSTR lastName, BSTR firstName,
                                               BSTR company, BSTR reference, BSTR remark,
                                               LONG how) = 0;
  STANDIN_FILLER(Reserved3)
  STANDIN_FILLER(Reserved4)
  virtual HRESULT STDMETHODCALLTYPE ConvertNumber(BSTR number, BSTR* converted) = 0;
  STANDIN_FILLER(Reserved6)
  virtual HRESULT STDMETHODCALLTYPE ShowActions(BSTR references, LONG a, LONG b) = 0;
  STANDIN_FILLER(Reserved8)
  virtual HRESULT STDMETHODCALLTYPE ShowCallInfo() = 0;
  STANDIN_FILLER(Reserved10)
  STANDIN_FILLER(Reserved11)
  STANDIN_FILLER(Reserved12)
  virtual HRESULT STDMETHODCALLTYPE IsNumber(BSTR text, VARIANT_BOOL* number) = 0;
};

struct DualRemote : IDispatch {
  virtual HRESULT STDMETHODCALLTYPE DirectDial(BSTR number, VARIANT_BOOL ask) = 0;
};

#undef STANDIN_FILLER

}  // namespace standin

__CRT_UUID_DECL(standin::DualApplication, 0x4C08FE4F, 0x119F, 0x42F1, 0x94, 0xCB, 0x72, 0xCF, 0xCC,
                0xCE, 0x5A, 0xE4)
__CRT_UUID_DECL(standin::DualPhoneCommand, 0xBFB449E4, 0x1B9B, 0x4BC4, 0xAA, 0xED, 0x33, 0x2A, 0x6B,
                0x0D, 0x87, 0xC7)
__CRT_UUID_DECL(standin::DualAuxiliaryService, 0xC9B15C9E, 0x1EDF, 0x4951, 0x87, 0x6E, 0xE2, 0x16,
                0x39, 0x2B, 0xB0, 0xD6)
__CRT_UUID_DECL(standin::DualRemote, 0x347AB345, 0x4079, 0x4099, 0x96, 0x89, 0x35, 0x82, 0xD0, 0x04,
                0xA8, 0x0B)
