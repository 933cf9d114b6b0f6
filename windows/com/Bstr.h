#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "windows/com/text.h"

namespace windows {

/// Owns a BSTR. A null one is the empty text.
class Bstr {
 public:
  Bstr() = default;
  /// Raises bad_alloc.
  explicit Bstr(std::u16string_view text);
  Bstr(Bstr&& other) noexcept : text_(std::exchange(other.text_, nullptr)) {}
  Bstr& operator=(Bstr other) noexcept {
    std::swap(text_, other.text_);
    return *this;
  }
  ~Bstr() { SysFreeString(text_); }

  /// Takes over what the caller owns.
  static Bstr attach(BSTR text) noexcept {
    Bstr owner;
    owner.text_ = text;
    return owner;
  }
  BSTR get() const noexcept { return text_; }
  BSTR detach() noexcept { return std::exchange(text_, nullptr); }
  /// For functions that hand out a BSTR; frees the old one.
  BSTR* receive() noexcept {
    SysFreeString(std::exchange(text_, nullptr));
    return &text_;
  }
  /// All of it, also behind a NUL.
  std::u16string_view view() const { return utf16(text_, SysStringLen(text_)); }
  std::u16string text() const { return std::u16string(view()); }

 private:
  BSTR text_ = nullptr;
};

}  // namespace windows
