#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>

#include "platform/automation.h"
#include "standin/com/ExportType.h"
#include "windows/com/ComBase.h"

namespace standin {

using windows::ComBase;

/// Offers a late-bound object of this program to COM: members by the ids of its type information or
/// by name, events through connection points. One and the same object has one export at a time, so
/// that COM's identity is the object's.
class DispatchExport : public ComBase<IDispatch>, public IConnectionPointContainer {
 public:
  /// Lets all of this program's objects go out as exports, and come back as what they are. To be
  /// called before the first one does.
  static void offerOwnObjects() noexcept;
  /// The export of the object, which must not be null.
  static ComPtr<IDispatch> of(const automation::Object& object);
  /// The object behind an export of this program; a null handle for any other interface.
  static automation::Object find(IDispatch* dispatch);
  /// Exports that somebody still holds.
  static std::size_t count();

  /// To be made by `of` only.
  explicit DispatchExport(const automation::Object& object);

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** result) override;
  ULONG STDMETHODCALLTYPE AddRef() override { return ComBase::AddRef(); }
  ULONG STDMETHODCALLTYPE Release() override { return ComBase::Release(); }

  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID, ITypeInfo** info) override;
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                                          DISPID* ids) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* params,
                                   VARIANT* result, EXCEPINFO* exception, UINT*) override;

  HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** points) override;
  HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID iid, IConnectionPoint** point) override;

  /// For its connection points.
  DWORD subscribe(const automation::EventInterface& events, IUnknown* sink);
  bool unsubscribe(DWORD cookie);

 private:
  ~DispatchExport() override;
  std::optional<std::u16string> nameOf(DISPID id) const;

  const automation::Object object_;
  const ExportType type_;
  DWORD lastCookie_ = 0;
  // Ends before the object goes.
  std::map<DWORD, automation::Connection> subscriptions_;
  // Last: the connection points find nothing from the end's beginning on.
  const std::shared_ptr<DispatchExport*> living_ = std::make_shared<DispatchExport*>(this);
};

}  // namespace standin
