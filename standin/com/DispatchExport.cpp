#include "standin/com/DispatchExport.h"

#include "standin/com/ExportedConnectionPoint.h"
#include "standin/com/ExportedNames.h"
#include "standin/com/errors.h"
#include "windows/com/Arguments.h"
#include "windows/com/Bstr.h"
#include "windows/com/EventSinkAdapter.h"
#include "windows/com/Lock.h"
#include "windows/com/errors.h"
#include "windows/com/values.h"

namespace standin {

using windows::Bstr;
using windows::check;
using windows::errorFrom;
using windows::guarded;
using windows::iidOf;
using windows::Lock;
using windows::Locked;
using windows::make;
using windows::utf16;
using windows::valueOf;
using windows::variantOf;

namespace {

using automation::Access;
using automation::Object;
using automation::Value;

/// The exports that are held outside.
struct Exports {
  Lock lock;
  std::map<const void*, DispatchExport*> byIdentity;
  std::map<IDispatch*, DispatchExport*> byInterface;
};

Exports& exports() {
  static Exports all;
  return all;
}

Access accessOf(WORD flags) {
  if ((flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0) return Access::Put;
  return (flags & DISPATCH_METHOD) != 0 ? Access::Call : Access::Get;
}

/// The arguments of a call that came in, in the order of the declaration. Arguments that were named
/// stand at their places; a property's new value comes last.
std::vector<Value> valuesOf(const DISPPARAMS& params) {
  std::vector<Value> values;
  values.reserve(params.cArgs);
  for (UINT i = params.cArgs; i-- > params.cNamedArgs;) values.push_back(valueOf(params.rgvarg[i]));
  const VARIANT* newValue = nullptr;
  for (UINT i = 0; i < params.cNamedArgs; ++i) {
    const DISPID id = params.rgdispidNamedArgs[i];
    if (id == DISPID_PROPERTYPUT) {
      newValue = &params.rgvarg[i];
      continue;
    }
    // No member here has nearly as many parameters.
    constexpr DISPID MostParameters = 64;
    if (id < 0 || id >= MostParameters) throw errorFrom(DISP_E_PARAMNOTFOUND);
    const auto place = static_cast<std::size_t>(id);
    if (place >= values.size()) values.resize(place + 1, automation::Missing{});
    values[place] = valueOf(params.rgvarg[i]);
  }
  if (newValue) values.push_back(valueOf(*newValue));
  return values;
}

HRESULT invokeObject(const Object& object, Access access, const std::u16string& name,
                     DISPPARAMS& params, VARIANT* result) {
  const auto values = valuesOf(params);
  const auto value = object.invoke(access, automation::Member(name), values);
  if (result && access != Access::Put) *result = variantOf(value).detach();
  return S_OK;
}

}  // namespace

void DispatchExport::offerOwnObjects() noexcept {
  windows::setOwnObjects({.find = find, .offer = of});
}

ComPtr<IDispatch> DispatchExport::of(const Object& object) {
  const void* identity = object.dispatch()->identity();
  {
    const Locked locked(exports().lock);
    const auto found = exports().byIdentity.find(identity);
    if (found != exports().byIdentity.end()) return ComPtr<IDispatch>(found->second);
  }
  // Outside the lock: the object is asked for its class.
  auto created = make<DispatchExport>(object);
  const Locked locked(exports().lock);
  exports().byIdentity.emplace(identity, created.get());
  exports().byInterface.emplace(created.get(), created.get());
  return ComPtr<IDispatch>::attach(created.detach());
}

Object DispatchExport::find(IDispatch* dispatch) {
  const Locked locked(exports().lock);
  const auto found = exports().byInterface.find(dispatch);
  return found == exports().byInterface.end() ? Object() : found->second->object_;
}

std::size_t DispatchExport::count() {
  const Locked locked(exports().lock);
  return exports().byInterface.size();
}

DispatchExport::DispatchExport(const Object& object)
    : object_(object), type_(ExportTypes::of(object.typeName())) {}

DispatchExport::~DispatchExport() {
  const Locked locked(exports().lock);
  exports().byInterface.erase(this);
  exports().byIdentity.erase(object_.dispatch()->identity());
}

HRESULT DispatchExport::QueryInterface(REFIID iid, void** result) {
  if (result && IsEqualIID(iid, IID_IConnectionPointContainer) && !type_.events.empty()) {
    *result = static_cast<IConnectionPointContainer*>(this);
    AddRef();
    return S_OK;
  }
  return answer(iid, {&IID_IUnknown, &IID_IDispatch}, result);
}

HRESULT DispatchExport::GetTypeInfoCount(UINT* count) {
  if (!count) return E_POINTER;
  *count = type_.info ? 1 : 0;
  return S_OK;
}

HRESULT DispatchExport::GetTypeInfo(UINT index, LCID, ITypeInfo** info) {
  if (!info) return E_POINTER;
  *info = nullptr;
  if (!type_.info) return E_NOTIMPL;
  if (index != 0) return DISP_E_BADINDEX;
  *info = ComPtr(type_.info).detach();
  return S_OK;
}

HRESULT DispatchExport::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
  if (!names || !ids || count == 0) return E_INVALIDARG;
  return guarded([&]() -> HRESULT {
    if (type_.info && SUCCEEDED(type_.info->GetIDsOfNames(names, count, ids))) return S_OK;
    // Arguments have no names.
    for (UINT i = 1; i < count; ++i) ids[i] = DISPID_UNKNOWN;
    ids[0] = ExportedNames::idOf(utf16(names[0]));
    return count == 1 ? S_OK : DISP_E_UNKNOWNNAME;
  });
}

std::optional<std::u16string> DispatchExport::nameOf(DISPID id) const {
  if (auto name = ExportedNames::nameOf(id)) return name;
  Bstr name;
  UINT count = 0;
  if (!type_.info || FAILED(type_.info->GetNames(id, name.receive(), 1, &count)) || count == 0) {
    return std::nullopt;
  }
  return name.text();
}

HRESULT DispatchExport::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* params,
                               VARIANT* result, EXCEPINFO* exception, UINT*) {
  if (!params) return E_INVALIDARG;
  const ComPtr<DispatchExport> self(this);
  return guarded([&]() -> HRESULT {
    const auto name = nameOf(id);
    if (!name) return DISP_E_MEMBERNOTFOUND;
    try {
      return invokeObject(object_, accessOf(flags), *name, *params, result);
    } catch (const automation::Error& error) {
      return resultOf(error, exception);
    }
  });
}

HRESULT DispatchExport::EnumConnectionPoints(IEnumConnectionPoints** points) {
  if (points) *points = nullptr;
  return E_NOTIMPL;
}

HRESULT DispatchExport::FindConnectionPoint(REFIID iid, IConnectionPoint** point) {
  if (!point) return E_POINTER;
  *point = nullptr;
  return guarded([&]() -> HRESULT {
    for (const auto* events : type_.events) {
      if (!IsEqualIID(iidOf(events->iid), iid)) continue;
      *point = make<ExportedConnectionPoint>(living_, *events).detach();
      return S_OK;
    }
    return CONNECT_E_NOCONNECTION;
  });
}

DWORD DispatchExport::subscribe(const automation::EventInterface& events, IUnknown* sink) {
  const IID iid = iidOf(events.iid);
  ComPtr<IDispatch> receiver;
  // A sink may answer its events' id or only the general one.
  if (FAILED(sink->QueryInterface(iid, receiver.receiveVoid()))) {
    receiver.detach();
    check(sink->QueryInterface(IID_IDispatch, receiver.receiveVoid()));
  }
  auto connection = object_.connect(events, std::make_shared<OutgoingEvents>(std::move(receiver)));
  subscriptions_.emplace(++lastCookie_, std::move(connection));
  return lastCookie_;
}

bool DispatchExport::unsubscribe(DWORD cookie) {
  // Ends after it is out of the list: that may release this object.
  return static_cast<bool>(subscriptions_.extract(cookie));
}

}  // namespace standin
