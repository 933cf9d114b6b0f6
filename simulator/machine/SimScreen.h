#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/screen.h"
#include "simulator/boundary.h"

namespace simulator {

/// The person in front of the screen. Both calls stand for a modal window: the program may let time
/// pass and act on host and client before it returns.
class ScreenUser {
 public:
  virtual ~ScreenUser() = default;
  /// A message box is up; it is closed when this returns.
  virtual void messageBox(std::u16string_view) {}
  /// A menu is open at this place of the screen; the id of the entry chosen, or nothing. What a
  /// person can't choose (a disabled entry, one below it, a separator, a submenu's own entry, an id
  /// that the menu does not have) closes the menu without a choice.
  virtual std::optional<int> popup(const std::vector<platform::PopupEntry>&, platform::Point) {
    return std::nullopt;
  }
};

/// What the add-in shows by itself. Observers' errors pass through.
class SimScreen : public platform::Screen {
 public:
  explicit SimScreen(Boundary& boundary) : boundary_(boundary) {}

  void messageBox(std::u16string_view text) override;
  platform::Point cursorPosition() override;
  platform::TwipsPerPixel twipsPerPixel() override;
  void showAnchor(platform::Point twips) override;
  void hideAnchor() override;
  std::optional<int> trackPopup(const std::vector<platform::PopupEntry>& menu,
                                platform::Point twips) override;

  // Not crossings: for the program that plays the machine.

  /// Null for someone who closes boxes and leaves menus. Must outlive its time in office.
  void setUser(ScreenUser* user) { user_ = user; }
  void setCursor(platform::Point pixels) { cursor_ = pixels; }
  void setDotsPerInch(int dots) {
    twipsPerPixel_ = {platform::twipsPerPixel(dots), platform::twipsPerPixel(dots)};
  }

  /// One popup menu that was shown.
  struct Popup {
    std::vector<platform::PopupEntry> entries;
    /// The anchor in twips; nothing when it was not shown.
    std::optional<platform::Point> anchor;
    platform::Point position;  ///< in twips, relative to the anchor
    platform::Point pixels;    ///< where that is on the screen
    std::optional<int> chosen;
  };
  const std::vector<std::u16string>& messageBoxes() const { return messageBoxes_; }
  const std::vector<Popup>& popups() const { return popups_; }
  /// In twips; nothing while it is hidden.
  std::optional<platform::Point> anchor() const { return anchor_; }
  /// Forgets what was shown.
  void clearLog();

 private:
  Boundary& boundary_;
  ScreenUser* user_ = nullptr;
  platform::Point cursor_{400, 300};
  platform::TwipsPerPixel twipsPerPixel_;
  std::optional<platform::Point> anchor_;
  std::vector<std::u16string> messageBoxes_;
  std::vector<Popup> popups_;
};

}  // namespace simulator
