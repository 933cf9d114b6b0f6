#include "windows/services/Objects.h"

#include <optional>

#include "windows/com/errors.h"
#include "windows/com/text.h"
#include "windows/com/values.h"

namespace windows {
namespace {

[[noreturn]] void raiseCannotCreate() {
  throw automation::Error(automation::ErrorNumber::CannotCreateObject);
}

/// Nothing that runs, unless its server says that it is busy.
void requireFound(HRESULT result) {
  if (result == RPC_E_CALL_REJECTED || result == RPC_E_SERVERCALL_RETRYLATER ||
      result == RPC_E_SERVERCALL_REJECTED) {
    throw automation::Error(automation::ErrorNumber::ServerBusy);
  }
  if (FAILED(result)) raiseCannotCreate();
}

std::optional<CLSID> findClass(std::u16string_view className) {
  CLSID id;
  if (FAILED(CLSIDFromProgID(wide(std::u16string(className)), &id))) return std::nullopt;
  return id;
}

CLSID classOf(std::u16string_view className) {
  const auto id = findClass(className);
  if (!id) raiseCannotCreate();
  return *id;
}

}  // namespace

bool Objects::registered(std::u16string_view className) {
  return findClass(className).has_value();
}

automation::Object Objects::running(std::u16string_view className) {
  const CLSID id = classOf(className);
  requireAnswer(className);
  ComPtr<IUnknown> unknown;
  requireFound(GetActiveObject(id, nullptr, unknown.receive()));
  if (!unknown) raiseCannotCreate();
  ComPtr<IDispatch> dispatch;
  requireFound(unknown->QueryInterface(IID_IDispatch, dispatch.receiveVoid()));
  return objectOf(dispatch.get());
}

automation::Object Objects::create(std::u16string_view className) {
  const CLSID id = classOf(className);
  requireAnswer(className);
  ComPtr<IDispatch> dispatch;
  requireFound(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER,
                                IID_IDispatch, dispatch.receiveVoid()));
  return objectOf(dispatch.get());
}

void Objects::requireAnswer(std::u16string_view className) {
  if (!answers(className)) throw automation::Error(automation::ErrorNumber::ServerBusy);
}

bool Objects::answers(std::u16string_view className) {
  for (const ServerWindow& server : windows_) {
    if (!sameName(server.className, className)) continue;
    const HWND window = FindWindowA(ansi(server.windowClass).c_str(), nullptr);
    DWORD_PTR answer = 0;
    return !window ||
           SendMessageTimeoutA(window, WM_NULL, 0, 0, SMTO_ABORTIFHUNG, server.milliseconds,
                               &answer) != 0 ||
           !IsWindow(window);
  }
  return true;
}

}  // namespace windows
