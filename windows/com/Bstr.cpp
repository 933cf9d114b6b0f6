#include "windows/com/Bstr.h"

#include <new>

namespace windows {

Bstr::Bstr(std::u16string_view text)
    : Owner(Owner::attach(SysAllocStringLen(reinterpret_cast<const wchar_t*>(text.data()),
                                            static_cast<UINT>(text.size())))) {
  if (!get()) throw std::bad_alloc();
}

}  // namespace windows
