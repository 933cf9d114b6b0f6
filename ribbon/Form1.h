#pragma once

#include "platform/screen.h"
#include "state/MenuForm.h"

namespace cxol {

/// The hidden form: an invisible anchor on the screen over which the popup menus open, and what a
/// click on their entries does.
class Form1 : public MenuForm {
 public:
  void ShowMenu(const office::CommandBarControl& ctrl, Popup popup) noexcept override;
  void ShowMenuRibbon(Popup popup) noexcept override;
  void Unload() noexcept override;

  /// `index` counts from 0.
  void MenuNumbers_Click(std::size_t index) noexcept;
  void callno_Click(std::size_t index) noexcept;
  void ActionNumbers_Click(std::size_t index) noexcept;
  void MenuTaskNumbers_Click(std::size_t index) noexcept;
  void all_Click() noexcept;

 private:
  /// Shows the anchor, the menu over it, carries out the choice and hides the anchor again, however
  /// that ends. `routine` names the caller in the trace.
  void showAt(platform::Point twips, Popup popup, std::u16string_view routine);
  struct ShownMenu;
  ShownMenu shownMenu(Popup popup);
};

}  // namespace cxol
