#include "standin/outlook/hand/NativeWindow.h"

#include "windows/com/errors.h"
#include "windows/com/text.h"

namespace standin {
namespace {

constexpr wchar_t ClassName[] = L"OutlookStandinWindow";

void registerClass(WNDPROC procedure) {
  static bool registered = false;
  if (registered) return;
  WNDCLASSW windowClass{};
  windowClass.style = CS_HREDRAW | CS_VREDRAW;
  windowClass.lpfnWndProc = procedure;
  windowClass.hInstance = GetModuleHandleW(nullptr);
  windowClass.hIcon = LoadIconW(windowClass.hInstance, MAKEINTRESOURCEW(1));
  windowClass.hCursor = LoadCursorW(nullptr, MAKEINTRESOURCEW(32512));
  windowClass.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
  windowClass.lpszClassName = ClassName;
  registered = RegisterClassW(&windowClass) != 0;
}

}  // namespace

NativeWindow::~NativeWindow() {
  if (!hwnd_) return;
  SetWindowLongW(hwnd_, GWL_USERDATA, 0);
  DestroyWindow(hwnd_);
}

void NativeWindow::create(const Form& form) {
  registerClass(procedure);
  hwnd_ = CreateWindowExW(0, ClassName, windows::wide(form.title), form.style, form.place.left,
                          form.place.top, form.place.right, form.place.bottom, form.parent,
                          form.menu, GetModuleHandleW(nullptr), nullptr);
  if (!hwnd_) windows::check(HRESULT_FROM_WIN32(GetLastError()));
  SetWindowLongW(hwnd_, GWL_USERDATA, reinterpret_cast<LONG>(this));
}

LRESULT NativeWindow::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  return DefWindowProcW(hwnd_, message, wParam, lParam);
}

LRESULT CALLBACK NativeWindow::procedure(HWND window, UINT message, WPARAM wParam,
                                         LPARAM lParam) noexcept {
  auto* self = reinterpret_cast<NativeWindow*>(GetWindowLongW(window, GWL_USERDATA));
  LRESULT result = 0;
  if (!self) return DefWindowProcW(window, message, wParam, lParam);
  windows::guardedQuietly([&] { result = self->onMessage(message, wParam, lParam); });
  return result;
}

HFONT dialogFont() {
  return static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT));
}

HWND createControl(const wchar_t* className, DWORD style, HWND parent) {
  const HWND control = CreateWindowExW(0, className, nullptr, style | WS_CHILD | WS_VISIBLE, 0, 0,
                                       0, 0, parent, nullptr, GetModuleHandleW(nullptr), nullptr);
  if (!control) windows::check(HRESULT_FROM_WIN32(GetLastError()));
  SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(dialogFont()), TRUE);
  return control;
}

}  // namespace standin
