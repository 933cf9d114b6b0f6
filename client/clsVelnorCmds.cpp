#include "client/clsVelnorCmds.h"

#include "client/OpenVelnorActionDialog.h"
#include "client/PhoneCommandFor.h"
#include "client/VelnorLocator.h"
#include "infra/modK9TLog.h"
#include "infra/modRes.h"
#include "items/EvalObjects.h"
#include "items/UIHelpers.h"
#include "state/globals.h"

namespace cxol {
namespace {

constexpr std::int32_t ActionsCaption = 303;

void log(std::u16string_view text) {
  LogDebug(concat(u"clsVelnorCmd: ", text));
}

/// The click belongs to another window's wrapper.
bool isForeign(const office::CommandBarControl& ctrl, std::u16string_view parameter) {
  return ctrl && ctrl.parameter() != parameter;
}

/// A client that is missing is traced under `Dial` by every command, so that readers of logs find
/// all of them under one text.
constexpr std::u16string_view NameInTrace = u"clsVelnorCmds.Dial";

void show(MenuForm::Popup popup, const office::CommandBarControl& ctrl,
          const office::RibbonControl& ribbonControl) {
  const auto form = LoadedMenuForm();
  if (ribbonControl) {
    form->ShowMenuRibbon(popup);
  } else {
    form->ShowMenu(ctrl, popup);
  }
}

void fillActionMenu(MenuForm& form, const outlook::ContactItem& contact) {
  Texts labels;
  Texts numbers;
  GetContactPhoneNumbers(contact, labels, numbers);
  form.all = {GetResString(ActionsCaption), true, true};
  // A line between the numbers and the rest needs numbers.
  form.sep2.visible = !FillNumbers(form.ActionNumbers, labels, numbers).empty();
}

}  // namespace

void clsVelnorCmds::Dial(const office::CommandBarControl& ctrl, std::u16string parameter,
                         const office::RibbonControl& ribbonControl) noexcept {
  trapAndLog(u"ERROR in clsVelnorCmds.Dial(): ", [&] {
    log(u"Dial called");
    if (isForeign(ctrl, parameter)) return log(u"Ctrl is nothing and parameters are different");
    const auto command = PhoneCommandFor(NameInTrace);
    if (!command) return;
    if ((command.lineState() & velnor::linestate::Signalling) != 0) {
      log(u"VelnorCmd call PickUp");
      return command.pickUp();
    }
    if (const auto menu = FillNumberMenu()) {
      show(menu->popup, ctrl, ribbonControl);
    } else {
      VelnorShowNumber(u"");
    }
  });
}

void clsVelnorCmds::Action(const office::CommandBarControl& ctrl, std::u16string parameter,
                           const office::RibbonControl& ribbonControl) noexcept {
  trapAndLog(u"ERROR in clsVelnorCmds.Action(): ", [&] {
    log(u"Action called");
    if (isForeign(ctrl, parameter)) return log(u"Ctrl is nothing and parameters are different");
    if (const auto contact = GetCurrentContact()) {
      fillActionMenu(*LoadedMenuForm(), contact);
      return show(MenuForm::Popup::MenuPopup, ctrl, ribbonControl);
    }
    Texts references;
    EvaluateCurrentItem(references);
    OpenVelnorActionDialog(references, 1, 1);
  });
}

void clsVelnorCmds::Drop(const office::CommandBarControl& ctrl, std::u16string parameter) noexcept {
  trapAndLog(u"ERROR in clsVelnorCmds.Drop(): ", [&] {
    log(u"Drop called");
    if (isForeign(ctrl, parameter)) return;
    if (const auto command = PhoneCommandFor(NameInTrace)) command.hangUp();
  });
}

}  // namespace cxol
