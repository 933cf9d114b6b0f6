#include "ribbon/Form1.h"

#include <functional>
#include <span>
#include <utility>

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

/// The form's coordinates are signed 16-bit twips; what does not fit raises error 6.
std::int16_t twips(std::int32_t pixels, double twipsPerPixel) {
  return roundToInt16(pixels * twipsPerPixel);
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

/// What a popup shows, and what each entry does: an entry's id is the place of its action, from 1.
struct Form1::ShownMenu {
  std::vector<PopupEntry> entries;
  std::vector<std::function<void()>> actions;

  void add(std::vector<PopupEntry>& to, const MenuItem& item, std::function<void()> action) {
    if (!item.visible) return;
    actions.push_back(std::move(action));
    to.push_back({static_cast<int>(actions.size()), item.caption, item.enabled, false, {}});
  }
  void add(std::vector<PopupEntry>& to, std::span<const MenuItem> items, Form1& form,
           void (Form1::*click)(std::size_t) noexcept) {
    for (std::size_t i = 0; i < items.size(); ++i) {
      add(to, items[i], [&form, click, i] { (form.*click)(i); });
    }
  }
};

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
  const auto menu = shownMenu(popup);
  const auto chosen = screen.trackPopup(menu.entries, MenuOffset);
  if (chosen) menu.actions.at(static_cast<std::size_t>(*chosen) - 1)();
}

Form1::ShownMenu Form1::shownMenu(Popup popup) {
  ShownMenu menu;
  auto& entries = menu.entries;
  switch (popup) {
    case Popup::MenuPhone: menu.add(entries, callno, *this, &Form1::callno_Click); break;
    case Popup::MenuPopup:
      menu.add(entries, ActionNumbers, *this, &Form1::ActionNumbers_Click);
      menu.add(entries, sep2, [] {});
      if (sep2.visible) entries.back().separator = true;
      menu.add(entries, all, [this] { all_Click(); });
      break;
    case Popup::MenuPopupNonContact:
      menu.add(entries, MenuNumbers, *this, &Form1::MenuNumbers_Click);
      menu.add(entries, MenuTaskPhoneNumbers, [] {});
      if (MenuTaskPhoneNumbers.visible) {
        menu.add(entries.back().entries, MenuTaskNumbers, *this, &Form1::MenuTaskNumbers_Click);
      }
      break;
  }
  return menu;
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
