#pragma once

#include <string>

#include "platform/office.h"

namespace cxol {

/// The commands that toolbars, ribbon and scripts share. Holds no state. `ctrl` is the clicked
/// control, or nothing; `parameter` is the caller's window identity, which the control must bear,
/// because Office hands a click to every window whose button bears the same tag (by value: reading
/// the control may let the caller get a new one); `ribbonControl` is given when the ribbon calls.
/// Nothing raises.
class clsVelnorCmds {
 public:
  /// Picks up a signalling call, else opens the menu of the current item's numbers, else brings up
  /// the client.
  void Dial(const office::CommandBarControl& ctrl, std::u16string parameter,
            const office::RibbonControl& ribbonControl) noexcept;
  /// Opens the actions of the current contact as a menu, or those of another item in the client.
  void Action(const office::CommandBarControl& ctrl, std::u16string parameter,
              const office::RibbonControl& ribbonControl) noexcept;
  /// Hangs up.
  void Drop(const office::CommandBarControl& ctrl, std::u16string parameter) noexcept;
};

}  // namespace cxol
