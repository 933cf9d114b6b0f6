#include "windows/com/Bstr.h"

#include <new>

namespace windows {

Bstr::Bstr(std::u16string_view text)
    : text_(SysAllocStringLen(reinterpret_cast<const wchar_t*>(text.data()),
                              static_cast<UINT>(text.size()))) {
  if (!text_) throw std::bad_alloc();
}

}  // namespace windows
