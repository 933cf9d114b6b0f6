#pragma once

#include "platform/screen.h"
#include "windows/com/api.h"

namespace windows {

/// Message boxes, and menus over an anchor window that is made when it is first needed. To be used
/// by one thread.
class Screen : public platform::Screen {
 public:
  /// Class and title by which a test finds the anchor and a box.
  static constexpr wchar_t AnchorClass[] = L"VelnorMenuAnchor";
  static constexpr wchar_t BoxTitle[] = L"VelnorOutlookCOMAddIn";

  /// `module` is the one that registers the window class.
  explicit Screen(HINSTANCE module) : module_(module) {}
  ~Screen() override;
  Screen(const Screen&) = delete;
  Screen& operator=(const Screen&) = delete;

  void messageBox(std::u16string_view text) override;
  platform::Point cursorPosition() override;
  platform::TwipsPerPixel twipsPerPixel() override;
  void showAnchor(platform::Point twips) override;
  void hideAnchor() override;
  std::optional<int> trackPopup(const std::vector<platform::PopupEntry>& menu,
                                platform::Point twips) override;

 private:
  HWND anchor();
  POINT pixels(platform::Point twips);

  const HINSTANCE module_;
  HWND anchor_ = nullptr;
  /// Where the anchor was shown.
  platform::Point place_;
};

}  // namespace windows
