#include "windows/server/ConnectObject.h"

#include <type_traits>

#include "windows/com/Arguments.h"
#include "windows/com/Bstr.h"
#include "windows/com/EntryHold.h"
#include "windows/com/errors.h"
#include "windows/com/text.h"
#include "windows/com/values.h"
#include "windows/server/Module.h"

namespace windows {
namespace {

using automation::Object;
using automation::Value;

using Logic = cxol::Connect;
using Args = const DISPPARAMS&;

// An argument is converted when it is used only: a host may fill those that nobody reads with
// anything.

/// A null object for anything else.
Object objectAt(Args args, std::size_t place) {
  const Value value = valueAt(args, place);
  return value.isObject() ? value.toObject() : Object();
}
std::int32_t numberAt(Args args, std::size_t place) {
  return valueAt(args, place).toInt32();
}

struct Method {
  const wchar_t* name;
  DISPID id;        ///< in the add-in's own interface and in IDTExtensibility2
  DISPID ribbonId;  ///< in IRibbonExtensibility
  Value (*body)(Logic& logic, Args args);
};

/// Not a method of the interface.
constexpr DISPID None = DISPID_UNKNOWN;

/// For a method without a result.
template <auto body>
Value plain(Logic& logic, Args args) {
  body(logic, args);
  return {};
}

constexpr Method Methods[] = {
    {L"OnConnection", 1, None, plain<[](Logic& logic, Args args) {
       logic.AddinInstance_OnConnection(objectAt(args, 0), numberAt(args, 1), objectAt(args, 2));
     }>},
    {L"OnDisconnection", 2, None, plain<[](Logic& logic, Args args) {
       logic.AddinInstance_OnDisconnection(numberAt(args, 0));
     }>},
    {L"OnAddInsUpdate", 3, None, plain<[](Logic&, Args) {}>},
    {L"OnStartupComplete", 4, None,
     plain<[](Logic& logic, Args) { logic.AddinInstance_OnStartupComplete(); }>},
    {L"OnBeginShutdown", 5, None,
     plain<[](Logic& logic, Args) { logic.AddinInstance_OnBeginShutdown(); }>},
    {L"GetCustomUI", 0x60030010, 1,
     [](Logic& logic, Args args) -> Value {
       return logic.IRibbonExtensibility_GetCustomUI(valueAt(args, 0).toText());
     }},
    {L"OnLoad", 0x60030000, 0x60030000,
     plain<[](Logic& logic, Args args) { logic.OnLoad(objectAt(args, 0)); }>},
    {L"GetImage", 0x60030001, 0x60030001,
     [](Logic& logic, Args args) -> Value { return logic.GetImage(objectAt(args, 0)); }},
    {L"cmdCommonRibbonBttn", 0x60030002, 0x60030002,
     plain<[](Logic& logic, Args args) { logic.cmdCommonRibbonBttn(objectAt(args, 0)); }>},
};

/// None for an interface that lacks the method.
template <class Interface>
DISPID idIn(const Method& method) {
  return std::is_same_v<Interface, RibbonExtensibility> ? method.ribbonId : method.id;
}

/// The add-in's own interface alone is described.
template <class Interface>
constexpr bool Described = std::is_same_v<Interface, DefaultConnect>;

}  // namespace

template <class Interface>
HRESULT ConnectFace<Interface>::GetTypeInfoCount(UINT* count) {
  if (!count) return E_POINTER;
  *count = Described<Interface> ? 1 : 0;
  return S_OK;
}

template <class Interface>
HRESULT ConnectFace<Interface>::GetTypeInfo(UINT index, LCID, ITypeInfo** info) {
  if (!info) return E_POINTER;
  *info = nullptr;
  if (!Described<Interface>) return E_NOTIMPL;
  if (index != 0) return DISP_E_BADINDEX;
  return guarded([&] {
    *info = Module::typeInfo(IID_DefaultConnect).detach();
    return S_OK;
  });
}

template <class Interface>
HRESULT ConnectFace<Interface>::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                                              DISPID* ids) {
  if (!names || !ids || count == 0) return E_INVALIDARG;
  for (UINT i = 0; i < count; ++i) ids[i] = DISPID_UNKNOWN;
  for (const Method& method : Methods) {
    const DISPID id = idIn<Interface>(method);
    if (id == None || !sameName(utf16(method.name), utf16(names[0]))) continue;
    ids[0] = id;
    // Arguments have no names.
    return count == 1 ? S_OK : DISP_E_UNKNOWNNAME;
  }
  return DISP_E_UNKNOWNNAME;
}

template <class Interface>
HRESULT ConnectFace<Interface>::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* params,
                                       VARIANT* result, EXCEPINFO*, UINT*) {
  if (!params) return E_INVALIDARG;
  if ((flags & DISPATCH_METHOD) == 0 || id == None) return DISP_E_MEMBERNOTFOUND;
  for (const Method& method : Methods) {
    if (idIn<Interface>(method) != id) continue;
    // No wrong argument of the host's own fails, either.
    const auto body = method.body;
    return static_cast<ConnectObject*>(this)->carryOut([&](Logic& logic) {
      const Value value = body(logic, *params);
      if (result) *result = variantOf(value).detach();
    });
  }
  return DISP_E_MEMBERNOTFOUND;
}

ConnectObject::ConnectObject() : process_(AddinProcess::acquire()), connect_(Logic::create()) {}

HRESULT ConnectObject::QueryInterface(REFIID iid, void** result) {
  if (!result) return E_POINTER;
  if (IsEqualIID(iid, IID_Extensibility)) {
    *result = static_cast<Extensibility*>(this);
  } else if (IsEqualIID(iid, IID_RibbonExtensibility)) {
    *result = static_cast<RibbonExtensibility*>(this);
  } else {
    return answer(iid, {&IID_IUnknown, &IID_IDispatch, &IID_DefaultConnect}, result);
  }
  AddRef();
  return S_OK;
}

template <class Body>
HRESULT ConnectObject::carryOut(Body body) {
  const EntryHold hold;
  // The host may drop its last reference in the middle of the call. The object goes before the
  // module's state does.
  const ComPtr<ConnectObject> self(this);
  guardedQuietly([&] { body(*connect_); });
  return S_OK;
}

HRESULT ConnectObject::OnConnection(IDispatch* application, LONG connectMode, IDispatch* addInInst,
                                    SAFEARRAY**) {
  return carryOut([&](Logic& logic) {
    logic.AddinInstance_OnConnection(objectOf(application), connectMode, objectOf(addInInst));
  });
}

HRESULT ConnectObject::OnDisconnection(LONG removeMode, SAFEARRAY**) {
  return carryOut([&](Logic& logic) { logic.AddinInstance_OnDisconnection(removeMode); });
}

HRESULT ConnectObject::OnAddInsUpdate(SAFEARRAY**) {
  return S_OK;
}

HRESULT ConnectObject::OnStartupComplete(SAFEARRAY**) {
  return carryOut([](Logic& logic) { logic.AddinInstance_OnStartupComplete(); });
}

HRESULT ConnectObject::OnBeginShutdown(SAFEARRAY**) {
  return carryOut([](Logic& logic) { logic.AddinInstance_OnBeginShutdown(); });
}

HRESULT ConnectObject::GetCustomUI(BSTR ribbonId, BSTR* markup) {
  if (!markup) return E_POINTER;
  *markup = nullptr;
  return carryOut([&](Logic& logic) {
    const auto id = utf16(ribbonId, SysStringLen(ribbonId));
    *markup = Bstr(logic.IRibbonExtensibility_GetCustomUI(id)).detach();
  });
}

HRESULT ConnectObject::OnLoad(IDispatch* ribbon) {
  return carryOut([&](Logic& logic) { logic.OnLoad(objectOf(ribbon)); });
}

HRESULT ConnectObject::GetImage(IDispatch* control, IDispatch** picture) {
  if (!picture) return E_POINTER;
  *picture = nullptr;
  return carryOut(
      [&](Logic& logic) { *picture = dispatchOf(logic.GetImage(objectOf(control))).detach(); });
}

HRESULT ConnectObject::cmdCommonRibbonBttn(IDispatch* control) {
  return carryOut([&](Logic& logic) { logic.cmdCommonRibbonBttn(objectOf(control)); });
}

}  // namespace windows
