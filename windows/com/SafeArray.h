#pragma once

#include <utility>

#include "windows/com/api.h"

namespace windows {

/// Owns a SAFEARRAY, or nothing.
class SafeArray {
 public:
  SafeArray() = default;
  SafeArray(SafeArray&& other) noexcept : array_(std::exchange(other.array_, nullptr)) {}
  SafeArray& operator=(SafeArray other) noexcept {
    std::swap(array_, other.array_);
    return *this;
  }
  ~SafeArray() {
    if (array_) SafeArrayDestroy(array_);
  }

  static SafeArray attach(SAFEARRAY* array) noexcept {
    SafeArray owner;
    owner.array_ = array;
    return owner;
  }
  SAFEARRAY* get() const noexcept { return array_; }
  SAFEARRAY* detach() noexcept { return std::exchange(array_, nullptr); }
  /// For functions that hand out an array; destroys the old one.
  SAFEARRAY** receive() noexcept {
    *this = SafeArray();
    return &array_;
  }

 private:
  SAFEARRAY* array_ = nullptr;
};

}  // namespace windows
