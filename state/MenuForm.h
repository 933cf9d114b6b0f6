#pragma once

#include <array>
#include <cstddef>
#include <string>

#include "platform/automation.h"
#include "platform/office.h"

namespace cxol {

/// One entry of a popup menu, invisible until it is filled.
struct MenuItem {
  std::u16string caption;
  bool visible = false;
  bool enabled = true;
};

/// The most numbers that a menu to dial from shows, and that the menu of actions does: every one of
/// a contact's.
inline constexpr std::size_t MenuLength = 13;
inline constexpr std::size_t ActionMenuLength = 14;
using MenuArray = std::array<MenuItem, MenuLength>;

/// The popup menus of the hidden form as data, and what others may ask of the form. A choice is
/// carried out by the form itself before the show operation returns.
class MenuForm {
 public:
  enum class Popup {
    MenuPopup,            ///< actions of a contact
    MenuPopupNonContact,  ///< numbers of items that are no contacts
    MenuPhone,            ///< numbers of a contact
  };

  virtual ~MenuForm() = default;
  /// Opens a menu under a command-bar control.
  virtual void ShowMenu(const office::CommandBarControl& ctrl, Popup popup) noexcept = 0;
  /// Opens a menu at the mouse pointer.
  virtual void ShowMenuRibbon(Popup popup) noexcept = 0;
  /// Takes the form off the screen for good.
  virtual void Unload() noexcept = 0;

  /// `MenuPhone`
  MenuArray callno;
  /// `MenuPopupNonContact`
  MenuArray MenuNumbers;
  MenuItem MenuTaskPhoneNumbers;  ///< the submenu of `MenuTaskNumbers`
  MenuArray MenuTaskNumbers;
  /// `MenuPopup`
  std::array<MenuItem, ActionMenuLength> ActionNumbers;
  MenuItem sep2;
  MenuItem all;

  /// The picture box through which button pictures go.
  automation::Object BtPic;
};

}  // namespace cxol
