#include "standin/com/namedTypeInfo.h"

#include <string>

#include "windows/com/errors.h"

namespace standin {

using windows::check;
using windows::ComPtr;

ComPtr<ITypeInfo> namedTypeInfo(std::u16string_view name) {
  std::u16string text(name);
  auto* pointer = reinterpret_cast<wchar_t*>(text.data());
  ComPtr<ICreateTypeLib2> library;
  // A file is written when the library is saved, which it never is.
  check(CreateTypeLib2(SYS_WIN32, L"unsaved.tlb", library.receive()));
  ComPtr<ICreateTypeInfo> creation;
  check(library->CreateTypeInfo(pointer, TKIND_DISPATCH, creation.receive()));
  ComPtr<ITypeInfo> info;
  check(creation->QueryInterface(IID_ITypeInfo, info.receiveVoid()));
  return info;
}

}  // namespace standin
