#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// A shown menu: visible entries only, in order. An entry with entries of its own is a submenu.
struct PopupEntry {
  /// What `track` returns when the user chooses the entry; not 0.
  int id = 0;
  /// With accelerator marks: "&&" shows an ampersand.
  std::u16string caption;
  bool enabled = true;
  bool separator = false;
  std::vector<PopupEntry> entries;
};

struct Point {
  std::int32_t x = 0;
  std::int32_t y = 0;
};

/// A twip is 1/1440 inch: a pixel of a screen of 96 dpi has 15, one of 192 dpi has 7.5.
struct TwipsPerPixel {
  double x = 15;
  double y = 15;
};
constexpr double twipsPerPixel(int dotsPerInch) {
  return 1440.0 / dotsPerInch;
}

/// What the add-in shows by itself: message boxes and popup menus over an invisible anchor window.
/// Positions of the anchor and of menus are in twips.
class Screen {
 public:
  virtual ~Screen() = default;
  /// A modal box with an OK button and the default title.
  virtual void messageBox(std::u16string_view text) = 0;
  /// The mouse pointer, in pixels.
  virtual Point cursorPosition() = 0;
  virtual TwipsPerPixel twipsPerPixel() = 0;
  /// Shows the anchor, a window without extent, at this place of the screen.
  virtual void showAnchor(Point twips) = 0;
  virtual void hideAnchor() = 0;
  /// Pops a menu up relative to the anchor, left-aligned, and returns when it is closed: with the
  /// id of the chosen entry, or nothing.
  virtual std::optional<int> trackPopup(const std::vector<PopupEntry>& menu, Point twips) = 0;
};

}  // namespace platform
