#include "windows/com/typeName.h"

#include "windows/com/Bstr.h"
#include "windows/com/ComPtr.h"

namespace windows {

std::u16string typeNameOf(IDispatch* object) {
  constexpr LCID English = 1033;
  ComPtr<ITypeInfo> info;
  if (const auto provider = ComPtr(object).as<IProvideClassInfo>()) {
    if (FAILED(provider->GetClassInfo(info.receive()))) info.detach();
  }
  if (!info && FAILED(object->GetTypeInfo(0, English, info.receive()))) info.detach();
  Bstr name;
  if (!info ||
      FAILED(info->GetDocumentation(MEMBERID_NIL, name.receive(), nullptr, nullptr, nullptr)) ||
      name.view().empty()) {
    return u"Object";
  }
  auto text = name.text();
  if (text.starts_with(u'_')) text.erase(0, 1);
  return text;
}

}  // namespace windows
