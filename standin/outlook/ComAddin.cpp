#include "standin/outlook/ComAddin.h"

#include "windows/com/Bstr.h"
#include "windows/com/ComObject.h"
#include "windows/com/SafeArray.h"
#include "windows/com/errors.h"
#include "windows/com/values.h"

namespace standin {
namespace {

using windows::check;
using windows::ComPtr;

/// The array of further values that comes with each event; Outlook's carries nothing.
class NoValues {
 public:
  NoValues() : array_(windows::SafeArray::attach(SafeArrayCreateVector(VT_VARIANT, 1, 0))) {
    pointer_ = array_.get();
  }
  SAFEARRAY** get() { return &pointer_; }

 private:
  windows::SafeArray array_;
  SAFEARRAY* pointer_ = nullptr;
};

}  // namespace

ComAddin::ComAddin(std::u16string_view progId, PictureNamer namePicture)
    : namePicture_(std::move(namePicture)) {
  CLSID id;
  check(CLSIDFromProgID(windows::wide(std::u16string(progId)), &id));
  ComPtr<IUnknown> object;
  check(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, object.receiveVoid()));
  events_ = object.as<windows::Extensibility>(windows::IID_Extensibility);
  if (!events_) check(E_NOINTERFACE);
  ribbon_ = object.as<windows::RibbonExtensibility>(windows::IID_RibbonExtensibility);
}

template <class Call>
void ComAddin::raise(Call&& call) {
  const auto failed = failed_;
  NoValues custom;
  if (FAILED(call(events_.get(), custom.get()))) *failed = true;
}

void ComAddin::onConnection(const automation::Object& application, std::int32_t connectMode,
                            const automation::Object& addInInst) {
  raise([&](windows::Extensibility* events, SAFEARRAY** custom) {
    return events->OnConnection(windows::dispatchOf(application).get(), connectMode,
                                windows::dispatchOf(addInInst).get(), custom);
  });
}

void ComAddin::onStartupComplete() {
  raise([](windows::Extensibility* events, SAFEARRAY** custom) {
    return events->OnStartupComplete(custom);
  });
}

void ComAddin::onBeginShutdown() {
  raise([](windows::Extensibility* events, SAFEARRAY** custom) {
    return events->OnBeginShutdown(custom);
  });
}

void ComAddin::onDisconnection(std::int32_t removeMode) {
  raise([&](windows::Extensibility* events, SAFEARRAY** custom) {
    return events->OnDisconnection(removeMode, custom);
  });
}

std::u16string ComAddin::getCustomUi(std::u16string_view ribbonId) {
  if (!ribbon_) return {};
  windows::Bstr markup;
  check(ribbon_->GetCustomUI(windows::Bstr(ribbonId).get(), markup.receive()));
  return markup.text();
}

automation::Value ComAddin::ribbonCallback(std::u16string_view name,
                                           std::span<const automation::Value> args) {
  if (!ribbon_) throw automation::Error(automation::ErrorNumber::MemberNotFound);
  // Office calls the object that serves the ribbon, whatever else the add-in is.
  windows::ComObject callbacks(ribbon_.as<IDispatch>(IID_IDispatch));
  const auto namePicture = namePicture_;
  const automation::Value result =
      callbacks.invoke(automation::Access::Call, automation::Member(name), args);
  if (result.isObject() && result.toObject()) return namePicture(result.toObject());
  return result;
}

}  // namespace standin
