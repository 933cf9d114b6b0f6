#pragma once

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

}  // namespace windows
