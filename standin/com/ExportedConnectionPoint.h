#pragma once

#include "standin/com/DispatchExport.h"

namespace standin {

/// One event interface of an exported object, which it does not keep alive: whoever wants events
/// holds their source.
class ExportedConnectionPoint : public ComBase<IConnectionPoint> {
 public:
  ExportedConnectionPoint(std::weak_ptr<DispatchExport*> source,
                          const automation::EventInterface& events)
      : source_(std::move(source)), events_(events) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** result) override;
  HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* iid) override;
  HRESULT STDMETHODCALLTYPE
  GetConnectionPointContainer(IConnectionPointContainer** container) override;
  HRESULT STDMETHODCALLTYPE Advise(IUnknown* sink, DWORD* cookie) override;
  HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override;
  HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections** connections) override;

 private:
  /// Nothing when it is gone.
  ComPtr<DispatchExport> source() const;

  const std::weak_ptr<DispatchExport*> source_;
  const automation::EventInterface& events_;
};

/// Delivers events to a sink behind COM. Booleans go by reference and come back; a sink that fails
/// or is gone changes nothing.
class OutgoingEvents : public automation::EventSink {
 public:
  explicit OutgoingEvents(ComPtr<IDispatch> sink) : sink_(std::move(sink)) {}
  void onEvent(std::int32_t id, std::span<automation::Value> args) noexcept override;

 private:
  const ComPtr<IDispatch> sink_;
};

}  // namespace standin
