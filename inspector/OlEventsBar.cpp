#include <string_view>

#include "client/SetButtonImage.h"
#include "infra/modK9TLog.h"
#include "infra/modRes.h"
#include "infra/runtime.h"
#include "inspector/OlEvents.h"
#include "platform/clock.h"
#include "platform/conversions.h"
#include "state/barNames.h"
#include "state/globals.h"
#include "state/identity.h"

namespace cxol {
namespace {

/// So many builds wait for Office to fill a found bar before it is filled here.
constexpr std::int32_t MaxEmptyBarRetries = 20;

}  // namespace

/// One button of the toolbar.
struct OlEvents::Layout {
  ButtonIndex index;
  std::u16string_view tag;
  std::u16string_view picture;
  bool beginGroup;
  std::int32_t captionId;
  std::int32_t tooltipId;
  Handler handler;
};

const OlEvents::Layout OlEvents::DialButton = {
    BtDial2, u"CxBtDial", u"dial", true, 602, 603, &OlEvents::BtDial2_Click};
const OlEvents::Layout OlEvents::DropButton = {
    BtDrop2, u"CxBtDrop", u"drop", false, 604, 605, &OlEvents::BtDrop2_Click};
const OlEvents::Layout OlEvents::ActionButton = {
    BtAction2, u"CxBtAction", u"action", true, 610, 611, &OlEvents::BtAction2_Click};

bool OlEvents::CBAddVelnorBarInspector() noexcept {
  bool built = false;
  trapAndLog(u"...failed: ", [&] {
    LogDebug(u"CBAddVelnorBarInspector...");
    if (inspector_.currentItem().objectClass() == outlook::ObjectClass::Note) {
      LogDebug(
          u"Current item is of type 'olNote': do not create inspector toolbar, just return "
          u"'true'.");
      built = true;
      return;
    }
    instanceId_ = InstanceIdentity::create();
    if (!prepareBar()) return;
    clearOldLayout();
    bool anyCreated = initButton(DialButton);
    if (initButton(DropButton)) anyCreated = true;
    removeObsolete();
    if (initButton(ActionButton)) anyCreated = true;
    // New buttons are drawn before the bar is used.
    if (anyCreated) machine().clock.pumpMessages();
    built = true;
    LogDebug(u"...done.");
  });
  untagged_.remove();
  if (isClosed()) release();
  return built;
}

bool OlEvents::prepareBar() {
  inspectorBar_ = findBar();
  if (!inspectorBar_) {
    LogDebug(concat(u"Create new inspector commandbar: ", globals().g_product));
    addBar();
  } else if (!prepareFoundBar()) {
    return false;
  }
  configureBar();
  return true;
}

office::CommandBar OlEvents::findBar() const {
  ResumeNext resume;
  office::CommandBar bar;
  office::CommandBars bars;
  resume([&] { bars = inspector_.commandBars(); });
  for (const auto& name : BarNames()) {
    resume([&] { bar = bars.item(name); });
    if (bar) break;
  }
  return bar;
}

void OlEvents::addBar() {
  ResumeNext resume;
  resume([&] { inspectorBar_ = inspector_.commandBars().add(globals().g_product); });
}

bool OlEvents::prepareFoundBar() {
  ResumeNext resume;
  resume([&] { LogDebug(concat(u"Re-use inspector commandbar: ", inspectorBar_.name())); });
  office::CommandBarControls controls;
  std::int32_t count = 0;
  resume([&] {
    controls = inspectorBar_.controls();
    count = controls.count();
  });
  if (count == 0) {
    const bool waiting = ++emptyBarRetries_ < MaxEmptyBarRetries;
    LogDebug(concat(u"No Buttons found after ", automation::int32Text(emptyBarRetries_),
                    waiting ? u" retries. Exit now."
                            : u" retries. Continue anyway, re-create commandbar if necessary."));
    if (waiting) return false;
  } else {
    logFoundButtons(controls, count);
  }
  replaceBarIfProtected();
  return true;
}

void OlEvents::logFoundButtons(const office::CommandBarControls& controls,
                               std::int32_t count) const {
  LogDebug(concat(automation::int32Text(count), u" Buttons found:"));
  ResumeNext resume;
  for (std::int32_t i = 1; i <= count; ++i) {
    resume(
        [&] { LogDebug(concat(automation::int32Text(i), u". Tag = ", controls.item(i).tag())); });
  }
}

void OlEvents::replaceBarIfProtected() {
  const auto& product = globals().g_product;
  ResumeNext resume;
  office::CommandBarControl dial;
  resume([&] { dial = inspectorBar_.findControl(u"CxBtDial"); });
  if (dial) return;
  LogDebug(u"Try to create button CxBtDial");
  const bool added =
      resume([&] { untagged_.hold(inspectorBar_.controls().add(office::ControlType::Button)); });
  if (added) return;
  LogDebug(concat(u"Delete inspector commandbar, because re-use not possible: ", product));
  resume([&] { inspectorBar_.remove(); });
  resume([] { machine().clock.pumpMessages(); });
  LogDebug(concat(u"Create new inspector commandbar, because re-use not possible: ", product));
  addBar();
}

void OlEvents::configureBar() {
  ResumeNext resume;
  resume([&] { inspectorBar_.setVisible(true); });
  resume([&] { inspectorBar_.setPosition(office::BarPosition::Top); });
  resume([&] { inspectorBar_.setName(globals().g_product); });
}

void OlEvents::clearOldLayout() {
  LogDebug(u"Test for transfer button to detect V2");
  if (!inspectorBar_.findControl(u"CxBtTransfer")) return;
  LogDebug(u"Transfer button detected, delete all buttons now!");
  const auto controls = inspectorBar_.controls();
  for (std::int32_t i = controls.count(); i >= 1; --i) controls.item(i).remove();
  untagged_.letGo();
  LogDebug(u"All buttons deleted.");
}

bool OlEvents::initButton(const Layout& layout) {
  auto button = inspectorBar_.findControl(layout.tag);
  const bool create = !button;
  if (create) {
    button = addButton(layout);
    button.setStyle(office::ButtonStyle::Icon);
    SetButtonImage(layout.picture, button);
    button.setVisible(true);
  }
  configure(layout, button);
  keep(layout, button);
  return create;
}

office::CommandBarControl OlEvents::addButton(const Layout& layout) {
  if (layout.index == BtDial2 && untagged_.control()) return untagged_.control();
  LogDebug(concat(u"Create button ", layout.tag));
  // The dial button has come up since it was looked for first, and has left the other one over.
  untagged_.remove();
  auto button = inspectorBar_.controls().add(office::ControlType::Button);
  untagged_.hold(button);
  return button;
}

void OlEvents::configure(const Layout& layout, const office::CommandBarControl& button) {
  LogDebug(concat(u"Configure button ", layout.tag));
  if (layout.beginGroup) button.setBeginGroup(true);
  button.setCaption(GetResString(layout.captionId));
  button.setTag(layout.tag);
  if (button == untagged_.control()) untagged_.letGo();
  button.setOnAction(concat(u"!<", globals().g_sProgId, u">"));
  button.setTooltipText(GetResString(layout.tooltipId));
  button.setParameter(instanceId_.text());
}

void OlEvents::removeObsolete() {
  if (const auto incognito = inspectorBar_.findControl(u"CxBtIncognito")) {
    // Spelt as readers of older logs know it.
    LogDebug(u"Delete button CxBtIcognito");
    incognito.remove();
  }
  for (const auto index : {BtTransfer2, BtVelnor2}) {
    if (const auto& control = buttons_[index].control) control.remove();
  }
}

void OlEvents::keep(const Layout& layout, const office::CommandBarControl& button) {
  auto& kept = buttons_[layout.index];
  kept = {button, {}};
  kept.clicks = button.object().connect(
      office::CommandBarButtonEvents,
      std::make_shared<office::ControlSink<OlEvents>>(weak_from_this(), layout.handler));
}

void OlEvents::DeInitVelnorBarInspector(bool deleteBar) noexcept {
  LogDebug(u"DeInitVelnorBarInspector");
  // In the middle of a build.
  untagged_.remove();
  ResumeNext resume;
  if (!inspectorBar_) {
    LogWarning(u"No inspector toolbar found!");
  } else if (deleteBar) {
    resume([&] { LogDebug(concat(u"Delete inspector commandbar: ", inspectorBar_.name())); });
    resume([&] { inspectorBar_.remove(); });
  } else {
    resume([&] { LogDebug(concat(u"Hide inspector commandbar: ", inspectorBar_.name())); });
    resume([&] { inspectorBar_.setVisible(false); });
  }
  release();
}

void OlEvents::release() noexcept {
  inspectorBar_ = {};
  untagged_.letGo();
  for (const auto index : {BtDial2, BtDrop2, BtAction2}) buttons_[index] = {};
}

}  // namespace cxol
