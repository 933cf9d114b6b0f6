#include <string_view>
#include <utility>

#include "addin/barNames.h"
#include "addin/globals.h"
#include "addin/identity.h"
#include "client/SetButtonImage.h"
#include "infra/modK9TLog.h"
#include "infra/modRes.h"
#include "infra/runtime.h"
#include "inspector/OlEvents.h"
#include "platform/clock.h"
#include "platform/conversions.h"

namespace cxol {
namespace {

/// So many builds wait for Office to fill a found bar before it is filled here.
constexpr std::int32_t MaxEmptyBarRetries = 20;

}  // namespace

/// One button of the toolbar, in the toolbar's order.
struct OlEvents::Layout {
  ButtonIndex index;
  std::u16string_view tag;
  std::u16string_view picture;
  bool beginGroup;
  std::int32_t captionId;
  std::int32_t tooltipId;
  Handler handler;
};

const OlEvents::Layout OlEvents::Buttons[] = {
    {BtDial2, u"CxBtDial", u"dial", true, 602, 603, &OlEvents::BtDial2_Click},
    {BtDrop2, u"CxBtDrop", u"drop", false, 604, 605, &OlEvents::BtDrop2_Click},
    {BtAction2, u"CxBtAction", u"action", true, 610, 611, &OlEvents::BtAction2_Click},
};

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
    instanceId_ = NewInstanceIdentity();
    testButton_ = {};
    if (!prepareBar()) return;
    clearOldLayout();
    bool anyCreated = false;
    for (const auto& layout : Buttons) {
      if (layout.index == BtAction2) removeObsolete();
      if (initButton(layout)) anyCreated = true;
    }
    // New buttons are drawn before the bar is used.
    if (anyCreated) machine().clock.pumpMessages();
    built = true;
    LogDebug(u"...done.");
  });
  // The window may have been closed in the middle of a call.
  if (!inspector_) release();
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
  if (resume([&] { testButton_ = inspectorBar_.controls().add(office::ControlType::Button); })) {
    return;
  }
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
  LogDebug(u"All buttons deleted.");
}

bool OlEvents::initButton(const Layout& layout) {
  if (const auto found = inspectorBar_.findControl(layout.tag)) {
    configure(layout, found);
    return false;
  }
  auto button = std::exchange(testButton_, {});
  if (!button) {
    LogDebug(concat(u"Create button ", layout.tag));
    button = inspectorBar_.controls().add(office::ControlType::Button);
  }
  try {
    button.setStyle(office::ButtonStyle::Icon);
    SetButtonImage(layout.picture, button);
    button.setVisible(true);
    configure(layout, button);
  } catch (...) {
    // Without its tag the button would not be found again: each further build would add one.
    buttons_[layout.index] = {};
    trapQuietly([&] { button.remove(); });
    throw;
  }
  return true;
}

void OlEvents::configure(const Layout& layout, const office::CommandBarControl& button) {
  keep(layout.index, button, layout.handler);
  LogDebug(concat(u"Configure button ", layout.tag));
  if (layout.beginGroup) button.setBeginGroup(true);
  button.setCaption(GetResString(layout.captionId));
  button.setTag(layout.tag);
  button.setOnAction(concat(u"!<", globals().g_sProgId, u">"));
  button.setTooltipText(GetResString(layout.tooltipId));
  button.setParameter(instanceId_);
}

void OlEvents::removeObsolete() {
  auto& incognito = buttons_[BtIncognito2].control;
  incognito = inspectorBar_.findControl(u"CxBtIncognito");
  if (incognito) {
    // Spelt as readers of older logs know it.
    LogDebug(u"Delete button CxBtIcognito");
    incognito.remove();
    incognito = {};
  }
  for (const auto index : {BtTransfer2, BtVelnor2}) {
    if (const auto& control = buttons_[index].control) control.remove();
  }
}

void OlEvents::keep(ButtonIndex index, const office::CommandBarControl& control, Handler handler) {
  auto& kept = buttons_[index];
  kept = {control, {}};
  kept.clicks = control.object().connect(
      office::CommandBarButtonEvents,
      std::make_shared<office::ControlSink<OlEvents>>(weak_from_this(), handler));
}

void OlEvents::DeInitVelnorBarInspector(bool deleteBar) noexcept {
  LogDebug(u"DeInitVelnorBarInspector");
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
  testButton_ = {};
  for (const auto index : {BtDial2, BtDrop2, BtAction2, BtIncognito2}) buttons_[index] = {};
}

}  // namespace cxol
