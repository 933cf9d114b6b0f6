#include "windows/services/Screen.h"

#include <cmath>

#include "windows/com/errors.h"
#include "windows/com/text.h"
#include "windows/services/Menu.h"
#include "windows/services/graphics.h"

namespace windows {
namespace {

LONG toPixels(std::int32_t twips, double twipsPerPixel) {
  return std::lround(twips / twipsPerPixel);
}

}  // namespace

Screen::~Screen() {
  if (!anchor_) return;
  DestroyWindow(anchor_);
  UnregisterClassW(AnchorClass, module_);
}

void Screen::messageBox(std::u16string_view text) {
  // With an owner it would be modal to that one alone, and Outlook has many windows.
  MessageBoxW(nullptr, wide(std::u16string(text)), BoxTitle,
              MB_OK | MB_TASKMODAL | MB_SETFOREGROUND);
}

platform::Point Screen::cursorPosition() {
  POINT point{};
  GetCursorPos(&point);
  return {point.x, point.y};
}

platform::TwipsPerPixel Screen::twipsPerPixel() {
  const auto screen = screenContext();
  const int across = GetDeviceCaps(screen.get(), LOGPIXELSX);
  const int down = GetDeviceCaps(screen.get(), LOGPIXELSY);
  platform::TwipsPerPixel result;
  if (across > 0) result.x = platform::twipsPerPixel(across);
  if (down > 0) result.y = platform::twipsPerPixel(down);
  return result;
}

HWND Screen::anchor() {
  if (anchor_) return anchor_;
  WNDCLASSW windowClass{};
  // The system's own procedure: no message comes into this module.
  windowClass.lpfnWndProc = DefWindowProcW;
  windowClass.hInstance = module_;
  windowClass.lpszClassName = AnchorClass;
  RegisterClassW(&windowClass);
  anchor_ = CreateWindowExW(WS_EX_TOOLWINDOW, AnchorClass, nullptr, WS_POPUP, 0, 0, 0, 0, nullptr,
                            nullptr, module_, nullptr);
  if (!anchor_) {
    const HRESULT failure = HRESULT_FROM_WIN32(GetLastError());
    UnregisterClassW(AnchorClass, module_);
    check(failure);
    throw automation::Error(automation::ErrorNumber::OutOfMemory);
  }
  return anchor_;
}

POINT Screen::pixels(platform::Point twips) {
  const auto perPixel = twipsPerPixel();
  return {toPixels(twips.x, perPixel.x), toPixels(twips.y, perPixel.y)};
}

void Screen::showAnchor(platform::Point twips) {
  place_ = twips;
  const POINT corner = pixels(twips);
  SetWindowPos(anchor(), HWND_TOP, corner.x, corner.y, 0, 0, SWP_SHOWWINDOW);
}

void Screen::hideAnchor() {
  if (anchor_) ShowWindow(anchor_, SW_HIDE);
}

std::optional<int> Screen::trackPopup(const std::vector<platform::PopupEntry>& menu,
                                      platform::Point twips) {
  const Menu popup = popupMenu(menu);
  const POINT corner = pixels({place_.x + twips.x, place_.y + twips.y});
  const HWND owner = anchor();
  // Otherwise the menu stays when the user clicks beside it.
  SetForegroundWindow(owner);
  const int chosen = TrackPopupMenu(
      popup.get(), TPM_LEFTALIGN | TPM_TOPALIGN | TPM_LEFTBUTTON | TPM_RETURNCMD | TPM_NONOTIFY,
      corner.x, corner.y, 0, owner, nullptr);
  PostMessageW(owner, WM_NULL, 0, 0);
  return chosen != 0 ? std::optional<int>(chosen) : std::nullopt;
}

}  // namespace windows
