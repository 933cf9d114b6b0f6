// Prints what a type library tells, a line for each interface and class: whether an interface is
// dual, and its members in the order of their places. Knows nothing of the add-in.
#include <windows.h>

#include <oleauto.h>

#include <cstdio>

namespace {

struct Text {
  BSTR value = nullptr;
  ~Text() { SysFreeString(value); }
};

void printMember(ITypeInfo* info, const FUNCDESC& function) {
  constexpr UINT Most = 20;
  BSTR names[Most] = {};
  UINT count = 0;
  info->GetNames(function.memid, names, Most, &count);
  const char* kind = function.invkind == INVOKE_PROPERTYGET      ? "get "
                     : function.invkind == INVOKE_PROPERTYPUT    ? "put "
                     : function.invkind == INVOKE_PROPERTYPUTREF ? "set "
                                                                 : "";
  std::printf(" %s%ls(", kind, count ? names[0] : L"?");
  for (UINT i = 1; i < count; ++i) std::printf("%s%ls", i > 1 ? ", " : "", names[i]);
  std::printf(")");
  for (UINT i = 0; i < count; ++i) SysFreeString(names[i]);
}

/// The members of an interface itself, in the order of their places.
void printMembers(ITypeInfo* info, const TYPEATTR& attributes) {
  for (int place = 0; place < 400; ++place) {
    for (UINT i = 0; i < attributes.cFuncs; ++i) {
      FUNCDESC* function = nullptr;
      if (FAILED(info->GetFuncDesc(i, &function))) continue;
      if (function->oVft == place * static_cast<int>(sizeof(void*))) printMember(info, *function);
      info->ReleaseFuncDesc(function);
    }
  }
}

void printClass(ITypeInfo* info, const TYPEATTR& attributes) {
  for (UINT i = 0; i < attributes.cImplTypes; ++i) {
    HREFTYPE reference = 0;
    ITypeInfo* implemented = nullptr;
    Text name;
    if (FAILED(info->GetRefTypeOfImplType(i, &reference)) ||
        FAILED(info->GetRefTypeInfo(reference, &implemented)))
      continue;
    implemented->GetDocumentation(MEMBERID_NIL, &name.value, nullptr, nullptr, nullptr);
    std::printf(" %ls", name.value);
    implemented->Release();
  }
}

void printType(ITypeInfo* info) {
  TYPEATTR* attributes = nullptr;
  Text name;
  if (FAILED(info->GetTypeAttr(&attributes))) return;
  info->GetDocumentation(MEMBERID_NIL, &name.value, nullptr, nullptr, nullptr);
  if (attributes->typekind == TKIND_COCLASS) {
    const bool creatable = (attributes->wTypeFlags & TYPEFLAG_FCANCREATE) != 0;
    std::printf("%s class %ls:", creatable ? "creatable" : "other", name.value);
    printClass(info, *attributes);
    std::printf("\n");
  } else {
    const bool dual = (attributes->wTypeFlags & TYPEFLAG_FDUAL) != 0;
    HREFTYPE reference = 0;
    ITypeInfo* table = nullptr;
    std::printf("%s %ls:", dual ? "dual" : "other", name.value);
    // The other face of a dual interface, which has the places.
    if (dual && SUCCEEDED(info->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference)) &&
        SUCCEEDED(info->GetRefTypeInfo(reference, &table))) {
      TYPEATTR* own = nullptr;
      if (SUCCEEDED(table->GetTypeAttr(&own))) {
        printMembers(table, *own);
        table->ReleaseTypeAttr(own);
      }
      table->Release();
    } else {
      printMembers(info, *attributes);
    }
    std::printf("\n");
  }
  info->ReleaseTypeAttr(attributes);
}

}  // namespace

int main(int argc, char** argv) {
  wchar_t path[MAX_PATH] = {};
  ITypeLib* library = nullptr;
  CoInitialize(nullptr);
  if (argc != 2 || !MultiByteToWideChar(CP_ACP, 0, argv[1], -1, path, MAX_PATH) ||
      FAILED(LoadTypeLibEx(path, REGKIND_NONE, &library))) {
    std::fprintf(stderr, "usage: type-members FILE\n");
    return 2;
  }
  for (UINT i = 0; i < library->GetTypeInfoCount(); ++i) {
    ITypeInfo* info = nullptr;
    if (FAILED(library->GetTypeInfo(i, &info))) continue;
    printType(info);
    info->Release();
  }
  library->Release();
  CoUninitialize();
}
