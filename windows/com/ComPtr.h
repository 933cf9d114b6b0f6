#pragma once

#include <utility>

#include "windows/com/api.h"

namespace windows {

/// Owns one reference of a COM object.
template <class Interface>
class ComPtr {
 public:
  ComPtr() = default;
  ComPtr(std::nullptr_t) {}
  /// Adds a reference.
  explicit ComPtr(Interface* pointer) : pointer_(pointer) {
    if (pointer_) pointer_->AddRef();
  }
  ComPtr(const ComPtr& other) : ComPtr(other.pointer_) {}
  ComPtr(ComPtr&& other) noexcept : pointer_(std::exchange(other.pointer_, nullptr)) {}
  ComPtr& operator=(ComPtr other) noexcept {
    std::swap(pointer_, other.pointer_);
    return *this;
  }
  ~ComPtr() { reset(); }

  /// Takes over a reference that the caller owns.
  static ComPtr attach(Interface* pointer) {
    ComPtr owner;
    owner.pointer_ = pointer;
    return owner;
  }
  Interface* detach() noexcept { return std::exchange(pointer_, nullptr); }
  void reset() noexcept {
    // A release may come back to the owner: it must find nothing.
    if (auto* pointer = std::exchange(pointer_, nullptr)) pointer->Release();
  }

  Interface* get() const noexcept { return pointer_; }
  Interface* operator->() const noexcept { return pointer_; }
  explicit operator bool() const noexcept { return pointer_ != nullptr; }

  /// For functions that hand out a reference; drops the old one.
  Interface** receive() noexcept {
    reset();
    return &pointer_;
  }
  void** receiveVoid() noexcept { return reinterpret_cast<void**>(receive()); }

  /// The same object's other interface, or nothing.
  template <class Other>
  ComPtr<Other> as(REFIID iid = __uuidof(Other)) const {
    ComPtr<Other> other;
    if (pointer_ && FAILED(pointer_->QueryInterface(iid, other.receiveVoid()))) other.detach();
    return other;
  }

 private:
  Interface* pointer_ = nullptr;
};

}  // namespace windows
