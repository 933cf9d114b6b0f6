#pragma once

#include <utility>

#include "windows/com/api.h"

namespace windows {

/// Owns what a VARIANT holds.
class Variant {
 public:
  Variant() noexcept { VariantInit(&value_); }
  Variant(Variant&& other) noexcept : value_(other.detach()) {}
  Variant& operator=(Variant other) noexcept {
    std::swap(value_, other.value_);
    return *this;
  }
  ~Variant() { VariantClear(&value_); }

  /// Takes over what the caller owns.
  static Variant attach(const VARIANT& value) noexcept {
    Variant owner;
    owner.value_ = value;
    return owner;
  }
  VARIANT detach() noexcept {
    VARIANT empty;
    VariantInit(&empty);
    return std::exchange(value_, empty);
  }

  const VARIANT& get() const noexcept { return value_; }
  VARIANT& get() noexcept { return value_; }
  /// For functions that hand out a VARIANT; clears the old one.
  VARIANT* receive() noexcept {
    VariantClear(&value_);
    return &value_;
  }

 private:
  VARIANT value_;
};

}  // namespace windows
