#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "windows/com/ComPtr.h"

namespace windows {

/// The attributes of a type, or nothing when it does not tell them.
class TypeAttributes {
 public:
  explicit TypeAttributes(ITypeInfo* info) : info_(info) {
    if (!info || FAILED(info->GetTypeAttr(&attributes_))) attributes_ = nullptr;
  }
  ~TypeAttributes() {
    if (attributes_) info_->ReleaseTypeAttr(attributes_);
  }
  TypeAttributes(const TypeAttributes&) = delete;
  TypeAttributes& operator=(const TypeAttributes&) = delete;

  explicit operator bool() const noexcept { return attributes_ != nullptr; }
  const TYPEATTR* operator->() const noexcept { return attributes_; }

 private:
  ComPtr<ITypeInfo> info_;
  TYPEATTR* attributes_ = nullptr;
};

/// What is known of one interface's members: their places as the type information tells them, and
/// the dispatch ids of the names that were asked for. Learnt once a type, because each question may
/// go to another process.
class TypeMembers {
 public:
  /// The members of the object's type, or null when it offers no type information. Types are known
  /// by their id: an interface never changes. The result lives as long as the module. To be used by
  /// the one thread that uses the objects.
  static TypeMembers* of(IDispatch* object);

  /// The member at this place of the virtual table, counted from 1 after IDispatch's members.
  std::optional<DISPID> at(int position) const;

  std::optional<DISPID> named(std::u16string_view name) const;
  void remember(std::u16string_view name, DISPID id);

 private:
  bool read(ComPtr<ITypeInfo> info);
  bool readFunction(ITypeInfo* info, UINT index);

  std::map<int, DISPID> places_;
  std::map<std::u16string, DISPID, std::less<>> names_;
};

}  // namespace windows
