#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/automation.h"
#include "platform/outlook.h"

namespace cxol {

/// The ribbon of Outlook 2007's inspectors: the markup of the group with dial, hang up and actions,
/// the pictures and clicks of its buttons, and the removal of the bars that it replaces. Nothing
/// raises.
class clsRibbon {
 public:
  /// How the group is placed. `BuiltInTab` is in use; the others are kept as alternatives.
  enum class Layout : std::int16_t { OwnTab = 1, BuiltInTab = 2, QuickAccess = 3 };

  explicit clsRibbon(Layout layout = Layout::BuiltInTab) : layout_(layout) {}

  /// The markup for the current inspector; empty when its item gets no group.
  std::u16string GetRibbonDescription() noexcept;
  /// The picture of a button; nothing for an unknown id.
  automation::Object GetImageByControlId(std::u16string_view id) noexcept;
  /// Carries out a click.
  void ButtonHandler(const office::RibbonControl& control) noexcept;
  /// The active inspector, else the one opened last, else nothing.
  outlook::Inspector GetCurrentInspector() noexcept;
  /// Whether the current inspector shows a mail that is being written.
  bool IsNewMailItem() noexcept;
  /// Deletes the add-in's bars in the current inspector.
  void RemoveNotNecessaryCommandBar() noexcept;

 private:
  std::u16string markup(std::u16string_view tab) const;
  std::u16string_view tabOf(outlook::ObjectClass kind);

  Layout layout_;
};

}  // namespace cxol
