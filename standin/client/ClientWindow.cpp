#include "standin/client/ClientWindow.h"

#include "platform/velnor.h"
#include "standin/client/names.h"
#include "windows/com/errors.h"
#include "windows/com/text.h"

namespace standin {
namespace {

/// The menu: what a person reads and the request that it stands for.
struct Entry {
  const wchar_t* text;
  std::u16string_view request;
};
constexpr Entry Telephone[] = {
    {L"&Incoming call of 0711 123", u"ring 0711 123"},
    {L"Incoming call, &number hidden", u"ring"},
    {L"Call is &answered", u"connect"},
    {L"Call &ends", u"end call"},
};
constexpr Entry Trouble[] = {
    {L"Calls take &30 seconds and fail", u"hang 30000"},
    {L"Calls &work again", u"hang off"},
    {L"&Quit", u"quit"},
};
constexpr struct {
  const wchar_t* text;
  std::span<const Entry> entries;
} Menus[] = {{L"&Telephone", Telephone}, {L"T&rouble", Trouble}};
/// Below the toolbars of Outlook's first window.
constexpr POINT Place{196, 236};
constexpr UINT EntriesInMenu = 100;

HMENU makeMenu() {
  const HMENU bar = CreateMenu();
  UINT first = EntriesInMenu;
  for (const auto& menu : Menus) {
    const HMENU popup = CreatePopupMenu();
    UINT id = first;
    for (const Entry& entry : menu.entries) AppendMenuW(popup, MF_STRING, id++, entry.text);
    AppendMenuW(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(popup), menu.text);
    first += EntriesInMenu;
  }
  return bar;
}

/// Empty for an id that no entry has.
std::u16string_view requestOf(UINT id) {
  const UINT menu = id / EntriesInMenu - 1;
  const UINT entry = id % EntriesInMenu;
  if (id < EntriesInMenu || menu >= std::size(Menus)) return {};
  const auto entries = Menus[menu].entries;
  return entry < entries.size() ? entries[entry].request : std::u16string_view();
}

}  // namespace

ClientWindow::ClientWindow(ClientServer& server) : server_(server) {
  const HINSTANCE module = GetModuleHandleW(nullptr);
  const wchar_t* name = windows::wide(velnor::MainWindowClass.data());
  WNDCLASSEXW description = {};
  description.cbSize = sizeof description;
  description.lpfnWndProc = procedure;
  description.hInstance = module;
  description.hIcon = LoadIconW(module, MAKEINTRESOURCEW(1));
  description.hCursor = LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
  description.hbrBackground = GetSysColorBrush(COLOR_WINDOW);
  description.lpszClassName = name;
  RegisterClassExW(&description);
  window_ = CreateWindowExW(0, name, L"Velnor", WS_OVERLAPPEDWINDOW, Place.x, Place.y, 520, 220,
                            nullptr, makeMenu(), module, this);
  if (!window_) windows::check(HRESULT_FROM_WIN32(GetLastError()));
  refresh();
}

ClientWindow::~ClientWindow() {
  if (window_) DestroyWindow(window_);
}

void ClientWindow::refresh() {
  std::u16string caption = u"Velnor - " + server_.client().status();
  if (server_.frozen()) caption += u" (frozen)";
  if (caption != caption_) {
    SetWindowTextW(window_, windows::wide(caption));
    caption_ = std::move(caption);
  }
  const auto& lately = server_.lately();
  if (!lately.empty() && lately.back() != latest_) {
    latest_ = lately.back();
    InvalidateRect(window_, nullptr, TRUE);
  }
  const bool visible = IsWindowVisible(window_) != FALSE;
  if (visible == server_.client().hidden()) {
    ShowWindow(window_, visible ? SW_HIDE : SW_SHOWNOACTIVATE);
  }
}

LRESULT CALLBACK ClientWindow::procedure(HWND window, UINT message, WPARAM first, LPARAM second) {
  if (message == WM_NCCREATE) {
    const auto* creation = reinterpret_cast<const CREATESTRUCTW*>(second);
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(creation->lpCreateParams));
    static_cast<ClientWindow*>(creation->lpCreateParams)->window_ = window;
  }
  auto* const self = reinterpret_cast<ClientWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (!self) return DefWindowProcW(window, message, first, second);
  LRESULT result = 0;
  windows::guardedQuietly([&] { result = self->take(message, first, second); });
  return result;
}

LRESULT ClientWindow::take(UINT message, WPARAM first, LPARAM second) {
  switch (message) {
    case WM_PAINT: paint(); return 0;
    case WM_COMMAND:
      if (const auto request = requestOf(LOWORD(first)); !request.empty()) server_.answer(request);
      return 0;
    case WM_CLOSE: server_.end(); return 0;
    default: return DefWindowProcW(window_, message, first, second);
  }
}

void ClientWindow::paint() const {
  constexpr LONG Margin = 8;
  PAINTSTRUCT paint;
  const HDC context = BeginPaint(window_, &paint);
  RECT area;
  GetClientRect(window_, &area);
  InflateRect(&area, -Margin, -Margin);
  std::u16string text = server_.lately().empty() ? u"Nothing was told to the client so far." : u"";
  for (const std::u16string& line : server_.lately()) text += line + u"\r\n";
  SelectObject(context, GetStockObject(DEFAULT_GUI_FONT));
  DrawTextW(context, windows::wide(text), -1, &area, DT_LEFT | DT_NOPREFIX | DT_WORDBREAK);
  EndPaint(window_, &paint);
}

}  // namespace standin
