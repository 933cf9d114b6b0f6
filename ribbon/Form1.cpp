#include "ribbon/Form1.h"

#include "client/CxDial.h"
#include "client/OpenVelnorActionDialog.h"
#include "client/VelnorLocator.h"
#include "infra/modK9TLog.h"
#include "infra/runtime.h"
#include "infra/text.h"
#include "items/EvalObjects.h"
#include "platform/clock.h"
#include "platform/conversions.h"
#include "ribbon/callTask.h"

namespace cxol {
namespace {

using automation::roundToInt16;
using platform::PopupEntry;

/// A menu opens this far up and left of the anchor, in twips.
constexpr platform::Point MenuOffset{-32, -32};
/// The anchor stands this far right of and below the control's lower-left corner, in twips.
constexpr std::int32_t AnchorOffset = 16;

/// Entry ids: an array's number in the hundreds, the index below.
enum EntryId : int {
  CallNo = 100,
  Numbers = 200,
  TaskNumbers = 300,
  Actions = 400,
  All = 500,
  Separator = 600,
  Submenu = 700
};
constexpr int ArrayStep = 100;

/// The form's coordinates are signed 16-bit twips; what does not fit raises error 6.
std::int16_t twips(std::int32_t pixels, double twipsPerPixel) {
  return roundToInt16(pixels * twipsPerPixel);
}

void append(std::vector<PopupEntry>& entries, const MenuItem& item, int id) {
  if (item.visible) entries.push_back({id, item.caption, item.enabled, false, {}});
}

void append(std::vector<PopupEntry>& entries, const MenuArray& items, int firstId) {
  for (std::size_t i = 0; i < items.size(); ++i) {
    append(entries, items[i], firstId + static_cast<int>(i));
  }
}

/// What follows the first ":" of a caption, without the blanks around it.
std::u16string_view numberOf(std::u16string_view caption) {
  const auto colon = caption.find(u':');
  if (colon == std::u16string_view::npos) return {};
  return trimBlanks(caption.substr(colon + 1));
}

std::u16string indexText(std::size_t index) {
  return automation::int32Text(static_cast<std::int32_t>(index));
}

}  // namespace

void Form1::ShowMenu(const office::CommandBarControl& ctrl, Popup popup) noexcept {
  trapQuietly([&] {
    LogDebug(u"Form1 - ShowMenu");
    const auto perPixel = machine().screen.twipsPerPixel();
    const std::int32_t left = roundToInt16(ctrl.left());
    const std::int32_t bottom = roundToInt16(ctrl.top() + ctrl.height());
    const platform::Point corner{roundToInt16(twips(left, perPixel.x) + AnchorOffset),
                                 roundToInt16(twips(bottom, perPixel.y) + AnchorOffset)};
    showAt(corner, popup, u"ShowMenu");
  });
}

void Form1::ShowMenuRibbon(Popup popup) noexcept {
  trapAndLog(u"ShowMenuRibbon - ", [&] {
    LogDebug(u"Form1 - ShowMenuRibbon");
    const auto pointer = machine().screen.cursorPosition();
    const auto perPixel = machine().screen.twipsPerPixel();
    showAt({twips(pointer.x, perPixel.x), twips(pointer.y, perPixel.y)}, popup, u"ShowMenuRibbon");
  });
}

void Form1::Unload() noexcept {
  trapQuietly([] { machine().screen.hideAnchor(); });
}

void Form1::showAt(platform::Point place, Popup popup, std::u16string_view routine) {
  auto& screen = machine().screen;
  struct HideAnchor {
    ~HideAnchor() {
      trapQuietly([] { machine().screen.hideAnchor(); });
    }
  } hideAnchor;
  screen.showAnchor(place);
  LogDebug(concat(u"Form1 - ", routine, u" before PopupMenu", u" Left: ",
                  automation::singleText(static_cast<float>(place.x)), u" Top: ",
                  automation::singleText(static_cast<float>(place.y))));
  if (const auto chosen = screen.trackPopup(entriesOf(popup), MenuOffset)) carryOut(*chosen);
}

std::vector<PopupEntry> Form1::entriesOf(Popup popup) const {
  std::vector<PopupEntry> entries;
  switch (popup) {
    case Popup::MenuPhone: append(entries, callno, CallNo); break;
    case Popup::MenuPopup:
      append(entries, ActionNumbers, Actions);
      if (sep2.visible) entries.push_back({Separator, {}, true, true, {}});
      append(entries, all, All);
      break;
    case Popup::MenuPopupNonContact:
      append(entries, MenuNumbers, Numbers);
      append(entries, MenuTaskPhoneNumbers, Submenu);
      if (MenuTaskPhoneNumbers.visible)
        append(entries.back().entries, MenuTaskNumbers, TaskNumbers);
      break;
  }
  return entries;
}

void Form1::carryOut(int entryId) noexcept {
  const auto index = static_cast<std::size_t>(entryId % ArrayStep);
  switch (entryId - entryId % ArrayStep) {
    case CallNo: return callno_Click(index);
    case Numbers: return MenuNumbers_Click(index);
    case TaskNumbers: return MenuTaskNumbers_Click(index);
    case Actions: return ActionNumbers_Click(index);
    case All: return all_Click();
    default: return;
  }
}

void Form1::MenuNumbers_Click(std::size_t index) noexcept {
  trapAndLog(u"ERROR in MenuNumbers_Click(): ", [&] {
    LogDebug(concat(u"MenuNumbers_Click (", indexText(index), u")"));
    const auto number = numberOf(MenuNumbers.at(index).caption);
    if (number.empty()) return LogWarning(u"MenuNumbers_Click: No number found to dial!");
    CxDial(std::u16string(number));
  });
}

void Form1::callno_Click(std::size_t index) noexcept {
  trapAndLog(u"ERROR in callno_Click(): ", [&] {
    LogDebug(concat(u"callno_Click (", indexText(index), u")"));
    // Always the first entry, and its whole caption: the client takes the number out of it.
    const auto caption = callno[0].caption;
    CxDial(caption);
  });
}

void Form1::ActionNumbers_Click(std::size_t index) noexcept {
  trapAndLog(u"ERROR in ActionNumbers_Click(): ", [&] {
    const std::u16string number(numberOf(ActionNumbers.at(index).caption));
    if (!number.empty()) VelnorShowNumber(number);
  });
}

void Form1::MenuTaskNumbers_Click(std::size_t index) noexcept {
  trapAndLog(u"ERROR in MenuTaskNumbers_Click(): ", [&] {
    const std::u16string number(numberOf(MenuTaskNumbers.at(index).caption));
    if (!number.empty()) CreateCallTask(number);
  });
}

void Form1::all_Click() noexcept {
  trapAndLog(u"ERROR in all_Click(): ", [&] {
    // The menu must be off the screen before the client's dialog comes up.
    machine().clock.pumpMessages();
    Texts references;
    EvaluateCurrentItem(references);
    OpenVelnorActionDialog(references, 1, 1);
  });
}

}  // namespace cxol
