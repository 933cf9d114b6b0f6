#include "windows/com/ExportedConnectionPoint.h"

#include "windows/com/Arguments.h"
#include "windows/com/EventSinkAdapter.h"
#include "windows/com/errors.h"

namespace windows {

HRESULT ExportedConnectionPoint::QueryInterface(REFIID iid, void** result) {
  return answer(iid, {&IID_IUnknown, &IID_IConnectionPoint}, result);
}

HRESULT ExportedConnectionPoint::GetConnectionInterface(IID* iid) {
  if (!iid) return E_POINTER;
  return guarded([&] {
    *iid = iidOf(events_.iid);
    return S_OK;
  });
}

HRESULT ExportedConnectionPoint::GetConnectionPointContainer(
    IConnectionPointContainer** container) {
  if (!container) return E_POINTER;
  *container = ComPtr<IConnectionPointContainer>(source_.get()).detach();
  return S_OK;
}

HRESULT ExportedConnectionPoint::Advise(IUnknown* sink, DWORD* cookie) {
  if (!sink || !cookie) return E_POINTER;
  return guarded([&] {
    *cookie = source_->subscribe(events_, sink);
    return S_OK;
  });
}

HRESULT ExportedConnectionPoint::Unadvise(DWORD cookie) {
  return guarded([&] { return source_->unsubscribe(cookie) ? S_OK : CONNECT_E_NOCONNECTION; });
}

HRESULT ExportedConnectionPoint::EnumConnections(IEnumConnections** connections) {
  if (connections) *connections = nullptr;
  return E_NOTIMPL;
}

void OutgoingEvents::onEvent(std::int32_t id, std::span<automation::Value> args) noexcept {
  const auto sink = sink_;
  guardedQuietly([&] {
    Arguments arguments(args);
    arguments.passFlagsByReference();
    DISPPARAMS params = arguments.forCall();
    Variant result;
    EXCEPINFO exception{};
    const HRESULT status = sink->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &params,
                                        result.receive(), &exception, nullptr);
    // Raises, which frees the texts.
    if (FAILED(status)) throw errorFrom(status, exception);
    arguments.copyFlagsTo(args);
  });
}

}  // namespace windows
