#include "standin/script/ScriptHost.h"

#include "windows/com/errors.h"
#include "windows/com/text.h"
#include "windows/com/values.h"

namespace standin {
namespace {

using automation::Value;
using simulator::argument;
using simulator::Arguments;

CLSID classOf(const Value& name) {
  CLSID id{};
  windows::check(CLSIDFromProgID(windows::wide(name.toText()), &id));
  return id;
}

}  // namespace

std::span<const simulator::MemberRow<ScriptHost>> ScriptHost::members() {
  static constexpr simulator::MemberRow<ScriptHost> Rows[] = {
      {u"makeWindow",
       [](ScriptHost& self, Arguments args) {
         self.makeWindow(argument(args, 0).toText(), argument(args, 1).toText());
         return Value();
       }},
      {u"offerRunning",
       [](ScriptHost& self, Arguments args) {
         self.offers_.offerRunning(classOf(argument(args, 0)),
                                   windows::dispatchOf(argument(args, 1).toObject()).get());
         return Value();
       }},
      {u"offerClass",
       [](ScriptHost& self, Arguments args) {
         const auto object = argument(args, 1).toObject();
         self.offers_.offerClass(classOf(argument(args, 0)),
                                 [object] { return windows::dispatchOf(object); });
         return Value();
       }},
      {u"tell",
       [](ScriptHost& self, Arguments args) {
         self.tell(argument(args, 0).toText());
         return Value();
       }},
      {u"hidden", [](ScriptHost& self, Arguments) { return Value(self.hidden_); },
       [](ScriptHost& self, const Value& value) { self.setVisible(!value.toBoolean()); }},
      {u"quit",
       [](ScriptHost& self, Arguments) {
         self.quit();
         return Value();
       }},
  };
  return Rows;
}

ScriptHost::~ScriptHost() {
  if (window_) DestroyWindow(window_);
}

void ScriptHost::makeWindow(const std::u16string& windowClass, const std::u16string& title) {
  WNDCLASSEXW description = {};
  description.cbSize = sizeof description;
  description.lpfnWndProc = procedure;
  description.hInstance = GetModuleHandleW(nullptr);
  description.hIcon = LoadIconW(description.hInstance, MAKEINTRESOURCEW(1));
  description.hCursor = LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
  description.hbrBackground = GetSysColorBrush(COLOR_WINDOW);
  description.lpszClassName = windows::wide(windowClass);
  RegisterClassExW(&description);
  window_ = CreateWindowExW(0, windows::wide(windowClass), windows::wide(title),
                            WS_OVERLAPPEDWINDOW, CW_USEDEFAULT, CW_USEDEFAULT, 320, 120, nullptr,
                            nullptr, description.hInstance, this);
  if (!window_) windows::check(HRESULT_FROM_WIN32(GetLastError()));
  setVisible(!hidden_);
}

void ScriptHost::setVisible(bool visible) {
  hidden_ = !visible;
  if (window_) ShowWindow(window_, visible ? SW_SHOWNOACTIVATE : SW_HIDE);
}

LRESULT CALLBACK ScriptHost::procedure(HWND window, UINT message, WPARAM first, LPARAM second) {
  if (message == WM_NCCREATE) {
    const auto* creation = reinterpret_cast<const CREATESTRUCTW*>(second);
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(creation->lpCreateParams));
  }
  if (message == WM_CLOSE) {
    reinterpret_cast<ScriptHost*>(GetWindowLongPtrW(window, GWLP_USERDATA))->quit();
    return 0;
  }
  return DefWindowProcW(window, message, first, second);
}

}  // namespace standin
