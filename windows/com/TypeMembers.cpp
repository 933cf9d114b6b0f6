#include "windows/com/TypeMembers.h"

#include <cstring>
#include <memory>

namespace windows {
namespace {

struct ByBytes {
  bool operator()(const GUID& a, const GUID& b) const {
    return std::memcmp(&a, &b, sizeof(GUID)) < 0;
  }
};

using Types = std::map<GUID, std::unique_ptr<TypeMembers>, ByBytes>;

Types& known() {
  static Types types;
  return types;
}

/// The interface behind a dispatch interface: only that has places. Nothing for one that is served
/// through IDispatch alone.
ComPtr<ITypeInfo> virtualTableOf(const ComPtr<ITypeInfo>& info) {
  const TypeAttributes attributes(info.get());
  if (!attributes) return {};
  if (attributes->typekind == TKIND_INTERFACE) return info;
  HREFTYPE reference = 0;
  ComPtr<ITypeInfo> table;
  if ((attributes->wTypeFlags & TYPEFLAG_FDUAL) == 0 ||
      FAILED(info->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference)) ||
      FAILED(info->GetRefTypeInfo(reference, table.receive()))) {
    return {};
  }
  return table;
}

/// The interface that this one extends, or nothing.
ComPtr<ITypeInfo> baseOf(const ComPtr<ITypeInfo>& info) {
  HREFTYPE reference = 0;
  ComPtr<ITypeInfo> base;
  if (FAILED(info->GetRefTypeOfImplType(0, &reference)) ||
      FAILED(info->GetRefTypeInfo(reference, base.receive()))) {
    return {};
  }
  return base;
}

}  // namespace

TypeMembers* TypeMembers::of(IDispatch* object) {
  constexpr LCID English = 1033;
  ComPtr<ITypeInfo> info;
  if (FAILED(object->GetTypeInfo(0, English, info.receive())) || !info) return nullptr;
  GUID id;
  {
    const TypeAttributes attributes(info.get());
    if (!attributes || IsEqualGUID(attributes->guid, GUID_NULL)) return nullptr;
    id = attributes->guid;
  }
  auto& types = known();
  const auto found = types.find(id);
  if (found != types.end()) return found->second.get();
  auto members = std::make_unique<TypeMembers>();
  // What breaks off in the middle is not kept: the next object may tell it all.
  if (!members->read(virtualTableOf(info))) return nullptr;
  return types.emplace(id, std::move(members)).first->second.get();
}

bool TypeMembers::read(ComPtr<ITypeInfo> info) {
  while (info) {
    UINT functions = 0;
    {
      const TypeAttributes attributes(info.get());
      if (!attributes) return false;
      if (IsEqualGUID(attributes->guid, IID_IDispatch) ||
          IsEqualGUID(attributes->guid, IID_IUnknown)) {
        break;
      }
      functions = attributes->cFuncs;
    }
    for (UINT index = 0; index < functions; ++index) {
      if (!readFunction(info.get(), index)) return false;
    }
    info = baseOf(info);
  }
  return true;
}

bool TypeMembers::readFunction(ITypeInfo* info, UINT index) {
  /// IDispatch's own members, those of IUnknown included.
  constexpr int OwnOfDispatch = 7;
  FUNCDESC* function = nullptr;
  if (FAILED(info->GetFuncDesc(index, &function)) || !function) return false;
  const int place = function->oVft / static_cast<int>(sizeof(void*)) - OwnOfDispatch + 1;
  // A dual interface may list the members that it has from IDispatch.
  if (place > 0) places_.emplace(place, function->memid);
  info->ReleaseFuncDesc(function);
  return true;
}

std::optional<DISPID> TypeMembers::at(int position) const {
  const auto found = places_.find(position);
  return found == places_.end() ? std::nullopt : std::optional<DISPID>(found->second);
}

std::optional<DISPID> TypeMembers::named(std::u16string_view name) const {
  const auto found = names_.find(name);
  return found == names_.end() ? std::nullopt : std::optional<DISPID>(found->second);
}

void TypeMembers::remember(std::u16string_view name, DISPID id) {
  names_.emplace(name, id);
}

}  // namespace windows
