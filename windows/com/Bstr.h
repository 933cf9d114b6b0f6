#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "windows/com/Owner.h"
#include "windows/com/text.h"

namespace windows {

struct FreeBstr {
  void operator()(BSTR text) const noexcept { SysFreeString(text); }
};

/// Owns a BSTR. A null one is the empty text.
class Bstr : public Owner<BSTR, FreeBstr> {
 public:
  Bstr() = default;
  /// Raises bad_alloc.
  explicit Bstr(std::u16string_view text);
  static Bstr attach(BSTR text) noexcept { return Bstr(Owner::attach(text)); }

  /// All of it, also behind a NUL.
  std::u16string_view view() const { return utf16(get(), SysStringLen(get())); }
  std::u16string text() const { return std::u16string(view()); }

 private:
  explicit Bstr(Owner owner) : Owner(std::move(owner)) {}
};

}  // namespace windows
