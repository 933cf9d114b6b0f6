#include "windows/server/connectMethods.h"

#include "windows/com/Arguments.h"
#include "windows/com/errors.h"
#include "windows/com/text.h"
#include "windows/com/values.h"

namespace windows {
namespace {

using automation::Object;
using automation::Value;

/// The arguments of one call. An argument is converted when it is used only: a host may fill those
/// that nobody reads with anything.
class CallArguments {
 public:
  explicit CallArguments(const DISPPARAMS& params) : params_(params) {}

  /// A null object for anything else.
  Object object(std::size_t index) const {
    const Value value = valueAt(params_, index);
    return value.isObject() ? value.toObject() : Object();
  }
  std::int32_t number(std::size_t index) const { return valueAt(params_, index).toInt32(); }
  std::u16string text(std::size_t index) const { return valueAt(params_, index).toText(); }

 private:
  const DISPPARAMS& params_;
};

struct Method {
  const wchar_t* name;
  DISPID id;        ///< in the add-in's own interface and in IDTExtensibility2
  DISPID ribbonId;  ///< in IRibbonExtensibility
  Value (*carryOut)(cxol::Connect& connect, const CallArguments& args);
};

/// Not a method of the interface.
constexpr DISPID None = DISPID_UNKNOWN;

constexpr Method Methods[] = {
    {L"OnConnection", 1, None,
     [](cxol::Connect& connect, const CallArguments& args) -> Value {
       connect.AddinInstance_OnConnection(args.object(0), args.number(1), args.object(2));
       return {};
     }},
    {L"OnDisconnection", 2, None,
     [](cxol::Connect& connect, const CallArguments& args) -> Value {
       connect.AddinInstance_OnDisconnection(args.number(0));
       return {};
     }},
    {L"OnAddInsUpdate", 3, None, [](cxol::Connect&, const CallArguments&) -> Value { return {}; }},
    {L"OnStartupComplete", 4, None,
     [](cxol::Connect& connect, const CallArguments&) -> Value {
       connect.AddinInstance_OnStartupComplete();
       return {};
     }},
    {L"OnBeginShutdown", 5, None,
     [](cxol::Connect& connect, const CallArguments&) -> Value {
       connect.AddinInstance_OnBeginShutdown();
       return {};
     }},
    {L"GetCustomUI", 0x60030010, 1,
     [](cxol::Connect& connect, const CallArguments& args) -> Value {
       return connect.IRibbonExtensibility_GetCustomUI(args.text(0));
     }},
    {L"OnLoad", 0x60030000, 0x60030000,
     [](cxol::Connect& connect, const CallArguments& args) -> Value {
       connect.OnLoad(args.object(0));
       return {};
     }},
    {L"GetImage", 0x60030001, 0x60030001,
     [](cxol::Connect& connect, const CallArguments& args) -> Value {
       return connect.GetImage(args.object(0));
     }},
    {L"cmdCommonRibbonBttn", 0x60030002, 0x60030002,
     [](cxol::Connect& connect, const CallArguments& args) -> Value {
       connect.cmdCommonRibbonBttn(args.object(0));
       return {};
     }},
};

DISPID idIn(ConnectFamily family, const Method& method) {
  return family == ConnectFamily::Ribbon ? method.ribbonId : method.id;
}

}  // namespace

HRESULT connectIdOf(ConnectFamily family, LPOLESTR* names, UINT count, DISPID* ids) noexcept {
  if (!names || !ids || count == 0) return E_INVALIDARG;
  for (UINT i = 0; i < count; ++i) ids[i] = DISPID_UNKNOWN;
  for (const Method& method : Methods) {
    const DISPID id = idIn(family, method);
    if (id == None || !sameName(utf16(method.name), utf16(names[0]))) continue;
    ids[0] = id;
    // Arguments have no names.
    return count == 1 ? S_OK : DISP_E_UNKNOWNNAME;
  }
  return DISP_E_UNKNOWNNAME;
}

HRESULT connectInvoke(ConnectFamily family, cxol::Connect& connect, DISPID id, WORD flags,
                      const DISPPARAMS* params, VARIANT* result) noexcept {
  if (!params) return E_INVALIDARG;
  if ((flags & DISPATCH_METHOD) == 0 || id == None) return DISP_E_MEMBERNOTFOUND;
  return guarded([&]() -> HRESULT {
    for (const Method& method : Methods) {
      if (idIn(family, method) != id) continue;
      // The host switches an add-in off that fails it, be it by a wrong argument of the host's own.
      guardedQuietly([&] {
        const Value value = method.carryOut(connect, CallArguments(*params));
        if (result) *result = variantOf(value).detach();
      });
      return S_OK;
    }
    return DISP_E_MEMBERNOTFOUND;
  });
}

}  // namespace windows
