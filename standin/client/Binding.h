#pragma once

#include <array>
#include <span>
#include <string_view>

#include "platform/automation.h"
#include "windows/com/ComPtr.h"
#include "windows/com/errors.h"
#include "windows/com/text.h"
#include "windows/com/values.h"

namespace standin {

/// The program in which the client's objects live.
class ObjectHost {
 public:
  virtual ~ObjectHost() = default;
  /// Comes before every call of a member. May take its time, or end the process.
  virtual void enter(std::u16string_view member) = 0;
  /// The COM object for an object of the client; null for null.
  virtual windows::ComPtr<IDispatch> exported(const automation::Object& object) = 0;
  virtual windows::ComPtr<ITypeInfo> typeOf(const IID& iid) = 0;
  /// Whether objects tell their types.
  virtual bool tellsTypes() const = 0;
};

inline automation::Value argument(LONG number) {
  return static_cast<std::int32_t>(number);
}
inline automation::Value argument(VARIANT_BOOL flag) {
  return flag != VARIANT_FALSE;
}
inline automation::Value argument(BSTR text) {
  return windows::utf16(text, SysStringLen(text));
}
inline automation::Value argument(const VARIANT& value) {
  return windows::valueOf(value);
}

/// One of the client's objects and the interface under which it goes out: what late-bound calls and
/// calls through the virtual table have in common.
class Binding {
 public:
  Binding(ObjectHost& host, automation::Object object, const IID& iid);

  HRESULT typeInfoCount(UINT* count) const;
  HRESULT typeInfo(UINT index, ITypeInfo** info) const;
  HRESULT idsOfNames(LPOLESTR* names, UINT count, DISPID* ids) const;
  HRESULT invoke(DISPID id, WORD flags, DISPPARAMS* params, VARIANT* result,
                 EXCEPINFO* exception) const;

  /// A call through the virtual table, without a result.
  template <class... Args>
  HRESULT tell(std::u16string_view member, const Args&... args) const {
    return windows::guarded([&] {
      const std::array<automation::Value, sizeof...(Args)> values{argument(args)...};
      call(automation::Access::Call, member, values);
      return S_OK;
    });
  }
  /// The same with a result, which `store` puts where it belongs.
  template <class Store, class... Args>
  HRESULT ask(std::u16string_view member, const Store& store, const Args&... args) const {
    return windows::guarded([&] {
      const std::array<automation::Value, sizeof...(Args)> values{argument(args)...};
      store(call(automation::Access::Call, member, values));
      return S_OK;
    });
  }

  ObjectHost& host() const { return host_; }

 private:
  automation::Value call(automation::Access access, std::u16string_view member,
                         std::span<const automation::Value> values) const;

  ObjectHost& host_;
  const automation::Object object_;
  const windows::ComPtr<ITypeInfo> type_;
};

}  // namespace standin
