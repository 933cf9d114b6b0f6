#include <string_view>

#include "client/SetButtonImage.h"
#include "explorer/OlCmdEvents.h"
#include "infra/modK9TLog.h"
#include "infra/modRes.h"
#include "infra/runtime.h"
#include "state/barNames.h"
#include "state/globals.h"
#include "state/identity.h"

namespace cxol {

/// One control of the toolbar, in the toolbar's order.
struct OlCmdEvents::Layout {
  ControlIndex index;
  std::u16string_view tag;
  office::ControlType type;
  std::int32_t captionId;
  std::int32_t tooltipId;
  std::u16string_view picture;
  bool beginGroup;
  /// Pixels; 0 leaves the width to Office.
  std::int32_t width;
  Handler handler;
};

const OlCmdEvents::Layout OlCmdEvents::Controls[] = {
    {CbDial, u"CxCbDial", office::ControlType::Edit, 501, 502, u"", false, 150,
     &OlCmdEvents::CbDial_Change},
    {BtDial, u"CxBtDial", office::ControlType::Button, 503, 504, u"dial", true, 0,
     &OlCmdEvents::BtDial_Click},
    {BtDrop, u"CxBtDrop", office::ControlType::Button, 505, 506, u"drop", false, 0,
     &OlCmdEvents::BtDrop_Click},
    // The tooltip of the call manager, though the client has one of its own.
    {BtVelnor, u"CxBtVelnor", office::ControlType::Button, 515, 508, u"velnor", true, 0,
     &OlCmdEvents::BtVelnor_Click},
    {BtAction, u"CxBtAction", office::ControlType::Button, 519, 520, u"action", true, 100,
     &OlCmdEvents::BtAction_Click},
};

/// A control of an older layout, removed once the control before it stands.
struct OlCmdEvents::Obsolete {
  ControlIndex after;
  ControlIndex index;
  std::u16string_view tag;
  Handler handler;
};

const OlCmdEvents::Obsolete OlCmdEvents::ObsoleteControls[] = {
    {BtDrop, BtTransfer, u"CxBtTransfer", &OlCmdEvents::BtTransfer_Click},
    {BtDrop, BtIncognito, u"CxBtIncognito", &OlCmdEvents::BtIncognito_Click},
    {BtDrop, BtPickup, u"CxBtPickup", &OlCmdEvents::BtPickup_Click},
    {BtVelnor, BtCallInfo, u"CxBtCallInfo", &OlCmdEvents::BtCallInfo_Click},
};

void OlCmdEvents::InitVelnorBarExplorer() {
  LogDebug(u"InitVelnorBarExplorer...");
  ResumeNext resume;
  resume([&] { parameter_ = InstanceIdentity::create(); });
  explorerBar_ = findBar();
  if (explorerBar_) {
    resume([&] { LogDebug(concat(u"Re-use command bar ", explorerBar_.name())); });
  } else {
    LogDebug(u"Create new command bar.");
    resume([&] { addBar(); });
  }
  // Office is not ready yet: nothing that follows can succeed, a later build can.
  if (!explorerBar_ && !isClosed()) {
    throw automation::Error(resume.number(), resume.description());
  }
  resume([&] { explorerBar_.setPosition(office::BarPosition::Top); });
  resume([&] { explorerBar_.setName(globals().g_product); });
  clearOldLayout();

  bool anyCreated = false;
  for (const auto& layout : Controls) {
    if (initControl(layout)) anyCreated = true;
    for (const auto& obsolete : ObsoleteControls) {
      if (obsolete.after == layout.index) removeObsolete(obsolete);
    }
  }
  // New buttons are drawn before the bar comes up.
  if (anyCreated) resume([] { machine().clock.pumpMessages(); });
  resume([&] { explorerBar_.setVisible(true); });
  if (isClosed()) release();
  LogDebug(u"...done.");
}

office::CommandBar OlCmdEvents::findBar() const {
  ResumeNext resume;
  office::CommandBar bar;
  const auto look = [&](std::u16string_view name) {
    resume([&] { bar = explorer_.commandBars().item(name); });
  };
  const auto names = BarNames();
  // The first look for the product's own bar may come too early for Office, which then does not
  // even hand its bars out: it is repeated, and each look asks for the bars anew.
  look(names.front());
  for (const auto& name : names) {
    if (bar) break;
    look(name);
  }
  return bar;
}

void OlCmdEvents::addBar() {
  explorerBar_ = explorer_.commandBars().add(globals().g_product);
  if (!explorerBar_) throw automation::Error(automation::ErrorNumber::ObjectNotSet);
}

void OlCmdEvents::clearOldLayout() {
  ResumeNext resume;
  office::CommandBarControl transfer;
  resume([&] { transfer = explorerBar_.findControl(u"CxBtTransfer"); });
  if (!transfer) return;
  office::CommandBarControls controls;
  std::int32_t count = 0;
  resume([&] {
    controls = explorerBar_.controls();
    count = controls.count();
  });
  for (std::int32_t i = count; i >= 1; --i) {
    resume([&] { controls.item(i).remove(); });
  }
}

bool OlCmdEvents::initControl(const Layout& layout) {
  ResumeNext resume;
  office::CommandBarControl control;
  resume([&] { control = explorerBar_.findControl(layout.tag); });
  const bool create = !control;
  if (create) {
    resume([&] { control = explorerBar_.controls().add(layout.type); });
    untagged_.hold(control);
  }
  if (create && control && layout.type == office::ControlType::Button) {
    resume([&] { control.setStyle(office::ButtonStyle::Icon); });
    SetButtonImage(layout.picture, control);
  }
  if (control) configure(layout, control);
  if (create && untagged_.remove()) control = {};
  resume([&] { keep(layout.index, control, layout.handler); });
  return create && control;
}

void OlCmdEvents::configure(const Layout& layout, const office::CommandBarControl& control) {
  ResumeNext resume;
  const auto setTooltip = [&] { control.setTooltipText(GetResString(layout.tooltipId)); };
  const bool edit = layout.type == office::ControlType::Edit;
  if (layout.beginGroup) resume([&] { control.setBeginGroup(true); });
  if (layout.width != 0) resume([&] { control.setWidth(layout.width); });
  resume([&] { control.setCaption(GetResString(layout.captionId)); });
  if (edit) resume(setTooltip);
  if (resume([&] { control.setTag(layout.tag); })) untagged_.letGo();
  resume([&] { control.setOnAction(concat(u"!<", globals().g_sProgId, u">")); });
  if (!edit) resume(setTooltip);
  resume([&] { control.setVisible(true); });
  resume([&] { control.setParameter(parameter_.text()); });
}

void OlCmdEvents::removeObsolete(const Obsolete& obsolete) {
  ResumeNext resume;
  office::CommandBarControl control;
  resume([&] { control = explorerBar_.findControl(obsolete.tag); });
  if (!control || resume([&] { control.remove(); })) return;
  // What can't be deleted goes on doing what it did.
  resume([&] { keep(obsolete.index, control, obsolete.handler); });
}

void OlCmdEvents::keep(ControlIndex index, const office::CommandBarControl& control,
                       Handler handler) {
  auto& kept = controls_[index];
  kept = {control, {}};
  if (!control) return;
  const bool edit = index == CbDial;
  kept.events = control.object().connect(
      edit ? office::CommandBarComboBoxEvents : office::CommandBarButtonEvents,
      std::make_shared<office::ControlSink<OlCmdEvents>>(weak_from_this(), handler));
}

void OlCmdEvents::DeInitVelnorBarExplorer(bool deleteBar) noexcept {
  LogDebug(concat(u"DeInitVelnorBarExplorer, deleteBar = ", boolText(deleteBar)));
  // In the middle of a build.
  untagged_.remove();
  ResumeNext resume;
  if (!explorerBar_) {
    LogWarning(u"No explorer command bar found!");
  } else if (deleteBar) {
    resume([&] { LogDebug(concat(u"Delete command bar: ", explorerBar_.name())); });
    resume([&] { explorerBar_.remove(); });
  } else {
    resume([&] { LogDebug(concat(u"Hide command bar: ", explorerBar_.name())); });
    resume([&] { explorerBar_.setVisible(false); });
  }
  release();
}

void OlCmdEvents::release() noexcept {
  for (auto& kept : controls_) kept = {};
  untagged_.letGo();
  explorerBar_ = {};
}

}  // namespace cxol
