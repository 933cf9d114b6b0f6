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

  /// The markup for the kind of window with this ribbon id: for the current inspector, or when it
  /// is of another kind, for the last one that is of this kind, if any. Empty when the item gets no
  /// group.
  std::u16string GetRibbonDescription(std::u16string_view ribbonId) noexcept;
  /// The picture of a button; nothing for an unknown id.
  automation::Object GetImageByControlId(std::u16string_view id) noexcept;
  /// Carries out a click.
  void ButtonHandler(const office::RibbonControl& control) noexcept;
  /// The active inspector, else the one opened last, else nothing.
  outlook::Inspector GetCurrentInspector() noexcept;
  /// Whether a mail is being written.
  bool IsNewMailItem(const outlook::MailItem& mail) noexcept;
  /// Deletes the add-in's bars in the inspector for which markup was given last, or else in the
  /// current one.
  void RemoveNotNecessaryCommandBar() noexcept;

 private:
  std::u16string markup(std::u16string_view tab) const;

  /// What an inspector shows; the tab is empty when that gets no group.
  struct Content {
    outlook::Inspector inspector;
    outlook::ObjectClass kind{};
    std::u16string_view tab;
  };
  Content contentOf(const outlook::Inspector& inspector);

  Layout layout_;
  /// Held from the markup to the removal of the bars that it replaces.
  Content served_;
};

}  // namespace cxol
