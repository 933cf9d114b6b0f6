#include "windows/services/Objects.h"

#include "windows/com/errors.h"
#include "windows/com/text.h"
#include "windows/com/values.h"

namespace windows {
namespace {

[[noreturn]] void raiseCannotCreate() {
  throw automation::Error(automation::ErrorNumber::CannotCreateObject);
}

CLSID classOf(std::u16string_view className) {
  CLSID id;
  if (FAILED(CLSIDFromProgID(wide(std::u16string(className)), &id))) raiseCannotCreate();
  return id;
}

}  // namespace

automation::Object Objects::running(std::u16string_view className) {
  const CLSID id = classOf(className);
  if (hangs(className)) raiseCannotCreate();
  ComPtr<IUnknown> unknown;
  if (FAILED(GetActiveObject(id, nullptr, unknown.receive())) || !unknown) raiseCannotCreate();
  const auto dispatch = unknown.as<IDispatch>();
  if (!dispatch) raiseCannotCreate();
  return objectOf(dispatch.get());
}

automation::Object Objects::create(std::u16string_view className) {
  const CLSID id = classOf(className);
  if (hangs(className)) raiseCannotCreate();
  ComPtr<IDispatch> dispatch;
  if (FAILED(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER,
                              IID_IDispatch, dispatch.receiveVoid())) ||
      !dispatch) {
    raiseCannotCreate();
  }
  return objectOf(dispatch.get());
}

bool Objects::hangs(std::u16string_view className) const {
  for (const ServerWindow& server : windows_) {
    if (!sameName(server.className, className)) continue;
    const HWND window = FindWindowA(ansi(server.windowClass).c_str(), nullptr);
    DWORD_PTR answer = 0;
    return window &&
           SendMessageTimeoutA(window, WM_NULL, 0, 0, SMTO_ABORTIFHUNG, server.milliseconds,
                               &answer) == 0 &&
           IsWindow(window);
  }
  return false;
}

}  // namespace windows
