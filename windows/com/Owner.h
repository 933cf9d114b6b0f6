#pragma once

#include <utility>

#include "windows/com/api.h"

namespace windows {

/// Owns one thing of the system that a handle stands for, or nothing. `Free` gives it back.
template <class Handle, class Free>
class Owner {
 public:
  Owner() = default;
  Owner(Owner&& other) noexcept : handle_(other.detach()) {}
  Owner& operator=(Owner other) noexcept {
    std::swap(handle_, other.handle_);
    return *this;
  }
  ~Owner() {
    if (handle_) Free()(handle_);
  }

  /// Takes over what the caller owns.
  static Owner attach(Handle handle) noexcept {
    Owner owner;
    owner.handle_ = handle;
    return owner;
  }
  Handle get() const noexcept { return handle_; }
  explicit operator bool() const noexcept { return handle_ != Handle(); }
  Handle detach() noexcept { return std::exchange(handle_, Handle()); }
  /// For functions that hand out a handle; gives the old one back.
  Handle* receive() noexcept {
    *this = Owner();
    return &handle_;
  }

 private:
  Handle handle_ = Handle();
};

struct CloseKernelObject {
  void operator()(HANDLE handle) const noexcept { CloseHandle(handle); }
};
/// A file, an event, a thread, a process.
using KernelObject = Owner<HANDLE, CloseKernelObject>;

/// For functions that tell by a handle of its own kind that they have nothing.
inline KernelObject ownFile(HANDLE file) noexcept {
  return KernelObject::attach(file == INVALID_HANDLE_VALUE ? nullptr : file);
}

}  // namespace windows
