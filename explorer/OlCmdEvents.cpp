#include "explorer/OlCmdEvents.h"

#include "client/CxDial.h"
#include "client/IsDialableNumber.h"
#include "client/OpenVelnorActionDialog.h"
#include "client/PhoneCommandFor.h"
#include "client/VelnorLocator.h"
#include "explorer/SDKTimer.h"
#include "explorer/modSelectionTimer.h"
#include "infra/modK9TLog.h"
#include "infra/runtime.h"
#include "items/EvalObjects.h"
#include "items/UIHelpers.h"
#include "platform/objects.h"
#include "platform/processes.h"
#include "state/globals.h"

namespace cxol {
namespace {

/// Milliseconds: a window must be this old before the timer builds its toolbar.
constexpr std::int64_t InitAge = 20'000;
/// Characters that the action button shows; longer captions are cut.
constexpr std::size_t CaptionLength = 20;
constexpr std::u16string_view Ellipsis = u"...";
/// With it as the host process the add-in is being debugged.
constexpr std::u16string_view DevelopmentTool = u"VB6.EXE";

std::u16string shortened(std::u16string caption) {
  if (caption.size() <= CaptionLength) return caption;
  auto length = CaptionLength - Ellipsis.size();
  // A character of two units is not cut through.
  const bool highSurrogate = caption[length - 1] >= 0xD800 && caption[length - 1] <= 0xDBFF;
  if (highSurrogate) --length;
  caption.resize(length);
  return caption.append(Ellipsis);
}

velnor::PhoneCommand phoneCommandFor(std::u16string_view handler) {
  return PhoneCommandFor(concat(u"OlCmdEvents.", handler));
}

/// Ends a running client together with Outlook.
void stopClient() {
  const velnor::Application client(machine().objects.running(velnor::ApplicationClass));
  if (client) client.phoneCommand().stop(velnor::StopWithHost);
}

/// To be asked while an explorer closes.
bool wasLastExplorer() {
  // Outlook 2000 still counts the explorer that is closing.
  const std::int32_t expected = GetOutlookVersion() == 2000 ? 1 : 0;
  return globals().g_olApp.explorers().count() == expected;
}

}  // namespace

OlCmdEvents::OlCmdEvents() : createdAt_(machine().clock.localTime()) {
  LogDebug(u"Class_Initialize: Explorer");
}

OlCmdEvents::~OlCmdEvents() {
  LogDebug(u"Class_Terminate: Explorer");
}

void OlCmdEvents::setThisExplorer(const outlook::Explorer& explorer) {
  explorerEvents_.close();
  explorer_ = explorer;
  if (!explorer) return;
  explorerEvents_ = explorer.object().connect(
      outlook::ExplorerEventInterface,
      std::make_shared<automation::ReceiverSink<outlook::ExplorerEvents>>(weak_from_this()));
  if (isClosed()) explorerEvents_.close();
}

void OlCmdEvents::InitFromTimer() noexcept {
  trapAndLog(u"Error in InitFromTimer(): ", [&] {
    LogDebug(u"Explorer Toolbar initialization: InitFromTimer()");
    onNewExplorer();
  });
}

bool OlCmdEvents::MustInit() noexcept {
  if (!mustInitPending_) return false;
  bool due = false;
  trapQuietly([&] {
    due = platform::serialMilliseconds(machine().clock.localTime()) -
              platform::serialMilliseconds(createdAt_) >
          InitAge;
  });
  return due;
}

void OlCmdEvents::onNewExplorer() noexcept {
  if (!mustInitPending_) return;
  trap(
      [&] {
        LogDebug(u"onNewExplorer...");
        InitVelnorBarExplorer();
        mustInitPending_ = false;
        LogDebug(u"...done!");
      },
      [](const automation::Error& error) {
        LogError(concat(u"...failed: ", error.description(), u" (no active Explorer yet?)"));
      });
}

void OlCmdEvents::onExplorerSelectionChange() noexcept {
  trapAndLog(u"onExplorerSelectionChange(): ", [&] {
    const auto selection = explorer_.selection();
    auto entryId = selection.count() >= 1 ? selection.item(1).entryId() : std::u16string();
    if (!entryId.empty() && entryId == selectedEntryId_) return;
    // Noted before the caption is tried: one that the host refuses would be tried, and traced, at
    // each further event of the same item.
    selectedEntryId_ = std::move(entryId);
    SetActionButtonCaption();
  });
}

void OlCmdEvents::SetActionButtonCaption() noexcept {
  trapAndLog(u"SetActionButtonCaption: ", [&] {
    auto caption = GetItemCaption();
    LogDebug(concat(u"Set title of action button to: ", caption));
    controls_[BtAction].control.setCaption(shortened(std::move(caption)));
  });
}

void OlCmdEvents::selectionMayHaveChanged() noexcept {
  onNewExplorer();
  if (!isClosed()) StartSelectionTimer(shared_from_this());
}

void OlCmdEvents::thisExplorer_Activate() noexcept {
  LogDebug(u"thisExplorer_Activate()");
}

void OlCmdEvents::thisExplorer_FolderSwitch() noexcept {
  selectionMayHaveChanged();
}

void OlCmdEvents::thisExplorer_SelectionChange() noexcept {
  selectionMayHaveChanged();
}

void OlCmdEvents::thisExplorer_ViewSwitch() noexcept {
  onNewExplorer();
}

void OlCmdEvents::thisExplorer_Close() noexcept {
  LogDebug(u"thisExplorer_Close");
  DeInitVelnorBarExplorer(false);
  ResumeNext resume;
  resume([&] { setThisExplorer({}); });
  resume([&] {
    if (globals().g_bStopWithOutlook && wasLastExplorer()) stopClient();
  });
  resume([&] {
    if (!equalsIgnoringCase(machine().processes.hostModuleName(), DevelopmentTool)) return;
    LogDebug(u"Running in the development environment: timers and MAPI helper stop now");
    StopTimer();
    StopSelectionTimer();
    MAPI_Deinit();
  });
}

bool OlCmdEvents::isOwn(const office::CommandBarControl& ctrl) const {
  return equalsIgnoringCase(ctrl.parameter(), parameter_.text());
}

void OlCmdEvents::BtDial_Click(const office::CommandBarControl& ctrl) noexcept {
  trapAndLog(u"BtDial_Click: ", [&] {
    if (!isOwn(ctrl)) {
      return LogWarning(u"BtDial_Click: Ctrl.parameter <> parameter => Exit Sub");
    }
    const auto command = phoneCommandFor(u"BtDial_Click");
    if (!command) return;
    if ((command.lineState() & velnor::linestate::Signalling) != 0) {
      LogDebug(u"BtDial_Click: Signalling => Pickup");
      return command.pickUp();
    }
    const auto menu = FillNumberMenu();
    if (!menu) return VelnorShowNumber(u"");
    if (menu->numbers.size() == 1) return CxDial(menu->numbers.front());
    if (const auto form = globals().g_frmMenus) form->ShowMenu(ctrl, menu->popup);
  });
}

void OlCmdEvents::BtDrop_Click(const office::CommandBarControl& ctrl) noexcept {
  trapAndLog(u"BtDrop_Click: ", [&] {
    if (!isOwn(ctrl)) return;
    if (const auto command = phoneCommandFor(u"BtDrop_Click")) command.hangUp();
  });
}

void OlCmdEvents::BtPickup_Click(const office::CommandBarControl& ctrl) noexcept {
  trapAndLog(u"BtPickup_Click: ", [&] {
    if (!isOwn(ctrl)) return;
    if (const auto command = phoneCommandFor(u"BtPickup_Click")) command.pickUp();
  });
}

void OlCmdEvents::BtAction_Click(const office::CommandBarControl& ctrl) noexcept {
  trapAndLog(u"BtAction_Click: ", [&] {
    if (!isOwn(ctrl)) return;
    Texts references;
    EvaluateCurrentItem(references);
    OpenVelnorActionDialog(references, 1, 1);
  });
}

void OlCmdEvents::BtVelnor_Click(const office::CommandBarControl& ctrl) noexcept {
  trapAndLog(u"BtVelnor_Click: ", [&] {
    if (isOwn(ctrl)) VelnorShowNumber(u"");
  });
}

void OlCmdEvents::CbDial_Change(const office::CommandBarControl& ctrl) noexcept {
  trapAndLog(u"CbDial_Change: ", [&] {
    if (!isOwn(ctrl)) return;
    const auto typed = ctrl.text();
    const auto text = trimBlanks(typed);
    if (text.empty()) return;
    if (!phoneCommandFor(u"CbDial_Change")) return;
    if (IsDialableNumber(text, GetVelnorAuxSvc())) {
      CxDial(text);
    } else {
      VelnorShowNumber(text);
    }
  });
}

void OlCmdEvents::BtCallInfo_Click(const office::CommandBarControl& ctrl) noexcept {
  trapAndLog(u"BtCallInfo_Click: ", [&] {
    if (!isOwn(ctrl)) return;
    if (const auto service = GetVelnorAuxSvc()) service.showCallInfo();
  });
}

void OlCmdEvents::BtTransfer_Click(const office::CommandBarControl& ctrl) noexcept {
  trapAndLog(u"BtTransfer_Click: ", [&] {
    if (!isOwn(ctrl)) return;
    if (const auto command = phoneCommandFor(u"BtTransfer_Click")) command.transfer();
  });
}

void OlCmdEvents::BtIncognito_Click(const office::CommandBarControl& ctrl) noexcept {
  trapAndLog(u"BtIncognito_Click: ", [&] {
    if (!isOwn(ctrl)) return;
    if (const auto command = phoneCommandFor(u"BtIncognito_Click")) command.incognito();
  });
}

std::int16_t GetOutlookVersion() noexcept {
  static constexpr struct {
    std::u16string_view start;
    std::int16_t year;
  } Releases[] = {{u"9.0", 2000}, {u"10.", 2002}, {u"11.", 2003}, {u"12.", 2007}, {u"13.", 2009}};
  std::int16_t year = 0;
  trapQuietly([&] {
    const auto version = globals().g_olApp.version();
    for (const auto& release : Releases) {
      if (equalsIgnoringCase(std::u16string_view(version).substr(0, 3), release.start)) {
        year = release.year;
      }
    }
  });
  return year;
}

}  // namespace cxol
