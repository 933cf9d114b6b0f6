#pragma once

#include <memory>

#include "platform/automation.h"
#include "windows/com/ComBase.h"

namespace windows {

/// Receives one event interface of a COM object for an EventSink. After its subscription's end it
/// hears nothing more, even when the source keeps it. No event fails towards its source, whatever
/// that passes: what can't be converted is an omitted argument, and events that nobody handles are
/// not looked at.
class EventSinkAdapter : public ComBase<IDispatch> {
 public:
  /// Subscribes until the connection closes, which may happen inside a delivery; raises an error
  /// when the object is no source of these events.
  static automation::Connection connect(IDispatch* source, const automation::EventInterface& events,
                                        std::shared_ptr<automation::EventSink> sink);

  EventSinkAdapter(const IID& iid, std::span<const automation::Event> handled,
                   std::shared_ptr<automation::EventSink> sink)
      : iid_(iid), handled_(handled), sink_(std::move(sink)) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** result) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** info) override;
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* params, VARIANT*,
                                   EXCEPINFO*, UINT*) override;

 private:
  bool handles(DISPID id) const;

  const IID iid_;
  const std::span<const automation::Event> handled_;
  std::shared_ptr<automation::EventSink> sink_;
};

/// The id that a text in registry form gives; raises error 5 for any other text.
IID iidOf(std::u16string_view text);

}  // namespace windows
