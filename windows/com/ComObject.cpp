#include "windows/com/ComObject.h"

#include "windows/com/Arguments.h"
#include "windows/com/Bstr.h"
#include "windows/com/EventSinkAdapter.h"
#include "windows/com/TypeMembers.h"
#include "windows/com/errors.h"
#include "windows/com/text.h"
#include "windows/com/values.h"

namespace windows {
namespace {

using automation::Access;
using automation::Member;
using automation::Value;

constexpr LCID Locale = LOCALE_USER_DEFAULT;

/// One IDispatch::Invoke; raises what it reports.
Value invokeOnce(IDispatch* dispatch, DISPID id, WORD flags, DISPPARAMS params) {
  Variant result;
  EXCEPINFO exception{};
  UINT badArgument = 0;
  const bool put = params.cNamedArgs != 0;
  const HRESULT status =
      dispatch->Invoke(id, IID_NULL, Locale, flags, &params, put ? nullptr : result.receive(),
                       &exception, &badArgument);
  if (FAILED(status)) throw errorFrom(status, exception);
  return put ? Value() : valueOf(result.get());
}

/// Objects are put by reference, all else by value. A server may know objects by value only.
void put(IDispatch* dispatch, DISPID id, std::span<const Value> args) {
  Arguments arguments(args);
  if (args.back().isObject()) {
    try {
      invokeOnce(dispatch, id, DISPATCH_PROPERTYPUTREF, arguments.forPut());
      return;
    } catch (const automation::Error& error) {
      constexpr auto NotThere = static_cast<std::int32_t>(automation::ErrorNumber::MemberNotFound);
      if (error.number() != NotThere) throw;
    }
  }
  invokeOnce(dispatch, id, DISPATCH_PROPERTYPUT, arguments.forPut());
}

}  // namespace

ComObject::ComObject(ComPtr<IDispatch> dispatch)
    : dispatch_(std::move(dispatch)), identity_(dispatch_.as<IUnknown>()) {}

Value ComObject::invoke(Access access, const Member& member, std::span<const Value> args) {
  // The call may come back and drop the last handle.
  const auto held = dispatch_;
  const DISPID id = find(member);
  if (access == Access::Put) {
    put(held.get(), id, args);
    return {};
  }
  // Servers disagree on which of their members are methods: either way of reading is allowed.
  constexpr WORD Read = DISPATCH_METHOD | DISPATCH_PROPERTYGET;
  return invokeOnce(held.get(), id, Read, Arguments(args).forCall());
}

DISPID ComObject::find(const Member& member) {
  if (member.position > 0) {
    if (!type_) type_ = TypeMembers::of(dispatch_.get());
    if (type_) {
      if (const auto id = type_->at(member.position)) return *id;
    }
  }
  return findByName(member.name);
}

DISPID ComObject::findByName(std::u16string_view name) {
  if (type_) {
    if (const auto id = type_->named(name)) return *id;
    const DISPID id = askForName(name);
    type_->remember(name, id);
    return id;
  }
  // An object may have members beyond its type's: what it tells is true of itself only.
  const auto known = names_.find(name);
  if (known != names_.end()) return known->second;
  const DISPID id = askForName(name);
  names_.emplace(name, id);
  return id;
}

DISPID ComObject::askForName(std::u16string_view name) const {
  std::u16string text(name);
  auto* pointer = reinterpret_cast<wchar_t*>(text.data());
  DISPID id = DISPID_UNKNOWN;
  check(dispatch_->GetIDsOfNames(IID_NULL, &pointer, 1, Locale, &id));
  return id;
}

std::u16string ComObject::typeName() {
  constexpr LCID English = 1033;
  ComPtr<ITypeInfo> info;
  if (const auto provider = dispatch_.as<IProvideClassInfo>()) {
    if (FAILED(provider->GetClassInfo(info.receive()))) info.detach();
  }
  if (!info && FAILED(dispatch_->GetTypeInfo(0, English, info.receive()))) info.detach();
  Bstr name;
  if (!info ||
      FAILED(info->GetDocumentation(MEMBERID_NIL, name.receive(), nullptr, nullptr, nullptr)) ||
      name.view().empty()) {
    return u"Object";
  }
  auto text = name.text();
  if (text.starts_with(u'_')) text.erase(0, 1);
  return text;
}

automation::Connection ComObject::connect(const automation::EventInterface& events,
                                          std::shared_ptr<automation::EventSink> sink) {
  return EventSinkAdapter::connect(dispatch_.get(), events, std::move(sink));
}

}  // namespace windows
