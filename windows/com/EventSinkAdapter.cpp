#include "windows/com/EventSinkAdapter.h"

#include <algorithm>

#include "windows/com/Arguments.h"
#include "windows/com/EntryHold.h"
#include "windows/com/errors.h"
#include "windows/com/text.h"

namespace windows {

automation::Connection EventSinkAdapter::connect(IDispatch* source,
                                                 const automation::EventInterface& events,
                                                 std::shared_ptr<automation::EventSink> sink) {
  const IID iid = iidOf(events.iid);
  ComPtr<IConnectionPoint> point;
  {
    const auto container = ComPtr(source).as<IConnectionPointContainer>();
    if (!container || FAILED(container->FindConnectionPoint(iid, point.receive())) || !point) {
      throw automation::Error(automation::ErrorNumber::AutomationFailed);
    }
  }
  auto adapter = make<EventSinkAdapter>(iid, events.events, std::move(sink));
  DWORD cookie = 0;
  check(point->Advise(adapter.get(), &cookie));
  return automation::Connection([point, adapter, cookie] {
    // First, so that nothing is delivered from inside the call.
    adapter->sink_.reset();
    // A source that is gone has no subscription left.
    point->Unadvise(cookie);
  });
}

HRESULT EventSinkAdapter::QueryInterface(REFIID iid, void** result) {
  return answer(iid, {&IID_IUnknown, &IID_IDispatch, &iid_}, result);
}

HRESULT EventSinkAdapter::GetTypeInfoCount(UINT* count) {
  if (!count) return E_POINTER;
  *count = 0;
  return S_OK;
}

HRESULT EventSinkAdapter::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
  if (info) *info = nullptr;
  return E_NOTIMPL;
}

HRESULT EventSinkAdapter::GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) {
  return E_NOTIMPL;
}

HRESULT EventSinkAdapter::Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* params, VARIANT*,
                                 EXCEPINFO*, UINT*) {
  const EntryHold hold;
  // The delivery may end the subscription and so drop the last reference from outside.
  const ComPtr<EventSinkAdapter> self(this);
  const auto sink = sink_;
  guardedQuietly([&] {
    if (!sink || !handles(id)) return;
    const DISPPARAMS none = {};
    const DISPPARAMS& given = params ? *params : none;
    auto values = readableValuesOf(given);
    sink->onEvent(id, values);
    writeBack(given, values);
  });
  return S_OK;
}

bool EventSinkAdapter::handles(DISPID id) const {
  return std::ranges::find(handled_, id, &automation::Event::id) != handled_.end();
}

IID iidOf(std::u16string_view text) {
  IID iid;
  if (FAILED(IIDFromString(const_cast<LPOLESTR>(wide(std::u16string(text))), &iid))) {
    throw automation::Error(automation::ErrorNumber::InvalidProcedureCall);
  }
  return iid;
}

}  // namespace windows
