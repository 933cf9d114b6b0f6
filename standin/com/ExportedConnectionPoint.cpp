#include "standin/com/ExportedConnectionPoint.h"

#include <optional>
#include <vector>

#include "windows/com/Arguments.h"
#include "windows/com/EventSinkAdapter.h"
#include "windows/com/errors.h"

namespace standin {

using windows::Arguments;
using windows::errorFrom;
using windows::guarded;
using windows::guardedQuietly;
using windows::iidOf;
using windows::Variant;

namespace {

/// The Booleans among the arguments of one call, which go out by reference. To be made after the
/// arguments, whose places it uses.
class Flags {
 public:
  explicit Flags(const DISPPARAMS& params) : values_(params.cArgs) {
    for (UINT i = 0; i < params.cArgs; ++i) {
      VARIANT& argument = params.rgvarg[i];
      if (argument.vt != VT_BOOL) continue;
      values_[i] = argument.boolVal;
      argument.vt = VT_BOOL | VT_BYREF;
      argument.pboolVal = &*values_[i];
    }
  }
  /// As the callee left them, in the order of the declaration.
  void copyTo(std::span<automation::Value> args) const {
    for (std::size_t i = 0; i < args.size(); ++i) {
      if (const auto& flag = values_[args.size() - 1 - i]) args[i] = *flag != VARIANT_FALSE;
    }
  }

 private:
  std::vector<std::optional<VARIANT_BOOL>> values_;
};

}  // namespace

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

ComPtr<DispatchExport> ExportedConnectionPoint::source() const {
  const auto living = source_.lock();
  return living ? ComPtr(*living) : nullptr;
}

HRESULT ExportedConnectionPoint::GetConnectionPointContainer(
    IConnectionPointContainer** container) {
  if (!container) return E_POINTER;
  *container = ComPtr<IConnectionPointContainer>(source().get()).detach();
  return *container ? S_OK : E_FAIL;
}

HRESULT ExportedConnectionPoint::Advise(IUnknown* sink, DWORD* cookie) {
  if (!sink || !cookie) return E_POINTER;
  return guarded([&] {
    const auto living = source();
    if (!living) return E_FAIL;
    *cookie = living->subscribe(events_, sink);
    return S_OK;
  });
}

HRESULT ExportedConnectionPoint::Unadvise(DWORD cookie) {
  return guarded([&] {
    const auto living = source();
    return living && living->unsubscribe(cookie) ? S_OK : CONNECT_E_NOCONNECTION;
  });
}

HRESULT ExportedConnectionPoint::EnumConnections(IEnumConnections** connections) {
  if (connections) *connections = nullptr;
  return E_NOTIMPL;
}

void OutgoingEvents::onEvent(std::int32_t id, std::span<automation::Value> args) noexcept {
  const auto sink = sink_;
  guardedQuietly([&] {
    Arguments arguments(args);
    DISPPARAMS params = arguments.forCall();
    const Flags flags(params);
    Variant result;
    EXCEPINFO exception{};
    const HRESULT status = sink->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &params,
                                        result.receive(), &exception, nullptr);
    // Raises, which frees the texts.
    if (FAILED(status)) throw errorFrom(status, exception);
    flags.copyTo(args);
  });
}

}  // namespace standin
